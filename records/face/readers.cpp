#include <campotipo-records/records.h>

#include <algorithm>
#include <limits>

#include "errors/error.hpp"
#include "face/errors.hpp"
#include "face/objects.hpp"
#include "files/input.hpp"
#include "files/sources.hpp"
#include "files/splits.hpp"

namespace records = campotipo::records;
namespace face = campotipo::records::face;

namespace campotipo::records::face {

std::unique_ptr<Source> open_source(const campotipo_input *input) {
  check_size(input, "input");
  const int told = (input->path != nullptr ? 1 : 0) + (input->memory != nullptr ? 1 : 0) +
                   (input->read != nullptr ? 1 : 0);
  const std::string name = input->name != nullptr ? input->name : "input";
  if (told == 0 && input->memory_bytes == 0 && input->context == nullptr) {
    return std::make_unique<MemorySource>(nullptr, 0, name);
  }
  if (told != 1) refuse("an input is one of path, memory and read");
  if (input->path != nullptr) {
    return std::make_unique<Input>(input->path, Input::Use::kOnce,
                                   input->name != nullptr ? input->name : "");
  }
  if (input->memory != nullptr) {
    return std::make_unique<MemorySource>(input->memory, input->memory_bytes, name);
  }
  return std::make_unique<CallbackSource>(
      CallbackSource::Calls{input->read, input->skip, input->context, input->file_bytes}, name);
}

namespace {

RecordStream::Range range_of(const campotipo_range *range) {
  RecordStream::Range all;
  if (range == nullptr) return all;
  check_size(range, "range");
  if (range->first != 0) all.from = range->first;
  if (range->count != 0) all.count = range->count;
  all.byte = range->byte;
  return all;
}

std::unique_ptr<Error> error_of(const campotipo_reader &reader, const StreamFault &fault) {
  auto error =
      std::make_unique<Error>(ErrorCode::kRecord, reader.source->name() + ": " + fault.text());
  error->record = fault.record;
  error->byte = fault.offset;
  return error;
}

}  // namespace

bool next_block(campotipo_reader &reader) {
  while (!reader.ended) {
    if (reader.pending != nullptr) {
      reader.ended = true;
      throw Error(*reader.pending);
    }
    if (!reader.stream->read(reader.block)) {
      reader.ended = true;
      break;
    }
    for (const StreamFault &fault : reader.block.faults) {
      reader.skipped += fault.record != 0 ? 1 : 0;
      if ((!reader.skip || fault.fatal) && reader.pending == nullptr)
        reader.pending = error_of(reader, fault);
    }
    if (!reader.block.records.empty()) return true;
  }
  return false;
}

}  // namespace campotipo::records::face

extern "C" {

campotipo_status campotipo_reader_open(const campotipo_layout *layout, const campotipo_input *input,
                                       const campotipo_range *range, unsigned flags,
                                       campotipo_reader **reader, campotipo_error *error) {
  return face::guarded(error, [&] {
    if (layout == nullptr || reader == nullptr) face::refuse("layout and reader have to be told");
    if ((flags & ~unsigned{CAMPOTIPO_SKIP}) != 0) face::refuse("flags that are not known");
    auto made = std::make_unique<campotipo_reader>();
    made->layout = layout->layout;
    made->source = face::open_source(input);
    made->skip = (flags & CAMPOTIPO_SKIP) != 0;
    made->whole = range == nullptr || (range->first <= 1 && range->count == 0 && range->byte == 0);
    made->stream = std::make_unique<records::RecordStream>(*made->source, *made->layout,
                                                           face::range_of(range));
    *reader = made.release();
    return CAMPOTIPO_OK;
  });
}

void campotipo_reader_free(campotipo_reader *reader) { delete reader; }

campotipo_status campotipo_reader_next(campotipo_reader *reader, campotipo_block *block,
                                       campotipo_error *error) {
  return face::guarded(error, [&] {
    if (reader == nullptr) face::refuse("reader has to be told");
    face::check_size(block, "block");
    if (!face::next_block(*reader)) return CAMPOTIPO_END;
    const records::RecordBlock &from = reader->block;
    const std::size_t count = from.records.size();
    reader->records.resize(count);
    reader->numbers.resize(count);
    reader->kinds.resize(count);
    for (std::size_t i = 0; i < count; ++i) {
      const records::RecordBlock::Record &record = from.records[i];
      reader->records[i] = from.record(record);
      reader->numbers[i] = from.number(record);
      reader->kinds[i] = static_cast<std::uint32_t>(record.type - reader->layout->types.data());
    }
    block->count = count;
    block->records = reader->records.data();
    block->numbers = reader->numbers.data();
    block->kinds = reader->kinds.data();
    block->base = from.data();
    block->offset = from.offset;
    return CAMPOTIPO_OK;
  });
}

uint64_t campotipo_reader_skipped(const campotipo_reader *reader) { return reader->skipped; }

campotipo_status campotipo_splits(const campotipo_layout *layout, const campotipo_input *input,
                                  size_t wanted, campotipo_range *out, size_t *made,
                                  campotipo_error *error) {
  return face::guarded(error, [&] {
    if (layout == nullptr || out == nullptr || made == nullptr || wanted == 0) {
      face::refuse("layout, wanted, out and made have to be told");
    }
    const std::unique_ptr<records::Source> source = face::open_source(input);
    const auto ranges = records::splits(*layout->layout, *source, wanted);
    for (std::size_t i = 0; i < ranges.size(); ++i) {
      const bool open = ranges[i].count == std::numeric_limits<std::uint64_t>::max();
      out[i] = {sizeof *out, ranges[i].from, open ? 0 : ranges[i].count, ranges[i].byte};
    }
    *made = ranges.size();
    return CAMPOTIPO_OK;
  });
}

}  // extern "C"
