#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "files/source.hpp"
#include "text/padded.hpp"

namespace campotipo::records {

// Whole rows of a CSV file, in bytes that the reading of the cells changes in place.
struct CsvBlock {
  std::vector<char> bytes;  // scan::kPadding more than `size`
  std::size_t size = 0;
  bool has_nul = false;
  bool endless = false;  // too long a row: a quote that is not closed
};

// Cuts a file into blocks that end at the end of a row, but for an endless one.
class CsvStream {
 public:
  // block: bytes read at once, more where a row needs them.
  explicit CsvStream(Source &input, std::size_t block = 256U << 10)
      : input_(&input), most_(block), block_(block) {}

  // The first row; false for a file without any. Call it before read().
  bool header(std::vector<std::string> &names);

  // The next block; false where there is none.
  bool read(CsvBlock &block);

  // Lines of the file that the first row takes.
  std::uint64_t header_lines() const { return header_lines_; }

 private:
  bool read_more(CsvBlock &block);

  Source *input_;
  std::size_t most_;
  std::size_t block_;
  std::vector<char> rest_;
  std::uint64_t header_lines_ = 0;
  bool ended_ = false;
};

// Reads the rows of a block, RFC 4180 with either line end.
class CsvRows {
 public:
  explicit CsvRows(CsvBlock &block) : block_(&block) {}

  // The cells of the next row; false at the end of the block, or at a fault.
  bool next(std::vector<PaddedText> &cells);

  // What is wrong with the row that could not be read; null where all could.
  const char *fault() const { return fault_; }

  // Line of the block in which the last row begins, from 1.
  std::uint64_t line() const { return line_; }

  // Lines and bytes read so far.
  std::uint64_t lines() const { return next_line_ - 1; }
  std::size_t at() const { return at_; }

 private:
  enum class End { kCell, kRow, kFault };
  End plain(PaddedText &cell);
  End quoted(PaddedText &cell);
  End fail(const char *what);

  CsvBlock *block_;
  std::size_t at_ = 0;
  std::uint64_t line_ = 1;
  std::uint64_t next_line_ = 1;
  const char *fault_ = nullptr;
};

}  // namespace campotipo::records
