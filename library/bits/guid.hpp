#pragma once

#include <campotipo/bits.h>
#include <fcntl.h>
#include <unistd.h>
#ifdef __SSSE3__
#include <tmmintrin.h>
#endif

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <ctime>

#include "base/bytes.hpp"
#include "bits/hex.hpp"
#include "bits/vectors.hpp"

// GUIDs as 16 bytes in text order, their texts, and a sequence of them.
namespace campotipo::bits::guid {

static_assert(sizeof(ZGUID_ESTADO) == 52 && alignof(ZGUID_ESTADO) == 1);
static_assert(offsetof(ZGUID_ESTADO, no) == 4 && offsetof(ZGUID_ESTADO, contador) == 10);
static_assert(offsetof(ZGUID_ESTADO, texto) == 14);
static_assert(sizeof(ZGUID_ESTADO::texto) == ZGUID_TEXTO_SIZE);

inline __m128i load4(const char *from) {
  return _mm_cvtsi32_si128(bytes::load<std::int32_t>(from));
}
inline __m128i load8(const char *from) {
  return _mm_loadl_epi64(reinterpret_cast<const __m128i *>(from));
}
inline void store4(char *to, __m128i value) { bytes::store(to, _mm_cvtsi128_si32(value)); }

// Thirty-two digits, as characters or as values.
struct Digits {
  __m128i first;
  __m128i second;
};

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
#ifdef __SSSE3__
  return _mm_maddubs_epi16(values, _mm_set1_epi16(0x0110));
#else
  const __m128i joined = _mm_or_si128(_mm_slli_epi16(values, 4), _mm_srli_epi16(values, 8));
  return _mm_and_si128(joined, _mm_set1_epi16(0xFF));
#endif
}

// The digits of "00112233-4455-6677-8899-aabbccddeeff".
inline Digits with_dashes(const char *text) {
  const __m128i low = _mm_unpacklo_epi32(load4(text + 9), load4(text + 14));
  const __m128i high = _mm_unpacklo_epi32(load4(text + 19), load4(text + 24));
  return {_mm_unpacklo_epi64(load8(text), low), _mm_unpacklo_epi64(high, load8(text + 28))};
}

// 32 digits, or the same in groups with dashes, perhaps behind a brace.
inline bool parse_usual(unsigned char *dest, const char *text) {
  text += text[0] == '{';
  if (!bytes::same_page(text, 36)) return false;
  Digits digits;
  if (text[8] == '-') {
    if (text[13] != '-' || text[18] != '-' || text[23] != '-') return false;
    digits = with_dashes(text);
  } else {
    digits = {load16(text), load16(text + 16)};
  }
  __m128i bad = _mm_setzero_si128();
  const __m128i first = join_pairs(digit_values(digits.first, &bad));
  const __m128i second = join_pairs(digit_values(digits.second, &bad));
  if (_mm_movemask_epi8(bad) != 0) return false;
  store16(dest, _mm_packus_epi16(first, second));
  return true;
}

// Any text: what is no digit is passed over, missing digits are 0.
[[gnu::noinline]] inline void parse_any(unsigned char *dest, const char *text) {
  std::uint64_t words[2] = {0, 0};
  for (unsigned count = 0; count < 32 && *text != '\0'; ++text) {
    const int value = hex::value(*text);
    if (value < 0) continue;
    words[count / 16] |= static_cast<std::uint64_t>(value) << (60 - 4 * (count % 16));
    ++count;
  }
  bytes::store(dest, __builtin_bswap64(words[0]));
  bytes::store(dest + 8, __builtin_bswap64(words[1]));
}

inline void parse(unsigned char *dest, const char *text) {
  if (!parse_usual(dest, text)) parse_any(dest, text);
}

// Characters of 16 digit values.
inline __m128i characters(__m128i values, bool capitals) {
#ifdef __SSSE3__
  return _mm_shuffle_epi8(load16(capitals ? "0123456789ABCDEF" : "0123456789abcdef"), values);
#else
  const char step = capitals ? 'A' - '9' - 1 : 'a' - '9' - 1;
  const __m128i letters = _mm_cmpgt_epi8(values, _mm_set1_epi8(9));
  const __m128i decimal = _mm_add_epi8(values, _mm_set1_epi8('0'));
  return _mm_add_epi8(decimal, _mm_and_si128(letters, _mm_set1_epi8(step)));
#endif
}

inline Digits digits_of(__m128i guid, bool capitals) {
  const __m128i half = _mm_set1_epi8(15);
  const __m128i high = _mm_and_si128(_mm_srli_epi16(guid, 4), half);
  const __m128i low = _mm_and_si128(guid, half);
  return {characters(_mm_unpacklo_epi8(high, low), capitals),
          characters(_mm_unpackhi_epi8(high, low), capitals)};
}

// Groups of 8, 4, 4, 4 and 12 digits with dashes between, 36 characters.
inline void put_with_dashes(char *to, Digits digits) {
#ifdef __SSSE3__
  const __m128i middle = _mm_alignr_epi8(digits.second, digits.first, 14);
  const __m128i front = _mm_shuffle_epi8(
      digits.first, _mm_setr_epi8(0, 1, 2, 3, 4, 5, 6, 7, -1, 8, 9, 10, 11, -1, 12, 13));
  const __m128i back =
      _mm_shuffle_epi8(middle, _mm_setr_epi8(0, 1, -1, 2, 3, 4, 5, -1, 6, 7, 8, 9, 10, 11, 12, 13));
  store16(to,
          _mm_or_si128(front, _mm_setr_epi8(0, 0, 0, 0, 0, 0, 0, 0, '-', 0, 0, 0, 0, '-', 0, 0)));
  store16(to + 16,
          _mm_or_si128(back, _mm_setr_epi8(0, 0, '-', 0, 0, 0, 0, '-', 0, 0, 0, 0, 0, 0, 0, 0)));
  store4(to + 32, _mm_srli_si128(digits.second, 12));
#else
  _mm_storel_epi64(reinterpret_cast<__m128i *>(to), digits.first);
  store4(to + 9, _mm_srli_si128(digits.first, 8));
  store4(to + 14, _mm_srli_si128(digits.first, 12));
  store4(to + 19, digits.second);
  store4(to + 24, _mm_srli_si128(digits.second, 4));
  _mm_storel_epi64(reinterpret_cast<__m128i *>(to + 28), _mm_srli_si128(digits.second, 8));
  to[8] = to[13] = to[18] = to[23] = '-';
#endif
}

inline void to_text(char *to, __m128i guid, int flags) {
  const Digits digits = digits_of(guid, (flags & ZGUID_MAIUSCULAS) != 0);
  if ((flags & ZGUID_CHAVES) != 0) *to++ = '{';
  if ((flags & ZGUID_HIFENS) != 0) {
    put_with_dashes(to, digits);
    to += 36;
  } else {
    store16(to, digits.first);
    store16(to + 16, digits.second);
    to += 32;
  }
  if ((flags & ZGUID_CHAVES) != 0) *to++ = '}';
  *to = '\0';
}

// The kernel makes a new value for each reading of its file and gives it whole. A stream of the C
// library would allocate.
inline void generate(unsigned char *dest) {
  char line[64] = "";
  const int file = open("/proc/sys/kernel/random/uuid", O_RDONLY | O_CLOEXEC);
  if (file >= 0) {
    if (read(file, line, sizeof line - 1) < 0) line[0] = '\0';
    close(file);
  }
  parse(dest, line);
}

// The counter, then the clock and the node with their last bytes first; "40" and "80" stand where a
// GUID has its version and its variant.
inline void write_text(ZGUID_ESTADO *state) {
  const std::uint32_t clock = state->tempo;
  const std::uint64_t node = bytes::load_le<6>(state->no);
  const std::uint64_t head =
      std::uint64_t{state->contador} << 32 | (clock & 0xFFFF) << 16 | 0x4000 | (clock >> 16 & 0xFF);
  const std::uint64_t rest = std::uint64_t{0x8000 | clock >> 24} << 48 | node;
  const __m128i guid = _mm_set_epi64x(static_cast<long long>(__builtin_bswap64(rest)),
                                      static_cast<long long>(__builtin_bswap64(head)));
  to_text(state->texto, guid, ZGUID_HIFENS);
}

inline void prepare(ZGUID_ESTADO *state, const unsigned char *node, int count) {
  std::memset(state, 0, sizeof *state);
  if (count > 0)
    std::memcpy(state->no, node,
                count < ZGUID_NO_BYTES ? static_cast<std::size_t>(count) : ZGUID_NO_BYTES);
  state->tempo = static_cast<std::uint32_t>(std::time(nullptr));
  write_text(state);
}

inline char *next(ZGUID_ESTADO *state) {
  if (++state->contador == 0) {
    unsigned char node[ZGUID_NO_BYTES];
    std::memcpy(node, state->no, sizeof node);
    prepare(state, node, ZGUID_NO_BYTES);
  } else {
    write_text(state);
  }
  return state->texto;
}

}  // namespace campotipo::bits::guid
