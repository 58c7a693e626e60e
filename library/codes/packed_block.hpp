#pragma once

#include <immintrin.h>

#include <bit>
#include <cstdint>

#include "base/bytes.hpp"
#include "codes/alphabet.hpp"

// Sixteen positions of a packed code, or sixteen characters, at a time: one code or character in
// each lane of a vector, twelve stored bytes for all.
namespace campotipo::codes::packed {

inline constexpr int kBlock = 16;
inline constexpr int kBlockBytes = 12;

inline __m128i in_all_lanes(int value) { return _mm_set1_epi8(static_cast<char>(value)); }

inline unsigned lane_mask(__m128i lanes) { return static_cast<unsigned>(_mm_movemask_epi8(lanes)); }

// All bits of the lanes in front of `count`, which may lie outside 0 to 16.
inline __m128i lanes_below(int count) {
  const __m128i lanes = _mm_setr_epi8(0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15);
  return _mm_cmpgt_epi8(in_all_lanes(count), lanes);
}

inline __m128i from_words(std::uint64_t low, std::uint64_t high) {
  return _mm_set_epi64x(static_cast<long long>(high), static_cast<long long>(low));
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
  if (count < 8) return from_words(bytes::load_low_bytes(from, size), 0);
  return from_words(bytes::load<std::uint64_t>(from), bytes::load_low_bytes(from + 8, size - 8));
}

// The first `count` bytes (0 or more; at most 16 are written).
[[gnu::always_inline]] inline void store_bytes(void *destination, __m128i vector, int count) {
  auto *to = static_cast<unsigned char *>(destination);
  if (count >= 16) return _mm_storeu_si128(reinterpret_cast<__m128i *>(to), vector);
  const auto size = static_cast<unsigned>(count);
  if (count < 8) return bytes::store_low_bytes(to, low_word(vector), size);
  bytes::store(to, low_word(vector));
  bytes::store_low_bytes(to + 8, high_word(vector), size - 8);
}

// The first `length` characters (0 to 15) and a NUL.
inline void store_text(char *to, __m128i characters, int length) {
  const std::uint64_t low = low_word(characters);
  const auto size = static_cast<unsigned>(length) + 1;
  if (size < 8) return bytes::store_low_bytes(to, low, size);
  // The tail overlaps the head, so that every length takes the same two stores.
  const auto both = bytes::uint128{high_word(characters)} << 64 | low;
  bytes::store(to, low);
  bytes::store(to + size - 8, static_cast<std::uint64_t>(both >> (8 * (size - 8))));
}

// The codes of sixteen characters. The lanes of bytes without a code hold anything and have their
// bit in `none`. Those in `small` may hold small letters, with the codes of their capitals, and
// other bytes of the same two rows of the character set.
struct Classified {
  __m128i codes;
  unsigned none;
  unsigned small;
};

#if defined(__SSE4_1__)

// The codes of the sixteen bytes that begin at `first`.
template <int first>
inline __m128i row_of_codes() {
  alignas(16) static constexpr auto row = [] {
    std::array<unsigned char, 16> codes{};
    for (std::size_t i = 0; i < 16; ++i) {
      const unsigned char entry = kEntries[first + i];
      codes[i] = entry < kSmallLetter ? entry : 0;
    }
    return codes;
  }();
  return _mm_load_si128(reinterpret_cast<const __m128i *>(row.data()));
}

// The low four bits of a byte look it up in four rows of the character set, and bits 4, 5 and 6
// choose among them, each shifted to where a blend looks. 0x60 to 0x7F come out as the rows two
// further up, which folds small letters. From 0x80 on a shuffle gives 0.
inline Classified classify(const char *text) {
  const __m128i characters = _mm_loadu_si128(reinterpret_cast<const __m128i *>(text));
  const __m128i bit4 = _mm_slli_epi16(characters, 3);
  const __m128i bit5 = _mm_slli_epi16(characters, 2);
  const __m128i bit6 = _mm_slli_epi16(characters, 1);
  const __m128i marks = _mm_blendv_epi8(_mm_shuffle_epi8(row_of_codes<0x20>(), characters),
                                        _mm_shuffle_epi8(row_of_codes<0x30>(), characters), bit4);
  const __m128i letters = _mm_blendv_epi8(_mm_shuffle_epi8(row_of_codes<0x40>(), characters),
                                          _mm_shuffle_epi8(row_of_codes<0x50>(), characters), bit4);
  const __m128i below_letters = _mm_blendv_epi8(_mm_setzero_si128(), marks, bit5);
  const __m128i codes = _mm_blendv_epi8(below_letters, letters, bit6);
  return {codes, lane_mask(_mm_cmpeq_epi8(codes, _mm_setzero_si128())),
          lane_mask(_mm_and_si128(bit5, bit6))};
}

// Codes to stored bytes: neighbours join to 12 bits, then to 24, whose bytes are turned round.
inline __m128i pack(__m128i codes) {
  const __m128i pairs = _mm_maddubs_epi16(codes, _mm_set1_epi16(0x0140));
  const __m128i fours = _mm_madd_epi16(pairs, _mm_set1_epi32(0x00011000));
  return _mm_shuffle_epi8(fours,
                          _mm_setr_epi8(2, 1, 0, 6, 5, 4, 10, 9, 8, 14, 13, 12, -1, -1, -1, -1));
}

// Stored bytes to codes. The shuffle gives each group of 3 bytes, b0 b1 b2, a lane of four as b1 b0
// b2 b1; the products then shift two of its codes right and the two others left (W. Mula, "Base64
// encoding with SIMD instructions").
inline __m128i unpack(__m128i stored) {
  const __m128i groups =
      _mm_shuffle_epi8(stored, _mm_setr_epi8(1, 0, 2, 1, 4, 3, 5, 4, 7, 6, 8, 7, 10, 9, 11, 10));
  const __m128i even = _mm_mulhi_epu16(_mm_and_si128(groups, _mm_set1_epi32(0x0FC0FC00)),
                                       _mm_set1_epi32(0x04000040));
  const __m128i odd = _mm_mullo_epi16(_mm_and_si128(groups, _mm_set1_epi32(0x003F03F0)),
                                      _mm_set1_epi32(0x01000010));
  return _mm_or_si128(even, odd);
}

// What the table of characters_of is asked for: the marks each by their distance from the letters,
// and three places that no mark needs for the ranges that run along with the character set.
inline constexpr int kDigitPlace = 14;
inline constexpr int kBlankPlace = kDigitPlace + 1;

// Sixteen stored codes as characters, NUL from the first code on that is none. Lanes behind it hold
// anything.
inline __m128i characters_of(__m128i stored) {
  alignas(16) static constexpr auto offsets = [] {
    std::array<char, 16> offset{};
    offset[0] = 'A' - kFirstLetterCode;
    for (int code = kLastLetterCode + 1; code <= kCharacters; ++code)
      offset[static_cast<std::size_t>(code - kLastLetterCode)] =
          static_cast<char>(kCharacterOfCode[static_cast<std::size_t>(code)] - code);
    offset[kDigitPlace] = '0' - kZeroCode;
    offset[kBlankPlace] = ' ' - kBlankCode;
    return offset;
  }();
  static_assert(kCharacters - kLastLetterCode < kDigitPlace);
  const __m128i codes = unpack(stored);
  __m128i place = _mm_subs_epu8(codes, in_all_lanes(kLastLetterCode));
  const __m128i below_letters = _mm_cmpgt_epi8(in_all_lanes(kFirstLetterCode), codes);
  place = _mm_or_si128(place, _mm_and_si128(below_letters, in_all_lanes(kDigitPlace)));
  place = _mm_sub_epi8(place, _mm_cmpeq_epi8(codes, in_all_lanes(kBlankCode)));
  const __m128i table = _mm_loadu_si128(reinterpret_cast<const __m128i *>(offsets.data()));
  const __m128i characters = _mm_add_epi8(codes, _mm_shuffle_epi8(table, place));
  const __m128i none = _mm_or_si128(_mm_cmpeq_epi8(codes, _mm_setzero_si128()),
                                    _mm_cmpgt_epi8(codes, in_all_lanes(kCharacters)));
  return _mm_andnot_si128(none, characters);
}

#else

inline std::uint64_t entries_of_eight(const char *text) {
  std::uint64_t entries = 0;
#pragma GCC unroll 8
  for (int i = 0; i < 8; ++i)
    entries |= std::uint64_t{kEntries[static_cast<unsigned char>(text[i])]} << (8 * i);
  return entries;
}

inline Classified classify(const char *text) {
  const __m128i entries = from_words(entries_of_eight(text), entries_of_eight(text + 8));
  // One place to the left in each lane takes the mark of a small letter to bit 7.
  return {_mm_and_si128(entries, in_all_lanes(0x3F)), lane_mask(entries),
          lane_mask(_mm_add_epi8(entries, entries))};
}

// Eight codes of six bits as the six bytes that hold them.
inline std::uint64_t six_bytes(std::uint64_t fours) {
  return __builtin_bswap64((fours << 40) | (fours >> 32 << 16));
}

inline __m128i pack(__m128i codes) {
  const __m128i first = _mm_slli_epi16(_mm_and_si128(codes, _mm_set1_epi16(0xFF)), 6);
  const __m128i pairs = _mm_or_si128(first, _mm_srli_epi16(codes, 8));
  const __m128i fours = _mm_madd_epi16(pairs, _mm_set1_epi32(0x00011000));
  const std::uint64_t head = six_bytes(low_word(fours));
  const std::uint64_t tail = six_bytes(high_word(fours));
  return from_words(head | tail << 48, tail >> 16);
}

// The characters of the eight codes in the high 48 bits.
inline std::uint64_t eight_characters(std::uint64_t stream) {
  std::uint64_t characters = 0;
#pragma GCC unroll 8
  for (int i = 0; i < 8; ++i) {
    const auto code = static_cast<std::size_t>(stream >> (58 - 6 * i) & 63);
    characters |= std::uint64_t{static_cast<unsigned char>(kCharacterOfCode[code])} << (8 * i);
  }
  return characters;
}

inline __m128i characters_of(__m128i stored) {
  const std::uint64_t head = low_word(stored);
  const std::uint64_t tail = head >> 48 | high_word(stored) << 16;
  return from_words(eight_characters(__builtin_bswap64(head)),
                    eight_characters(__builtin_bswap64(tail)));
}

#endif

}  // namespace campotipo::codes::packed
