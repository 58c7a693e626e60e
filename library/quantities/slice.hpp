#pragma once

#include <emmintrin.h>
#ifdef __AVX2__
#include <immintrin.h>
#endif

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "base/bytes.hpp"

// Texts measured and cut in whole vectors.
namespace campotipo::quantities {

// Bit i is set when byte i of the 32 is the NUL.
inline std::uint32_t end_mask(const char *text) {
#ifdef __AVX2__
  const __m256i characters = _mm256_loadu_si256(reinterpret_cast<const __m256i *>(text));
  const __m256i ends = _mm256_cmpeq_epi8(characters, _mm256_setzero_si256());
  return static_cast<std::uint32_t>(_mm256_movemask_epi8(ends));
#else
  auto half = [](const char *from) {
    const __m128i characters = _mm_loadu_si128(reinterpret_cast<const __m128i *>(from));
    const __m128i ends = _mm_cmpeq_epi8(characters, _mm_setzero_si128());
    return static_cast<std::uint32_t>(_mm_movemask_epi8(ends));
  };
  return half(text) | half(text + 16) << 16;
#endif
}

// strlen, without the call for texts that are not much longer than any number.
inline std::size_t text_length(const char *text) {
  if (bytes::same_page(text, 64)) [[likely]] {
    const std::uint64_t ends = end_mask(text) | std::uint64_t{end_mask(text + 32)} << 32;
    if (ends != 0) [[likely]]
      return static_cast<std::size_t>(std::countr_zero(ends));
  }
  return std::strlen(text);
}

// 32 bytes of ones and then 32 of zeros; read from 32 - n it keeps the first n bytes.
struct alignas(64) KeepMask {
  std::uint64_t words[8] = {~0ull, ~0ull, ~0ull, ~0ull, 0, 0, 0, 0};
  const char *of(unsigned count) const {
    return reinterpret_cast<const char *>(words) + (32 - count);
  }
};
inline constexpr KeepMask kKeep;

// Part of a text with a NUL of its own. Aligned and of one vector, so that it lies in one page, and
// written in the widest stores there are, so that a reader's vector loads are served from them.
class alignas(32) Slice {
 public:
  // Copies `count` characters, 1 to 19, that have at least 19 characters and the NUL behind them:
  // whatever is loaded here lies in the text.
  // cppcheck-suppress uninitMemberVar ; every byte is written by the vector stores
  Slice(const char *from, unsigned count) {
    const char *second = from + (count > 15 ? 16 : 0);
#ifdef __AVX2__
    const __m256i both =
        _mm256_inserti128_si256(_mm256_castsi128_si256(load(from)), load(second), 1);
    const __m256i keep = _mm256_loadu_si256(reinterpret_cast<const __m256i *>(kKeep.of(count)));
    _mm256_store_si256(reinterpret_cast<__m256i *>(characters_), _mm256_and_si256(both, keep));
#else
    const char *keep = kKeep.of(count);
    auto *to = reinterpret_cast<__m128i *>(characters_);
    _mm_store_si128(to, _mm_and_si128(load(from), load(keep)));
    _mm_store_si128(to + 1, _mm_and_si128(load(second), load(keep + 16)));
#endif
  }

  const char *text() const { return characters_; }

 private:
  static __m128i load(const char *from) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i *>(from));
  }

  char characters_[32];
};

}  // namespace campotipo::quantities
