#pragma once

#include <campotipo/codes.h>

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "base/bytes.hpp"
#include "codes/alphabet.hpp"
#include "codes/packed_block.hpp"

// Packed code to text, and what can be asked of a field. A field is read in exactly its bytes.
namespace campotipo::codes::packed {

// The characters of the block that begins at position `at`, NUL behind the last position and from
// the first end mark on.
[[gnu::always_inline]] inline __m128i characters_at(const unsigned char *src, int n, int at) {
  const int offset = at / kBlock * kBlockBytes;
  const __m128i characters = characters_of(load_bytes(src + offset, CODALFA_BYTES(n) - offset));
  // Spare bits are not a position, though they may look like one.
  return n - at < kBlock ? _mm_and_si128(characters, lanes_below(n - at)) : characters;
}

inline unsigned nul_mask(__m128i characters) {
  return lane_mask(_mm_cmpeq_epi8(characters, _mm_setzero_si128()));
}

// Writes the text of a field and its NUL, and nothing behind it. Result: the NUL.
template <class N>
[[gnu::always_inline]] inline char *decode(char *dest, const unsigned char *src, N n) {
  for (int at = 0; at < n; at += kBlock, dest += kBlock) {
    const __m128i characters = characters_at(src, n, at);
    const unsigned nuls = nul_mask(characters);
    if (nuls != 0 || n - at < kBlock) {
      const int length = std::countr_zero(nuls);
      store_text(dest, characters, length);
      return dest + length;
    }
    _mm_storeu_si128(reinterpret_cast<__m128i *>(dest), characters);
  }
  *dest = '\0';
  return dest;
}

inline bool only_digits(const char *from, const char *to) {
  if (from == to) return false;
  while (from != to && static_cast<unsigned char>(*from - '0') < 10) ++from;
  return from == to;
}

// What the options make of the whole text of a field, which ends at `end` with a NUL.
[[gnu::noinline]] inline char *apply_options(char *text, char *end, int opc, int width) {
  const auto length = static_cast<std::size_t>(end - text);
  const std::size_t wanted = width > 0 ? static_cast<std::size_t>(width) : 0;
  if (length < wanted) {
    const std::size_t missing = wanted - length;
    if (has_flag(opc, CODALFA_OPC_ZEROS) &&
        (!has_flag(opc, CODALFA_OPC_SO_DIGITOS) || only_digits(text, end))) {
      std::memmove(text + missing, text, length);
      std::memset(text, '0', missing);
    } else {
      std::memset(end, ' ', missing);
    }
    text[wanted] = '\0';
  } else if (wanted > 0) {
    if (has_flag(opc, CODALFA_OPC_CORTA_ESQUERDA)) std::memmove(text, end - wanted, wanted + 1);
  } else if (has_flag(opc, CODALFA_OPC_ZEROS) && !has_flag(opc, CODALFA_OPC_SO_DIGITOS)) {
    const char *first = text;
    while (*first == '0') ++first;
    std::memmove(text, first, static_cast<std::size_t>(end - first) + 1);
  }
  return text;
}

template <class N>
[[gnu::always_inline]] inline char *extract(char *dest, const unsigned char *src, N n, int opc,
                                            int width) {
  char *end = decode(dest, src, n);
  if (width > 0 || has_flag(opc, CODALFA_OPC_ZEROS)) return apply_options(dest, end, opc, width);
  return dest;
}

// The code at a position of a field.
inline unsigned code_at(const unsigned char *src, int position) {
  const unsigned char *at = src + position / 4 * 3;
  switch (position % 4) {
    case 0:
      return at[0] >> 2;
    case 1:
      return (at[0] & 3u) << 4 | at[1] >> 4;
    case 2:
      return (at[1] & 15u) << 2 | at[2] >> 6;
    default:
      return at[2] & 63u;
  }
}

inline int has_content(const unsigned char *src, int n, int opc) {
  if (n <= 0) return 0;
  int position = 0;
  if (has_flag(opc, CODALFA_OPC_ZERO_VAZIO)) {
    // Four positions of "0" are always the same three bytes.
    while (n - position >= 4 && bytes::load_le<3>(src + position / 4 * 3) == 0x822008)
      position += 4;
    while (position < n && code_at(src, position) == kZeroCode) ++position;
    if (position == n) return 0;
  }
  return is_character(code_at(src, position));
}

// Eight positions as one number, the first in its top six bits; 0 behind the last stored byte.
inline constexpr int kGroup = 8;

inline std::uint64_t group_at(const unsigned char *src, int n, int at) {
  const int offset = at / kGroup * 6;
  const int left = CODALFA_BYTES(n) - offset;
  if (left >= 8) return __builtin_bswap64(bytes::load<std::uint64_t>(src + offset)) >> 16 << 16;
  return __builtin_bswap64(bytes::load_low_bytes(src + offset, left < 6 ? left : 6));
}

// Whether the data ends in front of position `count`, 0 to 8. Codes are tested four at a time, 12
// bits apart: adding 63 carries into bit 6 from code 1 on, adding 13 from code 51 on.
constexpr bool ends_before(std::uint64_t group, int count) {
  constexpr std::uint64_t kOnes = 0x001001001001;
  const std::uint64_t behind = ~std::uint64_t{0} >> (6 * count);
  // Positions from `count` on are made blanks.
  group = (group & ~behind) | (behind & 0x0410410410410000);
  const std::uint64_t odd = group >> 16 & 63 * kOnes;
  const std::uint64_t even = group >> 22 & 63 * kOnes;
  const std::uint64_t present = (odd + 63 * kOnes) & (even + 63 * kOnes);
  const std::uint64_t unknown = (odd + 13 * kOnes) | (even + 13 * kOnes);
  return ((present & ~unknown) & 64 * kOnes) != 64 * kOnes;
}
static_assert(!ends_before(0x0410410410410000, 8) && !ends_before(0, 0));
static_assert(ends_before(0x0410410410400000, 8) && !ends_before(0x0410410410400000, 7));
static_assert(ends_before(0xCC00000000000000, 1) && !ends_before(0xC800000000000000, 1));

// -1, 0 or 1 by the first position at which the characters differ, unless both have ended by then.
template <class N>
[[gnu::always_inline]] inline int compare(const unsigned char *a, const unsigned char *b, N n) {
  for (int at = 0; at < n; at += kGroup) {
    const std::uint64_t left = group_at(a, n, at);
    const std::uint64_t right = group_at(b, n, at);
    if (left == right) {
      if (n - at <= kGroup || ends_before(left, kGroup)) return 0;
      continue;
    }
    const int position = std::countl_zero(left ^ right) / 6;
    // Spare bits may differ.
    if (position >= n - at) return 0;
    const int shift = 58 - 6 * position;
    const char of_a = kCharacterOfCode[left >> shift & 63];
    const char of_b = kCharacterOfCode[right >> shift & 63];
    if (ends_before(left, position)) return 0;
    return (of_a > of_b) - (of_a < of_b);
  }
  return 0;
}

}  // namespace campotipo::codes::packed
