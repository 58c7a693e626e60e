#pragma once

#include <cstdint>

#include "base/bytes.hpp"
#include "base/digits.hpp"

// Cutting a number of 64 bits at a decimal digit without a division.
namespace campotipo::quantities {

struct Cut {
  std::uint64_t high;
  std::uint64_t low;
};

// x / 10^j is (x >> j) / 5^j, and that is the high word of (x >> j) * multiplier, shifted.
struct Reciprocal {
  std::uint64_t multiplier;
  std::uint64_t power;  // 10^j
  std::uint64_t rest;   // 10^(19 - j)
  unsigned shift;
};

constexpr bytes::uint128 kOne = 1;

constexpr std::uint64_t power_of_five(int exponent) {
  return digits::kPowerOfTen[exponent] >> exponent;
}

// For j of 1 to 19; the multiplier is 2^(64 + shift) / 5^j, rounded up.
constexpr Reciprocal reciprocal(int j) {
  const std::uint64_t five = power_of_five(j);
  const auto shift = static_cast<unsigned>(std::bit_width(five)) - 1;
  return {static_cast<std::uint64_t>((kOne << (64 + shift)) / five + 1), digits::kPowerOfTen[j],
          digits::kPowerOfTen[19 - j], shift};
}

inline constexpr int kReciprocals = 19;

struct ReciprocalTable {
  Reciprocal of[kReciprocals + 1] = {};
  constexpr ReciprocalTable() {
    for (int j = 1; j <= kReciprocals; ++j) of[j] = reciprocal(j);
  }
};
inline constexpr ReciprocalTable kReciprocal;

// With y = x >> j < 2^(64 - j) and multiplier * 5^j = 2^(64 + shift) + e, the product exceeds
// y / 5^j by y * e / (5^j * 2^(64 + shift)). Less than 1 / 5^j cannot reach the next whole number,
// and y * e < 2^(64 + shift) follows from e <= 2^(j + shift).
consteval bool reciprocals_are_exact() {
  for (int j = 1; j <= kReciprocals; ++j) {
    const Reciprocal &r = kReciprocal.of[j];
    const bytes::uint128 excess =
        bytes::uint128{r.multiplier} * power_of_five(j) - (kOne << (64 + r.shift));
    if (excess == 0 || excess > kOne << (static_cast<unsigned>(j) + r.shift)) return false;
  }
  return true;
}
static_assert(reciprocals_are_exact());

// number = high * 10^j + low, for every number and j of 1 to 19.
constexpr Cut cut(std::uint64_t number, int j) {
  const Reciprocal &r = kReciprocal.of[j];
  const bytes::uint128 product = bytes::uint128{number >> j} * r.multiplier;
  const std::uint64_t high = static_cast<std::uint64_t>(product >> 64) >> r.shift;
  return {high, number - high * r.power};
}
static_assert(cut(9999999999999999999u, 19).high == 0 && cut(~0ull, 19).high == 1);

}  // namespace campotipo::quantities
