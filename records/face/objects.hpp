#pragma once

#include <campotipo-records/records.h>

#include <memory>

#include "columns/physical.hpp"
#include "errors/error.hpp"
#include "files/source.hpp"
#include "files/stream.hpp"
#include "layout/layout.hpp"

// What the handles of the C face are.

struct campotipo_layout {
  std::shared_ptr<const campotipo::records::Layout> layout;
};

struct campotipo_reader {
  std::shared_ptr<const campotipo::records::Layout> layout;
  std::unique_ptr<campotipo::records::Source> source;
  std::unique_ptr<campotipo::records::RecordStream> stream;
  bool skip = false;
  bool whole = true;  // all records, not a range of them
  bool ended = false;
  std::uint64_t skipped = 0;
  std::unique_ptr<campotipo::records::Error>
      pending;  // told once the records in front are handed out
  campotipo::records::RecordBlock block;
  std::vector<const unsigned char *> records;
  std::vector<std::uint64_t> numbers;
  std::vector<std::uint32_t> kinds;
};

namespace campotipo::records::face {

// The next block that has records, in `reader.block`; false at the end. Throws what is wrong.
bool next_block(campotipo_reader &reader);

int physical_of(Physical physical);
Wide wide_of(int wide);

std::unique_ptr<Source> open_source(const campotipo_input *input);

}  // namespace campotipo::records::face
