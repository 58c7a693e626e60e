#pragma once

#include <emmintrin.h>

// Sixteen bytes at any address.
namespace campotipo::bits {

inline __m128i load16(const void *from) {
  return _mm_loadu_si128(static_cast<const __m128i *>(from));
}

inline void store16(void *to, __m128i value) {
  _mm_storeu_si128(static_cast<__m128i *>(to), value);
}

}  // namespace campotipo::bits
