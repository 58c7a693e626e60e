#pragma once

#include <climits>

#include "percent/percent.hpp"

// The base of an amount: an estimate by the inverse percent, and from there up to the first value
// whose percent reaches the target. The way up is not walked but worked out.
namespace campotipo::percent::inverse {

using bytes::int128;

// The least base whose percent reaches the target, in units, with services that cut. `target` is in
// units too; what the rule must see to lift to it is told in hundredths of one.
template <int Decimals, Rule R>
constexpr int128 least_base(long target, std::int64_t percent) {
  int128 seen = int128{target} * 100;
  // A tie goes up to an even target, and to any under five goes up.
  if constexpr (R == Rule::kFiveUp) seen -= 50;
  if constexpr (R == Rule::kNbr) seen -= target % 2 == 0 ? 50 : 49;
  return (seen * (kFamily<Decimals>.hundred / 100) + percent - 1) / percent;
}
static_assert(least_base<0, Rule::kCut>(100, 60) == 167);
static_assert(least_base<0, Rule::kFiveUp>(1, 50) == 1);
static_assert(least_base<0, Rule::kNbr>(1, 50) == 2);

// How far the least base lies above the estimate. The units in a value are its ratio to a value of
// ten thousand of them.
template <int Decimals, Rule R>
inline long distance(const QUANTIA *estimate, const QUANTIA *target, std::int64_t percent) {
  QUANTIA scale;
  _QUANTIA_porc_mul(&scale, target, 0);
  _QUANTIA_som_long(&scale, &scale, 10000);
  const int128 away =
      least_base<Decimals, R>(ratio(target, &scale), percent) - ratio(estimate, &scale);
  if (away < 1) return 1;
  return away < LONG_MAX ? static_cast<long>(away) : LONG_MAX - 1;
}

// The estimate in *result is below the answer. A distance of LONG_MAX stands for the top of the
// range, where sums stay, and is the answer when nothing nearer is. The distance worked out is
// tried, then the one below it, which closes the search; or the far end, which closes it if the
// target is out of reach. With services that work in another way, halving finds the place.
template <int Decimals, Rule R>
inline void climb(QUANTIA *result, const QUANTIA *target, std::int64_t percent) {
  QUANTIA estimate;
  QUANTIA applied;
  _QUANTIA_copia(&estimate, result);
  long below = 0;
  long reached = LONG_MAX;
  const long worked_out = distance<Decimals, R>(&estimate, target, percent);
  for (long probe = worked_out; reached - below > 1;) {
    _QUANTIA_som_long(result, &estimate, probe);
    multiply<Decimals, R>(&applied, result, percent);
    const bool enough = _QUANTIA_comp(&applied, target) >= 0;
    (enough ? reached : below) = probe;
    if (probe == worked_out) {
      probe = enough ? probe - 1 : LONG_MAX - 1;
    } else {
      probe = below + (reached - below) / 2;
    }
  }
  _QUANTIA_som_long(result, &estimate, reached);
}

template <int Decimals, Rule R>
inline void search(QUANTIA *result, const QUANTIA *target, const unsigned char *field) {
  constexpr Family kind = kFamily<Decimals>;
  const std::int64_t percent = stored<Decimals>(field);
  QUANTIA number;
  QUANTIA product;
  QUANTIA applied;
  if (percent == 0 || percent == kind.hundred) {
    _QUANTIA_copia(result, target);
    return;
  }
  _QUANTIA_atov(&number, kind.base);
  multiply<Decimals, R>(&product, &number, percent);
  if (_QUANTIA_se_zero(&product) <= 0) {
    _QUANTIA_copia(result, target);
    return;
  }
  unsigned char inverse[kind.bytes];
  divide<Decimals>(inverse, &number, &product);
  multiply<Decimals, R>(result, target, inverse);
  multiply<Decimals, R>(&applied, result, percent);
  if (_QUANTIA_comp(&applied, target) < 0) climb<Decimals, R>(result, target, percent);
}

}  // namespace campotipo::percent::inverse
