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

// Digit values of 16 characters; `bad` gathers the characters that are none.
inline __m128i digit_values(__m128i characters, __m128i *bad) {
  const __m128i decimal = _mm_sub_epi8(characters, _mm_set1_epi8('0'));
  const __m128i lower = _mm_or_si128(characters, _mm_set1_epi8(0x20));
  const __m128i letter = _mm_sub_epi8(lower, _mm_set1_epi8('a'));
  const __m128i is_decimal = _mm_cmpeq_epi8(_mm_min_epu8(decimal, _mm_set1_epi8(9)), decimal);
  const __m128i is_letter = _mm_cmpeq_epi8(_mm_min_epu8(letter, _mm_set1_epi8(5)), letter);
  *bad = _mm_or_si128(*bad, _mm_cmpeq_epi8(is_decimal, is_letter));
  const __m128i low = _mm_and_si128(characters, _mm_set1_epi8(15));
  return _mm_add_epi8(low, _mm_and_si128(is_letter, _mm_set1_epi8(9)));
}

// Sixteen-bit lanes that hold one byte each.
inline __m128i join_pairs(__m128i values) {
  const __m128i joined = _mm_or_si128(_mm_slli_epi16(values, 4), _mm_srli_epi16(values, 8));
  return _mm_and_si128(joined, _mm_set1_epi16(0xFF));
}

// Reads 32 digits, or the same in groups with dashes, perhaps behind a brace; tells if it was that.
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
