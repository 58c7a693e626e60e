// Check digits, documents and unique numbers against the digit-by-digit models of the tests.
#include <campotipo/documents.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

#include "tests/reference/documents.hpp"

#define CHECK(condition) \
  if (!(condition)) __builtin_trap()

namespace {

namespace reference = campotipo::reference;

struct Document {
  int bit;
  int (*validate)(char *, int);
  std::string (*made)(const std::string &);
  char *(*edit)(char *, const char *);
  int (*clean)(char *, const char *);
};

constexpr Document kDocuments[] = {
    {DOCUMENTO_BIT_CPF, nullptr, reference::made_cpf, DOCUMENTO_edita_CPF, DOCUMENTO_limpa_CPF},
    {DOCUMENTO_BIT_CNPJ, nullptr, reference::made_cnpj, nullptr, nullptr},
    {DOCUMENTO_BIT_CNPJ_ALFA, DOCUMENTO_valida_CNPJ_alfa, reference::made_cnpj_alfa,
     DOCUMENTO_edita_CNPJ, DOCUMENTO_limpa_CNPJ},
    {DOCUMENTO_BIT_PIS, DOCUMENTO_valida_PIS, reference::made_pis, DOCUMENTO_edita_PIS,
     DOCUMENTO_limpa_PIS},
    {DOCUMENTO_BIT_RENAVAM, DOCUMENTO_valida_RENAVAM, reference::made_pis, nullptr, nullptr},
    {DOCUMENTO_BIT_CHAVE_ACESSO, DOCUMENTO_valida_chave_acesso, reference::made_access_key,
     DOCUMENTO_edita_chave_acesso, DOCUMENTO_limpa_chave_acesso},
    {DOCUMENTO_BIT_BOLETO_BARRAS, DOCUMENTO_valida_boleto_barras, reference::made_bank_bars,
     nullptr, nullptr},
    {DOCUMENTO_BIT_BOLETO_LINHA, DOCUMENTO_valida_boleto_linha, reference::made_bank_line,
     DOCUMENTO_edita_boleto_linha, DOCUMENTO_limpa_boleto_linha},
    {DOCUMENTO_BIT_ARRECADACAO_BARRAS, DOCUMENTO_valida_arrecadacao_barras,
     reference::made_utility_bars, nullptr, nullptr},
    {DOCUMENTO_BIT_ARRECADACAO_LINHA, DOCUMENTO_valida_arrecadacao_linha,
     reference::made_utility_line, DOCUMENTO_edita_arrecadacao_linha,
     DOCUMENTO_limpa_arrecadacao_linha},
    {DOCUMENTO_BIT_TITULO, DOCUMENTO_valida_titulo, reference::made_voter, DOCUMENTO_edita_titulo,
     DOCUMENTO_limpa_titulo},
    {DOCUMENTO_BIT_CARTAO, DOCUMENTO_valida_cartao, reference::made_card, DOCUMENTO_edita_cartao,
     DOCUMENTO_limpa_cartao},
    {DOCUMENTO_BIT_CNS, DOCUMENTO_valida_CNS, reference::made_health, DOCUMENTO_edita_CNS,
     DOCUMENTO_limpa_CNS},
    {DOCUMENTO_BIT_CNH, DOCUMENTO_valida_CNH, reference::made_licence, nullptr, nullptr},
    {DOCUMENTO_BIT_PROCESSO, DOCUMENTO_valida_processo, reference::made_lawsuit,
     DOCUMENTO_edita_processo, DOCUMENTO_limpa_processo},
};

std::string without_punctuation(const std::string &text) {
  std::string kept;
  for (char c : text)
    if (c == '\0' || std::strchr(".-/ \t\n\v\f\r", c) == nullptr) kept += c;
  return kept;
}

template <class Operation, class Model>
void check_same(const std::string &text, int make, Operation operation, Model model) {
  std::string changed = text, expected = text;
  const int good = model(expected, make);
  CHECK(operation(changed.data(), make) == good);
  CHECK(changed == expected);
}

void check_engine(const ZALGORITM_TABELA &table, const std::string &text, int make) {
  check_same(
      text, make, [&](char *t, int m) { return ZALGORITM_trata(t, &table, m); },
      [&](std::string &t, int m) { return reference::treat(t, table, m); });
  check_same(text, make, ZALGORITM_valida_CPF,
             [](std::string &t, int m) { return reference::taxpayer(t, 11, 11, m); });
  check_same(text, make, ZALGORITM_valida_CNPJ,
             [](std::string &t, int m) { return reference::taxpayer(t, 14, 9, m); });
}

void check_documents(const std::string &text, int make) {
  const std::string kept = without_punctuation(text);
  int bits = 0;
  for (const Document &document : kDocuments) {
    if (document.validate != nullptr) {
      check_same(text, make, document.validate,
                 [&](std::string &t, int m) { return reference::validate(document.made, t, m); });
    }
    if (!kept.empty() && document.made(kept) == kept) bits |= document.bit;
    if (document.clean == nullptr) continue;
    char cleaned[64], shown[64], again[64];
    const int fits = document.clean(cleaned, text.c_str());
    CHECK(fits ? kept == cleaned : *cleaned == '\0');
    CHECK((*document.edit(shown, kept.c_str()) != '\0') == (fits != 0));
    if (fits != 0) CHECK(document.clean(again, shown) == 1 && kept == again);
  }
  CHECK(DOCUMENTO_identifica(text.c_str()) == bits);
}

void check_form_b(const int (&values)[6]) {
  char text[ZALGORITM_NUMEROB_UNICO_TEXT_SIZE];
  int back[6];
  CHECK(ZALGORITM_gera_numeroB_unico(text, sizeof text, values, values + 1, values + 2, values + 3,
                                     values + 4, values + 5) == 0);
  CHECK(ZALGORITM_extrai_numeroB_unico(text, back, back + 1, back + 2, back + 3, back + 4,
                                       back + 5) == 0);
  CHECK(std::strlen(text) == 11);
  CHECK(back[0] == (values[0] & 127) && back[1] == (values[1] & 1023));
  CHECK(back[2] == (values[2] & 2047) && back[3] == 0);
  CHECK(back[4] == (values[4] & 255) && back[5] == 0);
}

}  // namespace

// A byte that chooses, six values, the head of a table, and the text. The rest of the table is cut
// out of all of it.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  int values[6];
  constexpr std::size_t kTable = 1 + sizeof values, kText = kTable + 3;
  if (size < kText) return 0;
  const unsigned choice = data[0];
  std::memcpy(values, data + 1, sizeof values);
  ZALGORITM_TABELA table{data[kTable], data[kTable + 1], data[kTable + 2], {}, {}};
  for (std::size_t i = 0; i < sizeof table.weights; ++i) table.weights[i] = data[i * 7 % size];
  for (std::size_t i = 0; i < sizeof table.results; ++i) table.results[i] = data[i * 5 % size];
  if (choice & 4) table.modulus = static_cast<unsigned char>(table.modulus % 18);
  if (choice & 8) table.position = static_cast<unsigned char>(table.position % 52);

  std::string text(reinterpret_cast<const char *>(data) + kText, size - kText);
  // Most of the time digits, which a fuzzer is slow to find.
  if (choice & 2) {
    for (char &c : text) c = static_cast<char>('0' + static_cast<unsigned char>(c) % 10);
  }
  text = text.c_str();

  check_engine(table, text, choice & 1);
  check_documents(text, choice & 1);
  check_form_b(values);
  return 0;
}
