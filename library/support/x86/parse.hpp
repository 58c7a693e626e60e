#pragma once

#include <cstdint>

#if defined(__AVX2__) && !defined(CAMPOTIPO_PLAIN)
#include <immintrin.h>

#include <bit>

#include "base/bytes.hpp"
#include "base/digits.hpp"

// Texts of up to 31 digits in one vector. Without it 38 digits, two limbs of 19, take 27 ns instead
// of 14, and the goal is 15.
namespace campotipo::numbers::x86 {

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

// Value of 17 to 31 digits modulo 2^64; `values` are those of the first 16.
inline std::uint64_t join_long(const char *text, __m128i values, unsigned count) {
  values = _mm_shuffle_epi8(values, load16(kMoveToEnd.indices + count - 16));
  const __m128i last = _mm_sub_epi8(load16(text + count - 16), _mm_set1_epi8('0'));
  const __m256i joined = join16(_mm256_inserti128_si256(_mm256_castsi128_si256(values), last, 1));
  const auto high = static_cast<std::uint64_t>(_mm_cvtsi128_si64(_mm256_castsi256_si128(joined)));
  const __m128i low = _mm256_extracti128_si256(joined, 1);
  return high * digits::kTenTo16 + static_cast<std::uint64_t>(_mm_cvtsi128_si64(low));
}

// Value of up to 16 digits.
inline std::uint64_t join_short(__m128i values, unsigned count) {
  values = _mm_shuffle_epi8(values, load16(kMoveToEnd.indices + count));
  const __m256i joined = join16(_mm256_castsi128_si256(values));
  return static_cast<std::uint64_t>(_mm_cvtsi128_si64(_mm256_castsi256_si128(joined)));
}

// False for other texts and at the end of a page.
inline bool parse(const char *text, std::uint64_t &value) {
  if (!bytes::same_page(text, 32)) [[unlikely]]
    return false;
  const __m256i characters = _mm256_loadu_si256(reinterpret_cast<const __m256i *>(text));
  const __m256i values = _mm256_sub_epi8(characters, _mm256_set1_epi8('0'));
  const __m256i others = _mm256_cmpeq_epi8(values, _mm256_max_epu8(values, _mm256_set1_epi8(10)));
  const auto mask = static_cast<unsigned>(_mm256_movemask_epi8(others));
  const __m128i first = _mm256_castsi256_si128(values);
  const auto count = static_cast<unsigned>(std::countr_zero(mask));
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

}  // namespace campotipo::numbers::x86

#else

namespace campotipo::numbers::x86 {
inline bool parse(const char *, std::uint64_t &) { return false; }
}  // namespace campotipo::numbers::x86

#endif
