#pragma once

#include <emmintrin.h>

#include <bit>
#include <climits>
#include <cstdint>
#include <cstring>

#include "base/bytes.hpp"
#include "base/digits.hpp"

// Binary numbers of N bytes and their decimal texts, for every N from 1 to 8.
namespace campotipo::numbers {

using bytes::load;
using bytes::store;

constexpr bool is_digit(char c) { return static_cast<unsigned char>(c - '0') < 10; }

constexpr bool is_blank(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

// Bit i is set when byte i of the 16 is no digit.
inline unsigned non_digit_mask16(const char *text) {
  const __m128i characters = _mm_loadu_si128(reinterpret_cast<const __m128i *>(text));
  const __m128i values = _mm_sub_epi8(characters, _mm_set1_epi8('0'));
  const __m128i clamped = _mm_min_epu8(values, _mm_set1_epi8(9));
  return static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi8(values, clamped))) ^ 0xFFFFu;
}

// How many digits the text starts with, at most 32.
inline unsigned count_digits(const char *text) {
  if (bytes::same_page(text, 32)) [[likely]] {
    const unsigned mask = non_digit_mask16(text) | non_digit_mask16(text + 16) << 16;
    return static_cast<unsigned>(std::countr_zero(mask));
  }
  unsigned count = 0;
  while (count < 32 && is_digit(text[count])) ++count;
  return count;
}

// Value of `count` digits, 0 to 32, modulo 2^64.
inline std::uint64_t join(const char *text, unsigned count) {
  if (count == 0) return 0;
  const unsigned first = (count - 1) % 8 + 1;
  std::uint64_t word = 0;
  if (count >= 8 || bytes::same_page(text, 8)) [[likely]] {
    word = load<std::uint64_t>(text);
  } else {
    std::memcpy(&word, text, first);
  }
  std::uint64_t value = digits::join8((word ^ digits::kZeros) << (64 - 8 * first));
  for (const char *rest = text + first; rest != text + count; rest += 8)
    value = value * digits::kTenTo8 + digits::join8(load<std::uint64_t>(rest) ^ digits::kZeros);
  return value;
}

struct Scan {
  std::uint64_t value;
  const char *end;
};

// The digits that the text starts with, at most `limit`, modulo 2^64.
inline Scan scan_digits(const char *text, unsigned limit) {
  unsigned count = count_digits(text);
  if (count > limit) count = limit;
  Scan scan{join(text, count), text + count};
  if (count == 32) [[unlikely]] {
    for (; count < limit && is_digit(*scan.end); ++count)
      scan.value = scan.value * 10 + static_cast<unsigned>(*scan.end++ - '0');
  }
  return scan;
}

inline const char *skip_blanks(const char *text) {
  while (is_blank(*text)) ++text;
  return text;
}

inline std::uint64_t from_text(const char *text) {
  return scan_digits(skip_blanks(text), UINT_MAX).value;
}

// 10^count modulo 2^64, which is 0 from 64 on.
constexpr std::uint64_t power_of_ten(unsigned count) {
  if (count >= 64) return 0;
  std::uint64_t power = 1;
  for (; count > 19; count -= 19) power *= digits::kPowerOfTen[19];
  return power * digits::kPowerOfTen[count];
}
static_assert(power_of_ten(38) == 687399551400673280u);

inline std::uint64_t from_text_fixed(const char *text, int decimals) {
  unsigned missing = decimals > 0 ? static_cast<unsigned>(decimals) : 0;
  Scan scan = scan_digits(skip_blanks(text), UINT_MAX);
  if (*scan.end == '.') {
    const Scan fraction = scan_digits(scan.end + 1, missing);
    const auto taken = static_cast<unsigned>(fraction.end - (scan.end + 1));
    scan.value = scan.value * power_of_ten(taken) + fraction.value;
    missing -= taken;
  }
  return scan.value * power_of_ten(missing);
}

// Digits of the number without leading zeros; no NUL. Result: behind the last digit. Writes no byte
// behind it.
inline char *put_digits(char *to, std::uint64_t number) {
  using namespace digits;
  const auto low = static_cast<std::uint32_t>(number % kTenTo8);
  if (number < kTenTo8) {
    const std::uint64_t values = split8(low);
    // Zero keeps its one digit.
    const unsigned zeros = leading_zeros8(values | std::uint64_t{1} << 56);
    bytes::store_low_bytes(to, (values | kZeros) >> (8 * zeros), 8 - zeros);
    return to + 8 - zeros;
  }
  std::uint64_t high = number / kTenTo8;
  const auto middle = static_cast<std::uint32_t>(high % kTenTo8);
  // From here on the text has nine digits or more, so the first word may be stored whole.
  if (high < kTenTo8) {
    const std::uint64_t values = split8(middle);
    const unsigned zeros = leading_zeros8(values);
    store(to, (values | kZeros) >> (8 * zeros));
    to += 8 - zeros;
  } else {
    const std::uint64_t values = split8(static_cast<std::uint32_t>(high / kTenTo8));
    const unsigned zeros = leading_zeros8(values);
    store(to, (values | kZeros) >> (8 * zeros));
    to += 8 - zeros;
    store(to, split8(middle) | kZeros);
    to += 8;
  }
  store(to, split8(low) | kZeros);
  return to + 8;
}

inline char *to_text(char *text, std::uint64_t number) {
  *put_digits(text, number) = '\0';
  return text;
}

// The rightmost `count` digits with leading zeros, and a NUL.
inline char *to_text_exact(char *text, std::uint64_t number, int count) {
  using namespace digits;
  char *end = text + (count > 0 ? count : 0);
  *end = '\0';
  while (end - text >= 8) {
    end -= 8;
    store(end, split8(static_cast<std::uint32_t>(number % kTenTo8)) | kZeros);
    number /= kTenTo8;
  }
  const auto left = static_cast<unsigned>(end - text);
  if (left == 0) return text;
  const std::uint64_t word = split8(static_cast<std::uint32_t>(number % kTenTo8)) | kZeros;
  bytes::store_low_bytes(text, word >> (64 - 8 * left), left);
  return text;
}

inline char *to_text_fixed(char *text, std::uint64_t number, int decimals) {
  if (decimals <= 0) return to_text(text, number);
  char digits[20];
  const long count = put_digits(digits, number) - digits;
  char *to = text;
  const char *from = digits;
  if (count > decimals) {
    std::memcpy(to, from, static_cast<std::size_t>(count - decimals));
    to += count - decimals;
    from += count - decimals;
  } else {
    *to++ = '0';
  }
  *to++ = '.';
  if (count < decimals) {
    std::memset(to, '0', static_cast<std::size_t>(decimals - count));
    to += decimals - count;
  }
  const auto rest = static_cast<std::size_t>(digits + count - from);
  std::memcpy(to, from, rest);
  to[rest] = '\0';
  return text;
}

template <int N>
inline int store_number(unsigned char *dest, std::uint64_t value) {
  bytes::store_le<N>(dest, value);
  return value << (64 - 8 * N) != 0;
}

template <int N>
inline int parse(unsigned char *dest, const char *text) {
  return store_number<N>(dest, from_text(text));
}

template <int N>
inline int parse_fixed(unsigned char *dest, const char *text, int decimals) {
  return store_number<N>(dest, from_text_fixed(text, decimals));
}

template <int N>
inline char *print(char *text, const unsigned char *src) {
  return to_text(text, bytes::load_le<N>(src));
}

template <int N>
inline char *print_fixed(char *text, const unsigned char *src, int decimals) {
  return to_text_fixed(text, bytes::load_le<N>(src), decimals);
}

template <int N>
inline int compare(const unsigned char *a, const unsigned char *b) {
  const std::uint64_t left = bytes::load_le<N>(a);
  const std::uint64_t right = bytes::load_le<N>(b);
  return (left > right) - (left < right);
}

}  // namespace campotipo::numbers
