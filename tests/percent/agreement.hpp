#pragma once

#include <cinttypes>
#include <cstdio>
#include <cstring>

#include "tests/members/percent.hpp"

// The operations held against the reference, for the tests and the fuzzer: each check is true when
// they agree on one input. `field` is room for a stored percent of the family.
namespace campotipo::test {

using reference::Rule;
using reference::wide;

// Amounts are made and read as applications do, through the services alone.
inline QUANTIA quantia(std::int64_t units) {
  QUANTIA value;
  char text[QUANTIA_TEXT_SIZE];
  const auto size = units < 0 ? 0 - static_cast<std::uint64_t>(units) : std::uint64_t(units);
  std::snprintf(text, sizeof text, "%s%" PRIu64 ".%02u", units < 0 ? "-" : "", size / 100,
                static_cast<unsigned>(size % 100));
  _QUANTIA_atov(&value, text);
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
