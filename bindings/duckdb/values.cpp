#include "values.hpp"

#include <algorithm>
#include <cstring>

namespace campotipo::duckdb {

namespace {

__extension__ typedef __int128 Int128;

template <class To, class From>
To *narrow(void *to, const char *from, std::size_t count) {
  To *out = static_cast<To *>(to);
  for (std::size_t i = 0; i < count; ++i) {
    From value;
    std::memcpy(&value, from + i * sizeof value, sizeof value);
    out[i] = static_cast<To>(value);
  }
  return out;
}

// DuckDB keeps a decimal in as few bytes as its digits need.
void put_decimals(void *vector, idx_t at, const char *from, std::size_t count, int precision) {
  if (precision <= 4) {
    narrow<std::int16_t, Int128>(static_cast<std::int16_t *>(vector) + at, from, count);
  } else if (precision <= 9) {
    narrow<std::int32_t, Int128>(static_cast<std::int32_t *>(vector) + at, from, count);
  } else {
    narrow<std::int64_t, Int128>(static_cast<std::int64_t *>(vector) + at, from, count);
  }
}

void put_times(void *vector, idx_t at, const char *from, std::size_t count) {
  constexpr std::int64_t kMicroseconds = 1000000;
  auto *out = static_cast<std::int64_t *>(vector) + at;
  narrow<std::int64_t, std::int32_t>(out, from, count);
  for (std::size_t i = 0; i < count; ++i) out[i] *= kMicroseconds;
}

void put_flags(void *vector, idx_t at, const char *bits, std::size_t count) {
  auto *out = static_cast<bool *>(vector) + at;
  for (std::size_t i = 0; i < count; ++i) {
    out[i] = (static_cast<unsigned char>(bits[i / 8]) >> i % 8 & 1) != 0;
  }
}

// Bytes of a value in a vector, where the library writes what DuckDB keeps; else 0.
std::size_t direct_bytes(const campotipo_field &field) {
  switch (field.physical) {
    case CAMPOTIPO_INT32:
    case CAMPOTIPO_DATE32:
      return 4;
    case CAMPOTIPO_INT64:
      return 8;
    case CAMPOTIPO_DECIMAL128:
      return field.precision > 18 ? 16 : 0;
    default:
      return 0;
  }
}

// A text that stands in the vector itself, from memory of which 16 bytes can be read.
void put_inline(duckdb_string_t &out, const char *text, std::uint32_t length) {
  std::uint64_t low;
  std::uint32_t high;
  std::memcpy(&low, text, sizeof low);
  std::memcpy(&high, text + sizeof low, sizeof high);
  // What stands behind a short text has to be zero.
  const std::uint64_t low_mask =
      length >= 8 ? ~std::uint64_t{0} : (std::uint64_t{1} << 8 * length) - 1;
  const std::uint64_t high_mask = length <= 8 ? 0 : (std::uint64_t{1} << 8 * (length - 8)) - 1;
  low &= low_mask;
  high &= static_cast<std::uint32_t>(high_mask);
  out.value.inlined.length = length;
  std::memcpy(out.value.inlined.inlined, &low, sizeof low);
  std::memcpy(out.value.inlined.inlined + sizeof low, &high, sizeof high);
}

duckdb_string_t *strings_of(duckdb_vector vector) {
  return static_cast<duckdb_string_t *>(duckdb_vector_get_data(vector));
}

}  // namespace

void put_text(const std::string &text, std::size_t count, duckdb_vector vector, idx_t at) {
  if (count == 0) return;
  duckdb_vector_assign_string_element_len(vector, at, text.data(), text.size());
  duckdb_string_t *strings = strings_of(vector);
  std::fill(strings + at + 1, strings + at + count, strings[at]);
}

// Gives memory for what campotipo_decode writes: the vector's own where its values are the same.
void Decoder::prepare(const Column &column, const Rows &rows, void *values) {
  constexpr std::size_t kWidest = 16;
  constexpr std::size_t kReadBehind = 16;
  const std::size_t bytes = (rows.count + 7) / 8;
  if (validity_.size() < bytes) {
    validity_.resize(bytes);
    faults_.resize(bytes);
  }
  if (column.field.physical == CAMPOTIPO_UTF8) {
    if (offsets_.size() < rows.count + 1) offsets_.resize(rows.count + 1);
    const std::size_t room = rows.count * column.field.room + kReadBehind;
    if (room_ < room) {
      text_.reset();
      text_ = std::make_unique_for_overwrite<char[]>(room);
      room_ = room;
    }
  } else if (values == nullptr && values_room_ < rows.count * kWidest) {
    values_ = std::make_unique_for_overwrite<char[]>(rows.count * kWidest);
    values_room_ = rows.count * kWidest;
  }
}

void Decoder::take_validity(std::size_t count, duckdb_vector vector, idx_t at) const {
  duckdb_vector_ensure_validity_writable(vector);
  std::uint64_t *valid = duckdb_vector_get_validity(vector);
  for (std::size_t i = 0; i < count; ++i) {
    if ((validity_[i / 8] >> i % 8 & 1) == 0) duckdb_validity_set_row_invalid(valid, at + i);
  }
}

// One call takes the memory of all texts that do not stand in the vector itself.
void Decoder::take_texts(const Column &column, std::size_t count, duckdb_vector vector, idx_t at) {
  const auto bytes = static_cast<std::size_t>(offsets_[count]);
  duckdb_string_t *strings = strings_of(vector);
  char *kept = nullptr;
  if (column.field.room > kInline && bytes > kInline) {
    duckdb_vector_assign_string_element_len(vector, at, text_.get(), bytes);
    kept = strings[at].value.pointer.ptr;
  }
  for (std::size_t i = 0; i < count; ++i) {
    const auto begin = static_cast<std::size_t>(offsets_[i]);
    const auto length = static_cast<std::uint32_t>(offsets_[i + 1] - offsets_[i]);
    duckdb_string_t &out = strings[at + i];
    if (length <= kInline) {
      put_inline(out, text_.get() + begin, length);
    } else {
      out.value.pointer.length = length;
      std::memcpy(out.value.pointer.prefix, text_.get() + begin, sizeof out.value.pointer.prefix);
      out.value.pointer.ptr = kept + begin;
    }
  }
}

std::size_t Decoder::decode(const Column &column, const Rows &rows, duckdb_vector vector,
                            idx_t at) {
  const std::size_t direct = vector != nullptr ? direct_bytes(column.field) : 0;
  void *data = vector != nullptr ? duckdb_vector_get_data(vector) : nullptr;
  void *values = direct != 0 ? static_cast<char *>(data) + at * direct : nullptr;
  prepare(column, rows, values);
  auto out = sized<campotipo_column>();
  const bool texts = column.field.physical == CAMPOTIPO_UTF8;
  out.values = texts ? nullptr : values != nullptr ? values : values_.get();
  out.offsets = texts ? offsets_.data() : nullptr;
  out.text = texts ? text_.get() : nullptr;
  out.room = texts ? rows.count * column.field.room : 0;
  out.validity = validity_.data();
  out.faults = table_->faults_become_null ? faults_.data() : nullptr;
  auto error = sized<campotipo_error>();
  const campotipo_status status =
      campotipo_decode(table_->layout.get(), table_->kind, column.number, table_->wide,
                       rows.records, rows.count, &out, &error);
  if (status == CAMPOTIPO_VALUE && error.record != 0) return error.record;
  checked(status, error);
  nulls_ = out.nulls;
  if (vector == nullptr) return 0;
  if (nulls_ != 0) take_validity(rows.count, vector, at);
  switch (column.field.physical) {
    case CAMPOTIPO_UTF8:
      take_texts(column, rows.count, vector, at);
      break;
    case CAMPOTIPO_BOOL:
      put_flags(data, at, values_.get(), rows.count);
      break;
    case CAMPOTIPO_TIME32:
      put_times(data, at, values_.get(), rows.count);
      break;
    case CAMPOTIPO_DECIMAL128:
      if (direct == 0) {
        put_decimals(data, at, values_.get(), rows.count, column.field.precision);
      }
      break;
    default:
      break;
  }
  return 0;
}

}  // namespace campotipo::duckdb
