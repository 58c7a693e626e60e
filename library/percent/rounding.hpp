#pragma once

#include <campotipo/percent.h>

#include "percent/marker.hpp"

// Money values brought back to fewer decimals under one of three rules, through the money services.
namespace campotipo::percent::rounding {

enum class Rule { kCut, kFiveUp, kNbr };

// The two leading dropped digits when what is dropped may be one half.
inline constexpr int kHalf = 50;

inline void five_up(QUANTIA *value) {
  if (_QUANTIA_div_byte(value, value, 10) > 4) _QUANTIA_som_long(value, value, 1);
  _QUANTIA_trunca(value);
}

inline bool is_odd(const QUANTIA *value) {
  QUANTIA scratch;
  return (_QUANTIA_div_byte(&scratch, value, 10) & 1) != 0;
}
inline bool is_odd(const PARCELA *value) {
  PARCELA scratch;
  return (PARCELA_div_byte(&scratch, value, 10) & 1) != 0;
}

template <int Digits>
inline void nbr(QUANTIA *value) {
  static_assert(Digits >= 1 && Digits <= 5);
  [[maybe_unused]] const bool leading_only = Digits > 2 && marker::present();
  // Of what lies below the two leading digits only the sign counts: the remainders all have the
  // sign of the value.
  int low = 0;
  if constexpr (Digits == 3 || Digits == 5) low = _QUANTIA_div_byte(value, value, 10);
  if constexpr (Digits >= 4) low += _QUANTIA_div_byte(value, value, 100);
  if (leading_only) low = 0;
  const int leading =
      Digits == 1 ? 10 * _QUANTIA_div_byte(value, value, 10) : _QUANTIA_div_byte(value, value, 100);
  if (leading > kHalf || (leading == kHalf && (low > 0 || is_odd(value))))
    _QUANTIA_som_long(value, value, 1);
  _QUANTIA_trunca(value);
}

// Drops the lowest digits and says whether they are above zero. Two at a time give the same
// quotient in half the calls. A value has eight bytes and so no more than 20 digits: what is left
// after those is changed by no further one.
inline bool cut_digits(PARCELA *value, long count) {
  if (count > 20) count = 20;
  int dropped = 0;
  for (; count >= 2; count -= 2) dropped |= PARCELA_div_byte(value, value, 100);
  if (count == 1) dropped |= PARCELA_div_byte(value, value, 10);
  return dropped > 0;
}

// Multiplies by ten, `count` times. After 64 times the value is zero or stands at the end of the
// range, whether the service stays there or works modulo 2^64 (10^64 is a multiple of it).
inline void put_back_zeros(PARCELA *value, long count) {
  if (count > 64) count = 64;
  for (; count >= 2; count -= 2) PARCELA_mul_byte(value, value, 100);
  if (count == 1) PARCELA_mul_byte(value, value, 10);
}

inline void drop_five_up(PARCELA *value, long count) {
  cut_digits(value, count - 1);
  if (PARCELA_div_byte(value, value, 10) > 4) PARCELA_som_long(value, value, 1);
}

inline void drop_nbr(PARCELA *value, long count) {
  bool low = false;
  int leading = 0;
  if (count >= 2) {
    low = cut_digits(value, count - 2);
    leading = PARCELA_div_byte(value, value, 100);
  } else {
    leading = 10 * PARCELA_div_byte(value, value, 10);
  }
  // The marker comes first: with it every tie goes up, without a look at the kept part.
  if (leading > kHalf || (leading == kHalf && (marker::present() || low || is_odd(value))))
    PARCELA_som_long(value, value, 1);
}

template <Rule R>
inline void keep_places(PARCELA *value, int casas, int extras) {
  const long decimals = PARCELA_fixo;
  const long zeros = casas < decimals ? decimals - casas : 0;
  const long count = extras + zeros;
  if (count < 1) return;
  if constexpr (R == Rule::kCut) cut_digits(value, count);
  if constexpr (R == Rule::kFiveUp) drop_five_up(value, count);
  if constexpr (R == Rule::kNbr) drop_nbr(value, count);
  put_back_zeros(value, zeros);
}

}  // namespace campotipo::percent::rounding
