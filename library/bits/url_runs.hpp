#pragma once

#include <array>
#include <bit>
#include <cstdint>
#include <cstring>

#include "base/bytes.hpp"
#include "base/locale.hpp"
#include "bits/hex.hpp"
#include "bits/url_blocks.hpp"

// Percent encoding from run to run, for processors that do not shuffle bytes. The result is made in
// a scratch, where a store may run over, and copied out exactly.
namespace campotipo::bits::url {

inline constexpr unsigned kBlock = 2 * kPair;
inline constexpr unsigned kBlockRead = kBlock + kVector;

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
template <class Writer, class Put>
inline unsigned put_block(Writer *scratch, const char *block, std::uint64_t stops, Put put) {
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
inline void put_rest(char *dest, const char *src, Stops stops, Put put) {
  Scratch<3 * kBlock + kVector> scratch(dest);
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

inline void encode_rest(char *dest, const char *src) {
  put_rest(
      dest, src, [](const char *pair) { return not_plain(pair); },
      [](char **to, const char *place) { return put_escape(to, place); });
}

inline void decode_rest(char *dest, const char *src) {
  put_rest(
      dest, src, [](const char *pair) { return percents_or_nuls(pair); },
      [](char **to, const char *place) { return put_escaped(to, place); });
}

}  // namespace campotipo::bits::url
