#pragma once

#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "base/bytes.hpp"
#include "base/digits.hpp"
#include "quantities/member.hpp"
#include "quantities/wide.hpp"

// Multiplication and division by a power of ten as a shift of decimal digits across the limbs.
namespace campotipo::quantities::scaling {

inline constexpr unsigned kLimbDigits = quantities::kLimbDigits;

struct Cut {
  std::uint64_t high;
  std::uint64_t low;
};

// number = high * 10^j + low, for j of 1 to 19.
inline Cut cut(std::uint64_t number, unsigned j) {
  const std::uint64_t high = digits::divide_by_power(number, j);
  return {high, number - high * digits::kPowerOfTen[j]};
}

// Two limbs are three with a zero on top.
template <int N>
struct Limbs {
  static constexpr int kCount = kMember<N>.limbs;
  static constexpr std::uint64_t kHighEnd = digits::kPowerOfTen[kMember<N>.high_digits];

  std::uint64_t low, middle, high;

  explicit Limbs(const unsigned char *src)
      : low(wide::load_limb<N, 0>(src)), middle(wide::load_limb<N, 1>(src)), high(0) {
    if constexpr (kCount == 3) high = wide::load_limb<N, 2>(src);
  }

  void store(unsigned char *dest) const {
    bytes::store(dest, low);
    if constexpr (kCount == 2) {
      bytes::store_le<kMember<N>.high_bytes>(dest + kLimbBytes, middle);
    } else {
      bytes::store(dest + kLimbBytes, middle);
      bytes::store_le<kMember<N>.high_bytes>(dest + 2 * kLimbBytes, high);
    }
  }

  void drop_limbs(unsigned count) {
    if (count & 1) low = middle, middle = high, high = 0;
    if (count & 2) low = high, middle = high = 0;
  }

  void add_limbs(unsigned count) {
    if (count & 1) high = middle, middle = low, low = 0;
    if (count & 2) high = low, low = middle = 0;
  }

  // Cuts the last j digits, 1 to 19. Result: these.
  std::uint64_t drop_digits(unsigned j) {
    const std::uint64_t up = digits::kPowerOfTen[kLimbDigits - j];
    const Cut lower = cut(low, j), upper = cut(middle, j);
    low = lower.high + upper.low * up;
    middle = upper.high;
    if constexpr (kCount == 3) {
      const Cut top = cut(high, j);
      middle += top.low * up;
      high = top.high;
    }
    return lower.low;
  }

  // Appends j zeros, 0 to 18; digits beyond the capacity are lost.
  void add_digits(unsigned j) {
    const std::uint64_t up = digits::kPowerOfTen[j];
    const Cut lower = cut(low, kLimbDigits - j), upper = cut(middle, kLimbDigits - j);
    low = lower.low * up;
    middle = upper.low * up + lower.high;
    if constexpr (kCount == 3) {
      constexpr unsigned room = kMember<N>.high_digits;
      high = j < room ? cut(high, room - j).low * up + upper.high : upper.high % kHighEnd;
    }
  }
};

inline constexpr unsigned kTextSize = 52;

// The steps on text, for limbs out of range: their text decides what the digits are.
template <int N>
[[gnu::noinline, gnu::cold]] inline int divide_text(unsigned char *dest, const unsigned char *src,
                                                    unsigned power) {
  char text[kTextSize];
  wide::to_text_fixed<N>(text, src, 0);
  const std::size_t length = std::strlen(text);
  const std::size_t kept = length > power ? length - power : 0;
  const int remainder = std::atoi(text + kept);
  text[kept] = '\0';
  wide::from_text<N>(dest, text, kept);
  return remainder;
}

// At this power everything has left the number, on either side.
inline constexpr unsigned kFarthest = 3 * kLimbDigits;

// Digits as whole limbs and the rest of them, for at most kFarthest.
constexpr unsigned whole_limbs(unsigned digits) { return digits * 27 >> 9; }
static_assert([] {
  for (unsigned digits = 0; digits <= kFarthest; ++digits) {
    if (whole_limbs(digits) != digits / kLimbDigits) return false;
  }
  return true;
}());

// Digits as atoi reads them: a long stays at its end.
inline int as_int(std::uint64_t digits) {
  return digits > INT64_MAX ? -1 : static_cast<int>(digits);
}

template <int N>
[[gnu::noinline]] inline int divide_by_limbs(unsigned char *dest, Limbs<N> number, unsigned power) {
  if (power > kFarthest) power = kFarthest;
  const unsigned whole = whole_limbs(power - 1);
  const std::uint64_t remainder = number.low;
  std::uint64_t above = whole == 2 ? number.middle : 0;
  number.drop_limbs(whole);
  above |= number.drop_digits(power - kLimbDigits * whole);
  number.store(dest);
  return above != 0 ? -1 : as_int(remainder);
}

template <int N>
inline int divide(unsigned char *dest, const unsigned char *src, unsigned power) {
  if (!wide::is_well_formed<N>(src)) [[unlikely]]
    return divide_text<N>(dest, src, power);
  Limbs<N> number(src);
  if (power > kLimbDigits) return divide_by_limbs(dest, number, power);
  const std::uint64_t remainder = power != 0 ? number.drop_digits(power) : 0;
  number.store(dest);
  return as_int(remainder);
}

template <int N>
[[gnu::noinline]] inline void multiply_by_limbs(unsigned char *dest, Limbs<N> number,
                                                unsigned power) {
  const unsigned whole = whole_limbs(power);
  number.add_limbs(whole);
  number.add_digits(power - kLimbDigits * whole);
  number.store(dest);
}

// The text of the product is that of the number with zeros behind it.
template <int N>
[[gnu::noinline, gnu::cold]] inline void multiply_text(unsigned char *dest,
                                                       const unsigned char *src, unsigned power) {
  divide_text<N>(dest, src, 0);
  multiply_by_limbs(dest, Limbs<N>(dest), power);
}

template <int N>
inline void multiply(unsigned char *dest, const unsigned char *src, unsigned power) {
  if (power == 0) {
    // Not converted, so limbs out of range stay.
    std::memmove(dest, src, N);
    return;
  }
  if (power >= static_cast<unsigned>(kMember<N>.digits)) {
    std::memset(dest, 0, N);
    return;
  }
  if (!wide::is_well_formed<N>(src)) [[unlikely]]
    return multiply_text<N>(dest, src, power);
  Limbs<N> number(src);
  if (power >= kLimbDigits) return multiply_by_limbs(dest, number, power);
  number.add_digits(power);
  number.store(dest);
}

}  // namespace campotipo::quantities::scaling
