#include "columns/field_encoder.hpp"

#include <algorithm>
#include <cstring>

#include "columns/input_text.hpp"
#include "columns/kernels.hpp"
#include "errors/error.hpp"
#include "text/padded.hpp"

namespace campotipo::records {

namespace {

constexpr char kNoDay[] = "is no day of the years 1 to 9999";
constexpr char kPartOfDay[] = "has a time, which a date does not keep";
constexpr char kNoTime[] = "is no time of day";
constexpr char kPartOfSecond[] = "has parts of a second, which the field does not keep";
constexpr char kOtherYear[] = "a year that the field does not hold";
constexpr char kNul[] = "a NUL byte, which ends the text";

constexpr std::int64_t kSecondsOfDay = 86400;
constexpr std::size_t kMoments = 1024;

bool is_date(ColumnForm form) { return form == ColumnForm::kDate || form == ColumnForm::kTextDate; }

bool is_time(ColumnForm form) {
  return form == ColumnForm::kMinutes || form == ColumnForm::kSeconds ||
         form == ColumnForm::kTextTime;
}

// Hours and minutes alone.
bool is_minutes(const Field &field) {
  constexpr int kDigits = 4;
  return field.type->column == ColumnForm::kMinutes ||
         (field.type->column == ColumnForm::kTextTime && field.params.n == kDigits);
}

// Whether such values may be of use in such a field: each by itself is looked at later.
bool may_hold(const FieldType &field, InputForm form) {
  switch (form) {
    case InputForm::kNull:
    case InputForm::kText:
      return true;
    case InputForm::kDate:
    case InputForm::kTimestamp:
      return is_date(field.column);
    case InputForm::kTime:
      return is_time(field.column);
    case InputForm::kBool:
    case InputForm::kInteger:
    case InputForm::kDecimal:
      break;
  }
  return !is_date(field.column) && !is_time(field.column);
}

// A day or time as a column of its type gives it back.
bool comes_back(const Field &field, const std::string &bytes, std::int64_t value) {
  // The kernels may read whole words that hold the field.
  constexpr std::size_t kAround = 64;
  std::vector<unsigned char> around(2 * kAround + bytes.size());
  std::copy(bytes.begin(), bytes.end(), around.begin() + kAround);
  const unsigned char *record = around.data() + kAround;
  const ColumnType type = column_type(field, Wide::kString, Times::kSeconds);
  std::int32_t back = 0;
  std::uint8_t state = 0;
  DecodeOutput out = {};
  out.values = &back;
  out.states = &state;
  kernels().decode(*field.type, type)({&record, 1, 0, field.type, &field.params}, out);
  return state == 0 && back == value;
}

}  // namespace

FieldEncoder::FieldEncoder(const Field &field, InputColumn column, std::size_t number,
                           std::string empty, const FieldRules *hole)
    : field_(&field),
      column_(std::move(column)),
      number_(number),
      empty_(std::move(empty)),
      hole_(hole) {
  empty_is_zeros_ = std::all_of(empty_.begin(), empty_.end(), [](char c) { return c == '\0'; });
  if (!may_hold(*field.type, column_.type().form)) {
    throw Error(ErrorCode::kArgument, "column " + column_.name() + ": " + column_.type().name +
                                          " is never stored in a field of " + field.type->name);
  }
  if (!is_number()) return;
  store64_ = store_numbers<std::int64_t>(*field.type);
  store128_ = store_numbers<Int128>(*field.type);
}

bool FieldEncoder::is_number() const {
  const InputForm form = column_.type().form;
  return form == InputForm::kBool || form == InputForm::kInteger || form == InputForm::kDecimal;
}

void FieldEncoder::run(const EncodeRows &rows, EncodeNotes &notes) {
  places_.resize(rows.count);
  marks_.resize(rows.count);
  const bool any_null = column_.locate(rows.from, places_, marks_.data());
  if (any_null && (!empty_is_zeros_ || hole_ != nullptr)) {
    for (std::size_t i = 0; i < rows.count; ++i) {
      if (marks_[i] == kHasNone) put_empty(rows, i, notes);
    }
  }
  if (any_null && std::memchr(marks_.data(), kHasValue, rows.count) == nullptr) return;
  if (column_.type().form == InputForm::kText) {
    run_texts(rows, notes);
  } else if (is_number()) {
    run_numbers(rows, notes);
  } else {
    run_moments(rows, notes);
  }
}

void FieldEncoder::put_empty(const EncodeRows &rows, std::size_t row, EncodeNotes &notes) const {
  put_stored(rows.records + row * rows.stride + field_->offset, empty_);
  if (hole_ != nullptr) notes.holes.push_back({row, hole_});
}

// A text of another program has nothing behind it that may be read.
const char *FieldEncoder::take(unsigned char *field, std::string_view text) {
  const std::size_t room = text.size() + 1 + scan::kPadding;
  if (padded_.size() < room) padded_.resize(2 * room);
  std::memcpy(padded_.data(), text.data(), text.size());
  std::memset(padded_.data() + text.size(), 0, 1 + scan::kPadding);
  const char *what = field_->type->take(
      field, PaddedText::followed_by_padding(padded_.data(), text.size()), field_->params);
  return std::memchr(text.data(), 0, text.size()) == nullptr ? what : kNul;
}

void FieldEncoder::run_texts(const EncodeRows &rows, EncodeNotes &notes) {
  texts_.resize(rows.count);
  column_.texts(places_, marks_.data(), texts_.data());
  unsigned char *field = rows.records + field_->offset;
  for (std::size_t i = 0; i < rows.count; ++i, field += rows.stride) {
    if (marks_[i] != kHasValue) continue;
    if (texts_[i].empty()) {
      put_empty(rows, i, notes);
      continue;
    }
    const char *what = take(field, texts_[i]);
    if (what != nullptr) notes.lost.push_back({i, number_, what, std::string(texts_[i])});
  }
}

void FieldEncoder::load_numbers() {
  wide_.resize(places_.size());
  if (!column_.is_widest()) return column_.numbers(places_, wide_.data());
  for (std::size_t i = 0; i < places_.size(); ++i) {
    if (marks_[i] != kHasValue) continue;
    std::uint64_t words[4];
    column_.number256(places_[i], words);
    std::memcpy(&wide_[i], words, sizeof wide_[i]);
    const std::uint64_t sign = words[1] >> 63 == 0 ? 0 : ~std::uint64_t{0};
    if (words[2] != sign || words[3] != sign) marks_[i] = kByText;
  }
}

std::string FieldEncoder::number_text(std::size_t row) const {
  const int scale = column_.type().scale;
  if (column_.is_widest()) {
    std::uint64_t words[4];
    column_.number256(places_[row], words);
    return decimal_text(words, scale);
  }
  Int128 value = 0;
  column_.numbers({&places_[row], 1}, &value);
  return decimal_text(value, scale);
}

// Numbers that the field does not hold as they are go through their texts, which tell what is lost.
void FieldEncoder::run_numbers(const EncodeRows &rows, EncodeNotes &notes) {
  const FieldPlaces fields = {rows.records + field_->offset, rows.stride, &field_->params};
  const int scale = column_.type().scale;
  const int wanted = field_->params.decimals;
  if (store64_ == nullptr) {
    for (std::uint8_t &mark : marks_) {
      if (mark == kHasValue) mark = kByText;
    }
  } else if (scale == wanted && !column_.is_wide() && !column_.is_widest()) {
    narrow_.resize(rows.count);
    column_.numbers(places_, narrow_.data());
    store64_(narrow_.data(), marks_.data(), rows.count, fields);
  } else {
    load_numbers();
    rescale(wide_.data(), marks_.data(), rows.count, scale, wanted);
    store128_(wide_.data(), marks_.data(), rows.count, fields);
  }
  for (std::size_t i = 0; i < rows.count; ++i) {
    if (marks_[i] != kByText) continue;
    unsigned char *field = fields.first + i * rows.stride;
    std::string text = number_text(i);
    const char *what = take(field, text);
    if (what != nullptr) notes.lost.push_back({i, number_, what, std::move(text)});
  }
}

// The text that says a value; what is wrong where none does.
const char *FieldEncoder::moment_text(std::int64_t value, std::string &text) const {
  const InputType &type = column_.type();
  const std::int64_t part = value % type.per_unit;
  const std::int64_t whole = value / type.per_unit - (part < 0 ? 1 : 0);
  if (type.form == InputForm::kTime) {
    if (value < 0 || whole >= kSecondsOfDay) return kNoTime;
    if (part != 0) return kPartOfSecond;
    text = time_text(whole, is_minutes(*field_), field_->params);
    return nullptr;
  }
  if (part != 0) return kPartOfDay;
  text = day_text(whole, field_->params);
  return text.empty() ? kNoDay : nullptr;
}

void FieldEncoder::store_moment(Stored &stored, std::int64_t value) const {
  stored.value = value;
  stored.known = true;
  stored.bytes.assign(field_->bytes, '\0');
  auto *bytes = reinterpret_cast<unsigned char *>(stored.bytes.data());
  std::string text;
  stored.what = moment_text(value, text);
  if (stored.what == nullptr) {
    stored.what = field_->type->take(bytes, PaddedString(text).text(), field_->params);
  }
  const std::int64_t whole = value / column_.type().per_unit;
  if (stored.what == nullptr && !comes_back(*field_, stored.bytes, whole)) {
    stored.what = kOtherYear;
  }
  if (stored.what != nullptr) stored.bytes = empty_;
}

void FieldEncoder::run_moments(const EncodeRows &rows, EncodeNotes &notes) {
  narrow_.resize(rows.count);
  moments_.resize(kMoments);
  column_.numbers(places_, narrow_.data());
  unsigned char *field = rows.records + field_->offset;
  for (std::size_t i = 0; i < rows.count; ++i, field += rows.stride) {
    if (marks_[i] != kHasValue) continue;
    const std::int64_t value = narrow_[i];
    // Units of a day have many zero bits at the end.
    const std::uint64_t mixed = static_cast<std::uint64_t>(value) * 0x9E3779B97F4A7C15U >> 54;
    Stored &stored = moments_[mixed];
    if (!stored.known || stored.value != value) store_moment(stored, value);
    std::memcpy(field, stored.bytes.data(), stored.bytes.size());
    if (stored.what != nullptr) {
      notes.lost.push_back({i, number_, stored.what, decimal_text(Int128{value}, 0)});
    }
  }
}

}  // namespace campotipo::records
