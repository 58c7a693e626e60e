#include "columns/arrow_input.hpp"

#include <charconv>
#include <cstring>

#include "errors/error.hpp"
#include "findings/finding_counts.hpp"

namespace campotipo::records {

namespace {

using Form = InputForm;
using Storage = InputStorage;

constexpr std::int64_t kSecondsOfDay = 86400;

// Types whose format has nothing to tell.
constexpr struct {
  std::string_view format;
  Form form;
  Storage storage;
  std::int64_t per_unit;
  const char *name;
} kTypes[] = {
    {"n", Form::kNull, Storage::kNone, 1, "null"},
    {"b", Form::kBool, Storage::kBits, 1, "bool"},
    {"c", Form::kInteger, Storage::kInt8, 1, "int8"},
    {"C", Form::kInteger, Storage::kUint8, 1, "uint8"},
    {"s", Form::kInteger, Storage::kInt16, 1, "int16"},
    {"S", Form::kInteger, Storage::kUint16, 1, "uint16"},
    {"i", Form::kInteger, Storage::kInt32, 1, "int32"},
    {"I", Form::kInteger, Storage::kUint32, 1, "uint32"},
    {"l", Form::kInteger, Storage::kInt64, 1, "int64"},
    {"L", Form::kInteger, Storage::kUint64, 1, "uint64"},
    {"u", Form::kText, Storage::kOffsets32, 1, "utf8"},
    {"U", Form::kText, Storage::kOffsets64, 1, "large_utf8"},
    {"vu", Form::kText, Storage::kViews, 1, "utf8_view"},
    {"tdD", Form::kDate, Storage::kInt32, 1, "date32"},
    {"tdm", Form::kDate, Storage::kInt64, kSecondsOfDay * 1000, "date64"},
    {"tts", Form::kTime, Storage::kInt32, 1, "time32[s]"},
    {"ttm", Form::kTime, Storage::kInt32, 1000, "time32[ms]"},
    {"ttu", Form::kTime, Storage::kInt64, 1000000, "time64[us]"},
    {"ttn", Form::kTime, Storage::kInt64, 1000000000, "time64[ns]"},
    {"tss:", Form::kTimestamp, Storage::kInt64, kSecondsOfDay, "timestamp[s]"},
    {"tsm:", Form::kTimestamp, Storage::kInt64, kSecondsOfDay * 1000, "timestamp[ms]"},
    {"tsu:", Form::kTimestamp, Storage::kInt64, kSecondsOfDay * 1000000, "timestamp[us]"},
    {"tsn:", Form::kTimestamp, Storage::kInt64, kSecondsOfDay * 1000000000, "timestamp[ns]"},
};

// "d:precision,scale" or "d:precision,scale,bits".
bool read_decimal(std::string_view format, InputType &type) {
  if (!format.starts_with("d:")) return false;
  int told[3] = {0, 0, 128};
  const char *at = format.data() + 1;
  const char *end = format.data() + format.size();
  int count = 0;
  while (count < 3 && at != end) {
    const auto [behind, error] = std::from_chars(at + 1, end, told[count++]);
    if (error != std::errc() || (behind != end && *behind != ',')) return false;
    at = behind;
  }
  if (at != end || count < 2) return false;
  type.form = Form::kDecimal;
  type.scale = told[1];
  type.name = "decimal" + std::to_string(told[2]) + "(" + std::to_string(told[0]) + ", " +
              std::to_string(told[1]) + ")";
  type.storage = told[2] == 32    ? Storage::kInt32
                 : told[2] == 64  ? Storage::kInt64
                 : told[2] == 128 ? Storage::kInt128
                 : told[2] == 256 ? Storage::kInt256
                                  : Storage::kNone;
  return type.storage != Storage::kNone && type.scale >= -100 && type.scale <= 100;
}

bool is_text(Storage storage) {
  return storage == Storage::kOffsets32 || storage == Storage::kOffsets64;
}

bool bit(const void *bits, std::int64_t at) {
  return (static_cast<const unsigned char *>(bits)[at / 8] >> at % 8 & 1) != 0;
}

// Memory of another program may stand at any address.
template <class Value>
Value value_at(const void *values, std::int64_t place) {
  Value value;
  std::memcpy(&value, static_cast<const char *>(values) + place * std::int64_t{sizeof value},
              sizeof value);
  return value;
}

template <class Value, class Out>
void copy_all(const void *values, std::span<const std::int64_t> places, Out *out) {
  for (std::size_t i = 0; i < places.size(); ++i) {
    out[i] = static_cast<Out>(value_at<Value>(values, places[i]));
  }
}

template <class Out>
void copy_numbers(Storage storage, const void *values, std::span<const std::int64_t> places,
                  Out *out) {
  switch (storage) {
    case Storage::kBits:
      for (std::size_t i = 0; i < places.size(); ++i) out[i] = bit(values, places[i]) ? 1 : 0;
      return;
    case Storage::kInt8:
      return copy_all<std::int8_t>(values, places, out);
    case Storage::kUint8:
      return copy_all<std::uint8_t>(values, places, out);
    case Storage::kInt16:
      return copy_all<std::int16_t>(values, places, out);
    case Storage::kUint16:
      return copy_all<std::uint16_t>(values, places, out);
    case Storage::kInt32:
      return copy_all<std::int32_t>(values, places, out);
    case Storage::kUint32:
      return copy_all<std::uint32_t>(values, places, out);
    case Storage::kInt64:
      return copy_all<std::int64_t>(values, places, out);
    case Storage::kUint64:
      return copy_all<std::uint64_t>(values, places, out);
    default:
      return copy_all<Int128>(values, places, out);
  }
}

}  // namespace

InputType InputType::of(const ArrowSchema &schema, const std::string &column) {
  const std::string_view format = schema.format == nullptr ? "" : schema.format;
  InputType type;
  for (const auto &known : kTypes) {
    if (format != known.format) continue;
    return {known.form, known.storage, 0, known.per_unit, known.name};
  }
  if (read_decimal(format, type)) return type;
  std::string what =
      "a type of Arrow that is not stored: \"" + shortened(std::string(format)) + "\"";
  if (format == "e" || format == "f" || format == "g") {
    what = "a floating number has no exact decimals: cast it to decimal128 or an integer";
  } else if (format.starts_with("ts")) {
    what = "a timestamp of a time zone has no day of its own: cast it to one without";
  }
  throw Error(ErrorCode::kArgument, column + what);
}

void InputColumn::refuse(const std::string &what) const {
  throw Error(ErrorCode::kArgument, "column " + name_ + ": " + what);
}

InputColumn::InputColumn(const ArrowSchema &schema, const ArrowArray &array, std::string name)
    : name_(std::move(name)),
      type_(InputType::of(schema.dictionary != nullptr ? *schema.dictionary : schema,
                          "column " + name_ + ": ")),
      outer_(&array),
      values_(&array) {
  if (schema.dictionary != nullptr) {
    indices_ = InputType::of(schema, "column " + name_ + ": ");
    const bool nested = schema.dictionary->dictionary != nullptr;
    if (nested || indices_.form != Form::kInteger) refuse("a dictionary of this form is not taken");
    if (array.dictionary == nullptr) refuse("has no dictionary");
    values_ = array.dictionary;
    check(array, indices_);
  }
  check(*values_, type_);
}

void InputColumn::check(const ArrowArray &array, const InputType &type) const {
  const bool views = type.storage == Storage::kViews;
  const std::int64_t buffers = type.form == Form::kNull ? 0 : is_text(type.storage) ? 3 : 2;
  if (array.release == nullptr) refuse("is released");
  if (array.length < 0 || array.offset < 0) refuse("has a length below zero");
  if (views ? array.n_buffers < 3 : array.n_buffers != buffers) {
    refuse("has " + std::to_string(array.n_buffers) + " buffers, which is not " + type.name);
  }
  if (array.length == 0 || buffers == 0) return;
  if (array.buffers == nullptr || array.buffers[1] == nullptr) refuse("has no values");
}

bool InputColumn::locate(std::int64_t from, std::span<std::int64_t> places,
                         std::uint8_t *nulls) const {
  const std::int64_t first = outer_->offset + from;
  const void *validity = type_.form == Form::kNull ? nullptr : outer_->buffers[0];
  bool any = type_.form == Form::kNull;
  for (std::size_t i = 0; i < places.size(); ++i) {
    places[i] = first + static_cast<std::int64_t>(i);
    nulls[i] = any || (validity != nullptr && !bit(validity, places[i])) ? 1 : 0;
  }
  if (validity != nullptr) {
    any = std::memchr(nulls, 1, places.size()) != nullptr;
  }
  if (values_ == outer_) return any;
  std::vector<Int128> indices(places.size());
  copy_numbers(indices_.storage, outer_->buffers[1], places, indices.data());
  const void *known = values_->length == 0 ? nullptr : values_->buffers[0];
  for (std::size_t i = 0; i < places.size(); ++i) {
    places[i] = 0;
    if (nulls[i] != 0) continue;
    if (indices[i] < 0 || indices[i] >= values_->length) {
      refuse("row " + std::to_string(from + static_cast<std::int64_t>(i) + 1) +
             " has a place that its dictionary does not have");
    }
    places[i] = values_->offset + static_cast<std::int64_t>(indices[i]);
    nulls[i] = known != nullptr && !bit(known, places[i]) ? 1 : 0;
    any = any || nulls[i] != 0;
  }
  return any;
}

bool InputColumn::is_wide() const {
  return type_.storage == Storage::kUint64 || type_.storage == Storage::kInt128;
}

void InputColumn::numbers(std::span<const std::int64_t> places, std::int64_t *out) const {
  copy_numbers(type_.storage, values_->buffers[1], places, out);
}

void InputColumn::numbers(std::span<const std::int64_t> places, Int128 *out) const {
  copy_numbers(type_.storage, values_->buffers[1], places, out);
}

// Of a view: its length, then the text itself where it has 12 bytes at most, else its beginning, the
// buffer in which it stands and the place there.
std::string_view InputColumn::view_at(std::int64_t place) const {
  const char *view = static_cast<const char *>(values_->buffers[1]) + place * 16;
  const auto length = value_at<std::int32_t>(view, 0);
  if (length < 0) refuse("has a text of less than no bytes");
  if (length <= 12) return {view + 4, static_cast<std::size_t>(length)};
  const auto buffer = value_at<std::int32_t>(view, 2);
  const auto offset = value_at<std::int32_t>(view, 3);
  // The last buffer tells how long the others are.
  if (buffer < 0 || buffer >= values_->n_buffers - 3 || offset < 0 ||
      std::int64_t{offset} + length >
          value_at<std::int64_t>(values_->buffers[values_->n_buffers - 1], buffer)) {
    refuse("has a text outside its buffers");
  }
  return {static_cast<const char *>(values_->buffers[2 + buffer]) + offset,
          static_cast<std::size_t>(length)};
}

template <class Offset>
std::string_view InputColumn::text_at(std::int64_t place) const {
  const auto begin = value_at<Offset>(values_->buffers[1], place);
  const auto end = value_at<Offset>(values_->buffers[1], place + 1);
  if (begin == end) return {};
  if (begin < 0 || end < begin || values_->buffers[2] == nullptr) {
    refuse("has a text outside its buffer");
  }
  return {static_cast<const char *>(values_->buffers[2]) + begin,
          static_cast<std::size_t>(end - begin)};
}

void InputColumn::texts(std::span<const std::int64_t> places, const std::uint8_t *nulls,
                        std::string_view *out) const {
  for (std::size_t i = 0; i < places.size(); ++i) {
    if (nulls[i] != 0) {
      out[i] = {};
    } else if (type_.storage == Storage::kViews) {
      out[i] = view_at(places[i]);
    } else if (type_.storage == Storage::kOffsets32) {
      out[i] = text_at<std::int32_t>(places[i]);
    } else {
      out[i] = text_at<std::int64_t>(places[i]);
    }
  }
}

void InputColumn::number256(std::int64_t place, std::uint64_t (&words)[4]) const {
  std::memcpy(words, static_cast<const char *>(values_->buffers[1]) + place * 32, sizeof words);
}

}  // namespace campotipo::records
