#pragma once

#include <array>
#include <bit>
#include <cstdint>
#include <cstring>

#include "base/bytes.hpp"

// Decimal digits eight at a time in one 64-bit word, first digit in the lowest byte.
namespace campotipo::digits {

constexpr bool is_digit(char c) { return static_cast<unsigned char>(c - '0') < 10; }

inline constexpr std::uint64_t kZeros = 0x3030303030303030;

// 10^0 to 10^19: all powers of ten that fit a 64-bit word.
inline constexpr std::uint64_t kPowerOfTen[20] = {
    1u,
    10u,
    100u,
    1000u,
    10000u,
    100000u,
    1000000u,
    10000000u,
    100000000u,
    1000000000u,
    10000000000u,
    100000000000u,
    1000000000000u,
    10000000000000u,
    100000000000000u,
    1000000000000000u,
    10000000000000000u,
    100000000000000000u,
    1000000000000000000u,
    10000000000000000000u,
};

inline constexpr std::uint64_t kTenTo8 = kPowerOfTen[8];
inline constexpr std::uint64_t kTenTo16 = kPowerOfTen[16];

// Number of decimal digits; zero has none.
constexpr unsigned count(std::uint64_t number) {
  const auto least = static_cast<unsigned>(std::bit_width(number)) * 1233 >> 12;  // log10(2)
  return least + (number >= kPowerOfTen[least]);
}
static_assert(count(9) == 1 && count(10) == 2 && count(~std::uint64_t{0}) == 20);

// Division by 10^j as a shift and one multiplication: x / 10^j = mulhi(x >> j, multiplier) >>
// shift. With d = 5^j and 2^shift <= d the multiplier floor(2^(64 + shift) / d) + 1 is below 2^64
// and its error below d, so the quotient is exact for every x >> j, which has at most 64 - j bits
// (Granlund and Montgomery, Division by Invariant Integers using Multiplication, 1994).
struct Reciprocal {
  std::uint64_t multiplier;
  unsigned shift;
};

inline constexpr std::array<Reciprocal, 20> kReciprocal = [] {
  std::array<Reciprocal, 20> all{};
  for (unsigned j = 1; j < 20; ++j) {
    const std::uint64_t five = kPowerOfTen[j] >> j;
    const auto shift = static_cast<unsigned>(std::bit_width(five)) - 1;
    const auto numerator = bytes::uint128{1} << (64 + shift);
    all[j] = {static_cast<std::uint64_t>(numerator / five) + 1, shift};
  }
  return all;
}();

// y * multiplier / 2^(64 + shift) exceeds y / d by y * error / (d * 2^(64 + shift)), which must
// stay below 1 / d for all y < 2^(64 - j).
static_assert([] {
  for (unsigned j = 1; j < 20; ++j) {
    const auto [multiplier, shift] = kReciprocal[j];
    const auto product = bytes::uint128{multiplier} * (kPowerOfTen[j] >> j);
    const auto error = product - (bytes::uint128{1} << (64 + shift));
    if (error == 0 || error > bytes::uint128{1} << (j + shift)) return false;
  }
  return true;
}());

// number / 10^power, for power 1 to 19.
constexpr std::uint64_t divide_by_power(std::uint64_t number, unsigned power) {
  const Reciprocal by = kReciprocal[power];
  const bytes::uint128 product = bytes::uint128{number >> power} * by.multiplier;
  return static_cast<std::uint64_t>(product >> 64) >> by.shift;
}
static_assert(divide_by_power(18446744073709551615u, 19) == 1);
static_assert(divide_by_power(9999999999999999999u, 19) == 0);
static_assert(divide_by_power(18446744073709551615u, 1) == 1844674407370955161u);

// Value of eight digit values 0 to 9 (not characters). Each step joins neighbours: 1 digit to 2, to
// 4, to 8.
constexpr std::uint64_t join8(std::uint64_t values) {
  values = values * 10 + (values >> 8);
  values = ((values & 0x000000FF000000FF) * 0x000F424000000064 +
            ((values >> 16) & 0x000000FF000000FF) * 0x0000271000000001) >>
           32;
  return values;
}
static_assert(join8(0x0807060504030201) == 12345678);

// The eight digit values of a number below 10^8, the reverse of join8. Splits 8 digits to 4, to 2,
// to 1 with multiplied reciprocals that are exact in their ranges (below 10^4 and below 10^2).
constexpr std::uint64_t split8(std::uint32_t number) {
  const std::uint64_t fours = number / 10000 | std::uint64_t{number % 10000} << 32;
  const std::uint64_t hundreds = ((fours * 10486) >> 20) & 0x0000007F0000007F;
  const std::uint64_t twos = hundreds + ((fours - 100 * hundreds) << 16);
  const std::uint64_t tens = ((twos * 103) >> 10) & 0x000F000F000F000F;
  return tens + ((twos - 10 * tens) << 8);
}
static_assert(split8(12345678) == 0x0807060504030201);

// Number of leading zeros in eight digit values, 8 for zero.
constexpr unsigned leading_zeros8(std::uint64_t values) {
  return static_cast<unsigned>(std::countr_zero(values)) / 8;
}

// Bit 7 of each byte that is not '0' to '9' is set; bytes behind the first such one may be wrong.
constexpr std::uint64_t non_digits(std::uint64_t characters) {
  const std::uint64_t values = characters ^ kZeros;
  return ((values + 0x7676767676767676) | values) & 0x8080808080808080;
}
static_assert(non_digits(0x3930393039303930) == 0);
static_assert((non_digits(0x303A393030303030) >> 55 & 1) == 1);

// How many of eight characters are digits before the first that is none.
constexpr unsigned count_leading(std::uint64_t characters) {
  return static_cast<unsigned>(std::countr_zero(non_digits(characters))) / 8;
}
static_assert(count_leading(0x3930393039303930) == 8 && count_leading(0x30303030002F3231) == 2);

inline constexpr char kPairs[] =
    "00010203040506070809101112131415161718192021222324252627282930313233343536373839"
    "40414243444546474849505152535455565758596061626364656667686970717273747576777879"
    "8081828384858687888990919293949596979899";

// Two digits of 0 to 99.
inline void put2(char *to, unsigned number) { std::memcpy(to, kPairs + 2 * number, 2); }

// Four digits of 0 to 9999.
inline void put4(char *to, unsigned number) {
  put2(to, number / 100);
  put2(to + 2, number % 100);
}

}  // namespace campotipo::digits
