#pragma once

#include <cstdint>

#if defined(__SSE2__) && !defined(CAMPOTIPO_PLAIN)
#include <emmintrin.h>

// Sixteen digits at once. Without it 38 digits take 25 ns instead of 16, and the goal is 20.
namespace campotipo::numbers::x86 {

// The characters of two numbers below 10^8: digits::split8 on both, in lanes of 4, 2 and 1 digits.
inline bool sixteen(std::uint32_t first, std::uint32_t second, std::uint64_t (&characters)[2]) {
  const __m128i eights = _mm_set_epi64x(second, first);
  const __m128i high = _mm_srli_epi64(_mm_mul_epu32(eights, _mm_set1_epi64x(3518437209)), 45);
  const __m128i low = _mm_sub_epi64(eights, _mm_mul_epu32(high, _mm_set1_epi64x(10000)));
  const __m128i fours = _mm_or_si128(high, _mm_slli_epi64(low, 32));
  // Both halves of a lane of 4 digits hold it, so that one multiplication makes both pairs.
  const __m128i upper = _mm_slli_epi32(fours, 16);
  const __m128i halves = _mm_or_si128(fours, upper);
  const __m128i hundreds = _mm_srli_epi16(_mm_mulhi_epu16(halves, _mm_set1_epi16(5243)), 3);
  const __m128i less = _mm_mullo_epi16(hundreds, _mm_set1_epi32(-100 * 65536 + 1));
  const __m128i twos = _mm_add_epi16(upper, less);
  const __m128i tens = _mm_mulhi_epu16(twos, _mm_set1_epi16(6554));
  // tens + 256 * (twos - 10 * tens)
  const __m128i values =
      _mm_sub_epi16(_mm_slli_epi16(twos, 8), _mm_mullo_epi16(tens, _mm_set1_epi16(2559)));
  const __m128i all = _mm_or_si128(values, _mm_set1_epi8('0'));
  characters[0] = static_cast<std::uint64_t>(_mm_cvtsi128_si64(all));
  characters[1] = static_cast<std::uint64_t>(_mm_cvtsi128_si64(_mm_unpackhi_epi64(all, all)));
  return true;
}

}  // namespace campotipo::numbers::x86

#else

namespace campotipo::numbers::x86 {
inline bool sixteen(std::uint32_t, std::uint32_t, std::uint64_t (&)[2]) { return false; }
}  // namespace campotipo::numbers::x86

#endif
