#pragma once

#include <campotipo/documents.h>

#include <cstring>

#include "idnumbers/documents.hpp"

// Bank slips and utility slips: the bar code of 44 digits and the line that a person types.
namespace campotipo::idnumbers {

inline constexpr unsigned kBars = DOCUMENTO_BOLETO_BARRAS_TEXT_SIZE - 1;

// A piece of the line: `length` digits, a check digit behind them, and their place in the bars.
struct Field {
  unsigned char at, length, in_bars;
};

// Bank, currency, general digit, due factor, amount, free field. The line begins with the bank, the
// currency and the free field; its general digit, due factor and amount have no digit of their own.
struct BankSlip {
  static constexpr unsigned kLine = DOCUMENTO_BOLETO_LINHA_TEXT_SIZE - 1;
  static constexpr Field kFields[] = {{0, 9, 0}, {10, 10, 24}, {21, 10, 34}};

  static bool accepts(const char *bars) { return bars[0] != '8'; }
  static const Table &general(const char *) { return tables::kBankSlipGeneral; }
  static const Table &field(const char *) { return tables::kModulo10; }

  static void to_bars(char *bars, const char *line) {
    std::memcpy(bars, line, 4);
    std::memcpy(bars + 4, line + 32, 15);
    std::memcpy(bars + 19, line + 4, 5);
    std::memcpy(bars + 24, line + 10, 10);
    std::memcpy(bars + 34, line + 21, 10);
  }
  static void to_line(char *line, const char *bars) {
    std::memcpy(line, bars, 4);
    std::memcpy(line + 32, bars + 4, 15);
    std::memcpy(line + 4, bars + 19, 5);
    std::memcpy(line + 10, bars + 24, 10);
    std::memcpy(line + 21, bars + 34, 10);
  }
};

// The line is the bar code in four blocks. The third digit gives the kind of value, and with it the
// method of all five digits.
struct UtilitySlip {
  static constexpr unsigned kLine = DOCUMENTO_ARRECADACAO_LINHA_TEXT_SIZE - 1;
  static constexpr Field kFields[] = {{0, 11, 0}, {12, 11, 11}, {24, 11, 22}, {36, 11, 33}};

  static bool accepts(const char *bars) { return bars[0] == '8' && bars[2] >= '6'; }
  static bool by_ten(const char *bars) { return bars[2] < '8'; }
  static const Table &general(const char *bars) {
    return by_ten(bars) ? tables::kUtilityGeneral10 : tables::kUtilityGeneral11;
  }
  static const Table &field(const char *bars) {
    return by_ten(bars) ? tables::kModulo10 : tables::kModulo11;
  }

  static void to_bars(char *bars, const char *line) {
    for (const Field &field : kFields) std::memcpy(bars + field.in_bars, line + field.at, 11);
  }
  static void to_line(char *line, const char *bars) {
    for (const Field &field : kFields) std::memcpy(line + field.at, bars + field.in_bars, 11);
  }
};

template <class Slip>
inline int validate_bars(char *text, int make) {
  return digit_length(text) == kBars && Slip::accepts(text) &&
         settle_known(text, kBars, Slip::general(text), make) != 0;
}

template <class Slip>
inline int settle_fields(char *line, const char *bars, int make) {
  for (const Field &field : Slip::kFields) {
    if (settle_known(line + field.at, field.length + 1u, Slip::field(bars), make) == 0) return 0;
  }
  return 1;
}

// The line of a settled bar code.
template <class Slip>
inline void put_line(char *line, const char *bars) {
  Slip::to_line(line, bars);
  for (const Field &field : Slip::kFields) line[field.at + field.length] = '0';
  settle_fields<Slip>(line, bars, 1);
}

template <class Slip>
inline int validate_line(char *text, int make) {
  if (digit_length(text) != Slip::kLine) return 0;
  char bars[kBars];
  Slip::to_bars(bars, text);
  if (!Slip::accepts(bars)) return 0;
  if (settle_known(bars, kBars, Slip::general(bars), make) == 0) return 0;
  if (make != 0) put_line<Slip>(text, bars);
  return settle_fields<Slip>(text, bars, 0);
}

template <class Slip>
inline int line_to_bars(char *dest, const char *line) {
  char bars[kBars + 1] = "";
  // Without make the line is only read.
  const int valid = validate_line<Slip>(const_cast<char *>(line), 0);
  if (valid != 0) Slip::to_bars(bars, line);
  std::memcpy(dest, bars, valid != 0 ? kBars + 1 : 1);
  return valid;
}

template <class Slip>
inline int bars_to_line(char *dest, const char *bars) {
  char line[Slip::kLine + 1] = "";
  const int valid = validate_bars<Slip>(const_cast<char *>(bars), 0);
  if (valid != 0) put_line<Slip>(line, bars);
  std::memcpy(dest, line, valid != 0 ? Slip::kLine + 1 : 1);
  return valid;
}

}  // namespace campotipo::idnumbers
