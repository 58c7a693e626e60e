#pragma once

#if defined(__SSE2__) && !defined(CAMPOTIPO_PLAIN)
#include <emmintrin.h>

#include <cstdint>

#include "base/bytes.hpp"

// The 32 digits of a GUID at once. Without it a GUID takes 9 times as long to read.
namespace campotipo::bits::x86 {

inline __m128i load16(const char *from) {
  return _mm_loadu_si128(reinterpret_cast<const __m128i *>(from));
}
inline __m128i load8(const char *from) {
  return _mm_loadl_epi64(reinterpret_cast<const __m128i *>(from));
}
inline __m128i load4(const char *from) {
  return _mm_cvtsi32_si128(bytes::load<std::int32_t>(from));
}

// Digit values of 16 characters; bit 7 of a lane of `bad` where the character is none (after G.
// Langdale and W. Mula, "Parsing hex numbers with validation"). What is no digit of its kind ends at
// 16 or more:
//
//     character      '0' to '9'       'A' to 'F', 'a' to 'f'
//     decimal        0 to 9           16 or more
//     letter         16 or more       10 to 15
inline __m128i digit_values(__m128i characters, __m128i *bad) {
  const __m128i to_top = _mm_add_epi8(characters, _mm_set1_epi8(static_cast<char>(255 - '9')));
  const __m128i decimal =
      _mm_sub_epi8(_mm_subs_epu8(to_top, _mm_set1_epi8(6)), _mm_set1_epi8(static_cast<char>(240)));
  const __m128i capital = _mm_and_si128(characters, _mm_set1_epi8(static_cast<char>(0xDF)));
  const __m128i letter =
      _mm_adds_epu8(_mm_sub_epi8(capital, _mm_set1_epi8('A')), _mm_set1_epi8(10));
  const __m128i values = _mm_min_epu8(decimal, letter);
  *bad = _mm_or_si128(*bad, _mm_adds_epu8(values, _mm_set1_epi8(128 - 16)));
  return values;
}

// Sixteen-bit lanes that hold one byte each.
inline __m128i join_pairs(__m128i values) {
  const __m128i joined = _mm_or_si128(_mm_slli_epi16(values, 4), _mm_srli_epi16(values, 8));
  return _mm_and_si128(joined, _mm_set1_epi16(0xFF));
}

// Reads 32 digits, or the same in groups with dashes, perhaps behind a brace. False for any other text.
inline bool parse_usual(unsigned char *dest, const char *text) {
  text += text[0] == '{';
  if (!bytes::same_page(text, 36)) return false;
  __m128i first = load16(text);
  __m128i second = load16(text + 16);
  if (text[8] == '-') {
    if (text[13] != '-' || text[18] != '-' || text[23] != '-') return false;
    const __m128i low = _mm_unpacklo_epi32(load4(text + 9), load4(text + 14));
    const __m128i high = _mm_unpacklo_epi32(load4(text + 19), load4(text + 24));
    first = _mm_unpacklo_epi64(first, low);
    second = _mm_unpacklo_epi64(high, load8(text + 28));
  }
  __m128i bad = _mm_setzero_si128();
  first = join_pairs(digit_values(first, &bad));
  second = join_pairs(digit_values(second, &bad));
  if (_mm_movemask_epi8(bad) != 0) return false;
  _mm_storeu_si128(reinterpret_cast<__m128i *>(dest), _mm_packus_epi16(first, second));
  return true;
}

}  // namespace campotipo::bits::x86
#else
namespace campotipo::bits::x86 {

inline bool parse_usual(unsigned char *, const char *) { return false; }

}  // namespace campotipo::bits::x86
#endif
