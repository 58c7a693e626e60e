#include "idnumbers/document_text.hpp"

namespace idnumbers = campotipo::idnumbers;
namespace tables = campotipo::idnumbers::tables;

extern "C" {

const ZALGORITM_TABELA DOCUMENTO_tabela_PIS = tables::kPis;
const ZALGORITM_TABELA DOCUMENTO_tabela_chave_acesso = tables::kAccessKey;
const ZALGORITM_TABELA DOCUMENTO_tabela_modulo10 = tables::kModulo10;
const ZALGORITM_TABELA DOCUMENTO_tabela_modulo11 = tables::kModulo11;
const ZALGORITM_TABELA DOCUMENTO_tabela_boleto = tables::kBankSlipGeneral;
const ZALGORITM_TABELA DOCUMENTO_tabela_arrecadacao10 = tables::kUtilityGeneral10;
const ZALGORITM_TABELA DOCUMENTO_tabela_arrecadacao11 = tables::kUtilityGeneral11;
const ZALGORITM_TABELA DOCUMENTO_tabela_titulo_1 = tables::kVoterFirst;
const ZALGORITM_TABELA DOCUMENTO_tabela_titulo_2 = tables::kVoterSecond;
const ZALGORITM_TABELA DOCUMENTO_tabela_titulo_1_SP_MG = tables::kVoterFirstSpMg;
const ZALGORITM_TABELA DOCUMENTO_tabela_titulo_2_SP_MG = tables::kVoterSecondSpMg;
const ZALGORITM_TABELA DOCUMENTO_tabela_cartao = tables::kCard;
const ZALGORITM_TABELA DOCUMENTO_tabela_CNS = tables::kHealth;

int DOCUMENTO_valida_CNPJ_alfa(char *text, int make) {
  return idnumbers::validate_cnpj_alfa(text, make);
}
int DOCUMENTO_valida_PIS(char *text, int make) { return idnumbers::validate_pis(text, make); }
int DOCUMENTO_valida_RENAVAM(char *text, int make) { return idnumbers::validate_pis(text, make); }
int DOCUMENTO_valida_chave_acesso(char *text, int make) {
  return idnumbers::validate_access_key(text, make);
}
int DOCUMENTO_valida_boleto_barras(char *text, int make) {
  return idnumbers::validate_bars<idnumbers::BankSlip>(text, make);
}
int DOCUMENTO_valida_boleto_linha(char *text, int make) {
  return idnumbers::validate_line<idnumbers::BankSlip>(text, make);
}
int DOCUMENTO_valida_arrecadacao_barras(char *text, int make) {
  return idnumbers::validate_bars<idnumbers::UtilitySlip>(text, make);
}
int DOCUMENTO_valida_arrecadacao_linha(char *text, int make) {
  return idnumbers::validate_line<idnumbers::UtilitySlip>(text, make);
}
int DOCUMENTO_valida_titulo(char *text, int make) { return idnumbers::validate_voter(text, make); }
int DOCUMENTO_valida_cartao(char *text, int make) { return idnumbers::validate_card(text, make); }
int DOCUMENTO_valida_CNS(char *text, int make) { return idnumbers::validate_health(text, make); }
int DOCUMENTO_valida_CNH(char *text, int make) { return idnumbers::validate_licence(text, make); }
int DOCUMENTO_valida_processo(char *text, int make) {
  return idnumbers::validate_lawsuit(text, make);
}

int DOCUMENTO_boleto_para_barras(char *dest, const char *text) {
  return idnumbers::line_to_bars<idnumbers::BankSlip>(dest, text);
}
int DOCUMENTO_boleto_para_linha(char *dest, const char *text) {
  return idnumbers::bars_to_line<idnumbers::BankSlip>(dest, text);
}
int DOCUMENTO_arrecadacao_para_barras(char *dest, const char *text) {
  return idnumbers::line_to_bars<idnumbers::UtilitySlip>(dest, text);
}
int DOCUMENTO_arrecadacao_para_linha(char *dest, const char *text) {
  return idnumbers::bars_to_line<idnumbers::UtilitySlip>(dest, text);
}

char *DOCUMENTO_edita_CPF(char *dest, const char *text) {
  return idnumbers::edit(dest, text, idnumbers::kCpf);
}
char *DOCUMENTO_edita_CNPJ(char *dest, const char *text) {
  return idnumbers::edit(dest, text, idnumbers::kCnpjAlfa);
}
char *DOCUMENTO_edita_PIS(char *dest, const char *text) {
  return idnumbers::edit(dest, text, idnumbers::kPis);
}
char *DOCUMENTO_edita_chave_acesso(char *dest, const char *text) {
  return idnumbers::edit(dest, text, idnumbers::kAccessKey);
}
char *DOCUMENTO_edita_boleto_linha(char *dest, const char *text) {
  return idnumbers::edit(dest, text, idnumbers::kBankLine);
}
char *DOCUMENTO_edita_arrecadacao_linha(char *dest, const char *text) {
  return idnumbers::edit(dest, text, idnumbers::kUtilityLine);
}
char *DOCUMENTO_edita_titulo(char *dest, const char *text) {
  return idnumbers::edit(dest, text, idnumbers::kVoter);
}
char *DOCUMENTO_edita_cartao(char *dest, const char *text) {
  return idnumbers::edit(dest, text, idnumbers::kCard);
}
char *DOCUMENTO_edita_CNS(char *dest, const char *text) {
  return idnumbers::edit(dest, text, idnumbers::kHealth);
}
char *DOCUMENTO_edita_processo(char *dest, const char *text) {
  return idnumbers::edit(dest, text, idnumbers::kLawsuit);
}

int DOCUMENTO_limpa_CPF(char *dest, const char *text) {
  return idnumbers::clean(dest, text, idnumbers::kCpf);
}
int DOCUMENTO_limpa_CNPJ(char *dest, const char *text) {
  return idnumbers::clean(dest, text, idnumbers::kCnpjAlfa);
}
int DOCUMENTO_limpa_PIS(char *dest, const char *text) {
  return idnumbers::clean(dest, text, idnumbers::kPis);
}
int DOCUMENTO_limpa_chave_acesso(char *dest, const char *text) {
  return idnumbers::clean(dest, text, idnumbers::kAccessKey);
}
int DOCUMENTO_limpa_boleto_linha(char *dest, const char *text) {
  return idnumbers::clean(dest, text, idnumbers::kBankLine);
}
int DOCUMENTO_limpa_arrecadacao_linha(char *dest, const char *text) {
  return idnumbers::clean(dest, text, idnumbers::kUtilityLine);
}
int DOCUMENTO_limpa_titulo(char *dest, const char *text) {
  return idnumbers::clean(dest, text, idnumbers::kVoter);
}
int DOCUMENTO_limpa_cartao(char *dest, const char *text) {
  return idnumbers::clean(dest, text, idnumbers::kCard);
}
int DOCUMENTO_limpa_CNS(char *dest, const char *text) {
  return idnumbers::clean(dest, text, idnumbers::kHealth);
}
int DOCUMENTO_limpa_processo(char *dest, const char *text) {
  return idnumbers::clean(dest, text, idnumbers::kLawsuit);
}

int DOCUMENTO_identifica(const char *text) { return idnumbers::identify(text); }
}
