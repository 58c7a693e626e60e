#include <campotipo-records/records.h>

#include <algorithm>
#include <cstring>

#include "columns/arrow.hpp"
#include "columns/plan.hpp"
#include "face/arrow_stream.hpp"
#include "face/errors.hpp"
#include "face/objects.hpp"

namespace records = campotipo::records;
namespace face = campotipo::records::face;

namespace campotipo::records::face {

int physical_of(Physical physical) { return static_cast<int>(physical) + 1; }

Wide wide_of(int wide) {
  if (wide < CAMPOTIPO_WIDE_STRING || wide > CAMPOTIPO_WIDE_DECIMAL256) refuse("wide is not known");
  return static_cast<Wide>(wide);
}

namespace {

static_assert(CAMPOTIPO_BOOL == static_cast<int>(Physical::kBool) + 1);
static_assert(CAMPOTIPO_UTF8 == static_cast<int>(Physical::kUtf8) + 1);
static_assert(CAMPOTIPO_TIME64 == static_cast<int>(Physical::kTime64) + 1);

constexpr std::size_t kBatchRows = 65536;

struct StreamOptions {
  ColumnOptions columns;
  std::size_t batch_rows = kBatchRows;
};

StreamOptions options_of(const campotipo_stream_options *options) {
  StreamOptions made;
  if (options == nullptr) return made;
  check_size(options, "stream_options");
  if (options->kind != nullptr) made.columns.kind = options->kind;
  for (std::size_t i = 0; options->fields != nullptr && i < options->n_fields; ++i) {
    made.columns.fields.emplace_back(options->fields[i]);
  }
  made.columns.wide = wide_of(options->wide);
  if (options->times < 0 || options->times > CAMPOTIPO_TIMES_NS) refuse("times is not known");
  made.columns.times = static_cast<Times>(options->times);
  if (options->faults < 0 || options->faults > CAMPOTIPO_FAULTS_NULL) refuse("faults is not known");
  made.columns.faults_become_null = options->faults == CAMPOTIPO_FAULTS_NULL;
  if (options->file != nullptr) made.columns.file = options->file;
  if (options->batch_rows != 0) made.batch_rows = options->batch_rows;
  return made;
}

// The records of a kind as batches.
class Stream : public ArrowStream {
 public:
  Stream(const StreamOptions &options, campotipo_reader &reader)
      : plan_(column_plan(*reader.layout, options.columns)),
        batch_rows_(options.batch_rows),
        batch_(plan_, reader.source->name()) {}

  void own(campotipo_reader *reader) { reader_.reset(reader); }

 private:
  void make_schema(ArrowSchema *out) override { export_schema(plan_, out); }

  void make_next(ArrowArray *out) override {
    while (batch_.rows() < batch_rows_ && !batch_.full() && (taken_ < rows_.size() || gather())) {
      take(std::min(rows_.size() - taken_, batch_rows_ - batch_.rows()));
    }
    if (batch_.rows() != 0) export_batch(batch_, out);
  }

  // The records of the kind in the next block; false at the end.
  bool gather() {
    rows_.clear();
    numbers_.clear();
    taken_ = 0;
    while (rows_.empty()) {
      if (!next_block(*reader_)) return false;
      const RecordBlock &block = reader_->block;
      for (const RecordBlock::Record &record : block.records) {
        if (record.type != plan_.kind) continue;
        rows_.push_back(block.record(record));
        numbers_.push_back(block.number(record));
      }
    }
    return true;
  }

  void take(std::size_t count) {
    const RecordBlock &block = reader_->block;
    batch_.append(
        {rows_.data() + taken_, numbers_.data() + taken_, count, block.data(), block.offset});
    taken_ += count;
  }

  ColumnPlan plan_;
  std::size_t batch_rows_;
  Batch batch_;
  std::unique_ptr<campotipo_reader> reader_;
  std::vector<const unsigned char *> rows_;
  std::vector<std::uint64_t> numbers_;
  std::size_t taken_ = 0;
};

// Bytes of states to bits, a value or a fault a one.
void set_bits(std::uint8_t *bits, const std::vector<std::uint8_t> &states, bool faults) {
  std::memset(bits, 0, (states.size() + 7) / 8);
  for (std::size_t i = 0; i < states.size(); ++i) {
    const auto state = static_cast<ValueState>(states[i]);
    const bool set = faults ? state == ValueState::kFault || state == ValueState::kTooLarge
                            : state == ValueState::kValue;
    if (set) bits[i / 8] = static_cast<std::uint8_t>(bits[i / 8] | 1U << i % 8);
  }
}

void look_at_states(const std::vector<std::uint8_t> &states, const Field &field,
                    const campotipo_column &column) {
  for (std::size_t i = 0; i < states.size(); ++i) {
    const auto state = static_cast<ValueState>(states[i]);
    if (state == ValueState::kValue) continue;
    if (state != ValueState::kNull && column.faults == nullptr) {
      Error error(ErrorCode::kValue, "record " + std::to_string(i + 1) + " of those given: field " +
                                         field.flat + ": invalid, or too large for the column");
      error.record = i + 1;
      error.field = field.flat;
      throw error;
    }
    if (column.validity == nullptr) refuse("a value is null, and validity has no place");
  }
}

// Every row has a value.
void all_values(campotipo_column &column, std::size_t count) {
  if (column.validity != nullptr) {
    std::memset(column.validity, 0xFF, count / 8);
    if (count % 8 != 0)
      column.validity[count / 8] = static_cast<std::uint8_t>((1U << count % 8) - 1);
  }
  if (column.faults != nullptr) std::memset(column.faults, 0, (count + 7) / 8);
  column.nulls = 0;
}

void decode(const Field &field, const ColumnType &type, const unsigned char *const *records,
            std::size_t count, std::size_t record_bytes, campotipo_column &column) {
  std::vector<std::uint8_t> states(count);
  std::vector<std::uint8_t> flags(type.physical == Physical::kBool ? count : 0);
  const DecodeInput in = {records, count, field.offset, field.type, &field.params, record_bytes};
  DecodeOutput out = {};
  out.states = states.data();
  out.values = flags.empty() ? column.values : flags.data();
  if (type.physical == Physical::kUtf8) {
    const bool fits = column.offsets != nullptr &&
                      (count == 0 || (column.text != nullptr &&
                                      column.room / count >= field.type->room(field.params)));
    if (!fits) refuse("too little room for the texts: count times the room of the field");
    column.offsets[0] = 0;
    out.offsets = column.offsets + 1;
    out.bytes = column.text;
  } else if (column.values == nullptr && count != 0) {
    refuse("values have no place");
  }
  const bool all_there = !kernels().decode(*field.type, type)(in, out);
  if (!all_there) look_at_states(states, field, column);
  if (!flags.empty() && column.values != nullptr) {
    auto *bits = static_cast<std::uint8_t *>(column.values);
    std::memset(bits, 0, (count + 7) / 8);
    for (std::size_t i = 0; i < count; ++i) {
      bits[i / 8] = static_cast<std::uint8_t>(bits[i / 8] | flags[i] << i % 8);
    }
  }
  if (all_there) return all_values(column, count);
  if (column.validity != nullptr) set_bits(column.validity, states, false);
  if (column.faults != nullptr) set_bits(column.faults, states, true);
  column.nulls = static_cast<std::size_t>(
      std::count_if(states.begin(), states.end(), [](std::uint8_t state) { return state != 0; }));
}

}  // namespace
}  // namespace campotipo::records::face

extern "C" {

campotipo_status campotipo_decode(const campotipo_layout *layout, size_t kind, size_t field,
                                  int wide, const unsigned char *const *records, size_t count,
                                  campotipo_column *column, campotipo_error *error) {
  return face::guarded(error, [&] {
    if (layout == nullptr || (records == nullptr && count != 0)) {
      face::refuse("layout and records have to be told");
    }
    face::check_size(column, "column");
    if (kind >= layout->layout->types.size()) face::refuse("no such kind");
    const records::RecordType &type = layout->layout->types[kind];
    if (field >= type.fields.size()) face::refuse("no such field");
    const records::Field &known = type.fields[field];
    face::decode(known, records::column_type(known, face::wide_of(wide), records::Times::kSeconds),
                 records, count, type.bytes, *column);
    return CAMPOTIPO_OK;
  });
}

campotipo_status campotipo_stream(campotipo_reader *reader, const campotipo_stream_options *options,
                                  struct ArrowArrayStream *out, campotipo_error *error) {
  return face::guarded(error, [&] {
    if (reader == nullptr || out == nullptr) face::refuse("reader and out have to be told");
    const face::StreamOptions told = face::options_of(options);
    auto stream = std::make_unique<face::Stream>(told, *reader);
    stream->own(reader);
    face::hand_over(std::move(stream), out);
    return CAMPOTIPO_OK;
  });
}

campotipo_status campotipo_stream_error(const struct ArrowArrayStream *stream,
                                        campotipo_error *error) {
  return face::guarded(nullptr, [&] {
    const face::ArrowStream *own = face::own_stream(stream);
    if (own == nullptr || error == nullptr) return CAMPOTIPO_ARGUMENT;
    face::check_size(error, "error");
    const size_t size = error->size;
    *error = own->last();
    error->size = size;
    return CAMPOTIPO_OK;
  });
}

campotipo_status campotipo_stream_schema(const campotipo_layout *layout,
                                         const campotipo_stream_options *options,
                                         struct ArrowSchema *out, campotipo_error *error) {
  return face::guarded(error, [&] {
    if (layout == nullptr || out == nullptr) face::refuse("layout and out have to be told");
    records::export_schema(records::column_plan(*layout->layout, face::options_of(options).columns),
                           out);
    return CAMPOTIPO_OK;
  });
}

}  // extern "C"
