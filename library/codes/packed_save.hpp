#pragma once

#include <campotipo/codes.h>

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "base/bytes.hpp"
#include "base/locale.hpp"
#include "codes/alphabet.hpp"
#include "codes/packed_block.hpp"

// Text to packed code. Texts go in blocks of sixteen characters; what needs characters to be passed
// over or has to be looked at twice goes one character at a time.
namespace campotipo::codes::packed {

// ---- Saving, one character at a time -----------------------------------------------------------

// How much of a text counts: its characters that have a code, without the blanks that end it.
struct TextCount {
  std::size_t digits = 0;
  std::size_t others = 0;
  std::size_t length() const { return digits + others; }
  bool only_digits() const { return digits != 0 && others == 0; }
};

inline TextCount count_text(const char *text) {
  TextCount count;
  std::size_t blanks = 0;
  for (; *text != '\0'; ++text) {
    const int code = code_of(*text);
    if (code < 0) continue;
    const bool digit = code >= kZeroCode && code <= kNineCode;
    count.digits += digit;
    count.others += !digit;
    blanks = code == kBlankCode ? blanks + 1 : 0;
  }
  count.others -= blanks;
  return count;
}

// Writes codes to a field's bits, most significant first.
class CodeWriter {
 public:
  explicit CodeWriter(unsigned char *to) : to_(to) {}

  void put(int code) {
    held_ = held_ << 6 | static_cast<unsigned>(code);
    bits_ += 6;
    if (bits_ < 8) return;
    bits_ -= 8;
    *to_++ = static_cast<unsigned char>(held_ >> bits_);
  }

  // The last byte's spare bits are 0.
  void finish() {
    if (bits_ != 0) *to_ = static_cast<unsigned char>(held_ << (8 - bits_));
  }

 private:
  unsigned char *to_;
  unsigned held_ = 0;
  unsigned bits_ = 0;
};

[[gnu::noinline]] inline int save_by_character(unsigned char *dest, const char *text, int n,
                                               int opc) {
  const auto positions = static_cast<std::size_t>(n);
  const TextCount count = count_text(text);
  const std::size_t length = count.length();
  std::size_t cut = 0;
  std::size_t fill = 0;
  if (length > positions && has_flag(opc, CODALFA_OPC_CORTA_ESQUERDA)) cut = length - positions;
  if (length < positions && has_flag(opc, CODALFA_OPC_ZEROS) &&
      (!has_flag(opc, CODALFA_OPC_SO_DIGITOS) || count.only_digits()))
    fill = positions - length;

  CodeWriter writer(dest);
  std::size_t position = 0;
  for (; position < fill; ++position) writer.put(kZeroCode);
  int result = 1;
  for (std::size_t taken = 0; taken < length && position < positions; ++text) {
    const int code = code_of(*text);
    if (code < 0) {
      result = 0;
    } else if (++taken > cut) {
      writer.put(code);
      ++position;
    }
  }
  for (; position < positions; ++position) writer.put(0);
  writer.finish();
  return result;
}

// ---- Saving in blocks --------------------------------------------------------------------------

// The codes of a stretch of text as long as `blocks` blocks.
template <int blocks>
struct Codes {
  __m128i block[blocks];

  // One bit a character: those whose code lies from `first` to `last`.
  std::uint64_t in_range(int first, int last) const {
    std::uint64_t mask = 0;
#pragma GCC unroll 4
    for (int i = 0; i < blocks; ++i) {
      const __m128i place = _mm_sub_epi8(block[i], in_all_lanes(first));
      const __m128i nearest = _mm_min_epu8(place, in_all_lanes(last - first));
      mask |= std::uint64_t{lane_mask(_mm_cmpeq_epi8(place, nearest))} << (kBlock * i);
    }
    return mask;
  }

  // Stores the codes from lane `fill` up to `end`, those of "0" in front and none behind.
  [[gnu::always_inline]] void store(unsigned char *dest, int n, int fill, int end) const {
    // Where the last byte has spare bits, the next code would end up in them.
    if (n % 4 != 0 && end > n) end = n;
#pragma GCC unroll 4
    for (int i = 0; i < blocks; ++i) {
      __m128i codes = _mm_and_si128(block[i], lanes_below(end - kBlock * i));
      if (fill > 0) {
        const __m128i filled = lanes_below(fill - kBlock * i);
        codes = _mm_or_si128(_mm_andnot_si128(filled, codes),
                             _mm_and_si128(filled, in_all_lanes(kZeroCode)));
      }
      // A block in front of another may write its four empty bytes, for the next one to fill.
      store_bytes(dest + kBlockBytes * i, pack(codes), CODALFA_BYTES(n) - kBlockBytes * i);
    }
  }
};

// A text as far as a window of blocks shows it.
template <int blocks>
struct Window {
  static_assert(blocks >= 1 && blocks <= 4);
  static constexpr int kSize = blocks * kBlock;

  Codes<blocks> codes;
  std::uint64_t none = 0;
  std::uint64_t small = 0;
  std::uint64_t not_blank = 0;

  [[gnu::always_inline]] explicit Window(const char *text) {
#pragma GCC unroll 4
    for (int i = 0; i < blocks; ++i) {
      const Classified block = classify(text + kBlock * i);
      const __m128i above_blank = _mm_cmpgt_epi8(block.codes, in_all_lanes(kBlankCode));
      codes.block[i] = block.codes;
      none |= std::uint64_t{block.none} << (kBlock * i);
      small |= std::uint64_t{block.small} << (kBlock * i);
      not_blank |= std::uint64_t{lane_mask(above_blank)} << (kBlock * i);
    }
  }

  // The characters in front of the first that has no code, one bit each.
  std::uint64_t inside() const { return ~none & (none - 1) & (~std::uint64_t{0} >> (64 - kSize)); }

  // The text's length without the blanks that end it, or at least that if it goes on.
  int length() const {
    // Without the bit that is always set, a zero would need a branch.
    return std::bit_width((not_blank & inside()) << 1 | 1) - 1;
  }

  // Whether the first character without a code is the end of the text.
  bool all_have_codes(const char *text) const {
    return none == 0 || text[std::countr_zero(none)] == '\0';
  }
  bool ends() const { return none != 0; }
  bool folds() const { return (small & inside()) != 0; }

  // Whether all characters that fold are letters.
  bool only_letters_fold() const {
    return (small & inside() & ~codes.in_range(kFirstLetterCode, kLastLetterCode)) == 0;
  }

  bool only_digits(int length) const {
    const std::uint64_t counted = (std::uint64_t{1} << length) - 1;
    return length != 0 && (counted & ~codes.in_range(kZeroCode, kNineCode)) == 0;
  }
};

// For a text with small letters that is stored already, as if each had its own capital. Stores it
// anew where the locale says otherwise. Asking after the store leaves little to keep over the call.
[[gnu::noinline]] inline int confirm_folding(unsigned char *dest, const char *text, int n,
                                             int opc) {
  return locale::capitals_are_plain() ? 1 : save_by_character(dest, text, n, opc);
}

// For a text that may have to be moved to the right or to the left.
template <int blocks, class N>
[[gnu::noinline]] inline int save_moved(unsigned char *dest, const char *text, N n, int opc) {
  const Window<blocks> window(text);
  const int length = window.length();
  const bool cuts = has_flag(opc, CODALFA_OPC_CORTA_ESQUERDA);
  if (!window.all_have_codes(text) || (!window.ends() && (cuts || length < n)) ||
      (window.folds() && !(window.only_letters_fold() && locale::capitals_are_plain())))
    return save_by_character(dest, text, n, opc);
  const bool to_left = length > n && cuts;
  const bool to_right = length < n && has_flag(opc, CODALFA_OPC_ZEROS) &&
                        (!has_flag(opc, CODALFA_OPC_SO_DIGITOS) || window.only_digits(length));
  if (!to_left && !to_right) {
    window.codes.store(dest, n, 0, length);
    return 1;
  }
  // Read again from where the last character falls into the last position.
  const char *from = text + (length - n);
  const auto reach = static_cast<std::size_t>(to_left ? length - n : n - length);
  if (!bytes::same_page(to_left ? text : from, window.kSize + reach))
    return save_by_character(dest, text, n, opc);
  Window<blocks>(from).codes.store(dest, n, n - length, n);
  return 1;
}

// n lies in the last of the blocks.
template <int blocks, class N>
[[gnu::always_inline]] inline int save_in_blocks(unsigned char *dest, const char *text, N n,
                                                 int opc) {
  if (!bytes::same_page(text, Window<blocks>::kSize)) [[unlikely]]
    return save_by_character(dest, text, n, opc);
  if (has_flag(opc, CODALFA_OPC_ZEROS | CODALFA_OPC_CORTA_ESQUERDA))
    return save_moved<blocks>(dest, text, n, opc);
  const Window<blocks> window(text);
  const int length = window.length();
  if (!window.all_have_codes(text) || (!window.ends() && length < n)) [[unlikely]]
    return save_by_character(dest, text, n, opc);
  window.codes.store(dest, n, 0, length);
  if (!window.folds()) return 1;
  return window.only_letters_fold() ? confirm_folding(dest, text, n, opc)
                                    : save_by_character(dest, text, n, opc);
}

// Empties all positions from `position` on, and the spare bits.
inline void clear_from(unsigned char *dest, int n, int position) {
  const int bytes = CODALFA_BYTES(n);
  const int first = position / 4 * 3 + position % 4 * 6 / 8;
  if (first == bytes) return;
  dest[first] &= static_cast<unsigned char>(~(0xFF >> position % 4 * 6 % 8));
  std::memset(dest + first + 1, 0, static_cast<std::size_t>(bytes - first - 1));
}

// For more positions than a window shows: block after block, as long as the text gives no cause to
// look ahead.
[[gnu::noinline]] inline int save_long(unsigned char *dest, const char *text, int n, int opc) {
  if (has_flag(opc, CODALFA_OPC_ZEROS | CODALFA_OPC_CORTA_ESQUERDA))
    return save_by_character(dest, text, n, opc);
  int length = 0;
  bool ends = false;
  bool folds = false;
  for (int at = 0; at < n && !ends; at += kBlock) {
    const char *from = text + at;
    if (!bytes::same_page(from, kBlock)) return save_by_character(dest, text, n, opc);
    const Window<1> window(from);
    if (!window.all_have_codes(from) || (window.folds() && !window.only_letters_fold()))
      return save_by_character(dest, text, n, opc);
    if (window.length() != 0) length = at + window.length();
    folds |= window.folds();
    ends = window.ends();
    window.codes.store(dest + at / kBlock * kBlockBytes, n - at, 0, kBlock);
  }
  if (!ends && length < n) return save_by_character(dest, text, n, opc);
  clear_from(dest, n, length < n ? length : n);
  return folds ? confirm_folding(dest, text, n, opc) : 1;
}

// 1, or 0 if a character without a code was passed over.
template <class N>
[[gnu::always_inline]] inline int save(unsigned char *dest, const char *text, N n, int opc) {
  if (n <= 0) return 1;
  if (n <= 1 * kBlock) return save_in_blocks<1>(dest, text, n, opc);
  if (n <= 2 * kBlock) return save_in_blocks<2>(dest, text, n, opc);
  if (n <= 3 * kBlock) return save_in_blocks<3>(dest, text, n, opc);
  return save_long(dest, text, n, opc);
}

}  // namespace campotipo::codes::packed
