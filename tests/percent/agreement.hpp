#pragma once

#include <campotipo/percent.h>

#include <cstring>
#include <ostream>
#include <string>

#include "tests/reference/rounding.hpp"

// The operations held against the reference, for the tests and the fuzzer: each check is true when
// they agree on one input. `field` is room for a stored percent of the family.
namespace campotipo::test {

using reference::Rule;
using reference::wide;

struct Family {
  const char *name;
  reference::Percent kind;
  void (*multiply[3])(QUANTIA *, const QUANTIA *, const unsigned char *);
  void (*multiply_v4[3])(PARCELA *, const PARCELA *, const unsigned char *, int);
  void (*search[3])(QUANTIA *, const QUANTIA *, const unsigned char *);
  void (*divide)(unsigned char *, const QUANTIA *, const QUANTIA *);
  void (*divide_v4)(unsigned char *, const PARCELA *, const PARCELA *);
  void (*invert)(unsigned char *, const unsigned char *);
  char *(*edit[2])(char *, const unsigned char *);  // all decimals, exact

  friend std::ostream &operator<<(std::ostream &out, const Family &family) {
    return out << family.name;
  }
};

// clang-format off
inline constexpr Family kFamilies[] = {
    {"PORC0", {0, PORC0_BYTES, PORC0_CEM},
     {PORC0_multiplica, PORC0_multipl_arred, PORC0_multipl_arr_nbr},
     {PORC0_v4_multiplica, PORC0_v4_multipl_arred, PORC0_v4_multipl_arr_nbr},
     {PORC0_inv_multiplica, PORC0_inv_multipl_arred, PORC0_inv_multipl_arr_nbr},
     PORC0_divide, PORC0_v4_divide, PORC0_inverte, {PORC0_edita, PORC0_edita}},
    {"PORC1", {1, PORC1_BYTES, PORC1_CEM},
     {PORC1_multiplica, PORC1_multipl_arred, PORC1_multipl_arr_nbr},
     {PORC1_v4_multiplica, PORC1_v4_multipl_arred, PORC1_v4_multipl_arr_nbr},
     {PORC1_inv_multiplica, PORC1_inv_multipl_arred, PORC1_inv_multipl_arr_nbr},
     PORC1_divide, PORC1_v4_divide, PORC1_inverte, {PORC1_edita, PORC1_edita_exato}},
    {"PORC2", {2, PORC2_BYTES, PORC2_CEM},
     {PORC2_multiplica, PORC2_multipl_arred, PORC2_multipl_arr_nbr},
     {PORC2_v4_multiplica, PORC2_v4_multipl_arred, PORC2_v4_multipl_arr_nbr},
     {PORC2_inv_multiplica, PORC2_inv_multipl_arred, PORC2_inv_multipl_arr_nbr},
     PORC2_divide, PORC2_v4_divide, PORC2_inverte, {PORC2_edita, PORC2_edita_exato}},
    {"PORC4", {4, PORC4_BYTES, PORC4_CEM},
     {PORC4_multiplica, PORC4_multipl_arred, PORC4_multipl_arr_nbr},
     {PORC4_v4_multiplica, PORC4_v4_multipl_arred, PORC4_v4_multipl_arr_nbr},
     {PORC4_inv_multiplica, PORC4_inv_multipl_arred, PORC4_inv_multipl_arr_nbr},
     PORC4_divide, PORC4_v4_divide, PORC4_inverte, {PORC4_edita, PORC4_edita_exato}},
};
// clang-format on

// Amounts are made and read as applications do, through the services alone.
inline QUANTIA quantia(std::int64_t units) {
  QUANTIA value;
  std::string text = std::to_string(units);
  const std::size_t sign = units < 0;
  if (text.size() < sign + 2) text.insert(sign, sign + 2 - text.size(), '0');
  _QUANTIA_atov(&value, text.insert(text.size() - 2, 1, '.').c_str());
  return value;
}
inline PARCELA parcela(std::int64_t units) {
  PARCELA value;
  PARCELA_atov(&value, "0");
  PARCELA_som_long(&value, &value, units);
  return value;
}
inline std::int64_t units(const QUANTIA &value) {
  long count;
  const QUANTIA scale = quantia(10000);
  _QUANTIA_porc_div(&count, &value, &scale);
  return count;
}
inline std::int64_t units(const PARCELA &value) {
  long count;
  const PARCELA scale = parcela(10000);
  PARCELA_porc_div(&count, &value, &scale);
  return count;
}

inline unsigned char *put(const Family &family, unsigned char *field, std::uint64_t number) {
  std::memcpy(field, &number, static_cast<std::size_t>(family.kind.bytes));
  return field;
}
inline bool holds(const Family &family, const unsigned char *field, std::uint64_t number) {
  return std::memcmp(field, &number, static_cast<std::size_t>(family.kind.bytes)) == 0;
}

inline bool div_forms_agree(std::int64_t count, bool marker) {
  constexpr void (*kForms[])(QUANTIA *) = {ARRED_div10_5sobe,  ARRED_div10_nbr,
                                           ARRED_div100_nbr,   ARRED_div1000_nbr,
                                           ARRED_div10000_nbr, ARRED_div100000_nbr};
  for (int digits = 0; digits <= 5; ++digits) {
    QUANTIA value = quantia(count);
    kForms[digits](&value);
    const std::int64_t expected = digits == 0
                                      ? reference::divided(count, 1, Rule::kFiveUp, marker)
                                      : reference::divided(count, digits, Rule::kNbr, marker);
    if (units(value) != expected) return false;
  }
  return true;
}

inline bool places_agree(std::int64_t count, int casas, int extras, bool marker) {
  constexpr void (*kForms[])(PARCELA *, int, int) = {ARRED_v4_trunc, ARRED_v4_5sobe, ARRED_v4_nbr};
  for (Rule rule : reference::kRules) {
    PARCELA value = parcela(count);
    kForms[static_cast<int>(rule)](&value, casas, extras);
    if (units(value) != reference::kept_places(count, casas, extras, PARCELA_fixo, rule, marker))
      return false;
  }
  return true;
}

inline bool products_agree(const Family &family, unsigned char *field, std::int64_t percent,
                           std::int64_t base, int casas, bool marker) {
  put(family, field, static_cast<std::uint64_t>(percent));
  for (Rule rule : reference::kRules) {
    const auto i = static_cast<int>(rule);
    const QUANTIA amount = quantia(base);
    QUANTIA product;
    family.multiply[i](&product, &amount, field);
    if (units(product) != multiplied(family.kind, base, percent, rule)) return false;
    PARCELA in_place = parcela(base);
    family.multiply_v4[i](&in_place, &in_place, field, casas);
    if (units(in_place) !=
        multiplied_v4(family.kind, base, percent, rule, casas, PARCELA_fixo, marker))
      return false;
  }
  return true;
}

inline bool ratios_agree(const Family &family, unsigned char *field, std::int64_t over,
                         std::int64_t under) {
  const std::uint64_t expected = divided_by(family.kind, over, under);
  const QUANTIA numerator = quantia(over), denominator = quantia(under);
  family.divide(put(family, field, ~expected), &numerator, &denominator);
  if (!holds(family, field, expected)) return false;
  const PARCELA part = parcela(over), whole = parcela(under);
  family.divide_v4(put(family, field, ~expected), &part, &whole);
  return holds(family, field, expected);
}

inline bool inverse_agrees(const Family &family, unsigned char *field, std::int64_t percent) {
  put(family, field, static_cast<std::uint64_t>(percent));
  family.invert(field, field);
  return holds(family, field, inverted(family.kind, percent));
}

// The climb itself where it is no longer than `steps`, else what tells its end: in the cut form the
// exact base, in the others the first value that reaches the target, or the top of the range.
inline bool search_agrees(const Family &family, unsigned char *field, std::int64_t percent,
                          std::int64_t target, Rule rule, long steps) {
  const QUANTIA amount = quantia(target);
  QUANTIA found;
  family.search[static_cast<int>(rule)](&found, &amount,
                                        put(family, field, static_cast<std::uint64_t>(percent)));
  const std::int64_t result = units(found);
  const auto climb = climbed(family.kind, target, percent, rule, steps);
  if (climb) return result == *climb;
  if (rule == Rule::kCut)
    return result ==
           reference::nearest((wide{target} * family.kind.hundred + percent - 1) / percent);
  const auto reaches = [&](std::int64_t base) {
    return multiplied(family.kind, base, percent, rule) >= target;
  };
  if (!reaches(result)) return result == INT64_MAX;
  return result > estimated(family.kind, target, percent, rule) && !reaches(result - 1);
}

// `room` is as large as the text and its NUL.
inline bool text_agrees(const Family &family, unsigned char *field, std::uint64_t percent,
                        bool exact, char *room) {
  put(family, field, percent);
  return family.edit[exact](room, field) == room && edited(family.kind, percent, exact) == room;
}

}  // namespace campotipo::test
