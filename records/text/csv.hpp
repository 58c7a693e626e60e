#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "files/input.hpp"

namespace campotipo::tool {

// Whole rows of a CSV file, in bytes that the reading of the cells changes in place.
struct CsvBlock {
  std::vector<char> bytes;  // scan::kPadding more than `size`
  std::size_t size = 0;
  std::uint64_t offset = 0;  // in the file
  bool has_nul = false;
};

struct CsvCell {
  const char *text;  // followed by a NUL and by bytes that may be read
  std::size_t length;
  std::size_t at;  // in the block

  std::string_view view() const { return {text, length}; }
};

// Cuts a file into blocks that end at the end of a row. A Failure tells a row without end.
class CsvStream {
 public:
  // block: bytes read at once, more where a row needs them.
  explicit CsvStream(Input &input, std::size_t block = 256U << 10)
      : input_(&input), most_(block), block_(block) {}

  // The first row; false for a file without any. Call it before fill().
  bool header(std::vector<std::string> &names);

  bool fill(CsvBlock &block);

 private:
  bool read_more(CsvBlock &block);

  Input *input_;
  std::size_t most_;
  std::size_t block_;
  std::vector<char> rest_;
  std::uint64_t offset_ = 0;
  bool ended_ = false;
};

// What is wrong with a row, and where in the block.
struct CsvFault {
  const char *what = nullptr;
  std::size_t at = 0;
};

// Reads the rows of a block, RFC 4180 with either line end.
class CsvRows {
 public:
  explicit CsvRows(CsvBlock &block) : block_(&block) {}

  // The cells of the next row; false at the end of the block, or at a fault.
  bool next(std::vector<CsvCell> &cells);

  const CsvFault &fault() const { return fault_; }
  std::size_t at() const { return at_; }

 private:
  enum class End { kCell, kRow, kFault };
  End plain(CsvCell &cell);
  End quoted(CsvCell &cell);
  End fail(const char *what, std::size_t at);

  CsvBlock *block_;
  std::size_t at_ = 0;
  CsvFault fault_;
};

}  // namespace campotipo::tool
