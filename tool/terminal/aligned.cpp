#include "terminal/aligned.hpp"

#include <algorithm>
#include <utility>

#include "text/quote.hpp"
#include "text/utf8.hpp"

namespace campotipo::tool {

using namespace campotipo::records;

namespace {
constexpr std::size_t kWidest = 60;
constexpr std::size_t kGathered = 1U << 16;
}  // namespace

AlignedTable::AlignedTable(std::vector<Heading> headings, Output &output)
    : headings_(std::move(headings)), output_(&output), colours_(output.is_terminal()) {}

void AlignedTable::add(std::vector<std::string> row) {
  for (std::string &cell : row) cell = printable(cell);
  if (!widths_.empty()) return write(row, false);
  held_.push_back(std::move(row));
  if (held_.size() >= kHeldBack) settle();
}

void AlignedTable::settle() {
  std::vector<std::string> names;
  for (const Heading &heading : headings_) {
    names.push_back(printable(heading.name));
    widths_.push_back(utf8::length(names.back()));
  }
  for (const auto &row : held_) {
    for (std::size_t i = 0; i < row.size(); ++i) {
      widths_[i] = std::max(widths_[i], std::min(kWidest, utf8::length(row[i])));
    }
  }
  write(names, true);
  for (const auto &row : held_) write(row, false);
  held_.clear();
}

void AlignedTable::write(const std::vector<std::string> &row, bool heading) {
  std::string line;
  for (std::size_t i = 0; i < row.size(); ++i) {
    const std::size_t length = utf8::length(row[i]);
    const std::string fill(widths_[i] > length ? widths_[i] - length : 0, ' ');
    const std::string cell = heading ? colours_.bold(row[i]) : row[i];
    line += i == 0 ? "" : "  ";
    line += headings_[i].right ? fill + cell : cell + fill;
  }
  line.erase(line.find_last_not_of(' ') + 1);
  out_ += line + "\n";
  if (out_.size() > kGathered) {
    output_->write_coloured(out_);
    out_.clear();
  }
}

void AlignedTable::finish() {
  if (widths_.empty()) settle();
  output_->write_coloured(out_);
  out_.clear();
}

}  // namespace campotipo::tool
