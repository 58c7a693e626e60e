#include "columns/batch.hpp"

#include <algorithm>
#include <cstring>
#include <new>

#include "errors/error.hpp"

namespace campotipo::records {

namespace {

constexpr std::size_t kMostText = std::size_t{1} << 30;

std::size_t bitmap_bytes(std::size_t rows) { return (rows + 63) / 64 * 8; }

// The lowest bits of eight bytes, the first one lowest.
unsigned gathered(std::uint64_t bytes) {
  return static_cast<unsigned>((bytes & 0x0101010101010101) * 0x0102040810204080 >> 56);
}

// Bits from `from` on are set where a byte is 1; those behind the last one stay undefined.
void append_bits(char *bits, std::size_t from, const std::uint8_t *flags, std::size_t count) {
  const auto set = [&](std::size_t i) {
    const std::size_t at = from + i;
    const auto bit = static_cast<char>(1 << at % 8);
    if (at % 8 == 0) bits[at / 8] = 0;
    bits[at / 8] = static_cast<char>(flags[i] != 0 ? bits[at / 8] | bit : bits[at / 8] & ~bit);
  };
  std::size_t i = 0;
  for (; i < count && (from + i) % 8 != 0; ++i) set(i);
  for (; i + 8 <= count; i += 8) {
    std::uint64_t eight = 0;
    std::memcpy(&eight, flags + i, sizeof eight);
    bits[(from + i) / 8] = static_cast<char>(gathered(eight));
  }
  for (; i < count; ++i) set(i);
}

}  // namespace

char *Bytes::reserve(std::size_t bytes) {
  if (bytes <= block_.bytes) return block_.data;
  if (block_.data == nullptr && pool_ != nullptr) block_ = pool_->take(bytes);
  if (block_.data != nullptr && bytes <= block_.bytes) return block_.data;
  const std::size_t capacity = std::max(bytes, 2 * block_.bytes);
  auto *larger = static_cast<char *>(std::realloc(block_.data, capacity));
  if (larger == nullptr) throw std::bad_alloc();
  block_ = {larger, capacity};
  return larger;
}

void Batch::begin() {
  last_.resize(plan_->columns.size());
  for (const Sizes &sizes : last_) {
    ColumnValues &values = columns_.emplace_back(pool_);
    values.values.reserve(sizes.values);
    values.text.reserve(sizes.text);
    values.validity.reserve(sizes.validity);
  }
}

void Batch::clear() {
  rows_ = 0;
  columns_.clear();
}

bool Batch::full() const {
  return std::any_of(columns_.begin(), columns_.end(),
                     [](const ColumnValues &column) { return column.text_size >= kMostText; });
}

void Batch::refuse(const PlannedColumn &column, const RecordRows &rows, std::size_t i) const {
  const Field &field = *column.field;
  const unsigned char *record = rows.records[i];
  const char *fault = field.type->fault(record + field.offset, field.params);
  std::string what = fault != nullptr ? fault : "";
  if (what.empty()) {
    what = column.type.physical == Physical::kDate32
               ? "a date that the civil calendar does not have"
               : "too large for the column";
  }
  const std::uint64_t byte =
      rows.offset + static_cast<std::uint64_t>(record - rows.base) + field.offset;
  Error error(ErrorCode::kValue, name_ + ": record " + std::to_string(rows.numbers[i]) + ", byte " +
                                     std::to_string(byte) + ": field " + plan_->kind->name + "." +
                                     column.name + ": " + what);
  error.record = rows.numbers[i];
  error.byte = byte;
  error.kind = plan_->kind->name;
  error.field = column.name;
  throw error;
}

// Where there are nulls, the rows in front of the first one are all there.
void Batch::append_validity(ColumnValues &values, const std::uint8_t *valid, std::size_t count) {
  const auto nulls = std::count(valid, valid + count, std::uint8_t{0});
  if (nulls == 0 && values.nulls == 0) return;
  char *bits = values.validity.reserve(bitmap_bytes(rows_ + count));
  if (values.nulls == 0) std::memset(bits, 0xFF, bitmap_bytes(rows_));
  append_bits(bits, rows_, valid, count);
  values.nulls += nulls;
}

// Turns the states into flags of what is there.
void Batch::look_at_states(const PlannedColumn &column, const RecordRows &rows) {
  for (std::size_t i = 0; i < rows.count; ++i) {
    const auto state = static_cast<ValueState>(states_[i]);
    states_[i] = state == ValueState::kValue ? 1 : 0;
    if (state == ValueState::kValue || state == ValueState::kNull) continue;
    if (!plan_->faults_become_null) refuse(column, rows, i);
    fault_names_.resize(rows.count);
    fault_names_[i] += (fault_names_[i].empty() ? "" : ",") + column.name;
  }
}

void Batch::append_field(std::size_t at, const RecordRows &rows) {
  const PlannedColumn &column = plan_->columns[at];
  const Field &field = *column.field;
  ColumnValues &values = columns_[at];
  const DecodeInput in = {rows.records, rows.count,    field.offset,
                          field.type,   &field.params, plan_->kind->bytes};
  DecodeOutput out = {};
  states_.assign(rows.count, 0);
  out.states = states_.data();
  const std::size_t end = rows_ + rows.count;
  const std::size_t size = column.type.bytes();
  if (column.type.physical == Physical::kUtf8) {
    auto *ends = reinterpret_cast<std::int32_t *>(values.values.reserve(4 * (end + 1)));
    if (rows_ == 0) ends[0] = 0;
    out.offsets = ends + rows_ + 1;
    out.begin = static_cast<std::int32_t>(values.text_size);
    out.bytes =
        values.text.reserve(values.text_size + rows.count * field.type->room(field.params)) +
        values.text_size;
  } else if (size == 0) {
    flags_.resize(rows.count);
    out.values = flags_.data();
  } else {
    out.values = values.values.reserve(size * end) + size * rows_;
  }
  const bool any = column.decode(in, out);
  if (out.offsets != nullptr && rows.count != 0) {
    values.text_size = static_cast<std::size_t>(out.offsets[rows.count - 1]);
  } else if (size == 0 && column.type.physical == Physical::kBool) {
    append_bits(values.values.reserve(bitmap_bytes(end)), rows_, flags_.data(), rows.count);
  }
  if (!any && values.nulls == 0) return;
  look_at_states(column, rows);
  append_validity(values, states_.data(), rows.count);
}

void Batch::append_numbers(ColumnValues &values, const RecordRows &rows) {
  char *at = values.values.reserve(8 * (rows_ + rows.count)) + 8 * rows_;
  std::memcpy(at, rows.numbers, 8 * rows.count);
}

void Batch::append_texts(ColumnValues &values, const std::vector<std::string> &texts,
                         bool empty_is_null) {
  const std::size_t end = rows_ + texts.size();
  auto *ends = reinterpret_cast<std::int32_t *>(values.values.reserve(4 * (end + 1)));
  if (rows_ == 0) ends[0] = 0;
  std::vector<std::uint8_t> valid(texts.size(), 1);
  for (std::size_t i = 0; i < texts.size(); ++i) {
    char *at = values.text.reserve(values.text_size + texts[i].size() + 1) + values.text_size;
    texts[i].copy(at, texts[i].size());
    values.text_size += texts[i].size();
    ends[rows_ + i + 1] = static_cast<std::int32_t>(values.text_size);
    if (empty_is_null && texts[i].empty()) valid[i] = 0;
  }
  append_validity(values, valid.data(), valid.size());
}

void Batch::append(const RecordRows &rows) {
  if (columns_.empty()) begin();
  fault_names_.clear();
  for (std::size_t i = 0; i < plan_->columns.size(); ++i) {
    switch (plan_->columns[i].source) {
      case PlannedColumn::Source::kField:
        append_field(i, rows);
        break;
      case PlannedColumn::Source::kRecord:
        append_numbers(columns_[i], rows);
        break;
      case PlannedColumn::Source::kFile:
        append_texts(columns_[i], std::vector<std::string>(rows.count, plan_->file), false);
        break;
      case PlannedColumn::Source::kFault:
        break;
    }
  }
  // Wherever it stands, it tells of all the others.
  if (plan_->faults_become_null) fault_names_.resize(rows.count);
  for (std::size_t i = 0; i < plan_->columns.size(); ++i) {
    if (plan_->columns[i].source != PlannedColumn::Source::kFault) continue;
    append_texts(columns_[i], fault_names_, true);
  }
  rows_ += rows.count;
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    last_[i] = {columns_[i].values.capacity(), columns_[i].text.capacity(),
                columns_[i].validity.capacity()};
  }
}

}  // namespace campotipo::records
