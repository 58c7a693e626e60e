#pragma once

#include "percent/percent.hpp"

// The base of an amount: an estimate by the inverse percent or, where that does not reach the target,
// the least base above it that does. Amounts are counted in units, the base is worked out on the
// counts and made again by the services, none of which is led out of the range on the way.
namespace campotipo::percent::inverse {

using bytes::int128;

constexpr std::int64_t nearest(int128 value) {
  if (value > INT64_MAX) return INT64_MAX;
  if (value < INT64_MIN) return INT64_MIN;
  return static_cast<std::int64_t>(value);
}

// What a multiplication leaves of a product with its extra decimals. Below zero nothing is lifted.
template <int Decimals, Rule R>
constexpr std::int64_t rounded(std::int64_t product) {
  if (kFamily<Decimals>.spare == 2) product /= 100;
  const std::int64_t kept = product / extra_factor(R);
  const std::int64_t dropped = product % extra_factor(R);
  if (R == Rule::kFiveUp) return kept + (dropped > 4);
  const bool odd_tie = dropped == rounding::kHalf && kept % 2 != 0;
  return kept + (dropped > rounding::kHalf || odd_tie);
}

// The multiplication of the rule, of a count of units.
template <int Decimals, Rule R>
constexpr std::int64_t applied(std::int64_t base, std::int64_t percent) {
  return rounded<Decimals, R>(nearest(int128{base} * factor<Decimals, R>(percent) / 10000));
}

// The least base whose percent, with all its decimals, reaches the target. What the rule must see to
// lift to the target is counted in hundredths of a unit. For 100 units at 60%: cut, 100.00 must be
// seen, and 167 (100.20) is the least; five up, 99.50 is enough, and so 166 (99.60).
template <int Decimals, Rule R>
constexpr std::int64_t least_base(std::int64_t target, std::int64_t percent) {
  int128 seen = int128{target} * 100;
  // A tie goes up to an even target, and to any under five goes up.
  if constexpr (R == Rule::kFiveUp) seen -= 50;
  if constexpr (R == Rule::kNbr) seen -= target % 2 == 0 ? 50 : 49;
  return nearest((seen * (kFamily<Decimals>.hundred / 100) + percent - 1) / percent);
}

template <int Decimals, Rule R>
constexpr std::int64_t base_of(std::int64_t target, std::int64_t percent) {
  constexpr Family kind = kFamily<Decimals>;
  constexpr auto kLowBits = static_cast<std::int64_t>(~std::uint64_t{0} >> (64 - 8 * kind.bytes));
  const std::int64_t inverse = kind.hundred * kind.hundred / percent & kLowBits;
  const std::int64_t estimate = applied<Decimals, R>(target, inverse);
  if (applied<Decimals, R>(estimate, percent) >= target) return estimate;
  // A product that has to be rounded ends where its extra decimals leave the range; one that is cut
  // is known without them.
  if (R != Rule::kCut && target > rounded<Decimals, R>(INT64_MAX)) return INT64_MAX;
  return least_base<Decimals, R>(target, percent);
}
static_assert(base_of<0, Rule::kCut>(100, 60) == 167 && base_of<0, Rule::kFiveUp>(100, 60) == 166);
static_assert(base_of<0, Rule::kCut>(5000, 25) == 20000 && base_of<0, Rule::kFiveUp>(1, 50) == 2);
static_assert(base_of<4, Rule::kCut>(INT64_MAX / 4, 500000) == INT64_MAX / 4 * 2);

// `unit` is 1 or -1. A service has no other way to an amount that is known only by its count.
inline void make_ten_thousand(QUANTIA *dest, const QUANTIA *any, long unit) {
  QUANTIA hundred;
  _QUANTIA_porc_mul(dest, any, 0);
  _QUANTIA_som_long(dest, dest, unit);
  _QUANTIA_mul_byte(&hundred, dest, 100);
  _QUANTIA_mul_byte(dest, &hundred, 100);
}

// The greatest factor that a percent asks of the service.
inline constexpr std::int64_t kGreatestFactor = factor<4, Rule::kNbr>(0xFFFFFFFF);

// Makes `count` units of ten thousand, of the same sign: as many leading bits as a factor holds, and
// the others one by one.
inline void make(QUANTIA *dest, const QUANTIA *ten_thousand, std::int64_t count) {
  unsigned bits = 0;
  const auto leading = [&] { return count < 0 ? -(count >> bits) : count >> bits; };
  while ((count >> bits) < -kGreatestFactor || (count >> bits) > kGreatestFactor) ++bits;
  _QUANTIA_porc_mul(dest, ten_thousand, leading());
  while (bits-- > 0) {
    QUANTIA half;
    _QUANTIA_copia(&half, dest);
    _QUANTIA_porc_mul(dest, &half, 20000);
    if ((count >> bits & 1) != 0) _QUANTIA_som_long(dest, dest, 1);
  }
}

template <int Decimals, Rule R>
inline void search(QUANTIA *result, const QUANTIA *target, const unsigned char *field) {
  const std::int64_t percent = stored<Decimals>(field);
  if (percent == 0 || percent == kFamily<Decimals>.hundred) {
    _QUANTIA_copia(result, target);
    return;
  }
  QUANTIA scale;
  make_ten_thousand(&scale, target, 1);
  const std::int64_t count = base_of<Decimals, R>(ratio(target, &scale), percent);
  if (count < 0) make_ten_thousand(&scale, target, -1);
  make(result, &scale, count);
}

}  // namespace campotipo::percent::inverse
