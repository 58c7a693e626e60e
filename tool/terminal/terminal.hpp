#pragma once

#include <unistd.h>

#include <cstdlib>
#include <string>
#include <string_view>

namespace campotipo::tool {

// Colours of a terminal; none where NO_COLOR is set or the output is something else.
class Colours {
 public:
  explicit Colours(bool terminal) {
    const char *no_color = std::getenv("NO_COLOR");
    const char *term = std::getenv("TERM");
    on_ = terminal && (no_color == nullptr || *no_color == '\0') &&
          (term == nullptr || std::string_view(term) != "dumb");
  }
  std::string bold(std::string_view text) const { return with("1", text); }
  std::string dim(std::string_view text) const { return with("2", text); }
  std::string red(std::string_view text) const { return with("31", text); }
  std::string green(std::string_view text) const { return with("32", text); }

 private:
  std::string with(const char *code, std::string_view text) const {
    if (!on_) return std::string(text);
    return std::string("\033[") + code + "m" + std::string(text) + "\033[0m";
  }
  bool on_ = false;
};

}  // namespace campotipo::tool
