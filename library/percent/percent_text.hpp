#pragma once

#include <bit>

#include "base/digits.hpp"
#include "percent/family.hpp"

// Text of a stored percent: whole part, decimals behind a point, percent sign, NUL. Characters are
// put together in words, the first one in the lowest byte.
namespace campotipo::percent::text {

static_assert(kFamily<0>.bytes == 1 && sizeof "255%" == PORC0_TEXT_SIZE);
static_assert(kFamily<1>.bytes == 2 && sizeof "6553.5%" == PORC1_TEXT_SIZE);
static_assert(kFamily<2>.bytes == 2 && sizeof "655.35%" == PORC2_TEXT_SIZE);
static_assert(kFamily<4>.bytes == 4 && sizeof "429496.7295%" == PORC4_TEXT_SIZE);

// Characters of exactly Count digits, an even number.
template <int Count>
inline std::uint64_t characters(std::uint32_t number) {
  const std::uint64_t last = bytes::load<std::uint16_t>(digits::kPairs + 2 * (number % 100));
  if constexpr (Count == 2) {
    return last;
  } else {
    return characters<Count - 2>(number / 100) | last << (8 * (Count - 2));
  }
}

// The whole part, of at most Count digits, without leading zeros.
template <int Count>
inline char *put_whole(char *to, std::uint32_t number) {
  const std::uint64_t all = characters<Count>(number);
  // Zero keeps one digit.
  const std::uint64_t values = (all ^ digits::kZeros) | std::uint64_t{1} << (8 * (Count - 1));
  const auto zeros = static_cast<unsigned>(std::countr_zero(values)) / 8;
  bytes::store_low_bytes(to, all >> (8 * zeros), Count - zeros);
  return to + (Count - zeros);
}

// The decimals of a number below 10^Decimals, and all that follows.
template <int Decimals, bool Exact>
inline void put_decimals(char *to, std::uint32_t number) {
  constexpr int kEven = Decimals == 4 ? 4 : 2;
  // One digit is written as two, the first of which it is.
  const std::uint64_t all = characters<kEven>(Decimals == 1 ? 10 * number : number);
  unsigned shown = Decimals;
  if constexpr (Exact) {
    constexpr std::uint64_t kZeros = digits::kZeros & ((std::uint64_t{1} << (8 * kEven)) - 1);
    shown = (static_cast<unsigned>(std::bit_width(all ^ kZeros)) + 7) / 8;
  }
  if (shown == 0) {
    bytes::store(to, static_cast<std::uint16_t>('%'));
    return;
  }
  const unsigned end = 8 * (shown + 1);
  const std::uint64_t kept = (all << 8 | '.') & ((std::uint64_t{1} << end) - 1);
  bytes::store_low_bytes(to, kept | std::uint64_t{'%'} << end, shown + 3);
}

template <int Decimals, bool Exact>
inline char *edit(char *dest, const unsigned char *percent) {
  constexpr auto kPlaces = static_cast<std::uint32_t>(digits::kPowerOfTen[Decimals]);
  const auto number = static_cast<std::uint32_t>(stored<Decimals>(percent));
  constexpr int kWhole = Decimals == 4 ? 6 : 4;
  char *to = put_whole<kWhole>(dest, number / kPlaces);
  put_decimals<Decimals, Exact>(to, number % kPlaces);
  return dest;
}

}  // namespace campotipo::percent::text
