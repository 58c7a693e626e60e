#pragma once

#include <cstddef>

#include "codes/alphabet.hpp"

// Texts of sixteen characters at a time to packed codes. What is not taken so is left to the engine.
//
// What keeps it: without it a file of CODALF12 fields takes 1.5 times the instructions to load (452 a
// field instead of 309), and twelve characters 14 ns instead of 5, which is the goal.
namespace campotipo::codes::packed {

inline int save_by_character(unsigned char *dest, const char *text, int n, int opc);
inline void clear_from(unsigned char *dest, std::size_t positions, std::size_t end);

// Not in line, since a kernel would keep registers for it.
[[gnu::noinline]] inline int by_character(unsigned char *dest, const char *text, int n, int opc) {
  return save_by_character(dest, text, n, opc);
}

}  // namespace campotipo::codes::packed

#if !defined(__SSE4_1__) || defined(CAMPOTIPO_PLAIN)

namespace campotipo::codes::packed {

template <class N>
inline int save_in_blocks(unsigned char *dest, const char *text, N n, int opc) {
  return by_character(dest, text, n, opc);
}

}  // namespace campotipo::codes::packed

#else

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>

#include "base/locale.hpp"
#include "codes/x86/packed_lanes.hpp"

namespace campotipo::codes::packed {

// The codes of the sixteen bytes that begin at `first`.
template <int first>
inline __m128i row_of_codes() {
  alignas(16) static constexpr auto row = [] {
    std::array<unsigned char, 16> codes{};
    for (std::size_t i = 0; i < 16; ++i) {
      const unsigned char entry = kEntries[first + i];
      codes[i] = entry < kAskLocale ? entry : 0;
    }
    return codes;
  }();
  return _mm_load_si128(reinterpret_cast<const __m128i *>(row.data()));
}

// Codes to stored bytes. The codes a b c d of four lanes are joined to pairs, then to 24 bits, whose
// three bytes are turned round:
//
//     lanes    00aaaaaa 00bbbbbb 00cccccc 00dddddd
//     pairs    a * 64 + b, c * 64 + d
//     fours    (a * 64 + b) * 4096 + (c * 64 + d)
//     bytes    aaaaaabb bbbbcccc ccdddddd
inline __m128i pack(__m128i codes) {
  const __m128i pairs = _mm_maddubs_epi16(codes, _mm_set1_epi16(0x0140));
  const __m128i fours = _mm_madd_epi16(pairs, _mm_set1_epi32(0x00011000));
  return _mm_shuffle_epi8(fours,
                          _mm_setr_epi8(2, 1, 0, 6, 5, 4, 10, 9, 8, 14, 13, 12, -1, -1, -1, -1));
}

// A text as far as a number of blocks shows it: the codes, and one bit a character for what they
// are. Lanes of bytes without a code hold anything.
template <int blocks>
struct Window {
  static_assert(blocks >= 1 && blocks <= 3);
  static constexpr int kSize = blocks * kBlock;

  __m128i codes[blocks];
  std::uint64_t none = 0;
  std::uint64_t small = 0;  // the two rows of the character set in which small letters stand
  std::uint64_t not_blank = 0;

  // The low four bits of a byte look it up in four rows of the character set, and bits 4, 5 and 6
  // choose among them, each shifted to where a blend looks. 0x60 to 0x7F come out as the rows two
  // further up, which folds small letters. From 0x80 on a shuffle gives 0.
  [[gnu::always_inline]] explicit Window(const char *text) {
#pragma GCC unroll 3
    for (int i = 0; i < blocks; ++i) {
      const __m128i characters =
          _mm_loadu_si128(reinterpret_cast<const __m128i *>(text + kBlock * i));
      const __m128i bit4 = _mm_slli_epi16(characters, 3);
      const __m128i bit5 = _mm_slli_epi16(characters, 2);
      const __m128i bit6 = _mm_slli_epi16(characters, 1);
      const __m128i marks =
          _mm_blendv_epi8(_mm_shuffle_epi8(row_of_codes<0x20>(), characters),
                          _mm_shuffle_epi8(row_of_codes<0x30>(), characters), bit4);
      const __m128i letters =
          _mm_blendv_epi8(_mm_shuffle_epi8(row_of_codes<0x40>(), characters),
                          _mm_shuffle_epi8(row_of_codes<0x50>(), characters), bit4);
      const __m128i below_letters = _mm_blendv_epi8(_mm_setzero_si128(), marks, bit5);
      codes[i] = _mm_blendv_epi8(below_letters, letters, bit6);
      none |= zero_lanes(codes[i]) << (kBlock * i);
      small |= lane_mask(_mm_and_si128(bit5, bit6)) << (kBlock * i);
      not_blank |= lane_mask(_mm_cmpgt_epi8(codes[i], in_all_lanes(kBlankCode))) << (kBlock * i);
    }
  }

  // The characters in front of the first that has no code, one bit each.
  std::uint64_t inside() const { return ~none & (none - 1) & (~std::uint64_t{0} >> (64 - kSize)); }

  std::uint64_t folded() const { return small & inside(); }
  bool ends() const { return none != 0; }
  // Whether the first character without a code is the end of the text.
  bool all_have_codes(const char *text) const {
    return none == 0 || text[std::countr_zero(none)] == '\0';
  }

  // The text's length without the blanks that end it, or at least that if it goes on.
  int length() const {
    // Without the bit that is always set, a zero would need a branch.
    return std::bit_width((not_blank & inside()) << 1 | 1) - 1;
  }

  // Those among the characters that fold and yet are no letters, one bit each.
  std::uint64_t folded_marks() const {
    std::uint64_t letters = 0;
#pragma GCC unroll 3
    for (int i = 0; i < blocks; ++i) {
      const __m128i above = _mm_cmpgt_epi8(codes[i], in_all_lanes(kFirstLetterCode - 1));
      const __m128i below = _mm_cmpgt_epi8(in_all_lanes(kLastLetterCode + 1), codes[i]);
      letters |= lane_mask(_mm_and_si128(above, below)) << (kBlock * i);
    }
    return folded() & ~letters;
  }

  bool only_digits(int length) const requires(blocks == 1) {
    const __m128i above = _mm_cmpgt_epi8(codes[0], in_all_lanes(kZeroCode - 1));
    const __m128i below = _mm_cmpgt_epi8(in_all_lanes(kNineCode + 1), codes[0]);
    const std::uint64_t others = ~lane_mask(_mm_and_si128(above, below));
    return length != 0 && (others & ((std::uint64_t{1} << length) - 1)) == 0;
  }

  // Moves the first `length` codes `fill` positions on, and puts those of "0" in front of them.
  void fill_in_front(int length, int fill) requires(blocks == 1) {
    const __m128i kept = _mm_and_si128(codes[0], lanes_below(length));
    const __m128i moved = _mm_shuffle_epi8(kept, _mm_sub_epi8(lane_numbers(), in_all_lanes(fill)));
    const __m128i zeros = _mm_and_si128(lanes_below(fill), in_all_lanes(kZeroCode));
    codes[0] = _mm_or_si128(moved, zeros);
  }

  // Stores the codes up to `end`, and none behind.
  [[gnu::always_inline]] void store(unsigned char *dest, int n, int end) const {
    // Where the last byte has spare bits, the next code would end up in them.
    if (n % 4 != 0 && end > n) end = n;
#pragma GCC unroll 3
    for (int i = 0; i < blocks; ++i) {
      const __m128i kept = _mm_and_si128(codes[i], lanes_below(end - kBlock * i));
      // A block in front of another may write its four empty bytes, for the next one to fill.
      store_bytes(dest + kBlockBytes * i, pack(kept), CODALFA_BYTES(n) - kBlockBytes * i);
    }
  }
};

// For a field that is stored already, as if each small letter had its own capital. The marks that
// fold with them do so in no locale. Asking after the store leaves nothing to keep over the call.
[[gnu::noinline]] inline int confirm_folding(unsigned char *dest, const char *text, int n, int opc,
                                             bool marks) {
  return !marks && locale::Capitals().are_plain() ? 1 : by_character(dest, text, n, opc);
}

// n lies in the last of the blocks.
template <int blocks, class N>
[[gnu::always_inline]] inline int save_window(unsigned char *dest, const char *text, N n, int opc) {
  if (!bytes::same_page(text, Window<blocks>::kSize)) [[unlikely]]
    return by_character(dest, text, n, opc);
  const Window<blocks> window(text);
  const int length = window.length();
  if (!window.all_have_codes(text) || (!window.ends() && length < n)) [[unlikely]]
    return by_character(dest, text, n, opc);
  window.store(dest, n, length);
  if (window.folded() == 0) return 1;
  return confirm_folding(dest, text, n, opc, window.folded_marks() != 0);
}

// With zeros in front, into at most 16 positions.
[[gnu::noinline]] inline int save_filled(unsigned char *dest, const char *text, int n, int opc) {
  if (!bytes::same_page(text, kBlock)) return by_character(dest, text, n, opc);
  Window<1> window(text);
  int length = window.length();
  if (!window.all_have_codes(text) || (!window.ends() && length < n) || window.folded() != 0)
    return by_character(dest, text, n, opc);
  if (length < n && (!has_flag(opc, CODALFA_OPC_SO_DIGITOS) || window.only_digits(length))) {
    window.fill_in_front(length, n - length);
    length = n;
  }
  window.store(dest, n, length);
  return 1;
}

// For more positions than a window shows: block after block.
[[gnu::noinline]] inline int save_long(unsigned char *dest, const char *text, int n, int opc) {
  int length = 0;
  bool ends = false, folds = false, marks = false;
  for (int at = 0; at < n && !ends; at += kBlock) {
    const char *from = text + at;
    if (!bytes::same_page(from, kBlock)) return by_character(dest, text, n, opc);
    const Window<1> window(from);
    if (!window.all_have_codes(from)) return by_character(dest, text, n, opc);
    if (window.length() != 0) length = at + window.length();
    if (window.folded() != 0) {
      folds = true;
      marks |= window.folded_marks() != 0;
    }
    ends = window.ends();
    window.store(dest + at / kBlock * kBlockBytes, n - at, kBlock);
  }
  if (!ends && length < n) return by_character(dest, text, n, opc);
  clear_from(dest, static_cast<std::size_t>(n), static_cast<std::size_t>(std::min(length, n)));
  return folds ? confirm_folding(dest, text, n, opc, marks) : 1;
}

template <class N>
[[gnu::always_inline]] inline int save_in_blocks(unsigned char *dest, const char *text, N n,
                                                 int opc) {
  if (n <= 0 || has_flag(opc, CODALFA_OPC_ZEROS | CODALFA_OPC_CORTA_ESQUERDA)) {
    if (n <= 0 || n > kBlock || has_flag(opc, CODALFA_OPC_CORTA_ESQUERDA))
      return by_character(dest, text, n, opc);
    return save_filled(dest, text, n, opc);
  }
  if (n <= 1 * kBlock) return save_window<1>(dest, text, n, opc);
  if (n <= 2 * kBlock) return save_window<2>(dest, text, n, opc);
  if (n <= 3 * kBlock) return save_window<3>(dest, text, n, opc);
  return save_long(dest, text, n, opc);
}

}  // namespace campotipo::codes::packed

#endif
