#pragma once

#include <immintrin.h>

#include <cstdint>

#include "base/bytes.hpp"
#include "codes/alphabet.hpp"

// Sixteen positions of a packed code, or sixteen characters, at a time: one code or character in
// each lane of a vector, twelve stored bytes for all.
namespace campotipo::codes::packed {

inline constexpr int kBlock = 16;
inline constexpr int kBlockBytes = CODALFA_BYTES(kBlock);

inline __m128i in_all_lanes(int value) { return _mm_set1_epi8(static_cast<char>(value)); }
inline std::uint64_t lane_mask(__m128i lanes) {
  return static_cast<unsigned>(_mm_movemask_epi8(lanes));
}
inline std::uint64_t zero_lanes(__m128i lanes) {
  return lane_mask(_mm_cmpeq_epi8(lanes, _mm_setzero_si128()));
}

inline __m128i lane_numbers() {
  return _mm_setr_epi8(0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15);
}

// All bits of the lanes in front of `count`, which may lie outside 0 to 16.
inline __m128i lanes_below(int count) {
  return _mm_cmpgt_epi8(in_all_lanes(count), lane_numbers());
}

inline std::uint64_t low_word(__m128i vector) {
  return static_cast<std::uint64_t>(_mm_cvtsi128_si64(vector));
}

inline std::uint64_t high_word(__m128i vector) {
  return low_word(_mm_unpackhi_epi64(vector, vector));
}

// The `count` bytes (1 or more; at most 16 are taken) of a field, zeros in the lanes behind them.
[[gnu::always_inline]] inline __m128i load_bytes(const unsigned char *from, int count) {
  if (count >= 16) return _mm_loadu_si128(reinterpret_cast<const __m128i *>(from));
  const auto size = static_cast<unsigned>(count);
  const std::uint64_t low =
      size < 8 ? bytes::load_low_bytes(from, size) : bytes::load<std::uint64_t>(from);
  const std::uint64_t high = size < 8 ? 0 : bytes::load_low_bytes(from + 8, size - 8);
  return _mm_set_epi64x(static_cast<long long>(high), static_cast<long long>(low));
}

// The first `count` bytes (0 or more; at most 16 are written).
[[gnu::always_inline]] inline void store_bytes(unsigned char *to, __m128i vector, int count) {
  if (count >= 16) return _mm_storeu_si128(reinterpret_cast<__m128i *>(to), vector);
  const auto size = static_cast<unsigned>(count);
  if (count < 8) return bytes::store_low_bytes(to, low_word(vector), size);
  bytes::store(to, low_word(vector));
  bytes::store_low_bytes(to + 8, high_word(vector), size - 8);
}

}  // namespace campotipo::codes::packed
