#pragma once

#include <campotipo/codes.h>

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>

#include "base/digits.hpp"
#include "codes/alphabet.hpp"
#include "codes/x86/packed_read.hpp"
#include "codes/x86/packed_save.hpp"

// Packed codes of n positions at six bits each, one position at a time. What goes sixteen positions
// at a time, and gives the same, is asked first where there is such a processor.
namespace campotipo::codes::packed {

// A number of positions that is part of the type, so that all sizes are known to the compiler.
template <int n>
inline constexpr std::integral_constant<int, n> fixed{};

// ---- The stored form ---------------------------------------------------------------------------
//
// The codes stand one behind the other as bits, the most significant first, and the bytes are that
// row of bits cut every eight: four positions are three bytes. "AB-1" in five positions, with two
// spare bits behind them:
//
//     character   A      B      -      1      none
//     code        12     13     38     3      0      spare
//     bits        001100 001101 100110 000011 000000 00
//     bits        00110000 11011001 10000011 00000000
//     bytes       30       D9       83       00

// The four positions that begin at `at`, as one number with the first in its top six bits. Bytes
// behind the field are not read, and their positions are empty.
inline unsigned four_at(const unsigned char *src, std::size_t n, std::size_t at) {
  const unsigned char *from = src + at / 4 * 3;
  unsigned four = unsigned{from[0]} << 16;
  if (n - at > 1) four |= unsigned{from[1]} << 8;
  if (n - at > 2) four |= from[2];
  return four;
}

inline unsigned code_at(const unsigned char *src, std::size_t n, std::size_t position) {
  return four_at(src, n, position & ~std::size_t{3}) >> (18 - position % 4 * 6) & 63;
}

// NUL where the code is none and so ends the data.
inline char character_at(const unsigned char *src, std::size_t n, std::size_t position) {
  return kCharacterOfCode[code_at(src, n, position)];
}

constexpr std::size_t positions_of(int n) { return n > 0 ? static_cast<std::size_t>(n) : 0; }

// ---- Saving ------------------------------------------------------------------------------------

inline void put_four(unsigned char *dest, std::size_t n, std::size_t at, unsigned four) {
  unsigned char *to = dest + at / 4 * 3;
  to[0] = static_cast<unsigned char>(four >> 16);
  if (n - at > 1) to[1] = static_cast<unsigned char>(four >> 8);
  if (n - at > 2) to[2] = static_cast<unsigned char>(four);
}

// Empties all positions from `end` on, and the spare bits.
inline void clear_from(unsigned char *dest, std::size_t positions, std::size_t end) {
  const std::size_t kept = (6 * end + 7) / 8;
  if (6 * end % 8 != 0) dest[kept - 1] &= static_cast<unsigned char>(0xFF00 >> 6 * end % 8);
  std::memset(dest + kept, 0, (6 * positions + 7) / 8 - kept);
}

// What of a text counts: the characters that have a code, without the blanks that end it.
struct Count {
  std::size_t length = 0;
  std::size_t digits = 0;
  bool only_digits() const { return length != 0 && digits == length; }
};

inline Count count_codes(Codes codes) {
  Count count;
  std::size_t seen = 0;
  while (const unsigned code = codes.next()) {
    ++seen;
    if (code != kBlankCode) count.length = seen;
    count.digits += code - kZeroCode <= kNineCode - kZeroCode;
  }
  return count;
}

// Takes the codes that are cut from the left. Result: how many zeros go in front of the others.
inline std::size_t look_ahead(Codes &codes, std::size_t positions, int opc) {
  const Count count = count_codes(codes);
  if (has_flag(opc, CODALFA_OPC_CORTA_ESQUERDA))
    for (std::size_t left = count.length; left > positions; --left) codes.next();
  const bool fills = has_flag(opc, CODALFA_OPC_ZEROS) &&
                     (!has_flag(opc, CODALFA_OPC_SO_DIGITOS) || count.only_digits());
  return fills && count.length < positions ? positions - count.length : 0;
}

inline int save_by_character(unsigned char *dest, const char *text, int n, int opc) {
  const std::size_t positions = positions_of(n);
  Codes codes(text);
  const bool looks = has_flag(opc, CODALFA_OPC_ZEROS | CODALFA_OPC_CORTA_ESQUERDA);
  const std::size_t fill = looks ? look_ahead(codes, positions, opc) : 0;

  // What is stored ends behind the last character that is no blank; blanks behind it are taken back.
  std::size_t end = 0;
  unsigned four;
  if (fill == 0)
    for (; end + 4 <= positions && codes.take_four(four); end += 4)
      put_four(dest, SIZE_MAX, end, four);
  const char *taken = codes.place();
  unsigned code = kZeroCode;
  for (std::size_t at = end; at < positions && code != 0; at += 4) {
    const std::size_t behind = std::min(at + 4, positions);
    four = 0;
    for (std::size_t position = at; position < behind; ++position) {
      code = position < fill ? unsigned{kZeroCode} : codes.next();
      four = four << 6 | code;
      if (code <= kBlankCode) continue;
      end = position + 1;
      taken = codes.place();
    }
    put_four(dest, positions, at, four << 6 * (at + 4 - behind));
  }
  // At the end of a full field a blank stays if the text goes on behind it.
  if (end < positions && code == kBlankCode) {
    Codes rest = codes;
    do code = rest.next();
    while (code == kBlankCode);
    if (code != 0) {
      end = positions;
      taken = codes.place();
    }
  }
  clear_from(dest, positions, end);
  return !codes.strange_before(taken);
}

// 1, or 0 if a character without a code was dropped.
template <class N>
[[gnu::always_inline]] inline int save(unsigned char *dest, const char *text, N n, int opc) {
  return save_in_blocks(dest, text, n, opc);
}

// ---- Reading -----------------------------------------------------------------------------------

inline char *decode_by_position(char *dest, const unsigned char *src, int n) {
  const std::size_t positions = positions_of(n);
  for (std::size_t at = 0; at < positions; at += 4) {
    const unsigned four = four_at(src, positions, at);
    const std::size_t here = std::min<std::size_t>(positions - at, 4);
    for (std::size_t i = 0; i < here; ++i, ++dest) {
      *dest = kCharacterOfCode[four >> (18 - 6 * i) & 63];
      if (*dest == '\0') return dest;
    }
  }
  *dest = '\0';
  return dest;
}

inline bool only_digits(const char *text, std::size_t length) {
  return length != 0 && std::all_of(text, text + length, digits::is_digit);
}

// What the options make of the whole text of a field, which ends at `end` with a NUL.
[[gnu::noinline]] inline char *apply_options(char *text, char *end, int opc, int width) {
  const auto length = static_cast<std::size_t>(end - text);
  const std::size_t wanted = width > 0 ? static_cast<std::size_t>(width) : 0;
  if (length < wanted) {
    const std::size_t missing = wanted - length;
    if (has_flag(opc, CODALFA_OPC_ZEROS) &&
        (!has_flag(opc, CODALFA_OPC_SO_DIGITOS) || only_digits(text, length))) {
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
  char *end = decode_in_blocks(dest, src, n);
  if (width > 0 || has_flag(opc, CODALFA_OPC_ZEROS)) return apply_options(dest, end, opc, width);
  return dest;
}

inline int has_content(const unsigned char *src, int n, int opc) {
  const std::size_t positions = positions_of(n);
  for (std::size_t position = 0; position < positions; ++position) {
    const char c = character_at(src, positions, position);
    if (c != '0' || !has_flag(opc, CODALFA_OPC_ZERO_VAZIO)) return c != '\0';
  }
  return 0;
}

// -1, 0 or 1 by the first position at which the characters differ, unless both have ended by then.
// NUL comes before every character.
inline int compare(const unsigned char *a, const unsigned char *b, int n) {
  const std::size_t positions = positions_of(n);
  for (std::size_t position = 0; position < positions; ++position) {
    const char of_a = character_at(a, positions, position);
    const char of_b = character_at(b, positions, position);
    if (of_a != of_b || of_a == '\0') return (of_a > of_b) - (of_a < of_b);
  }
  return 0;
}

// Characters, then empty positions, then spare bits of 0. A blank in front of an empty position
// would have been dropped; in the last position one may be left of a text that was cut.
inline int is_well_formed(const unsigned char *src, int n) {
  const std::size_t positions = positions_of(n);
  unsigned before = kZeroCode;
  for (std::size_t position = 0; position < positions; ++position) {
    const unsigned code = code_at(src, positions, position);
    if (code > kCharacters) return 0;
    if (code == 0 ? before == kBlankCode : before == 0) return 0;
    before = code;
  }
  constexpr unsigned char kSpare[] = {0, 3, 15, 63};
  return (positions == 0 || (src[CODALFA_BYTES(positions) - 1] & kSpare[positions % 4]) == 0);
}

// ---- The sizes that the header promises --------------------------------------------------------

consteval bool header_agrees() {
  constexpr int sizes[][3] = {
      {CODALF05_CHARACTERS, CODALF05_BYTES, CODALF05_TEXT_SIZE},
      {CODALF12_CHARACTERS, CODALF12_BYTES, CODALF12_TEXT_SIZE},
      {CODALF14_CHARACTERS, CODALF14_BYTES, CODALF14_TEXT_SIZE},
      {CODALF17_CHARACTERS, CODALF17_BYTES, CODALF17_TEXT_SIZE},
      {CODALF20_CHARACTERS, CODALF20_BYTES, CODALF20_TEXT_SIZE},
      {CODALF32_CHARACTERS, CODALF32_BYTES, CODALF32_TEXT_SIZE},
      {CODALF36_CHARACTERS, CODALF36_BYTES, CODALF36_TEXT_SIZE},
      {CODALF40_CHARACTERS, CODALF40_BYTES, CODALF40_TEXT_SIZE},
  };
  for (const auto &[characters, bytes, text_size] : sizes)
    if (bytes != (6 * characters + 7) / 8 || text_size != characters + 1) return false;
  return true;
}
static_assert(header_agrees());

// ---- The ends of the alphabet ------------------------------------------------------------------

inline constinit std::atomic<int> greatest_character{0};

// Concurrent first calls store the same answer.
inline int find_greatest_character() {
  int greatest = greatest_character.load(std::memory_order_relaxed);
  if (greatest != 0) return greatest;
  for (const unsigned char c : kAlphabet)
    if (c > greatest) greatest = c;
  greatest_character.store(greatest, std::memory_order_relaxed);
  return greatest;
}

}  // namespace campotipo::codes::packed
