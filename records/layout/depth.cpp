#include "layout/depth.hpp"

#include <vector>

#include "layout/toml_table.hpp"

namespace campotipo::records {

namespace {

constexpr int kMostPoints = 200;

// Walks over a text by the little of TOML that tells keys from strings and comments.
class DepthScan {
 public:
  DepthScan(std::string_view text, const std::string &name) : text_(text), name_(&name) {}

  void run() {
    while (at_ < text_.size()) {
      const char c = text_[at_];
      if (c == '"' || c == '\'') {
        skip_string(c);
        continue;
      }
      if (c == '#') {
        skip_to('\n');
        continue;
      }
      step(c);
      next();
    }
  }

 private:
  // Points count until the key ends, and further on inside the value in brackets that follows it.
  void step(char c) {
    if (c == '[' || c == '{') {
      outer_.push_back(points_);
    } else if (c == ']' || c == '}') {
      if (!outer_.empty()) outer_.pop_back();
    } else if (c == '.') {
      if (++points_ > kMostPoints) fail();
      return;
    }
    if (c == '\n' || c == ',' || c == ']' || c == '}') points_ = outer_.empty() ? 0 : outer_.back();
  }

  void next() {
    const bool line = text_[at_++] == '\n';
    column_ = line ? 1 : column_ + 1;
    line_ += line ? 1 : 0;
  }

  void skip_to(char end) {
    while (at_ < text_.size() && text_[at_] != end) next();
  }

  void skip(std::size_t count) {
    while (count-- > 0 && at_ < text_.size()) next();
  }

  // Three quotes begin a string of several lines; a backslash keeps the quote behind it, but not
  // where the quotes are single ones.
  void skip_string(char quote) {
    const std::string three(3, quote);
    const std::string end = text_.substr(at_, 3) == three ? three : std::string(1, quote);
    skip(end.size());
    while (at_ < text_.size() && text_.substr(at_, end.size()) != end) {
      if (end.size() == 1 && text_[at_] == '\n') return;
      skip(quote == '"' && text_[at_] == '\\' ? 2 : 1);
    }
    skip(end.size());
    // Such a string may itself end with two of its quotes.
    for (int i = 0; end.size() == 3 && i < 2 && text_.substr(at_, 1) == end.substr(0, 1); ++i)
      skip(1);
  }

  [[noreturn]] void fail() const {
    const toml::source_position at{line_, column_};
    layout_fault(*name_, {at, at, nullptr},
                 "expected at most " + std::to_string(kMostPoints) + " points in a key");
  }

  std::string_view text_;
  const std::string *name_;
  std::size_t at_ = 0;
  toml::source_index line_ = 1;
  toml::source_index column_ = 1;
  int points_ = 0;
  std::vector<int> outer_;  // points in front of each bracket that is open
};

}  // namespace

void check_depth(std::string_view text, const std::string &name) { DepthScan(text, name).run(); }

}  // namespace campotipo::records
