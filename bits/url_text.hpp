#pragma once

#include <campotipo/bits.h>
#ifdef __AVX2__
#include <immintrin.h>
#endif

#include <array>
#include <bit>
#include <cstdint>
#include <cstring>

#include "base/bytes.hpp"
#include "base/locale.hpp"
#include "bits/hex.hpp"
#include "bits/vectors.hpp"

// Percent encoding. Text that stays as it is goes straight to its place in vectors. From the first
// escape on the result is made in a scratch, where a store may run over, and copied out exactly.
namespace campotipo::bits::url {

inline constexpr unsigned kVector = 16;
inline constexpr unsigned kPair = 2 * kVector;
inline constexpr unsigned kBlock = 2 * kPair;
inline constexpr unsigned kBlockRead = kBlock + kVector;

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

constexpr bool is_plain(unsigned c) {
  const unsigned lower = c | 0x20;
  return (lower >= 'a' && lower <= 'z') || (c >= '0' && c <= '9') || c == '-' || c == '.' ||
         c == '_' || c == '~';
}

// For each low half of a character the high halves with which it is plain, as one bit each. From
// half 8 on a character has no bit.
inline constexpr auto kPlainRows = [] {
  std::array<unsigned char, 16> rows{};
  for (unsigned c = 0; c < 128; ++c)
    if (is_plain(c)) rows[c & 15] = static_cast<unsigned char>(rows[c & 15] | 1u << (c >> 4));
  return rows;
}();
inline constexpr std::array<unsigned char, 16> kRowBits = {1, 2, 4, 8, 16, 32, 64, 128};

inline __m256i look_up(const std::array<unsigned char, 16> &table, __m256i halves) {
  return _mm256_shuffle_epi8(_mm256_broadcastsi128_si256(load16(table.data())), halves);
}

inline unsigned not_plain(const char *pair) {
  const __m256i characters = load32(pair);
  const __m256i half = _mm256_set1_epi8(15);
  const __m256i row = look_up(kPlainRows, _mm256_and_si256(characters, half));
  const __m256i bit = look_up(kRowBits, _mm256_and_si256(_mm256_srli_epi16(characters, 4), half));
  return mask_of(_mm256_cmpeq_epi8(_mm256_and_si256(row, bit), _mm256_setzero_si256()));
}

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

// Copies 1 to 32 bytes and touches no other.
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

// Copies pairs of vectors as long as stops(pair) is 0; *dest and *src move along. Result: whether
// that was the whole text, now ended by its NUL.
template <class Stops>
inline bool copy_clean(char **dest, const char **src, Stops stops) {
  char *to = *dest;
  const char *from = *src;
  for (;; to += kPair, from += kPair) {
    char copy[kPair];
    const char *pair = from;
    if (!bytes::same_page(from, kPair)) [[unlikely]] {
      copy_text<kPair>(copy, from);
      pair = copy;
    }
    const unsigned found = stops(pair);
    if (found != 0) {
      const auto clean = static_cast<unsigned>(std::countr_zero(found));
      *dest = to;
      *src = from;
      if (from[clean] != '\0') return false;
      copy_exactly(to, from, clean + 1);
      return true;
    }
    copy_exactly(to, pair, kPair);
  }
}

// Where a result is made before it is known how long it gets.
class Scratch {
 public:
  // cppcheck-suppress uninitMemberVar ; bytes are read only in front of end_, where they are written
  explicit Scratch(char *dest) : dest_(dest) {}

  // Where the next bytes go: three for each byte of a block, and a vector that does not count.
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
  char bytes_[kKept + 3 * kBlock + kVector];
};

// Copies [from, end) and up to 16 bytes more that do not count.
inline char *copy_over(char *to, const char *from, const char *end) {
  const auto count = end - from;
  store16(to, load16(from));
  for (long i = kVector; i < count; i += kVector) [[unlikely]] store16(to + i, load16(from + i));
  return to + count;
}

// Copies one block, of which kBlockRead bytes can be read, but for the places with a bit in stops.
// put(&to, place) writes what belongs there and tells for how many bytes it stands. Result: how far
// it came, beyond the block where an escape hangs over; 0 at the NUL.
template <class Put>
inline unsigned put_block(Scratch *scratch, const char *block, std::uint64_t stops, Put put) {
  char *to = scratch->end();
  const char *run = block;
  for (; stops != 0; stops &= stops - 1) {
    const char *stop = block + std::countr_zero(stops);
    to = copy_over(to, run, stop);
    if (*stop == '\0') {
      scratch->set_end(to);
      return 0;
    }
    run = stop + put(&to, stop);
  }
  if (run < block + kBlock) {
    to = copy_over(to, run, block + kBlock);
    run = block + kBlock;
  }
  scratch->set_end(to);
  return static_cast<unsigned>(run - block);
}

template <class Stops, class Put>
[[gnu::noinline]] inline void put_rest(char *dest, const char *src, Stops stops, Put put) {
  Scratch scratch(dest);
  for (unsigned done = 1; done != 0; src += done) {
    char copy[kBlockRead];
    const char *block = src;
    if (!bytes::same_page(src, kBlockRead)) [[unlikely]] {
      copy_text<kBlockRead>(copy, src);
      block = copy;
    }
    const std::uint64_t low = stops(block);
    const std::uint64_t high = stops(block + kPair);
    done = put_block(&scratch, block, low | high << kPair, put);
  }
  scratch.finish();
}

template <class Stops, class Put>
inline char *convert(char *dest, const char *src, Stops stops, Put put) {
  char *to = dest;
  if (!copy_clean(&to, &src, stops)) put_rest(to, src, stops, put);
  return dest;
}

// The escape of each byte, its three characters in the low bytes.
inline constexpr auto kEscapes = [] {
  constexpr char digits[] = "0123456789ABCDEF";
  std::array<std::uint32_t, 256> escapes{};
  for (unsigned byte = 0; byte < 256; ++byte)
    escapes[byte] =
        static_cast<std::uint32_t>('%' | digits[byte >> 4] << 8 | digits[byte & 15] << 16);
  return escapes;
}();

// The class of an ASCII character is the same in every locale, so only others are asked for.
inline unsigned put_escape(char **to, const char *place) {
  const auto byte = static_cast<unsigned char>(*place);
  if (byte > 127 && locale::is_alnum(*place)) {
    *(*to)++ = *place;
  } else {
    bytes::store(*to, kEscapes[byte]);
    *to += 3;
  }
  return 1;
}

// Of an escape that is not complete nothing is written.
inline unsigned put_escaped(char **to, const char *place) {
  const int high = hex::value(place[1]);
  const int low = hex::value(place[2]);
  if ((high | low) < 0) return high < 0 ? 1 : 2;
  *(*to)++ = static_cast<char>(high << 4 | low);
  return 3;
}

inline char *encode(char *dest, const char *src) {
  return convert(
      dest, src, [](const char *pair) { return not_plain(pair); },
      [](char **to, const char *place) { return put_escape(to, place); });
}

inline char *decode(char *dest, const char *src) {
  return convert(
      dest, src, [](const char *pair) { return percents_or_nuls(pair); },
      [](char **to, const char *place) { return put_escaped(to, place); });
}

}  // namespace campotipo::bits::url
