#pragma once

#include <emmintrin.h>
#ifdef __AVX2__
#include <immintrin.h>
#endif

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

inline std::uint64_t from_any_text(const char *text) {
  return scan_digits(skip_blanks(text), UINT_MAX).value;
}

#ifdef __AVX2__
// Read from n on, the indices that move the first n bytes of a vector to its end, zeros in front.
struct alignas(32) MoveToEnd {
  signed char indices[32] = {-1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1,
                             0,  1,  2,  3,  4,  5,  6,  7,  8,  9,  10, 11, 12, 13, 14, 15};
};
inline constexpr MoveToEnd kMoveToEnd;

inline __m128i load16(const void *from) {
  return _mm_loadu_si128(static_cast<const __m128i *>(from));
}

// Two numbers of 16 digits from 32 digit values. Joins 1 digit to 2, to 4, to 8, to 16.
inline __m256i join16(__m256i values) {
  const __m256i twos = _mm256_maddubs_epi16(values, _mm256_set1_epi16(0x010A));
  const __m256i fours = _mm256_madd_epi16(twos, _mm256_set1_epi32(0x00010064));
  const __m256i packed = _mm256_packus_epi32(fours, fours);
  const __m256i eights = _mm256_madd_epi16(packed, _mm256_set1_epi32(0x00012710));
  const __m256i high = _mm256_mul_epu32(eights, _mm256_set1_epi64x(digits::kTenTo8));
  return _mm256_add_epi64(high, _mm256_srli_epi64(eights, 32));
}

// Value of 17 to 32 digits modulo 2^64; `values` are those of the first 16.
inline std::uint64_t join_long(const char *text, __m128i values, std::size_t count) {
  values = _mm_shuffle_epi8(values, load16(kMoveToEnd.indices + count - 16));
  const __m128i last = _mm_sub_epi8(load16(text + count - 16), _mm_set1_epi8('0'));
  const __m256i joined = join16(_mm256_inserti128_si256(_mm256_castsi128_si256(values), last, 1));
  const auto high = static_cast<std::uint64_t>(_mm_cvtsi128_si64(_mm256_castsi256_si128(joined)));
  const __m128i low = _mm256_extracti128_si256(joined, 1);
  return high * digits::kTenTo16 + static_cast<std::uint64_t>(_mm_cvtsi128_si64(low));
}

// Value of up to 16 digits.
inline std::uint64_t join_short(__m128i values, std::size_t count) {
  values = _mm_shuffle_epi8(values, load16(kMoveToEnd.indices + count));
  const __m256i joined = join16(_mm256_castsi128_si256(values));
  return static_cast<std::uint64_t>(_mm_cvtsi128_si64(_mm256_castsi256_si128(joined)));
}

// A text of 1 to 31 digits, unless it is at the end of a page.
inline bool from_short_text(const char *text, std::uint64_t &value) {
  if (!bytes::same_page(text, 32)) [[unlikely]]
    return false;
  const __m256i characters = _mm256_loadu_si256(reinterpret_cast<const __m256i *>(text));
  const __m256i values = _mm256_sub_epi8(characters, _mm256_set1_epi8('0'));
  const __m256i others = _mm256_cmpeq_epi8(values, _mm256_max_epu8(values, _mm256_set1_epi8(10)));
  const auto mask = static_cast<unsigned>(_mm256_movemask_epi8(others));
  const __m128i first = _mm256_castsi256_si128(values);
  const auto count = static_cast<std::size_t>(std::countr_zero(mask));
  // The full limb of a wide quantity: a count that is known saves the way through the tables.
  if (count == 19) {
    value = join_long(text, first, 19);
  } else if (count - 1 < 16) {
    value = join_short(first, count);
  } else if (count - 1 < 31) {
    value = join_long(text, first, count);
  } else {
    return false;
  }
  return true;
}
#else
inline bool from_short_text(const char *, std::uint64_t &) { return false; }
#endif

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

// The sixteen characters of a number below 10^16, as two words.
struct Sixteen {
  std::uint64_t first, second;
};

inline __m128i sixteen_digits(std::uint64_t number) {
  const auto second = static_cast<std::uint32_t>(number % digits::kTenTo8);
  const auto first = static_cast<std::uint32_t>(number / digits::kTenTo8);
  return _mm_or_si128(digits::split16(first, second), _mm_set1_epi8('0'));
}

inline Sixteen words(__m128i characters) {
  return {
      static_cast<std::uint64_t>(_mm_cvtsi128_si64(characters)),
      static_cast<std::uint64_t>(_mm_cvtsi128_si64(_mm_unpackhi_epi64(characters, characters)))};
}

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
    const Sixteen all = words(sixteen_digits(number));
    const unsigned zeros = leading_zeros8(all.first ^ kZeros);
    store(to, all.first >> (8 * zeros));
    store(to + 8 - zeros, all.second);
    return to + 16 - zeros;
  }
  const std::uint64_t top = split8(static_cast<std::uint32_t>(number / kTenTo16));
  const unsigned zeros = leading_zeros8(top);
  // NOLINTNEXTLINE(clang-analyzer-core.UndefinedBinaryOperatorResult): from 10^16 on top is not 0
  store(to, (top | kZeros) >> (8 * zeros));
  to += 8 - zeros;
  _mm_storeu_si128(reinterpret_cast<__m128i *>(to), sixteen_digits(number % kTenTo16));
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
    _mm_storeu_si128(reinterpret_cast<__m128i *>(to + count - 16),
                     sixteen_digits(number % kTenTo16));
  } else if (count > 8) {
    const Sixteen all = words(sixteen_digits(number % kTenTo16));
    store(to, all.first >> (8 * (16 - count)));
    store(to + count - 8, all.second);
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
    const __m128i rest = sixteen_digits(number - top * digits::kTenTo16);
    _mm_storeu_si128(reinterpret_cast<__m128i *>(text + 3), rest);
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

// Of its own, so that the short way needs no frame.
template <int N>
[[gnu::noinline]] inline int parse_any(unsigned char *dest, const char *text) {
  return store_number<N>(dest, from_any_text(text));
}

template <int N>
inline int parse(unsigned char *dest, const char *text) {
  std::uint64_t value;
  if (from_short_text(text, value)) [[likely]]
    return store_number<N>(dest, value);
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
