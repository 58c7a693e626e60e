#include <campotipo-support/money.h>
#include <campotipo-support/numbers.h>
#include <campotipo/calendar.h>
#include <campotipo/percent.h>

#include <cstdlib>
#include <limits>

#include "percent/marker.hpp"
#include "values.hpp"

namespace campotipo::python {

namespace {

__extension__ typedef __int128 int128;
constexpr std::int64_t kMost = std::numeric_limits<std::int64_t>::max();

enum Rule { kCut, kFiveUp, kNbr, kRules };

struct Family {
  int decimals;
  int bytes;
  int spare;  // decimals that a product carries beyond the kind's
  void (*times[kRules])(QUANTIA *, const QUANTIA *, const unsigned char *);
  void (*base_of[kRules])(QUANTIA *, const QUANTIA *, const unsigned char *);
  void (*divide)(unsigned char *, const QUANTIA *, const QUANTIA *);
  void (*invert)(unsigned char *, const unsigned char *);
};

#define FAMILY(n, spare)                                                                        \
  {                                                                                             \
    n, PORC##n##_BYTES, spare,                                                                  \
        {PORC##n##_multiplica, PORC##n##_multipl_arred, PORC##n##_multipl_arr_nbr},             \
        {PORC##n##_inv_multiplica, PORC##n##_inv_multipl_arred, PORC##n##_inv_multipl_arr_nbr}, \
        PORC##n##_divide, PORC##n##_inverte                                                     \
  }
constexpr Family kFamilies[] = {FAMILY(0, 0), FAMILY(1, 0), FAMILY(2, 0), FAMILY(4, 2)};
#undef FAMILY

const Family *family_of(int decimals) {
  for (const Family &family : kFamilies) {
    if (family.decimals == decimals) return &family;
  }
  refuse("porc: decimals: 0, 1, 2 or 4");
  return nullptr;
}

constexpr std::int64_t power(int digits) {
  std::int64_t made = 1;
  for (; digits > 0; --digits) made *= 10;
  return made;
}

// Money is made and read by its text, its bytes being the service's own.
QUANTIA money_of(std::int64_t units) {
  const bool negative = units < 0;
  const std::uint64_t size =
      negative ? 0 - static_cast<std::uint64_t>(units) : static_cast<std::uint64_t>(units);
  std::string text = std::to_string(size);
  if (text.size() < 3) text.insert(0, 3 - text.size(), '0');
  text.insert(text.size() - 2, 1, '.');
  QUANTIA made;
  _QUANTIA_atov(&made, ((negative ? "-" : "") + text).c_str());
  return made;
}

std::int64_t units_of(const QUANTIA &money) {
  char text[QUANTIA_TEXT_SIZE];
  std::string digits = _QUANTIA_vtoa(text, &money);
  digits.erase(digits.find('.'), 1);
  return std::strtoll(digits.c_str(), nullptr, 10);
}

// The stored form of a percent: false and an exception where the family cannot hold it.
bool store(const Family &family, std::int64_t percent, unsigned char *field) {
  const std::int64_t most = family.bytes == 1 ? 0xFF : family.bytes == 2 ? 0xFFFF : 0xFFFFFFFF;
  if (percent < 0 || percent > most) {
    refuse("porc: the percent is outside what " + std::to_string(family.bytes) + " bytes hold");
    return false;
  }
  for (int i = 0; i < family.bytes; ++i) field[i] = static_cast<unsigned char>(percent >> 8 * i);
  return true;
}

std::int64_t stored(const Family &family, const unsigned char *field) {
  std::int64_t percent = 0;
  for (int i = 0; i < family.bytes; ++i) percent |= std::int64_t{field[i]} << 8 * i;
  return percent;
}

bool rule_in_range(int rule) {
  if (rule >= kCut && rule < kRules) return true;
  refuse("no such rule");
  return false;
}

// Whether a product, with the decimals that the rule looks at, is in the range of money.
bool fits(const Family &family, int rule, std::int64_t base, std::int64_t percent) {
  const int128 seen =
      int128{base} * percent * power(rule + family.spare) / (int128{100} * power(family.decimals));
  return seen <= kMost && seen >= -int128{kMost};
}

}  // namespace

void set_services() {
  // No file of a working directory has a say in what a value rounds to.
  percent::marker::ARRED_estado_nbr.store(percent::marker::kAbsent);
  // A PARCELA is a whole number here: decimals are Python's affair.
  PARCELA_fixo = 0;
  // A date keeps its century while it is stepped.
  DATAC_formato = DATAC_FORMATO_COMPACTO;
}

// (units, digits, rule): the number without its last digits.
PyObject *round_number(PyObject *, PyObject *arguments) {
  long long units = 0;
  int digits = 0;
  int rule = 0;
  if (PyArg_ParseTuple(arguments, "Lii", &units, &digits, &rule) == 0) return nullptr;
  if (!rule_in_range(rule)) return nullptr;
  PARCELA value;
  PARCELA_atov(&value, std::to_string(units).c_str());
  if (rule == kCut) ARRED_v4_trunc(&value, 0, digits);
  if (rule == kFiveUp) ARRED_v4_5sobe(&value, 0, digits);
  if (rule == kNbr) ARRED_v4_nbr(&value, 0, digits);
  char text[PARCELA_TEXT_SIZE(0)];
  return PyLong_FromLongLong(std::strtoll(PARCELA_vtoa(text, &value), nullptr, 10));
}

// (decimals, rule, inverse, units, percent): the percent of an amount, or the amount of which it is.
PyObject *percent_times(PyObject *, PyObject *arguments) {
  int decimals = 0;
  int rule = 0;
  int inverse = 0;
  long long units = 0;
  long long percent = 0;
  if (PyArg_ParseTuple(arguments, "iipLL", &decimals, &rule, &inverse, &units, &percent) == 0) {
    return nullptr;
  }
  const Family *family = family_of(decimals);
  unsigned char field[PORC4_BYTES];
  if (family == nullptr || !rule_in_range(rule) || !store(*family, percent, field)) return nullptr;
  const QUANTIA amount = money_of(units);
  QUANTIA result;
  if (inverse == 0) {
    if (!fits(*family, rule, units, percent)) return refuse("porc: the amount is too large");
    family->times[rule](&result, &amount, field);
    return PyLong_FromLongLong(units_of(result));
  }
  family->base_of[rule](&result, &amount, field);
  const std::int64_t base = units_of(result);
  if (base == kMost || base == std::numeric_limits<std::int64_t>::min()) {
    return refuse("porc: no amount is large enough");
  }
  return PyLong_FromLongLong(base);
}

// (decimals, numerator, denominator): what percent the one is of the other.
PyObject *percent_of(PyObject *, PyObject *arguments) {
  int decimals = 0;
  long long numerator = 0;
  long long denominator = 0;
  if (PyArg_ParseTuple(arguments, "iLL", &decimals, &numerator, &denominator) == 0) return nullptr;
  const Family *family = family_of(decimals);
  if (family == nullptr) return nullptr;
  if (denominator == 0) {
    PyErr_SetString(PyExc_ZeroDivisionError, "porc: a percent of zero");
    return nullptr;
  }
  const int128 ratio = int128{numerator} * 100 * power(family->decimals) / denominator;
  unsigned char field[PORC4_BYTES];
  const bool whole = numerator <= kMost / 100 && numerator >= -kMost / 100;
  if (ratio > kMost || ratio < 0 || (family->spare != 0 && !whole)) {
    return refuse("porc: the percent is outside what the family holds");
  }
  if (!store(*family, static_cast<std::int64_t>(ratio), field)) return nullptr;
  const QUANTIA above = money_of(numerator);
  const QUANTIA below = money_of(denominator);
  family->divide(field, &above, &below);
  return PyLong_FromLongLong(stored(*family, field));
}

// (decimals, percent): the percent that undoes it.
PyObject *percent_inverse(PyObject *, PyObject *arguments) {
  int decimals = 0;
  long long percent = 0;
  if (PyArg_ParseTuple(arguments, "iL", &decimals, &percent) == 0) return nullptr;
  const Family *family = family_of(decimals);
  unsigned char field[PORC4_BYTES];
  unsigned char result[PORC4_BYTES];
  if (family == nullptr || !store(*family, percent, field)) return nullptr;
  const std::int64_t hundred = 100 * power(family->decimals);
  if (percent != 0 && !store(*family, hundred * hundred / percent, result)) return nullptr;
  family->invert(result, field);
  return PyLong_FromLongLong(stored(*family, result));
}

}  // namespace campotipo::python
