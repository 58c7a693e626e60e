#pragma once

#ifdef __AVX2__
#include <immintrin.h>
#endif

#include <array>
#include <bit>
#include <cstdint>
#include <cstring>

#include "base/bytes.hpp"
#include "bits/vectors.hpp"

// What percent encoding looks for in a text, 32 bytes at a time, and exact copies.
namespace campotipo::bits::url {

inline constexpr unsigned kVector = 16;
inline constexpr unsigned kPair = 2 * kVector;

// What to stop at. Each tells with one bit a byte where a pair of vectors has one; a NUL is one in
// both.
#ifdef __AVX2__

inline __m256i load32(const char *from) {
  return _mm256_loadu_si256(reinterpret_cast<const __m256i *>(from));
}
inline unsigned mask_of(__m256i lanes) {
  return static_cast<unsigned>(_mm256_movemask_epi8(lanes));
}

inline unsigned percents_or_nuls(const char *pair) {
  const __m256i characters = load32(pair);
  return mask_of(_mm256_or_si256(_mm256_cmpeq_epi8(characters, _mm256_set1_epi8('%')),
                                 _mm256_cmpeq_epi8(characters, _mm256_setzero_si256())));
}

constexpr bool is_plain(char c) {
  const int lower = c | 0x20;
  return (lower >= 'a' && lower <= 'z') || (c >= '0' && c <= '9') || c == '-' || c == '.' ||
         c == '_' || c == '~';
}

// Sixteen bytes for each half of a pair of vectors, which shuffle within their halves.
using Table = std::array<unsigned char, 32>;

// For each low half of a character the high halves with which it satisfies the test, as one bit
// each. From half 8 on a character has no bit.
template <class Test>
constexpr Table rows_of(Test test) {
  Table rows{};
  for (unsigned c = 0; c < 128; ++c) {
    if (!test(static_cast<char>(c))) continue;
    for (const unsigned at : {c & 15, (c & 15) + 16})
      rows[at] = static_cast<unsigned char>(rows[at] | 1u << (c >> 4));
  }
  return rows;
}

alignas(32) inline constexpr Table kPlainRows = rows_of(is_plain);
alignas(32) inline constexpr Table kRowBits = {1, 2, 4, 8, 16, 32, 64, 128, 0,  0,  0,  0,
                                               0, 0, 0, 0, 1,  2,  4,  8,   16, 32, 64, 128};

inline __m256i look_up(const Table &table, __m256i halves) {
  return _mm256_shuffle_epi8(load32(reinterpret_cast<const char *>(table.data())), halves);
}

// One bit for each character that a table of such rows does not hold.
inline unsigned not_in_rows(const Table &rows, __m256i characters) {
  const __m256i half = _mm256_set1_epi8(15);
  const __m256i row = look_up(rows, _mm256_and_si256(characters, half));
  const __m256i bit = look_up(kRowBits, _mm256_and_si256(_mm256_srli_epi16(characters, 4), half));
  return mask_of(_mm256_cmpeq_epi8(_mm256_and_si256(row, bit), _mm256_setzero_si256()));
}

inline unsigned not_plain(const char *pair) { return not_in_rows(kPlainRows, load32(pair)); }

#else

inline unsigned mask_of(__m128i lanes) { return static_cast<unsigned>(_mm_movemask_epi8(lanes)); }

inline unsigned percents_or_nuls(__m128i characters) {
  return mask_of(_mm_or_si128(_mm_cmpeq_epi8(characters, _mm_set1_epi8('%')),
                              _mm_cmpeq_epi8(characters, _mm_setzero_si128())));
}
inline unsigned percents_or_nuls(const char *pair) {
  return percents_or_nuls(load16(pair)) | percents_or_nuls(load16(pair + kVector)) << kVector;
}

inline __m128i in_range(__m128i characters, char low, char span) {
  const __m128i offset = _mm_sub_epi8(characters, _mm_set1_epi8(low));
  return _mm_cmpeq_epi8(_mm_min_epu8(offset, _mm_set1_epi8(span)), offset);
}

inline unsigned not_plain(__m128i characters) {
  const __m128i lower = _mm_or_si128(characters, _mm_set1_epi8(0x20));
  const __m128i letters = in_range(lower, 'a', 25);
  // From "-" to "9" all but "/".
  const __m128i digits = _mm_andnot_si128(_mm_cmpeq_epi8(characters, _mm_set1_epi8('/')),
                                          in_range(characters, '-', 12));
  const __m128i others = _mm_or_si128(_mm_cmpeq_epi8(characters, _mm_set1_epi8('_')),
                                      _mm_cmpeq_epi8(characters, _mm_set1_epi8('~')));
  return mask_of(_mm_or_si128(_mm_or_si128(letters, digits), others)) ^ 0xFFFFu;
}
inline unsigned not_plain(const char *pair) {
  return not_plain(load16(pair)) | not_plain(load16(pair + kVector)) << kVector;
}

#endif

// The next Size bytes of a text with NULs behind its end, for where they may not all be read.
template <unsigned Size>
[[gnu::noinline, gnu::cold]] inline void copy_text(char *copy, const char *text) {
  unsigned i = 0;
  for (; i < Size && text[i] != '\0'; ++i) copy[i] = text[i];
  std::memset(copy + i, 0, Size - i);
}

// Copies 0 to 32 bytes and touches no other.
inline void copy_exactly(char *to, const char *from, unsigned count) {
  if (count >= kVector) {
    const __m128i last = load16(from + count - kVector);
    store16(to, load16(from));
    store16(to + count - kVector, last);
  } else if (count >= 8) {
    const auto last = bytes::load<std::uint64_t>(from + count - 8);
    bytes::store(to, bytes::load<std::uint64_t>(from));
    bytes::store(to + count - 8, last);
  } else {
    bytes::store_low_bytes(to, bytes::load_low_bytes(from, count), count);
  }
}

// Where a result is made before it is known how long it gets: a store may run over by Room bytes.
template <unsigned Room>
class Scratch {
 public:
  // cppcheck-suppress uninitMemberVar ; bytes are read only in front of end_, where they are written
  explicit Scratch(char *dest) : dest_(dest) {}

  char *end() { return end_; }

  void set_end(char *end) {
    end_ = end;
    if (end_ > bytes_ + kKept) flush();
  }

  void finish() {
    *end_++ = '\0';
    flush();
  }

 private:
  static constexpr unsigned kKept = 128;

  void flush() {
    const auto count = static_cast<std::size_t>(end_ - bytes_);
    std::memcpy(dest_, bytes_, count);
    dest_ += count;
    end_ = bytes_;
  }

  char *dest_;
  char *end_ = bytes_;
  char bytes_[kKept + Room];
};

}  // namespace campotipo::bits::url
