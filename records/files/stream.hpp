#pragma once

#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "errors/what.hpp"
#include "files/source.hpp"
#include "layout/kind_finder.hpp"
#include "layout/layout.hpp"

namespace campotipo::records {

// Where the bytes of a file do not follow its layout.
struct StreamFault {
  std::uint64_t record = 0;  // from 1; 0: in front of or behind the records
  std::uint64_t offset = 0;  // in the file
  std::string what;
  What word = What::kIncomplete;
  bool fatal = false;  // it cannot be passed over: what stands behind it is not read

  // "record 3, byte 126: incomplete record: ...".
  std::string text() const;
};

// Whole records of a file, as they stand there.
struct RecordBlock {
  struct Record {
    std::uint32_t at;   // in the block
    std::uint32_t nth;  // from `first` on; records that were left out count
    const RecordType *type;
  };
  std::vector<Record> records;
  std::vector<StreamFault> faults;
  std::vector<StreamFault> notes;  // findings that cost no record
  std::uint64_t first = 1;         // number of the first record
  std::uint64_t offset = 0;        // of the block in the file

  // The bytes that were read, or that stand in the memory of the source.
  const unsigned char *data() const { return window != nullptr ? window : own.data(); }
  std::size_t size() const { return window != nullptr ? window_size : own.size(); }

  const unsigned char *record(const Record &which) const { return data() + which.at; }
  std::uint64_t number(const Record &which) const { return first + which.nth; }
  std::uint64_t place(const Record &which) const { return offset + which.at; }

  std::vector<unsigned char> own;
  const unsigned char *window = nullptr;
  std::size_t window_size = 0;
};

// Reads a file of records block by block, in memory that does not grow with it.
class RecordStream {
 public:
  struct Range {
    std::uint64_t from = 1;
    std::uint64_t count = std::numeric_limits<std::uint64_t>::max();
    // Where the first one stands, if that is known; 0: it is not. A part of a file of lines has to
    // end where the next one begins by arithmetic: else that is a fault which cannot be passed over.
    std::uint64_t byte = 0;
    // In the place of 0 for such a part that begins the file.
    static constexpr std::uint64_t kFront = std::numeric_limits<std::uint64_t>::max();
  };

  // A record that does not follow the layout is told and left out; where its end is not known,
  // nothing is read behind it.
  RecordStream(Source &input, const Layout &layout) : RecordStream(input, layout, Range{}) {}

  // block: bytes read at once, more where a record needs them.
  RecordStream(Source &input, const Layout &layout, Range range, std::size_t block = 256U << 10);

  // The next records; false when there are no more and no fault is left to tell.
  bool read(RecordBlock &block);

 private:
  void begin(RecordBlock &block);
  void begin_at_byte(RecordBlock &block);
  void begin_at_line(RecordBlock &block);
  void read_more(RecordBlock &block);
  void split(RecordBlock &block, std::size_t usable);
  void split_plain(RecordBlock &block, std::size_t usable, std::size_t &at);
  bool split_one(RecordBlock &block, std::size_t usable, std::size_t &at);
  std::size_t stored_length(const unsigned char *prefix) const;
  void finish(RecordBlock &block, std::size_t at);

  // In lines.cpp.
  struct Line;
  void split_lines(RecordBlock &block, std::size_t &at);
  bool split_even_lines(RecordBlock &block, std::size_t &at);
  bool find_line(const RecordBlock &block, std::size_t at, Line &line) const;
  void look_at_end(RecordBlock &block, std::size_t at, const Line &line);
  void take_line(RecordBlock &block, std::size_t at, const Line &line, const RecordType *type);
  void look_at_range(RecordBlock &block, std::size_t at);
  void keep_end(RecordBlock &block, std::size_t &at);

  void push(RecordBlock &block, std::size_t at, const RecordType &type);
  void fault(RecordBlock &block, std::size_t at, std::uint64_t record, What word,
             const std::string &what);
  void last_fault(RecordBlock &block, std::size_t at, std::uint64_t record, What word,
                  const std::string &what);

  Source *input_;
  const Layout *layout_;
  KindFinder kinds_;
  std::size_t block_;
  std::uint64_t from_;
  std::uint64_t byte_;               // of the first record wanted; 0: not known
  std::uint64_t end_;                // number behind the last record wanted
  std::vector<unsigned char> rest_;  // read and not handed out yet
  std::size_t left_ = 0;             // bytes of the block behind its last record
  std::uint64_t offset_ = 0;         // of the bytes of `rest_` in the file
  std::uint64_t next_ = 1;           // number of the next record
  bool begun_ = false;
  bool ended_ = false;  // nothing is left in the file
  bool done_ = false;

  LineEnd ends_ = LineEnd::kNone;     // as the first line that has an end
  bool wary_ = true;                  // the next line is looked through for its end
  bool by_place_ = false;             // where lines begin follows from their numbers
  std::uint64_t stride_ = 0;          // then: from one to the next; 0: not known yet
  std::uint64_t passed_ = 0;          // bytes that were not kept of a line too long for any record
  const RecordType *long_ = nullptr;  // its kind
};

}  // namespace campotipo::records
