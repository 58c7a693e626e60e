#pragma once

#include <campotipo/idnumbers.h>

#include <cstdlib>
#include <string>

// Check digits by the digit, as the rules are published: no words, no tables of the library.
namespace campotipo::reference {

inline bool all_digits(const std::string &text) {
  return text.find_first_not_of("0123456789") == std::string::npos;
}

inline int treat(std::string &text, const ZALGORITM_TABELA &table, int make) {
  const std::size_t length = text.size();
  if (table.modulus == 0 || table.modulus > 16) return 0;
  if (length < 2 || length > 50 || table.position >= length || !all_digits(text)) return 0;
  int total = 0;
  for (std::size_t i = 0; i < length; ++i) {
    int product = (text[length - 1 - i] - '0') * table.weights[i];
    if ((table.flags & 4) && product > 9) product -= 9;
    if (table.flags & 1) {
      for (char digit : std::to_string(product)) total += digit - '0';
    } else {
      total += product;
    }
  }
  if (total == 0 && !(table.flags & 2)) return 0;
  const char expected = static_cast<char>('0' + table.results[total % table.modulus]);
  char &place = text[length - 1 - table.position];
  if (make) place = expected;
  return place == expected;
}

// The digit behind `number`: weights from 2 to `last` over and over from the right, 11 less the
// remainder, 0 for the remainders 0 and 1. A letter counts its code less 48.
inline char digit_modulo11(const std::string &number, int last) {
  int total = 0, weight = 2;
  for (auto at = number.rbegin(); at != number.rend(); ++at) {
    total += (*at - '0') * weight;
    weight = weight == last ? 2 : weight + 1;
  }
  return static_cast<char>(total % 11 < 2 ? '0' : '0' + 11 - total % 11);
}

// A taxpayer number of `digits` digits whose weights end at `last`. Nothing further to the left
// than the number's own digits counts, and all of them zero is no number.
inline int taxpayer(std::string &text, std::size_t digits, int last, int make) {
  if (text.size() < 2 || text.size() > 50 || !all_digits(text)) return 0;
  std::string number = text;
  if (number.size() < digits) number.insert(0, digits - number.size(), '0');
  number.erase(0, number.size() - digits);
  number.resize(digits - 2);
  if (number.find_first_not_of('0') == std::string::npos) return 0;
  number += digit_modulo11(number, last);
  number += digit_modulo11(number, last);
  if (make) {
    text.replace(text.size() - 2, 2, number, digits - 2, 2);
  } else if (text.substr(text.size() - 2) != number.substr(digits - 2)) {
    return 0;
  }
  const std::size_t first = text.find_first_not_of('0');
  return first == std::string::npos || text.size() - first <= digits;
}

}  // namespace campotipo::reference
