#pragma once

#include <climits>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "base/bytes.hpp"
#include "base/digits.hpp"
#include "quantities/member.hpp"
#include "quantities/operations.hpp"
#include "quantities/scan.hpp"

// Numbers of 21 to 50 digits in two or three binary limbs of 19 digits, the highest one shorter.
// Limbs are converted and compared by the number services.
namespace campotipo::quantities::wide {

template <int N, int Limb>
inline constexpr int kBytesOf = kMember<N>.bytes_of(Limb);

template <int N, int Limb>
inline constexpr const Operations &kServiceOf = kOperations[kBytesOf<N, Limb>];

template <int N, int Limb>
inline std::uint64_t load_limb(const unsigned char *field) {
  return bytes::load_le<kBytesOf<N, Limb>>(field + kLimbBytes * Limb);
}

template <int N>
inline bool is_zero(const unsigned char *field) {
  std::uint64_t any = load_limb<N, 0>(field) | load_limb<N, 1>(field);
  if constexpr (kMember<N>.limbs == 3) any |= load_limb<N, 2>(field);
  return any == 0;
}

template <int N, int Limb = 0>
inline bool is_well_formed(const unsigned char *field) {
  bool holds = load_limb<N, Limb>(field) < digits::kPowerOfTen[kMember<N>.digits_of(Limb)];
  if constexpr (Limb + 1 < kMember<N>.limbs) holds &= is_well_formed<N, Limb + 1>(field);
  return holds;
}

// `count` characters of a text, 1 to 19, with a NUL of their own, as the number services want them.
// Written in one piece of 32 bytes, so that a service that reads as many finds them at once.
class LimbText {
 public:
  LimbText(const char *from, unsigned count) {
    if (bytes::same_page(from, sizeof(Piece))) [[likely]] {
      // Hidden from the compiler, which may know how little of the page the text fills.
      __asm__("" : "+r"(from));
      Piece keep;
      std::memcpy(&characters_, from, sizeof characters_);
      std::memcpy(&keep, reinterpret_cast<const char *>(kKeep + 4) - count, sizeof keep);
      characters_ &= keep;
    } else {
      characters_ = Piece{};
      std::memcpy(&characters_, from, count);
    }
  }
  const char *text() const { return reinterpret_cast<const char *>(&characters_); }

 private:
  using Piece [[gnu::vector_size(32)]] = std::uint64_t;
  // Read n bytes in front of its fifth word, it keeps the first n bytes.
  static constexpr std::uint64_t kKeep[8] = {~0ull, ~0ull, ~0ull, ~0ull, 0, 0, 0, 0};
  Piece characters_;
};

// Fills the limbs from this one up with the `rest` characters left of `end`, the lower limbs'
// characters being behind it.
template <int N, int Limb>
inline void fill_limbs(unsigned char *field, const char *end, std::size_t rest) {
  constexpr unsigned room = kMember<N>.digits_of(Limb);
  unsigned char *limb = field + kLimbBytes * Limb;
  if (rest < room) {
    const LimbText characters(end - rest, static_cast<unsigned>(rest));
    kServiceOf<N, Limb>.from_text(limb, characters.text());
  } else {
    const LimbText characters(end - room, room);
    kServiceOf<N, Limb>.from_text(limb, characters.text());
  }
  if constexpr (Limb + 1 < kMember<N>.limbs) {
    if (rest > room) return fill_limbs<N, Limb + 1>(field, end - room, rest - room);
    std::memset(limb + kLimbBytes, 0, N - kLimbBytes * (Limb + 1));
  }
}

// The rightmost characters of the text, as many as the capacity. The lowest limb goes first: its
// service has the characters where they are, and the others' are copied meanwhile.
template <int N>
inline int from_text(unsigned char *dest, const char *text, std::size_t length) {
  if (length <= kLimbDigits) {
    std::memset(dest + kLimbBytes, 0, N - kLimbBytes);
    return _ato8(dest, text);
  }
  const std::size_t rest = length - kLimbDigits;
  _ato8(dest, text + rest);
  fill_limbs<N, 1>(dest, text + rest, rest);
  return !is_zero<N>(dest);
}

template <int N>
inline int from_text(unsigned char *dest, const char *text) {
  return from_text<N>(dest, text, std::strlen(text));
}

template <int N>
inline int from_text_fixed(unsigned char *dest, const char *text, int decimals) {
  const ScannedDigits<kMember<N>.scan_limit, kMember<N>.digits> digits(text, decimals);
  return from_text<N>(dest, digits.text(), digits.length());
}

// The limbs below this one as 19 digits each.
template <int N, int Limb>
inline void append_lower_limbs(char *to, const unsigned char *src) {
  if constexpr (Limb > 0) {
    _8btoa(src + kLimbBytes * (Limb - 1), to, kLimbDigits);
    append_lower_limbs<N, Limb - 1>(to + kLimbDigits, src);
  }
}

// `text` holds `length` digits, more than `decimals`.
inline void insert_point(char *text, std::size_t length, int decimals) {
  if (decimals <= 0) return;
  char *at = text + length - decimals;
  std::memmove(at + 1, at, static_cast<std::size_t>(decimals) + 1);
  *at = '.';
}

// The text from this limb down, the limbs above it being zero and having no decimals of their own.
template <int N, int Limb>
inline char *to_text_from(char *text, const unsigned char *src, int decimals) {
  if constexpr (Limb == 0) {
    return _8toafixo(text, src, decimals);
  } else {
    constexpr int below = kLimbDigits * Limb;
    const unsigned char *limb = src + kLimbBytes * Limb;
    if (decimals > below) {
      kServiceOf<N, Limb>.to_text_fixed(text, limb, decimals - below);
      append_lower_limbs<N, Limb>(text + std::strlen(text), src);
    } else if (decimals == below) {
      kServiceOf<N, Limb>.to_text(text, limb);
      char *point = text + std::strlen(text);
      *point = '.';
      append_lower_limbs<N, Limb>(point + 1, src);
    } else if (const std::uint64_t value = load_limb<N, Limb>(src); value != 0) {
      kServiceOf<N, Limb>.to_text(text, limb);
      const unsigned count = digits::count(value);
      append_lower_limbs<N, Limb>(text + count, src);
      insert_point(text, count + below, decimals);
    } else {
      return to_text_from<N, Limb - 1>(text, src, decimals);
    }
    return text;
  }
}

template <int N>
inline char *to_text_fixed(char *text, const unsigned char *src, int decimals) {
  return to_text_from<N, kMember<N>.limbs - 1>(text, src, decimals);
}

// Equal limbs are skipped here, so that one service decides and its answer is the result.
template <int N, int Limb = kMember<N>.limbs - 1>
inline int compare(const unsigned char *a, const unsigned char *b) {
  if constexpr (Limb > 0) {
    if (load_limb<N, Limb>(a) == load_limb<N, Limb>(b)) return compare<N, Limb - 1>(a, b);
  }
  constexpr int at = kLimbBytes * Limb;
  return kServiceOf<N, Limb>.compare(a + at, b + at);
}

}  // namespace campotipo::quantities::wide
