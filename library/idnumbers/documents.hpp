#pragma once

#include <campotipo/documents.h>

#include <cstdint>
#include <cstring>

#include "base/bytes.hpp"
#include "base/digits.hpp"
#include "idnumbers/document_tables.hpp"

// Check and make of the numbers of Brazilian documents, each of a length of its own.
namespace campotipo::idnumbers {

inline constexpr Letters kCnpjLetters = places(0, 12);
inline constexpr Letters kAccessKeyLetters = places(6, 18);

// `treat` for a text that is known to be of the kind.
inline int settle_known(char *text, unsigned length, const Table &table, int make) {
  return settle(text + length - 1 - table.position, weighted_total(text, length, table), table,
                make);
}

template <unsigned kLength>
inline int treat_exactly(char *text, const Table &table, int make) {
  return digit_length(text) == kLength && settle_known(text, kLength, table, make) != 0;
}

inline int validate_pis(char *text, int make) {
  return treat_exactly<DOCUMENTO_PIS_TEXT_SIZE - 1>(text, tables::kPis, make);
}

[[gnu::always_inline]] inline int validate_cnpj_alfa(char *text, int make) {
  return consists_of(text, Cnpj::kLength, kCnpjLetters) && settle_both<Cnpj>(text, make) != 0;
}

inline int validate_access_key(char *text, int make) {
  constexpr unsigned kLength = DOCUMENTO_CHAVE_ACESSO_TEXT_SIZE - 1;
  return consists_of(text, kLength, kAccessKeyLetters) &&
         settle_known(text, kLength, tables::kAccessKey, make) != 0;
}

inline int validate_card(char *text, int make) {
  const unsigned length = digit_length(text);
  return length >= DOCUMENTO_CARTAO_MENOR && length < DOCUMENTO_CARTAO_TEXT_SIZE &&
         settle_known(text, length, tables::kCard, make) != 0;
}

inline int validate_voter(char *text, int make) {
  if (digit_length(text) != DOCUMENTO_TITULO_TEXT_SIZE - 1) return 0;
  const int state = (text[8] - '0') * 10 + (text[9] - '0');
  if (state < 1 || state > 28) return 0;
  const bool differs = state <= 2;
  const Table &first = differs ? tables::kVoterFirstSpMg : tables::kVoterFirst;
  const Table &second = differs ? tables::kVoterSecondSpMg : tables::kVoterSecond;
  constexpr unsigned kLength = DOCUMENTO_TITULO_TEXT_SIZE - 1;
  return settle_known(text, kLength, first, make) != 0 &&
         settle_known(text, kLength, second, make) != 0;
}

// A definitive card (1 or 2) is eleven digits and "000"; where that would ask for a digit 10, "001"
// stands instead, and the digit is 8.
inline int validate_health(char *text, int make) {
  constexpr unsigned kLength = DOCUMENTO_CNS_TEXT_SIZE - 1;
  if (digit_length(text) != kLength) return 0;
  const bool definitive = text[0] == '1' || text[0] == '2';
  if (!definitive && text[0] < '7') return 0;
  unsigned total = weighted_total(text, kLength, tables::kHealth);
  char ending[4];
  std::memcpy(ending, text + 11, 4);
  if (definitive) {
    for (int i = 0; i < 3; ++i) total -= static_cast<unsigned>((ending[i] - '0') * (4 - i));
    std::memcpy(ending, "000", 3);
  }
  const unsigned digit = tables::kHealthCard[total % 11];
  ending[3] = static_cast<char>('0' + digit);
  if (digit > 9) {
    if (!definitive) return 0;
    std::memcpy(ending, "0018", 4);
  }
  if (make != 0) std::memcpy(text + 11, ending, 4);
  return std::memcmp(text + 11, ending, 4) == 0;
}

// Weights 9 to 1, then 1 to 9 over the same nine digits. A first digit of 10 becomes 0 and takes 2
// off the second; a second one below 0 has 11 added to it, and only then a 10 becomes 0.
inline int validate_licence(char *text, int make) {
  if (digit_length(text) != DOCUMENTO_CNH_TEXT_SIZE - 1) return 0;
  unsigned falling = 0, rising = 0;
  for (unsigned i = 0; i < 9; ++i) {
    const auto digit = static_cast<unsigned>(text[i] - '0');
    falling += digit * (9 - i);
    rising += digit * (i + 1);
  }
  if (falling == 0) return 0;
  unsigned first = falling % 11, second = rising % 11;
  if (first == 10) {
    first = 0;
    second = (second + 9) % 11;
  }
  if (second == 10) second = 0;
  const auto expected = static_cast<std::uint16_t>(0x3030 + first + (second << 8));
  if (make != 0) bytes::store(text + 9, expected);
  return bytes::load<std::uint16_t>(text + 9) == expected;
}

// ISO 7064 MOD 97-10, with the two digits in the middle: 98 less the remainder of all the others
// with "00" behind them.
inline int validate_lawsuit(char *text, int make) {
  if (digit_length(text) != DOCUMENTO_PROCESSO_TEXT_SIZE - 1) return 0;
  const auto word = [&](unsigned at) { return bytes::load<std::uint64_t>(text + at); };
  const std::uint64_t serial = digits::join8((word(0) ^ digits::kZeros) << 8);
  const std::uint64_t year_on = digits::join8((word(9) ^ digits::kZeros) << 40);
  const std::uint64_t others =
      (serial * 1000 + year_on) * digits::kTenTo8 + digits::join8(word(12) ^ digits::kZeros);
  if (others == 0) return 0;
  char expected[2];
  digits::put2(expected, 98 - static_cast<unsigned>(others % 97 * 100 % 97));
  if (make != 0) std::memcpy(text + 7, expected, 2);
  return std::memcmp(text + 7, expected, 2) == 0;
}

}  // namespace campotipo::idnumbers
