// Numbers that are stored as digits. Compiled as decode.cpp is: what is inlined here must not be
// shared.
#include "columns/decode_values.hpp"
#include "columns/digit_words.hpp"
#ifdef CAMPOTIPO_KERNELS_VECTORS
#include "columns/x86/digit_vectors.hpp"
#endif

namespace campotipo::records::CAMPOTIPO_KERNELS_NAMESPACE {

namespace {

constexpr int kMostDigits = 50;
constexpr int kMost128 = 38;

// The number of a field whatever its form; what it is where it is none.
ValueState any_number(const DecodeInput &in, const unsigned char *field, I128 &value) {
  unsigned char digits[kMostDigits];
  bool negative = false;
  value = 0;
  if (is_none(field, *in.params)) return ValueState::kNull;
  if (!text_digits(field, *in.params, digits, negative)) return ValueState::kFault;
  for (int at = 0; at < in.params->n; ++at) {
    if (at < in.params->n - kMost128 && digits[at] != '0') return ValueState::kTooLarge;
    value = value * 10 + (digits[at] - '0');
  }
  if (negative) value = -value;
  return ValueState::kValue;
}

template <class Value>
bool put_any(const DecodeInput &in, const DecodeOutput &out, std::size_t at) {
  I128 value = 0;
  const ValueState state = any_number(in, in.records[at] + in.offset, value);
  put(out.values, at, static_cast<Value>(state == ValueState::kValue ? value : 0));
  return state != ValueState::kValue && note(out, at, state);
}

template <class Value>
bool any_numbers(const DecodeInput &in, const DecodeOutput &out) {
  bool any = false;
  for (std::size_t i = 0; i < in.count; ++i) any |= put_any<Value>(in, out, i);
  return any;
}

// Digits alone, and a sign in a byte of its own; all else goes the long way.
template <class Value, int Words, class Number, bool Signed>
bool whole(const DecodeInput &in, const DecodeOutput &out) {
  const auto digits = static_cast<std::size_t>(in.params->n);
  const bool leading = Signed && in.params->sign == Sign::kLeading;
  const std::size_t sign_at = in.offset + (leading ? 0 : digits);
  const DigitWords<Words, Number> words(in.offset + (leading ? 1 : 0), digits);
  bool any = false;
  for (std::size_t i = 0; i < in.count; ++i) {
    const unsigned char *record = in.records[i];
    Number number;
    bool good = words.read(record, number);
    auto value = static_cast<Value>(number);
    if constexpr (Signed) {
      const unsigned char sign = record[sign_at];
      good = good && (sign == '+' || sign == '-');
      value = sign == '-' ? -value : value;
    }
    if (good) {
      put(out.values, i, value);
    } else {
      any |= put_any<Value>(in, out, i);
    }
  }
  return any;
}

template <class Value, int Words, class Number>
bool whole_of(const DecodeInput &in, const DecodeOutput &out) {
  return in.params->sign == Sign::kNone ? whole<Value, Words, Number, false>(in, out)
                                        : whole<Value, Words, Number, true>(in, out);
}

template <class Value>
bool numbers(const DecodeInput &in, const DecodeOutput &out) {
  const int digits = in.params->n;
  if (in.params->sign == Sign::kOverpunch || has_empties_of_digits(*in.params)) {
    return any_numbers<Value>(in, out);
  }
#ifdef CAMPOTIPO_KERNELS_VECTORS
  if (in.params->sign == Sign::kNone && DigitVectors::reach(in)) {
    return digits <= 16 ? pairs<Value, false>(in, out, put_any<Value>)
                        : pairs<Value, true>(in, out, put_any<Value>);
  }
#endif
  if (digits <= 8) return whole_of<Value, 1, U64>(in, out);
  if constexpr (sizeof(Value) == 4) return whole_of<Value, 2, U64>(in, out);
  if constexpr (sizeof(Value) == 8) {
    return digits <= 16 ? whole_of<Value, 2, U64>(in, out) : whole_of<Value, 3, U64>(in, out);
  }
  if constexpr (sizeof(Value) == 16) {
    if (digits <= 16) return whole_of<Value, 2, U64>(in, out);
    if (digits <= 19) return whole_of<Value, 3, U64>(in, out);
    if (digits <= 24) return whole_of<Value, 3, U128>(in, out);
    if (digits <= 32) return whole_of<Value, 4, U128>(in, out);
    if (digits <= kMost128) return whole_of<Value, 5, U128>(in, out);
    return any_numbers<Value>(in, out);
  }
}

// Numbers of more than 38 digits.
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

}  // namespace

Decode decode_digits(Physical physical) {
  switch (physical) {
    case Physical::kInt32:
      return numbers<std::int32_t>;
    case Physical::kInt64:
      return numbers<std::int64_t>;
    case Physical::kDecimal256:
      return wide;
    default:
      return numbers<I128>;
  }
}

}  // namespace campotipo::records::CAMPOTIPO_KERNELS_NAMESPACE
