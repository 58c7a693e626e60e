#pragma once

#include <campotipo/bits.h>

#include <bit>

#include "base/bytes.hpp"
#include "bits/url_blocks.hpp"
#ifdef __AVX2__
#include "bits/url_shuffles.hpp"
#else
#include "bits/url_runs.hpp"
#endif

// Percent encoding. Text that stays as it is goes straight to its place in vectors.
namespace campotipo::bits::url {

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

inline char *encode(char *dest, const char *src) {
  char *to = dest;
  if (!copy_clean(&to, &src, [](const char *pair) { return not_plain(pair); }))
    encode_rest(to, src);
  return dest;
}

inline char *decode(char *dest, const char *src) {
  char *to = dest;
  if (!copy_clean(&to, &src, [](const char *pair) { return percents_or_nuls(pair); }))
    decode_rest(to, src);
  return dest;
}

}  // namespace campotipo::bits::url
