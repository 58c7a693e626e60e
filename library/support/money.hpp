#pragma once

#include <climits>
#include <cstdint>

#include "base/bytes.hpp"
#include "support/numbers.hpp"

// Signed counts of units with decimals that are only implied. Both money kinds are this, and differ
// in the number of decimals.
namespace campotipo::money {

using bytes::int128;

template <class Value>
inline std::int64_t units(const Value *value) {
  return bytes::load<std::int64_t>(value->opaque);
}

template <class Value>
inline void set(Value *value, std::int64_t count) {
  bytes::store(value->opaque, count);
}

constexpr std::int64_t nearest(int128 value) {
  if (value > INT64_MAX) return INT64_MAX;
  if (value < INT64_MIN) return INT64_MIN;
  return static_cast<std::int64_t>(value);
}

template <class Value>
inline int compare(const Value *a, const Value *b) {
  const std::int64_t left = units(a);
  const std::int64_t right = units(b);
  return (left > right) - (left < right);
}

template <class Value>
inline int sign(const Value *value) {
  const std::int64_t count = units(value);
  return (count > 0) - (count < 0);
}

template <std::int64_t Divisor, class Value>
inline int divide_by(Value *dest, std::int64_t count) {
  set(dest, count / Divisor);
  return static_cast<int>(count % Divisor);
}

template <class Value>
inline int divide(Value *dest, const Value *src, int divisor) {
  const std::int64_t count = units(src);
  // Known divisors become multiplications; the percent operations use no others.
  if (divisor == 100) return divide_by<100>(dest, count);
  if (divisor == 10) return divide_by<10>(dest, count);
  if (divisor == 0) {
    set(dest, 0);
    return 0;
  }
  set(dest, nearest(int128{count} / divisor));
  return static_cast<int>(int128{count} % divisor);
}

template <class Value>
inline void multiply(Value *dest, const Value *src, int factor) {
  set(dest, nearest(int128{units(src)} * factor));
}

template <class Value>
inline void add(Value *dest, const Value *src, long count) {
  set(dest, nearest(int128{units(src)} + count));
}

inline constexpr std::int64_t kWhole = 10000;

template <class Value>
inline void percent_of(Value *dest, const Value *src, long factor) {
  const std::int64_t count = units(src);
  std::int64_t product;
  if (!__builtin_mul_overflow(count, std::int64_t{factor}, &product)) [[likely]] {
    set(dest, product / kWhole);
  } else {
    set(dest, nearest(int128{count} * factor / kWhole));
  }
}

template <class Value>
inline void percent_ratio(long *ratio, const Value *numerator, const Value *denominator) {
  const std::int64_t by = units(denominator);
  const std::int64_t count = units(numerator);
  std::int64_t product;
  if (by == 0) {
    *ratio = 0;
  } else if (!__builtin_mul_overflow(count, kWhole, &product) && by != -1) [[likely]] {
    *ratio = product / by;
  } else {
    *ratio = nearest(int128{count} * kWhole / by);
  }
}

// One more digit, staying at the top of the range. Negative numbers are built below zero, since
// the range reaches one unit further there.
constexpr std::int64_t append_digit(std::int64_t count, int digit) {
  return nearest(int128{count} * 10 + digit);
}

template <class Value>
inline void parse(Value *dest, const char *text, int decimals) {
  text = numbers::skip_blanks(text);
  const bool negative = *text == '-';
  if (negative || *text == '+') ++text;
  const int direction = negative ? -1 : 1;
  std::int64_t count = 0;
  for (; numbers::is_digit(*text); ++text) count = append_digit(count, direction * (*text - '0'));
  int missing = decimals;
  if (*text == '.') {
    for (++text; missing > 0 && numbers::is_digit(*text); ++text, --missing)
      count = append_digit(count, direction * (*text - '0'));
  }
  // A number other than zero has left the range after at most 19 more digits.
  if (missing > 20) missing = 20;
  for (; missing > 0 && count != 0; --missing) count = append_digit(count, 0);
  set(dest, count);
}

template <class Value>
inline char *print(char *text, const Value *value, int decimals) {
  const std::int64_t count = units(value);
  char *to = text;
  auto magnitude = static_cast<std::uint64_t>(count);
  if (count < 0) {
    *to++ = '-';
    magnitude = 0 - magnitude;
  }
  numbers::to_text_fixed(to, magnitude, decimals);
  return text;
}

}  // namespace campotipo::money
