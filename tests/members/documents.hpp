#pragma once

#include <campotipo/documents.h>

#include "tests/reference/documents.hpp"

namespace campotipo::test {

// A document, and the obvious way to its check digits. The CNPJ of digits alone has no punctuation of
// its own: that is the one with letters.
struct Document {
  const char *name;
  int bit;
  int (*validate)(char *, int);
  std::string (*made)(const std::string &);
  const char *valid;  // a number whose check digits fit
  // Places of capitals, and up to which place no single wrong digit goes by unnoticed.
  std::size_t letters_from, letters_to, safe_to;
  char *(*edit)(char *, const char *);
  int (*clean)(char *, const char *);
  std::size_t edited_size;
  const char *pattern;  // "#" for each character
};

// clang-format off
inline constexpr Document kDocuments[] = {
    {"CPF", DOCUMENTO_BIT_CPF, ZALGORITM_valida_CPF, reference::made_cpf,
     "12345678909", 0, 0, 0,
     DOCUMENTO_edita_CPF, DOCUMENTO_limpa_CPF, DOCUMENTO_CPF_EDITADO_SIZE, "###.###.###-##"},
    {"CNPJ", DOCUMENTO_BIT_CNPJ, ZALGORITM_valida_CNPJ, reference::made_cnpj,
     "11222333000181", 0, 0, 0, nullptr, nullptr, 0, ""},
    {"CNPJ_alfa", DOCUMENTO_BIT_CNPJ_ALFA, DOCUMENTO_valida_CNPJ_alfa, reference::made_cnpj_alfa,
     "12ABC34501DE35", 0, 12, 0,
     DOCUMENTO_edita_CNPJ, DOCUMENTO_limpa_CNPJ, DOCUMENTO_CNPJ_EDITADO_SIZE, "##.###.###/####-##"},
    {"PIS", DOCUMENTO_BIT_PIS, DOCUMENTO_valida_PIS, reference::made_pis,
     "12056874107", 0, 0, 0,
     DOCUMENTO_edita_PIS, DOCUMENTO_limpa_PIS, DOCUMENTO_PIS_EDITADO_SIZE, "###.#####.##-#"},
    {"RENAVAM", DOCUMENTO_BIT_RENAVAM, DOCUMENTO_valida_RENAVAM, reference::made_pis,
     "00639884962", 0, 0, 0, nullptr, nullptr, 0, ""},
    {"chave_acesso", DOCUMENTO_BIT_CHAVE_ACESSO, DOCUMENTO_valida_chave_acesso,
     reference::made_access_key, "3526050X0J92JY000196570010000006041448679011", 6, 18, 0,
     DOCUMENTO_edita_chave_acesso, DOCUMENTO_limpa_chave_acesso,
     DOCUMENTO_CHAVE_ACESSO_EDITADO_SIZE, "#### #### #### #### #### #### #### #### #### #### ####"},
    {"boleto_barras", DOCUMENTO_BIT_BOLETO_BARRAS, DOCUMENTO_valida_boleto_barras,
     reference::made_bank_bars, "34195708800000020001790001043510049102015000", 0, 0, 0,
     nullptr, nullptr, 0, ""},
    {"boleto_linha", DOCUMENTO_BIT_BOLETO_LINHA, DOCUMENTO_valida_boleto_linha,
     reference::made_bank_line, "34191790010104351004791020150008570880000002000", 0, 0, 32,
     DOCUMENTO_edita_boleto_linha, DOCUMENTO_limpa_boleto_linha,
     DOCUMENTO_BOLETO_LINHA_EDITADO_SIZE, "#####.##### #####.###### #####.###### # ##############"},
    {"arrecadacao_barras", DOCUMENTO_BIT_ARRECADACAO_BARRAS, DOCUMENTO_valida_arrecadacao_barras,
     reference::made_utility_bars, "83640000001331201380008128846271108013618155", 0, 0, 44,
     nullptr, nullptr, 0, ""},
    {"arrecadacao_linha", DOCUMENTO_BIT_ARRECADACAO_LINHA, DOCUMENTO_valida_arrecadacao_linha,
     reference::made_utility_line, "836400000011331201380002812884627116080136181551", 0, 0, 48,
     DOCUMENTO_edita_arrecadacao_linha, DOCUMENTO_limpa_arrecadacao_linha,
     DOCUMENTO_ARRECADACAO_LINHA_EDITADO_SIZE,
     "###########-# ###########-# ###########-# ###########-#"},
    {"titulo", DOCUMENTO_BIT_TITULO, DOCUMENTO_valida_titulo, reference::made_voter,
     "102385010671", 0, 0, 0,
     DOCUMENTO_edita_titulo, DOCUMENTO_limpa_titulo, DOCUMENTO_TITULO_EDITADO_SIZE,
     "#### #### ####"},
    {"cartao", DOCUMENTO_BIT_CARTAO, DOCUMENTO_valida_cartao, reference::made_card,
     "4111111111111111", 0, 0, 16,
     DOCUMENTO_edita_cartao, DOCUMENTO_limpa_cartao, DOCUMENTO_CARTAO_EDITADO_SIZE,
     "#### #### #### #### ###"},
    {"CNS", DOCUMENTO_BIT_CNS, DOCUMENTO_valida_CNS, reference::made_health,
     "898000000043208", 0, 0, 0,
     DOCUMENTO_edita_CNS, DOCUMENTO_limpa_CNS, DOCUMENTO_CNS_EDITADO_SIZE, "### #### #### ####"},
    {"CNH", DOCUMENTO_BIT_CNH, DOCUMENTO_valida_CNH, reference::made_licence,
     "00641829409", 0, 0, 0, nullptr, nullptr, 0, ""},
    {"processo", DOCUMENTO_BIT_PROCESSO, DOCUMENTO_valida_processo, reference::made_lawsuit,
     "00589677720168190000", 0, 0, 20,
     DOCUMENTO_edita_processo, DOCUMENTO_limpa_processo, DOCUMENTO_PROCESSO_EDITADO_SIZE,
     "#######-##.####.#.##.####"},
};
// clang-format on

}  // namespace campotipo::test
