#pragma once

#include <cstdint>
#include <string>

#include "tests/reference/check_digit.hpp"

// For each document, the text with the check digits that belong to it; the empty text where the
// document does not have such texts. Digit by digit, from the rules as they are published.
namespace campotipo::reference {

inline bool digits_of(const std::string &text, std::size_t length) {
  return text.size() == length && all_digits(text);
}

inline bool only_zeros(const std::string &text) {
  return text.find_first_not_of('0') == std::string::npos;
}

inline std::string with_letters(const std::string &text, std::size_t from, std::size_t to) {
  std::string digits = text;
  for (std::size_t i = from; i < to && i < digits.size(); ++i)
    if (digits[i] >= 'A' && digits[i] <= 'Z') digits[i] = '0';
  return digits;
}

inline char digit_modulo10(const std::string &number) {
  int total = 0;
  bool doubled = true;
  for (auto at = number.rbegin(); at != number.rend(); ++at, doubled = !doubled) {
    const int product = (*at - '0') * (doubled ? 2 : 1);
    total += product / 10 + product % 10;
  }
  return static_cast<char>('0' + (10 - total % 10) % 10);
}

inline std::string made_cpf(const std::string &text) {
  if (!digits_of(text, 11) || only_zeros(text.substr(0, 9))) return "";
  std::string number = text.substr(0, 9);
  number += digit_modulo11(number, 11);
  return number + digit_modulo11(number, 11);
}

inline std::string made_cnpj_alfa(const std::string &text) {
  if (!digits_of(with_letters(text, 0, 12), 14) || only_zeros(text.substr(0, 12))) return "";
  std::string number = text.substr(0, 12);
  number += digit_modulo11(number, 9);
  return number + digit_modulo11(number, 9);
}

inline std::string made_cnpj(const std::string &text) {
  return all_digits(text) ? made_cnpj_alfa(text) : "";
}

inline std::string made_last(const std::string &text) {
  const std::string number = text.substr(0, text.size() - 1);
  return only_zeros(number) ? "" : number + digit_modulo11(number, 9);
}

inline std::string made_pis(const std::string &text) {
  return digits_of(text, 11) ? made_last(text) : "";
}

inline std::string made_access_key(const std::string &text) {
  return digits_of(with_letters(text, 6, 18), 44) ? made_last(text) : "";
}

inline std::string made_card(const std::string &text) {
  if (text.size() < 12 || text.size() > 19 || !all_digits(text)) return "";
  const std::string number = text.substr(0, text.size() - 1);
  return only_zeros(number) ? "" : number + digit_modulo10(number);
}

inline std::string made_bank_bars(const std::string &text) {
  if (!digits_of(text, 44) || text[0] == '8') return "";
  const std::string number = text.substr(0, 4) + text.substr(5);
  if (only_zeros(number)) return "";
  const char digit = digit_modulo11(number, 9);
  return text.substr(0, 4) + (digit == '0' ? '1' : digit) + text.substr(5);
}

inline std::string bank_bars(const std::string &line) {
  return line.substr(0, 4) + line.substr(32) + line.substr(4, 5) + line.substr(10, 10) +
         line.substr(21, 10);
}

inline std::string bank_line(const std::string &bars) {
  const auto field = [](const std::string &number) { return number + digit_modulo10(number); };
  return field(bars.substr(0, 4) + bars.substr(19, 5)) + field(bars.substr(24, 10)) +
         field(bars.substr(34)) + bars.substr(4, 15);
}

inline std::string made_bank_line(const std::string &text) {
  if (!digits_of(text, 47)) return "";
  const std::string bars = made_bank_bars(bank_bars(text));
  return bars.empty() ? "" : bank_line(bars);
}

inline char utility_digit(char kind, const std::string &number) {
  return kind < '8' ? digit_modulo10(number) : digit_modulo11(number, 9);
}

inline std::string made_utility_bars(const std::string &text) {
  if (!digits_of(text, 44) || text[0] != '8' || text[2] < '6') return "";
  return text.substr(0, 3) + utility_digit(text[2], text.substr(0, 3) + text.substr(4)) +
         text.substr(4);
}

inline std::string utility_bars(const std::string &line) {
  return line.substr(0, 11) + line.substr(12, 11) + line.substr(24, 11) + line.substr(36, 11);
}

inline std::string utility_line(const std::string &bars) {
  std::string line;
  for (std::size_t at = 0; at < 44; at += 11)
    line += bars.substr(at, 11) + utility_digit(bars[2], bars.substr(at, 11));
  return line;
}

inline std::string made_utility_line(const std::string &text) {
  if (!digits_of(text, 48)) return "";
  const std::string bars = made_utility_bars(utility_bars(text));
  return bars.empty() ? "" : utility_line(bars);
}

inline std::string made_voter(const std::string &text) {
  if (!digits_of(text, 12) || only_zeros(text.substr(0, 8))) return "";
  const int state = std::stoi(text.substr(8, 2));
  if (state < 1 || state > 28) return "";
  const auto digit = [&](int remainder) {
    if (remainder == 10) return 0;
    return remainder == 0 && state <= 2 ? 1 : remainder;
  };
  int total = 0;
  for (int i = 0; i < 8; ++i) total += (text[static_cast<std::size_t>(i)] - '0') * (i + 2);
  const int first = digit(total % 11);
  const int second = digit((state / 10 * 7 + state % 10 * 8 + first * 9) % 11);
  return text.substr(0, 10) + std::to_string(first) + std::to_string(second);
}

inline int health_total(const std::string &text) {
  int total = 0;
  for (int i = 0; i < 15; ++i) total += (text[static_cast<std::size_t>(i)] - '0') * (15 - i);
  return total;
}

// The endings that a number of the kind can have, tried one after the other.
inline std::string made_health(const std::string &text) {
  if (!digits_of(text, 15) || text[0] == '0' || (text[0] > '2' && text[0] < '7')) return "";
  const std::string middle = text[0] < '7' ? "000" : text.substr(11, 3);
  for (char digit = '0'; digit <= '9'; ++digit) {
    const std::string number = text.substr(0, 11) + middle + digit;
    if (health_total(number) % 11 == 0) return number;
  }
  return text[0] < '7' ? text.substr(0, 11) + "0018" : "";
}

inline std::string made_licence(const std::string &text) {
  if (!digits_of(text, 11) || only_zeros(text.substr(0, 9))) return "";
  int down = 0, up = 0;
  for (int i = 0; i < 9; ++i) {
    down += (text[static_cast<std::size_t>(i)] - '0') * (9 - i);
    up += (text[static_cast<std::size_t>(i)] - '0') * (i + 1);
  }
  int first = down % 11, second = up % 11;
  if (first == 10) second -= 2;
  if (second < 0) second += 11;
  return text.substr(0, 9) + std::to_string(first % 10) + std::to_string(second % 10);
}

inline std::string made_lawsuit(const std::string &text) {
  if (!digits_of(text, 20)) return "";
  const std::string others = text.substr(0, 7) + text.substr(9);
  if (only_zeros(others)) return "";
  int remainder = 0;
  for (char digit : others + "00") remainder = (remainder * 10 + (digit - '0')) % 97;
  const int check = 98 - remainder;
  return text.substr(0, 7) + (check < 10 ? "0" : "") + std::to_string(check) + text.substr(9);
}

// What valida does, by one of the functions above.
inline int validate(std::string (*made)(const std::string &), std::string &text, int make) {
  const std::string expected = made(text);
  if (expected.empty()) return 0;
  if (make) text = expected;
  return text == expected;
}

}  // namespace campotipo::reference
