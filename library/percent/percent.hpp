#pragma once

#include <campotipo-support/numbers.h>

#include "percent/family.hpp"
#include "percent/rounding.hpp"

// A percent applied to money, taken from money, and turned round. All digits are worked out by the
// money services: a factor ten or a hundred times as large leaves the product one or two decimals
// more, which the rounding then consumes.
namespace campotipo::percent {

using rounding::Rule;

// Decimals that a rule wants to see beyond the unit, and the factor that makes them.
constexpr int extra_decimals(Rule rule) {
  return rule == Rule::kNbr ? 2 : rule == Rule::kFiveUp ? 1 : 0;
}
constexpr std::int64_t extra_factor(Rule rule) {
  return rule == Rule::kNbr ? 100 : rule == Rule::kFiveUp ? 10 : 1;
}

template <int Decimals, Rule R>
constexpr std::int64_t factor(std::int64_t percent) {
  return percent * (kFamily<Decimals>.scale * extra_factor(R));
}
static_assert(factor<4, Rule::kNbr>(0xFFFFFFFF) == 429496729500);

template <int Decimals, Rule R>
inline void multiply(QUANTIA *result, const QUANTIA *base, std::int64_t percent) {
  _QUANTIA_porc_mul(result, base, factor<Decimals, R>(percent));
  if constexpr (kFamily<Decimals>.spare == 2) _QUANTIA_div_byte(result, result, 100);
  if constexpr (R == Rule::kCut) _QUANTIA_trunca(result);
  if constexpr (R == Rule::kFiveUp) rounding::five_up(result);
  if constexpr (R == Rule::kNbr) rounding::nbr<2>(result);
}

template <int Decimals, Rule R>
inline void multiply(QUANTIA *result, const QUANTIA *base, const unsigned char *percent) {
  multiply<Decimals, R>(result, base, stored<Decimals>(percent));
}

template <int Decimals, Rule R>
inline void multiply(PARCELA *result, const PARCELA *base, const unsigned char *percent,
                     int casas) {
  PARCELA_porc_mul(result, base, factor<Decimals, R>(stored<Decimals>(percent)));
  rounding::keep_places<R>(result, casas, extra_decimals(R) + kFamily<Decimals>.spare);
}

inline void hundredfold(QUANTIA *dest, const QUANTIA *src) { _QUANTIA_mul_byte(dest, src, 100); }
inline void hundredfold(PARCELA *dest, const PARCELA *src) { PARCELA_mul_byte(dest, src, 100); }

inline long ratio(const QUANTIA *numerator, const QUANTIA *denominator) {
  long value;
  _QUANTIA_porc_div(&value, numerator, denominator);
  return value;
}
inline long ratio(const PARCELA *numerator, const PARCELA *denominator) {
  long value;
  PARCELA_porc_div(&value, numerator, denominator);
  return value;
}

// The stored number of the ratio, before it is cut to the field.
template <int Decimals, class Value>
inline std::int64_t divide(const Value *numerator, const Value *denominator) {
  constexpr Family kind = kFamily<Decimals>;
  if constexpr (kind.spare == 2) {
    Value scaled;
    hundredfold(&scaled, numerator);
    return ratio(&scaled, denominator);
  } else {
    return ratio(numerator, denominator) / kind.scale;
  }
}

template <int Decimals, class Value>
inline void divide(unsigned char *result, const Value *numerator, const Value *denominator) {
  bytes::store_le<kFamily<Decimals>.bytes>(
      result, static_cast<std::uint64_t>(divide<Decimals>(numerator, denominator)));
}

template <int Decimals>
inline void store_hundred(unsigned char *result) {
  constexpr int kBytes = kFamily<Decimals>.bytes;
  if constexpr (kBytes == 1) _ato1fixo(result, "100", Decimals);
  if constexpr (kBytes == 2) _ato2fixo(result, "100", Decimals);
  if constexpr (kBytes == 4) _ato4fixo(result, "100", Decimals);
}

template <int Decimals>
inline void invert(unsigned char *result, const unsigned char *source) {
  QUANTIA base;
  QUANTIA product;
  _QUANTIA_atov(&base, kFamily<Decimals>.base);
  multiply<Decimals, Rule::kCut>(&product, &base, source);
  if (_QUANTIA_se_zero(&product) > 0) {
    divide<Decimals>(result, &base, &product);
  } else {
    store_hundred<Decimals>(result);
  }
}

}  // namespace campotipo::percent
