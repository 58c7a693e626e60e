#include "columns/physical.hpp"

#include <algorithm>

#include "errors/error.hpp"

namespace campotipo::records {

namespace {

constexpr int kMost128 = 38;
constexpr int kMost256 = 76;

ColumnType decimal(const Field &field, int digits, Wide wide) {
  const int scale = field.params.decimals;
  const int precision = std::max(digits, scale);
  if (precision <= kMost128) return {Physical::kDecimal128, precision, scale};
  if (wide == Wide::kString) return {};
  if (wide == Wide::kDecimal256) {
    return {Physical::kDecimal256, std::min(precision, kMost256), scale};
  }
  if (scale > kMost128) {
    throw Error(ErrorCode::kArgument, "field " + field.name + ": has " + std::to_string(scale) +
                                          " decimals, decimal128 holds at most 38");
  }
  return {Physical::kDecimal128, kMost128, scale};
}

// Digits of the greatest number in so many bytes.
int digits_of_bytes(int bytes) {
  constexpr int kDigits[] = {0, 3, 5, 8, 10, 13, 15, 17, 20};
  return kDigits[bytes];
}

ColumnType whole_number(const Field &field, Wide wide) {
  const int bytes = field.type->bytes;
  if (field.params.decimals > 0 || bytes > 7) return decimal(field, digits_of_bytes(bytes), wide);
  return {bytes <= 3 ? Physical::kInt32 : Physical::kInt64};
}

ColumnType digits(const Field &field, Wide wide) {
  const int digits = field.params.n;
  if (field.params.decimals > 0 || digits > 18) return decimal(field, digits, wide);
  return {digits <= 9 ? Physical::kInt32 : Physical::kInt64};
}

ColumnType bits(const Field &field) {
  const int bits = field.params.n;
  if (bits == 1) return {Physical::kBool};
  if (bits <= 31) return {Physical::kInt32};
  if (bits <= 63) return {Physical::kInt64};
  return {Physical::kDecimal128, 20, 0};
}

}  // namespace

std::size_t ColumnType::bytes() const {
  switch (physical) {
    case Physical::kInt32:
    case Physical::kDate32:
    case Physical::kTime32:
      return 4;
    case Physical::kInt64:
    case Physical::kTime64:
      return 8;
    case Physical::kDecimal128:
      return 16;
    case Physical::kDecimal256:
      return 32;
    case Physical::kBool:
    case Physical::kUtf8:
      break;
  }
  return 0;
}

std::string ColumnType::arrow() const {
  constexpr const char *kFormats[] = {"b", "i", "l", "d:", "d:", "u", "tdD", "tts", "ttn"};
  std::string format = kFormats[static_cast<int>(physical)];
  if (format != "d:") return format;
  format += std::to_string(precision) + "," + std::to_string(scale);
  return physical == Physical::kDecimal256 ? format + ",256" : format;
}

ColumnType column_type(const Field &field, Wide wide, Times times) {
  switch (field.type->column) {
    case ColumnForm::kText:
    case ColumnForm::kCharacters:
    case ColumnForm::kDigitString:
      break;
    case ColumnForm::kUnsigned:
      return whole_number(field, wide);
    case ColumnForm::kSigned:
      return decimal(field, 19, wide);
    case ColumnForm::kLimbs:
      return decimal(field, field.type->count, wide);
    case ColumnForm::kNumber:
      return digits(field, wide);
    case ColumnForm::kDate:
    case ColumnForm::kTextDate:
      return {Physical::kDate32};
    case ColumnForm::kMinutes:
    case ColumnForm::kSeconds:
    case ColumnForm::kTextTime:
      return {times == Times::kSeconds ? Physical::kTime32 : Physical::kTime64};
    case ColumnForm::kBits:
      return bits(field);
  }
  return {};
}

}  // namespace campotipo::records
