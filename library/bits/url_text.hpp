#pragma once

#include <campotipo/bits.h>

#include <bit>
#include <cstdint>
#include <cstring>

#include "base/bytes.hpp"
#include "base/char_words.hpp"
#include "base/hex.hpp"
#include "base/locale.hpp"
#include "bits/x86/url_stops.hpp"

// Percent encoding, block by block: what stays as it is is copied in runs, up to the next place that
// a mask of the block marks. Each block is made in a scratch, where a copy may run over, so that the
// caller's buffer is written exactly.
namespace campotipo::bits::url {

inline constexpr unsigned kBlock = 64;
inline constexpr unsigned kRun = 16;
inline constexpr unsigned kRead = kBlock + kRun;

// A bit for each byte of a block in which found(word) has bit 7.
template <class Found>
inline std::uint64_t in_block(const char *block, Found found) {
  std::uint64_t mask = 0;
  for (unsigned at = 0; at < kBlock; at += 8) {
    const std::uint64_t bits = found(bytes::load<std::uint64_t>(block + at)) >> 7;
    mask |= (bits * 0x0102040810204080 >> 56) << at;
  }
  return mask;
}

inline std::uint64_t percents_or_nuls(const char *block) {
  if constexpr (x86::kStops) return x86::percents_or_nuls(block);
  return in_block(block, [](std::uint64_t word) {
    return words::in_range(word, '%', '%') | words::in_range(word, 0, 0);
  });
}

inline std::uint64_t not_plain(const char *block) {
  if constexpr (x86::kStops) return x86::not_plain(block);
  return ~in_block(block, [](std::uint64_t word) {
    return words::in_range(word | words::every(0x20), 'a', 'z') | words::in_range(word, '0', '9') |
           words::in_range(word, '-', '.') | words::in_range(word, '_', '_') |
           words::in_range(word, '~', '~');
  });
}

// Copies [from, end) and up to 16 bytes more that do not count.
inline char *copy_run(char *to, const char *from, const char *end) {
  const auto count = end - from;
  std::memcpy(to, from, kRun);
  for (long i = kRun; i < count; i += kRun) [[unlikely]] std::memcpy(to + i, from + i, kRun);
  return to + count;
}

// The next bytes of a text with NULs behind its end, for where they may not all be read.
[[gnu::noinline, gnu::cold]] inline const char *copy_text(char *copy, const char *text) {
  const std::size_t length = strnlen(text, kRead);
  std::memcpy(copy, text, length);
  std::memset(copy + length, 0, kRead - length);
  return copy;
}

// put(&to, place) writes what belongs to a place where the mask of stops(block) has a bit and tells
// for how many bytes it stands: three at most, so that it may hang over the end of its block.
template <class Stops, class Put>
inline void convert(char *dest, const char *src, Stops stops, Put put) {
  for (;;) {
    char copy[kRead], made[3 * kBlock + kRun];
    const char *block = bytes::same_page(src, kRead) ? src : copy_text(copy, src);
    std::uint64_t mask = stops(block);
    if (mask == 0) {
      std::memmove(dest, block, kBlock);  // dest may lie less than a block before the source
      dest += kBlock;
      src += kBlock;
      continue;
    }
    const char *run = block;
    char *to = made;
    bool ended = false;
    for (; mask != 0 && !ended; mask &= mask - 1) {
      const char *stop = block + std::countr_zero(mask);
      to = copy_run(to, run, stop);
      ended = *stop == '\0';
      run = ended ? stop : stop + put(&to, stop);
    }
    if (ended) *to++ = '\0';
    if (!ended && run < block + kBlock) {
      to = copy_run(to, run, block + kBlock);
      run = block + kBlock;
    }
    const auto count = static_cast<std::size_t>(to - made);
    std::memcpy(dest, made, count);
    if (ended) return;
    dest += count;
    src += run - block;
  }
}

// The class of an ASCII character is the same in every locale, so only others are asked for.
inline unsigned put_escape(char **to, const char *place) {
  const auto byte = static_cast<unsigned char>(*place);
  if (byte > 127 && locale::is_alnum(*place)) {
    *(*to)++ = *place;
    return 1;
  }
  (*to)[0] = '%';
  (*to)[1] = hex::kDigits[1][byte >> 4];
  (*to)[2] = hex::kDigits[1][byte & 15];
  *to += 3;
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
  convert(dest, src, not_plain, put_escape);
  return dest;
}

inline char *decode(char *dest, const char *src) {
  convert(dest, src, percents_or_nuls, put_escaped);
  return dest;
}

}  // namespace campotipo::bits::url
