#pragma once

#include <immintrin.h>

#include <array>
#include <bit>
#include <cstdint>

#include "base/bytes.hpp"
#include "base/locale.hpp"
#include "bits/hex.hpp"
#include "bits/url_blocks.hpp"

// Percent encoding by shuffles: small groups of bytes are spread or pulled together at once, at a
// cost that does not depend on where the escapes stand. A pair's result is made in a scratch, where
// a store may run over, and copied out exactly.
namespace campotipo::bits::url {

inline __m128i low_lane(__m256i pair) { return _mm256_castsi256_si128(pair); }
inline __m128i high_lane(__m256i pair) { return _mm256_extracti128_si256(pair, 1); }
constexpr unsigned bits_below(unsigned place) { return static_cast<unsigned>((1ull << place) - 1); }

// A pair of which some more bytes can be read, for a text that may end before them.
template <unsigned Read>
class Readable {
 public:
  // cppcheck-suppress uninitMemberVar ; written by copy_text before it is read
  explicit Readable(const char *text) : pair_(text) {
    if (!bytes::same_page(text, Read)) [[unlikely]] {
      copy_text<Read>(copy_, text);
      pair_ = copy_;
    }
  }
  const char *pair() const { return pair_; }

 private:
  const char *pair_;
  char copy_[Read];
};

inline unsigned nuls(__m256i characters) {
  return mask_of(_mm256_cmpeq_epi8(characters, _mm256_setzero_si256()));
}

// Four characters, their high digits, their low digits and four times "%", as one group of 16
// bytes: which of them make up the result, for each set of characters to escape.
inline constexpr auto kSpread = [] {
  std::array<std::array<unsigned char, 16>, 16> rows{};
  for (unsigned escaped = 0; escaped < 16; ++escaped) {
    unsigned at = 0;
    for (unsigned char i = 0; i < 4; ++i) {
      if ((escaped >> i & 1) == 0) {
        rows[escaped][at++] = i;
        continue;
      }
      for (const unsigned part : {12u, 4u, 8u})
        rows[escaped][at++] = static_cast<unsigned char>(part + i);
    }
  }
  return rows;
}();

// The group's set of characters to escape lies at the bits from `place` on. It is moved to where it
// is the distance of its row.
inline char *spread(char *to, __m128i group, unsigned escaped, int place) {
  static_assert(sizeof kSpread[0] == 16);
  const unsigned distance = std::rotr(escaped, place - 4) & 0xF0;
  const auto *rows = reinterpret_cast<const char *>(kSpread.data());
  store16(to, _mm_shuffle_epi8(group, load16(rows + distance)));
  return to + 4 + 2 * std::popcount(distance);
}

alignas(32) inline constexpr Table kDigits = {'0', '1', '2', '3', '4', '5', '6', '7', '8', '9', 'A',
                                              'B', 'C', 'D', 'E', 'F', '0', '1', '2', '3', '4', '5',
                                              '6', '7', '8', '9', 'A', 'B', 'C', 'D', 'E', 'F'};

// Of what lies behind the length nothing counts.
inline void spread_pair(char *to, __m256i characters, unsigned length, unsigned escaped) {
  const __m256i half = _mm256_set1_epi8(15);
  const __m256i low = look_up(kDigits, _mm256_and_si256(characters, half));
  const __m256i high = look_up(kDigits, _mm256_and_si256(_mm256_srli_epi16(characters, 4), half));
  const __m256i percents = _mm256_set1_epi8('%');
  const __m256i front = _mm256_unpacklo_epi32(characters, high);
  const __m256i front_ends = _mm256_unpacklo_epi32(low, percents);
  const __m256i back = _mm256_unpackhi_epi32(characters, high);
  const __m256i back_ends = _mm256_unpackhi_epi32(low, percents);
  const __m256i groups[4] = {
      _mm256_unpacklo_epi64(front, front_ends), _mm256_unpackhi_epi64(front, front_ends),
      _mm256_unpacklo_epi64(back, back_ends), _mm256_unpackhi_epi64(back, back_ends)};
  for (int i = 0; i < 4; ++i) to = spread(to, low_lane(groups[i]), escaped, 4 * i);
  if (length <= kVector) return;
  for (int i = 0; i < 4; ++i) to = spread(to, high_lane(groups[i]), escaped, 16 + 4 * i);
}

// The class of an ASCII character is the same in every locale, so only others are asked for.
[[gnu::noinline, gnu::cold]] inline unsigned without_letters(const char *pair, unsigned escaped,
                                                             unsigned beyond_ascii) {
  for (; beyond_ascii != 0; beyond_ascii &= beyond_ascii - 1) {
    const int place = std::countr_zero(beyond_ascii);
    if (locale::is_alnum(pair[place])) escaped &= ~(1u << place);
  }
  return escaped;
}

inline void encode_rest(char *dest, const char *src) {
  Scratch<3 * kPair + kVector> scratch(dest);
  for (; *src != '\0'; src += kPair) {
    const Readable<kPair> text(src);
    const __m256i characters = load32(text.pair());
    const unsigned ends = nuls(characters);
    const auto length = static_cast<unsigned>(std::countr_zero(ends));
    unsigned escaped = not_plain(text.pair()) & bits_below(length);
    const unsigned beyond_ascii = mask_of(characters) & escaped;
    if (beyond_ascii != 0) [[unlikely]]
      escaped = without_letters(text.pair(), escaped, beyond_ascii);
    spread_pair(scratch.end(), characters, length, escaped);
    const auto escapes = static_cast<unsigned>(std::popcount(escaped));
    scratch.set_end(scratch.end() + length + 2 * escapes);
    if (ends != 0) break;
  }
  scratch.finish();
}

// For each set of eight characters to keep, where they stand.
inline constexpr auto kPull = [] {
  std::array<std::array<unsigned char, 8>, 256> rows{};
  for (unsigned kept = 0; kept < 256; ++kept) {
    unsigned at = 0;
    for (unsigned char i = 0; i < 8; ++i)
      if ((kept >> i & 1) != 0) rows[kept][at++] = i;
  }
  return rows;
}();

inline char *pull(char *to, __m128i characters, unsigned kept) {
  const auto &row = kPull[kept & 255];
  const __m128i places = _mm_loadl_epi64(reinterpret_cast<const __m128i *>(row.data()));
  _mm_storel_epi64(reinterpret_cast<__m128i *>(to), _mm_shuffle_epi8(characters, places));
  return to + std::popcount(kept & 255);
}

inline void pull_pair(char *to, __m256i characters, unsigned kept) {
  const __m128i low = low_lane(characters);
  const __m128i high = high_lane(characters);
  to = pull(to, low, kept);
  to = pull(to, _mm_unpackhi_epi64(low, low), kept >> 8);
  to = pull(to, high, kept >> 16);
  pull(to, _mm_unpackhi_epi64(high, high), kept >> 24);
}

alignas(32) inline constexpr Table kDigitRows = rows_of([](char c) { return hex::value(c) >= 0; });

// Values of hexadecimal digits. Another character's may be 16 or more; shifted as a high digit, it
// then spills into the lane of that character, where no escape begins: "%" itself gives 5.
inline __m256i digit_values(__m256i characters) {
  const __m256i letters = _mm256_cmpgt_epi8(characters, _mm256_set1_epi8('9'));
  return _mm256_add_epi8(_mm256_and_si256(characters, _mm256_set1_epi8(15)),
                         _mm256_and_si256(letters, _mm256_set1_epi8(9)));
}

// In place too: a pair is read, with the two bytes behind it, before its result is written, and the
// result is no longer than what was read.
inline void decode_rest(char *dest, const char *src) {
  constexpr unsigned kRead = kPair + 2;
  Scratch<kPair + 8> scratch(dest);
  std::uint64_t used_up = 0;  // by an escape that began in the pair before
  for (;; src += kPair) {
    const Readable<kRead> text(src);
    const __m256i characters = load32(text.pair());
    const unsigned ends = nuls(characters);
    const auto length = static_cast<unsigned>(std::countr_zero(ends));
    const __m256i percents = _mm256_cmpeq_epi8(characters, _mm256_set1_epi8('%'));
    const unsigned escapes = mask_of(percents) & bits_below(length);
    const __m256i second = load32(text.pair() + 2);
    const unsigned second_digits = ~not_in_rows(kDigitRows, second);
    const unsigned first_digits = second_digits << 1 | (hex::value(text.pair()[1]) >= 0 ? 1 : 0);
    const unsigned begun = escapes & first_digits;
    const unsigned whole = begun & second_digits;
    used_up |= (escapes & ~whole) | std::uint64_t{begun} << 1 | std::uint64_t{whole} << 2;
    const unsigned kept = ~static_cast<unsigned>(used_up) & bits_below(length);
    used_up >>= kPair;
    const __m256i high = digit_values(load32(text.pair() + 1));
    const __m256i low = digit_values(second);
    const __m256i value = _mm256_or_si256(_mm256_slli_epi16(high, 4), low);
    pull_pair(scratch.end(), _mm256_blendv_epi8(characters, value, percents), kept);
    scratch.set_end(scratch.end() + std::popcount(kept));
    if (ends != 0) break;
  }
  scratch.finish();
}

}  // namespace campotipo::bits::url
