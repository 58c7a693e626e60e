#pragma once

#include <campotipo/documents.h>

#include <cstdint>

#include "idnumbers/documents.hpp"
#include "idnumbers/slips.hpp"

// The documents in one table, their punctuation, and which of them a text can be.
namespace campotipo::idnumbers {

// A new document is one entry. A pattern has "#" for each character; one that is shorter than its
// longest text is used as far as the text goes.
struct Document {
  int bit;
  unsigned char shortest, longest;
  Letters letters;
  const char *pattern;
  int (*validate)(char *text, int make);
};

constexpr Document exactly(int bit, int text_size, const char *pattern,
                           int (*validate)(char *, int), Letters letters = 0) {
  const auto length = static_cast<unsigned char>(text_size - 1);
  return {bit, length, length, letters, pattern, validate};
}

inline constexpr Document kCpf =
    exactly(DOCUMENTO_BIT_CPF, DOCUMENTO_CPF_TEXT_SIZE, "###.###.###-##", ZALGORITM_valida_CPF);
inline constexpr Document kCnpj = exactly(DOCUMENTO_BIT_CNPJ, DOCUMENTO_CNPJ_TEXT_SIZE,
                                          "##.###.###/####-##", ZALGORITM_valida_CNPJ);
inline constexpr Document kCnpjAlfa =
    exactly(DOCUMENTO_BIT_CNPJ_ALFA, DOCUMENTO_CNPJ_TEXT_SIZE, kCnpj.pattern,
            DOCUMENTO_valida_CNPJ_alfa, kCnpjLetters);
inline constexpr Document kPis =
    exactly(DOCUMENTO_BIT_PIS, DOCUMENTO_PIS_TEXT_SIZE, "###.#####.##-#", DOCUMENTO_valida_PIS);
inline constexpr Document kRenavam = exactly(DOCUMENTO_BIT_RENAVAM, DOCUMENTO_RENAVAM_TEXT_SIZE,
                                             "###########", DOCUMENTO_valida_RENAVAM);
inline constexpr Document kAccessKey =
    exactly(DOCUMENTO_BIT_CHAVE_ACESSO, DOCUMENTO_CHAVE_ACESSO_TEXT_SIZE,
            "#### #### #### #### #### #### #### #### #### #### ####", DOCUMENTO_valida_chave_acesso,
            kAccessKeyLetters);
inline constexpr Document kBankBars =
    exactly(DOCUMENTO_BIT_BOLETO_BARRAS, DOCUMENTO_BOLETO_BARRAS_TEXT_SIZE,
            "############################################", DOCUMENTO_valida_boleto_barras);
inline constexpr Document kBankLine = exactly(
    DOCUMENTO_BIT_BOLETO_LINHA, DOCUMENTO_BOLETO_LINHA_TEXT_SIZE,
    "#####.##### #####.###### #####.###### # ##############", DOCUMENTO_valida_boleto_linha);
inline constexpr Document kUtilityBars =
    exactly(DOCUMENTO_BIT_ARRECADACAO_BARRAS, DOCUMENTO_ARRECADACAO_BARRAS_TEXT_SIZE,
            kBankBars.pattern, DOCUMENTO_valida_arrecadacao_barras);
inline constexpr Document kUtilityLine = exactly(
    DOCUMENTO_BIT_ARRECADACAO_LINHA, DOCUMENTO_ARRECADACAO_LINHA_TEXT_SIZE,
    "###########-# ###########-# ###########-# ###########-#", DOCUMENTO_valida_arrecadacao_linha);
inline constexpr Document kVoter = exactly(DOCUMENTO_BIT_TITULO, DOCUMENTO_TITULO_TEXT_SIZE,
                                           "#### #### ####", DOCUMENTO_valida_titulo);
inline constexpr Document kCard = {DOCUMENTO_BIT_CARTAO,           DOCUMENTO_CARTAO_MENOR,
                                   DOCUMENTO_CARTAO_TEXT_SIZE - 1, 0,
                                   "#### #### #### #### ###",      DOCUMENTO_valida_cartao};
inline constexpr Document kHealth =
    exactly(DOCUMENTO_BIT_CNS, DOCUMENTO_CNS_TEXT_SIZE, "### #### #### ####", DOCUMENTO_valida_CNS);
inline constexpr Document kLicence =
    exactly(DOCUMENTO_BIT_CNH, DOCUMENTO_CNH_TEXT_SIZE, kRenavam.pattern, DOCUMENTO_valida_CNH);
inline constexpr Document kLawsuit =
    exactly(DOCUMENTO_BIT_PROCESSO, DOCUMENTO_PROCESSO_TEXT_SIZE, "#######-##.####.#.##.####",
            DOCUMENTO_valida_processo);

inline constexpr Document kDocuments[] = {
    kCpf,         kCnpj,        kCnpjAlfa, kPis,  kRenavam, kAccessKey, kBankBars, kBankLine,
    kUtilityBars, kUtilityLine, kVoter,    kCard, kHealth,  kLicence,   kLawsuit};

inline constexpr unsigned kLongest = DOCUMENTO_ARRECADACAO_LINHA_TEXT_SIZE - 1;

constexpr bool takes_at_most(const Document &document, int size) {
  int length = 0;
  while (document.pattern[length] != '\0') ++length;
  return length + 1 == size && document.longest <= kLongest;
}
static_assert(takes_at_most(kCpf, DOCUMENTO_CPF_EDITADO_SIZE));
static_assert(takes_at_most(kCnpjAlfa, DOCUMENTO_CNPJ_EDITADO_SIZE));
static_assert(takes_at_most(kPis, DOCUMENTO_PIS_EDITADO_SIZE));
static_assert(takes_at_most(kAccessKey, DOCUMENTO_CHAVE_ACESSO_EDITADO_SIZE));
static_assert(takes_at_most(kBankLine, DOCUMENTO_BOLETO_LINHA_EDITADO_SIZE));
static_assert(takes_at_most(kUtilityLine, DOCUMENTO_ARRECADACAO_LINHA_EDITADO_SIZE));
static_assert(takes_at_most(kVoter, DOCUMENTO_TITULO_EDITADO_SIZE));
static_assert(takes_at_most(kCard, DOCUMENTO_CARTAO_EDITADO_SIZE));
static_assert(takes_at_most(kHealth, DOCUMENTO_CNS_EDITADO_SIZE));
static_assert(takes_at_most(kLawsuit, DOCUMENTO_PROCESSO_EDITADO_SIZE));

inline char *edit(char *dest, const char *text, const Document &document) {
  *dest = '\0';
  const unsigned length =
      document.shortest == document.longest ? document.longest : digit_length(text);
  if (length < document.shortest || length > document.longest) return dest;
  if (!consists_of(text, length, document.letters)) return dest;
  char *to = dest;
  for (const char *mark = document.pattern; *text != '\0'; ++mark)
    *to++ = *mark == '#' ? *text++ : *mark;
  *to = '\0';
  return dest;
}

constexpr bool is_punctuation(char c) {
  return c == '.' || c == '-' || c == '/' || c == ' ' || (c >= '\t' && c <= '\r');
}

// The characters of a text without its punctuation, at most `longest`; the places of letters.
struct Cleaned {
  unsigned length;
  Letters letters;
  bool valid;
};

// Never writes in front of where it reads, so dest may be the text itself.
inline Cleaned strip(char *dest, const char *text, unsigned longest) {
  Cleaned cleaned{0, 0, false};
  for (; *text != '\0'; ++text) {
    const char c = *text;
    if (is_punctuation(c)) continue;
    if (cleaned.length == longest) return cleaned;
    if (is_capital(c)) {
      cleaned.letters |= std::uint64_t{1} << cleaned.length;
    } else if (!is_digit(c)) {
      return cleaned;
    }
    dest[cleaned.length++] = c;
  }
  dest[cleaned.length] = '\0';
  cleaned.valid = true;
  return cleaned;
}

inline bool fits(const Cleaned &cleaned, const Document &document) {
  return cleaned.valid && cleaned.length >= document.shortest &&
         cleaned.length <= document.longest && (cleaned.letters & ~document.letters) == 0;
}

inline int clean(char *dest, const char *text, const Document &document) {
  const bool valid = fits(strip(dest, text, document.longest), document);
  if (!valid) *dest = '\0';
  return valid;
}

inline int identify(const char *text) {
  char number[kLongest + 1];
  const Cleaned cleaned = strip(number, text, kLongest);
  int bits = 0;
  for (const Document &document : kDocuments) {
    if (fits(cleaned, document) && document.validate(number, 0) != 0) bits |= document.bit;
  }
  return bits;
}

}  // namespace campotipo::idnumbers
