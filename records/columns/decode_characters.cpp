// Compiled as decode.cpp is: what is inlined here must not be shared.
#include "columns/decode_values.hpp"

namespace campotipo::records::CAMPOTIPO_KERNELS_NAMESPACE {

namespace {

constexpr int kMostDigits = 50;

// A number of up to 38 digits.
template <class Value>
bool whole(const DecodeInput &in, const DecodeOutput &out) {
  bool any = false;
  for (std::size_t i = 0; i < in.count; ++i) {
    const unsigned char *field = in.records[i] + in.offset;
    unsigned char digits[kMostDigits];
    bool negative = false;
    I128 value = 0;
    if (is_none(field, *in.params)) {
      any = note(out, i, ValueState::kNull);
    } else if (!text_digits(field, *in.params, digits, negative)) {
      any = note(out, i, ValueState::kFault);
    } else {
      bool fits = true;
      for (int at = 0; at < in.params->n; ++at) {
        if (at < in.params->n - 38) {
          fits = fits && digits[at] == '0';
        } else {
          value = value * 10 + (digits[at] - '0');
        }
      }
      if (!fits) {
        any = note(out, i, ValueState::kTooLarge);
        value = 0;
      }
    }
    put(out.values, i, static_cast<Value>(negative ? -value : value));
  }
  return any;
}

bool wide(const DecodeInput &in, const DecodeOutput &out) {
  bool any = false;
  for (std::size_t i = 0; i < in.count; ++i) {
    const unsigned char *field = in.records[i] + in.offset;
    unsigned char digits[kMostDigits];
    bool negative = false;
    Wide256 value = {};
    if (is_none(field, *in.params)) {
      any = note(out, i, ValueState::kNull);
    } else if (!text_digits(field, *in.params, digits, negative)) {
      any = note(out, i, ValueState::kFault);
    } else {
      for (int at = 0; at < in.params->n; ++at) {
        value = times_plus(value, 10, static_cast<U64>(digits[at] - '0'));
      }
      if (negative) {
        for (U64 &word : value.word) word = ~word;
        value = times_plus(value, 1, 1);
      }
    }
    put(out.values, i, value);
  }
  return any;
}

bool dates(const DecodeInput &in, const DecodeOutput &out) {
  bool any = false;
  for (std::size_t i = 0; i < in.count; ++i) {
    std::int32_t day = 0;
    const DayState found = text_day(in.records[i] + in.offset, *in.params, day);
    if (found == DayState::kAbsent) any = note(out, i, ValueState::kNull);
    if (found == DayState::kNoDay) any = note(out, i, ValueState::kFault);
    put(out.values, i, day);
  }
  return any;
}

template <class Value>
bool times(const DecodeInput &in, const DecodeOutput &out) {
  constexpr std::int64_t kUnit = sizeof(Value) == 8 ? 1000000000 : 1;
  bool any = false;
  for (std::size_t i = 0; i < in.count; ++i) {
    const unsigned char *field = in.records[i] + in.offset;
    std::int64_t second = 0;
    if (is_none(field, *in.params)) {
      any = note(out, i, ValueState::kNull);
    } else {
      second = second_of_day(field, in.type->column, *in.params);
      if (second < 0) {
        any = note(out, i, ValueState::kFault);
        second = 0;
      }
    }
    put(out.values, i, static_cast<Value>(second * kUnit));
  }
  return any;
}

Decode number_of(Physical physical) {
  if (physical == Physical::kInt32) return whole<std::int32_t>;
  if (physical == Physical::kInt64) return whole<std::int64_t>;
  return physical == Physical::kDecimal256 ? wide : whole<I128>;
}

}  // namespace

Decode decode_characters(const FieldType &type, const ColumnType &column) {
  switch (type.column) {
    case ColumnForm::kNumber:
      return number_of(column.physical);
    case ColumnForm::kTextDate:
      return dates;
    case ColumnForm::kTextTime:
      return column.physical == Physical::kTime64 ? times<std::int64_t> : times<std::int32_t>;
    default:
      return nullptr;
  }
}

}  // namespace campotipo::records::CAMPOTIPO_KERNELS_NAMESPACE
