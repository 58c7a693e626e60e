#pragma once

#include <bit>
#include <cstdint>
#include <cstring>

#include "base/bytes.hpp"

// Decimal digits eight at a time in one 64-bit word, first digit in the lowest byte.
namespace campotipo::digits {

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
