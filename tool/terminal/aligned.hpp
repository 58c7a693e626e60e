#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "terminal/output.hpp"
#include "terminal/terminal.hpp"

namespace campotipo::tool {

// A table in aligned columns. The widths are those of the names and of the first rows; a longer
// value further on pushes its row out of line, and memory does not grow with the table.
class AlignedTable {
 public:
  struct Heading {
    std::string name;
    bool right = false;
  };

  AlignedTable(std::vector<Heading> headings, Output &output);

  void add(std::vector<std::string> row);

  // Writes what was held back to find the widths.
  void finish();

 private:
  static constexpr std::size_t kHeldBack = 500;

  void settle();
  void write(const std::vector<std::string> &row, bool heading);

  std::vector<Heading> headings_;
  Output *output_;
  Colours colours_;
  std::vector<std::vector<std::string>> held_;
  std::vector<std::size_t> widths_;
  std::string out_;
};

}  // namespace campotipo::tool
