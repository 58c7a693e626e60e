#pragma once

#include <ctype.h>
#include <immintrin.h>

#include <cstdint>

// What follows the process's locale, which the library reads and never sets.
namespace campotipo::locale {

// The char goes in with its sign, as a caller of the C function would pass it: the C library's
// tables reach down to -128.
inline int to_upper(char c) { return toupper(static_cast<signed char>(c)); }

// By the value of the byte without a sign.
inline bool is_alnum(char c) { return isalnum(static_cast<unsigned char>(c)) != 0; }

// Whether each of a to z has its own capital, as it has in all locales but a few ("i" in Turkish).
// The C library's table is read in vectors, because 26 calls would cost more than most callers do.
inline bool capitals_are_plain() {
#if defined(__GLIBC__) && defined(__AVX2__)
  const std::int32_t *const upper = *__ctype_toupper_loc();
  const auto differ = [upper](char small) {
    const auto *eight = reinterpret_cast<const __m256i *>(upper + small);
    const __m256i places = _mm256_setr_epi32(0, 1, 2, 3, 4, 5, 6, 7);
    const __m256i capitals = _mm256_add_epi32(places, _mm256_set1_epi32(small - 'a' + 'A'));
    return _mm256_xor_si256(_mm256_loadu_si256(eight), capitals);
  };
  const __m256i all = _mm256_or_si256(_mm256_or_si256(differ('a'), differ('i')),
                                      _mm256_or_si256(differ('q'), differ('s')));
  return _mm256_testz_si256(all, all) != 0;
#elif defined(__GLIBC__)
  const std::int32_t *const upper = *__ctype_toupper_loc();
  __m128i all = _mm_setzero_si128();
  for (const char small : {'a', 'e', 'i', 'm', 'q', 'u', 'w'}) {
    const auto *four = reinterpret_cast<const __m128i *>(upper + small);
    const __m128i capitals =
        _mm_add_epi32(_mm_setr_epi32(0, 1, 2, 3), _mm_set1_epi32(small - 'a' + 'A'));
    all = _mm_or_si128(all, _mm_xor_si128(_mm_loadu_si128(four), capitals));
  }
  return _mm_movemask_epi8(_mm_cmpeq_epi8(all, _mm_setzero_si128())) == 0xFFFF;
#else
  bool plain = true;
  for (char small = 'a'; small <= 'z'; ++small) plain &= to_upper(small) == small - 'a' + 'A';
  return plain;
#endif
}

}  // namespace campotipo::locale
