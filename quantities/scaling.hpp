#pragma once

#include <cstdint>
#include <cstring>

#include "base/bytes.hpp"
#include "base/digits.hpp"
#include "quantities/member.hpp"
#include "quantities/powers.hpp"
#include "quantities/wide.hpp"

// Multiplication and division by a power of ten as a shift of decimal digits across the limbs.
namespace campotipo::quantities::scaling {

inline constexpr std::uint64_t kLimbEnd = digits::kPowerOfTen[kLimbDigits];

// At this power everything has left the number, on either side.
inline constexpr int kFarthest = 3 * kLimbDigits;

// The limbs of a number with zeros on both sides, as far as a shift looks.
template <int N>
class Limbs {
 public:
  static constexpr int kCount = kMember<N>.limbs;

  explicit Limbs(const unsigned char *src) {
    limb(0) = wide::load_limb<N, 0>(src);
    limb(1) = wide::load_limb<N, 1>(src);
    std::uint64_t top = limb(1);
    bool fits = limb(0) < kLimbEnd;
    if constexpr (kCount == 3) {
      limb(2) = wide::load_limb<N, 2>(src);
      fits &= top < kLimbEnd;
      top = limb(2);
    }
    // A top limb narrower than 8 bytes is below 10^19 whatever it holds.
    if constexpr (kMember<N>.high_bytes == kLimbBytes) fits &= top < kLimbEnd;
    if (!fits) [[unlikely]]
      carry();
  }

  // This number without its last `shift` digits, or with -shift zeros behind it.
  void store_shifted(unsigned char *dest, int shift) const {
    // shift = 19 * whole + cut_at, with 1 <= cut_at <= 19, where every reciprocal is exact.
    const int whole = (shift - 1 + kFarthest + kLimbDigits) / kLimbDigits - 4;
    const int cut_at = shift - kLimbDigits * whole;
    const std::uint64_t *from = &words_[kPad + whole];
    const std::uint64_t up = kReciprocal.of[cut_at].rest;
    Cut lower = cut(from[0], cut_at);
    std::uint64_t result[kCount];
    for (int i = 0; i < kCount; ++i) {
      const Cut upper = cut(from[i + 1], cut_at);
      result[i] = lower.high + upper.low * up;
      lower = upper;
    }
    bytes::store(dest, result[0]);
    if constexpr (kCount == 3) bytes::store(dest + kLimbBytes, result[1]);
    constexpr std::uint64_t end = digits::kPowerOfTen[kMember<N>.high_digits];
    bytes::store_le<kMember<N>.high_bytes>(dest + kLimbBytes * (kCount - 1),
                                           result[kCount - 1] % end);
  }

  // What the last `count` digits say, as atoi reads them: from 2^63 on it stays at the end of long.
  int last_digits(int count) const {
    if (count == 0) return 0;
    const std::uint64_t low = count < kLimbDigits ? cut(limb(0), count).low : limb(0);
    std::uint64_t above = 0;
    for (int i = 1; i <= kCount && count > kLimbDigits * i; ++i) {
      const int left = count - kLimbDigits * i;
      above |= left < kLimbDigits ? cut(limb(i), left).low : limb(i);
    }
    return above != 0 || low > INT64_MAX ? -1 : static_cast<int>(low);
  }

 private:
  static constexpr int kPad = 4;

  std::uint64_t &limb(int i) { return words_[kPad + i]; }
  const std::uint64_t &limb(int i) const { return words_[kPad + i]; }

  // Limbs out of range make the number that their text says: of the highest one that is not zero
  // all digits count, of those below it the rightmost 19.
  void carry() {
    int top = kCount - 1;
    while (top > 0 && limb(top) == 0) --top;
    limb(top + 1) = limb(top) / kLimbEnd;
    for (int i = 0; i <= top; ++i) limb(i) %= kLimbEnd;
  }

  std::uint64_t words_[kPad + 3 + 3] = {};
};

constexpr int bounded(unsigned power) {
  return power < kFarthest ? static_cast<int>(power) : kFarthest;
}

template <int N>
inline int divide(unsigned char *dest, const unsigned char *src, unsigned power) {
  const Limbs<N> limbs(src);
  const int shift = bounded(power);
  limbs.store_shifted(dest, shift);
  return limbs.last_digits(shift);
}

template <int N>
inline void multiply(unsigned char *dest, const unsigned char *src, unsigned power) {
  if (power == 0) {
    // Not converted, so limbs out of range stay.
    std::memmove(dest, src, N);
    return;
  }
  Limbs<N>(src).store_shifted(dest, -bounded(power));
}

}  // namespace campotipo::quantities::scaling
