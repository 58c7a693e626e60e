#pragma once

#include <climits>
#include <cstdint>
#include <cstring>

#include "base/bytes.hpp"
#include "base/digits.hpp"
#include "support/x86/parse.hpp"
#include "support/x86/print.hpp"

// Binary numbers of N bytes and their decimal texts, for every N from 1 to 8.
namespace campotipo::numbers {

using bytes::load;
using bytes::store;
using digits::is_digit;

constexpr bool is_blank(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

struct Scan {
  std::uint64_t value;
  const char *end;
};

// The digits that the text starts with, at most `limit`, modulo 2^64. Eight at a time: "1234" and
// four other bytes are shifted up until the digits end at the word's end, with zeros before them.
inline Scan scan_digits(const char *text, unsigned limit) {
  std::uint64_t value = 0;
  while (bytes::same_page(text, 8)) {
    const auto word = load<std::uint64_t>(text);
    unsigned count = digits::count_leading(word);
    if (count > limit) count = limit;
    if (count < 8) {
      if (count == 0) return {value, text};
      const std::uint64_t last = digits::join8((word ^ digits::kZeros) << (64 - 8 * count));
      return {value * digits::kPowerOfTen[count] + last, text + count};
    }
    value = value * digits::kTenTo8 + digits::join8(word ^ digits::kZeros);
    text += 8;
    limit -= 8;
  }
  for (; limit > 0 && is_digit(*text); --limit)
    value = value * 10 + static_cast<unsigned>(*text++ - '0');
  return {value, text};
}

inline const char *skip_blanks(const char *text) {
  while (is_blank(*text)) ++text;
  return text;
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

// The sixteen characters of a number below 10^16.
struct Sixteen {
  std::uint64_t characters[2];

  explicit Sixteen(std::uint64_t number) {
    const auto first = static_cast<std::uint32_t>(number / digits::kTenTo8);
    const auto second = static_cast<std::uint32_t>(number % digits::kTenTo8);
    if (x86::sixteen(first, second, characters)) return;
    characters[0] = digits::split8(first) | digits::kZeros;
    characters[1] = digits::split8(second) | digits::kZeros;
  }
};

// Digits of the number without leading zeros; no NUL. Result: behind the last digit. Writes no byte
// behind it.
inline char *put_digits(char *to, std::uint64_t number) {
  using namespace digits;
  if (number < kTenTo8) {
    const std::uint64_t values = split8(static_cast<std::uint32_t>(number));
    // Zero keeps its one digit.
    const unsigned zeros = leading_zeros8(values | std::uint64_t{1} << 56);
    bytes::store_low_bytes(to, (values | kZeros) >> (8 * zeros), 8 - zeros);
    return to + 8 - zeros;
  }
  // From here on the text has nine digits or more, so the first word may be stored whole.
  if (number < kTenTo16) {
    const auto [first, second] = Sixteen(number).characters;
    const unsigned zeros = leading_zeros8(first ^ kZeros);
    store(to, first >> (8 * zeros));
    store(to + 8 - zeros, second);
    return to + 16 - zeros;
  }
  const std::uint64_t top = split8(static_cast<std::uint32_t>(number / kTenTo16));
  const unsigned zeros = leading_zeros8(top);
  // NOLINTNEXTLINE(clang-analyzer-core.UndefinedBinaryOperatorResult): from 10^16 on top is not 0
  store(to, (top | kZeros) >> (8 * zeros));
  to += 8 - zeros;
  store(to, Sixteen(number % kTenTo16));
  return to + 16;
}

inline char *to_text(char *text, std::uint64_t number) {
  *put_digits(text, number) = '\0';
  return text;
}

// The rightmost `count` digits, 0 or more, with leading zeros; no NUL.
inline char *put_digits_exact(char *to, std::uint64_t number, unsigned count) {
  using namespace digits;
  if (count > 24) {
    std::memset(to, '0', count - 24);
    return put_digits_exact(to + count - 24, number, 24);
  }
  if (count > 16) {
    const std::uint64_t top = split8(static_cast<std::uint32_t>(number / kTenTo16)) | kZeros;
    store(to, top >> (8 * (24 - count)));
    store(to + count - 16, Sixteen(number % kTenTo16));
  } else if (count > 8) {
    const auto [first, second] = Sixteen(number % kTenTo16).characters;
    store(to, first >> (8 * (16 - count)));
    store(to + count - 8, second);
  } else if (count > 0) {
    const std::uint64_t word = split8(static_cast<std::uint32_t>(number % kTenTo8)) | kZeros;
    bytes::store_low_bytes(to, word >> (64 - 8 * count), count);
  }
  return to + count;
}

// The last three digits of a number below 2000, and a byte more, first digit in the lowest byte.
inline std::uint32_t last_three(std::uint32_t number) {
  number = number < 1000 ? number : number - 1000;
  const std::uint32_t hundreds = number * 5243 >> 19;
  const std::uint32_t rest = number - 100 * hundreds;
  const std::uint32_t tens = rest * 103 >> 10;
  return 0x00303030 + (hundreds | tens << 8 | (rest - 10 * tens) << 16);
}

inline char *to_text_exact(char *text, std::uint64_t number, int count) {
  // The limb of a wide quantity, below 2^64 < 2000 * 10^16.
  if (count == 19) [[likely]] {
    const std::uint64_t top = number / digits::kTenTo16;
    store(text, last_three(static_cast<std::uint32_t>(top)));
    store(text + 3, Sixteen(number - top * digits::kTenTo16));
    text[19] = '\0';
    return text;
  }
  *put_digits_exact(text, number, count > 0 ? static_cast<unsigned>(count) : 0) = '\0';
  return text;
}

inline char *to_text_fixed(char *text, std::uint64_t number, int decimals) {
  if (decimals <= 0) return to_text(text, number);
  const auto places = static_cast<unsigned>(decimals);
  const std::uint64_t whole = places < 20 ? digits::divide_by_power(number, places) : 0;
  const std::uint64_t rest = places < 20 ? number - whole * digits::kPowerOfTen[places] : number;
  char *to = put_digits(text, whole);
  *to++ = '.';
  *put_digits_exact(to, rest, places) = '\0';
  return text;
}

template <int N>
inline int store_number(unsigned char *dest, std::uint64_t value) {
  bytes::store_le<N>(dest, value);
  return value << (64 - 8 * N) != 0;
}

// Not in line, since the kernel in front of it would keep registers for it.
template <int N>
[[gnu::noinline]] inline int parse_any(unsigned char *dest, const char *text) {
  return store_number<N>(dest, scan_digits(skip_blanks(text), UINT_MAX).value);
}

template <int N>
inline int parse(unsigned char *dest, const char *text) {
  std::uint64_t value;
  if (x86::parse(text, value)) return store_number<N>(dest, value);
  return parse_any<N>(dest, text);
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
