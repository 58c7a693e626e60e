#pragma once

#include <emmintrin.h>
#ifdef __SSSE3__
#include <tmmintrin.h>
#endif
#ifdef __AVX2__
#include <immintrin.h>
#endif

#include <cstdint>

#include "base/bytes.hpp"

// Sixteen characters of a number in one register, as values: the code less 48.
namespace campotipo::idnumbers::vector {

constexpr bool is_digit(char c) { return static_cast<unsigned char>(c - '0') < 10; }

inline __m128i load(const char *from) {
  return _mm_loadu_si128(reinterpret_cast<const __m128i *>(from));
}

inline __m128i values(const char *text) { return _mm_sub_epi8(load(text), _mm_set1_epi8('0')); }

// Bit i is set when value i is above `greatest`.
inline unsigned above(__m128i values, int greatest) {
  const __m128i clamped = _mm_min_epu8(values, _mm_set1_epi8(static_cast<char>(greatest)));
  return static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi8(values, clamped))) ^ 0xFFFFu;
}

inline unsigned non_digits(__m128i values) { return above(values, 9); }

#ifdef __AVX2__
// Bit i is set when character i of 64 is no digit.
inline std::uint64_t non_digits64(const char *text) {
  const auto half = [](const char *from) {
    const __m256i characters = _mm256_loadu_si256(reinterpret_cast<const __m256i *>(from));
    const __m256i values = _mm256_sub_epi8(characters, _mm256_set1_epi8('0'));
    const __m256i clamped = _mm256_min_epu8(values, _mm256_set1_epi8(9));
    return static_cast<std::uint32_t>(_mm256_movemask_epi8(_mm256_cmpeq_epi8(values, clamped)));
  };
  return ~(half(text) | std::uint64_t{half(text + 32)} << 32);
}
#endif

#ifdef __SSSE3__
// Loaded at 16 - n it reverses the first n bytes and clears the others.
alignas(32) inline constexpr std::uint8_t kReverse[32] = {
    15,   14,   13,   12,   11,   10,   9,    8,    7,    6,    5,    4,    3,    2,    1,    0,
    0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80};
#endif

// The values of the `count` (1 to 16) characters at `text`, the last one first, and zeros behind
// them. Loads 16 characters.
inline __m128i last_first(const char *text, unsigned count) {
#ifdef __SSSE3__
  const auto *order = reinterpret_cast<const __m128i *>(kReverse + 16 - count);
  return _mm_shuffle_epi8(values(text), _mm_loadu_si128(order));
#else
  const auto word = bytes::load<bytes::uint128>(text) << (8 * (16 - count));
  const auto low =
      static_cast<long long>(__builtin_bswap64(static_cast<std::uint64_t>(word >> 64)));
  const auto high = static_cast<long long>(__builtin_bswap64(static_cast<std::uint64_t>(word)));
  return _mm_subs_epu8(_mm_set_epi64x(high, low), _mm_set1_epi8('0'));
#endif
}

// values[2i] * weights[2i] + values[2i+1] * weights[2i+1], for values to 127 and any weights whose
// sums stay below 2^15.
inline __m128i multiply_pairs(__m128i values, __m128i weights) {
#ifdef __SSSE3__
  return _mm_maddubs_epi16(weights, values);
#else
  const __m128i low = _mm_set1_epi16(0xFF);
  return _mm_add_epi16(_mm_mullo_epi16(_mm_and_si128(values, low), _mm_and_si128(weights, low)),
                       _mm_mullo_epi16(_mm_srli_epi16(values, 8), _mm_srli_epi16(weights, 8)));
#endif
}

// Sum of eight lanes, none negative.
inline unsigned sum_of_lanes(__m128i lanes) {
  __m128i sum = _mm_madd_epi16(lanes, _mm_set1_epi16(1));
  sum = _mm_add_epi32(sum, _mm_shuffle_epi32(sum, _MM_SHUFFLE(1, 0, 3, 2)));
  sum = _mm_add_epi32(sum, _mm_shuffle_epi32(sum, _MM_SHUFFLE(2, 3, 0, 1)));
  return static_cast<unsigned>(_mm_cvtsi128_si32(sum));
}

}  // namespace campotipo::idnumbers::vector
