#include "kinds/checks.hpp"

#include <campotipo/documents.h>
#include <campotipo/idnumbers.h>

#include <algorithm>

#include "text/ascii.hpp"

namespace campotipo::records {

namespace {

constexpr std::size_t kLongestForm = 64;

constexpr NamedCheck::Letters kNone = NamedCheck::kNone;
constexpr NamedCheck::Letters kSome = NamedCheck::kSome;
constexpr NamedCheck::Letters kAtLeastOne = NamedCheck::kAtLeastOne;

// A document of one length.
constexpr NamedCheck exactly(const char *name, const char *title, const char *fault,
                             int (*holds)(char *, int), std::size_t text_size,
                             NamedCheck::Letters letters,
                             char *(*punctuate)(char *, const char *)) {
  return {name, title, fault, holds, text_size - 1, text_size - 1, letters, punctuate};
}

constexpr NamedCheck kChecks[] = {
    exactly("CPF", "CPF, person", "check digits of a CPF fail", ZALGORITM_valida_CPF,
            DOCUMENTO_CPF_TEXT_SIZE, kNone, DOCUMENTO_edita_CPF),
    exactly("CNPJ", "CNPJ, company", "check digits of a CNPJ fail", ZALGORITM_valida_CNPJ,
            DOCUMENTO_CNPJ_TEXT_SIZE, kNone, DOCUMENTO_edita_CNPJ),
    exactly("CNPJ_alfa", "CNPJ with letters, company", "check digits of a CNPJ fail",
            DOCUMENTO_valida_CNPJ_alfa, DOCUMENTO_CNPJ_TEXT_SIZE, kAtLeastOne,
            DOCUMENTO_edita_CNPJ),
    exactly("PIS", "PIS/PASEP/NIS, worker", "check digit of a PIS fails", DOCUMENTO_valida_PIS,
            DOCUMENTO_PIS_TEXT_SIZE, kNone, DOCUMENTO_edita_PIS),
    exactly("RENAVAM", "RENAVAM, vehicle", "check digit of a RENAVAM fails",
            DOCUMENTO_valida_RENAVAM, DOCUMENTO_RENAVAM_TEXT_SIZE, kNone, nullptr),
    exactly("CNH", "CNH, driver's licence", "check digits of a CNH fail", DOCUMENTO_valida_CNH,
            DOCUMENTO_CNH_TEXT_SIZE, kNone, nullptr),
    exactly("titulo", "voter's number", "check digits of a voter's number fail",
            DOCUMENTO_valida_titulo, DOCUMENTO_TITULO_TEXT_SIZE, kNone, DOCUMENTO_edita_titulo),
    exactly("CNS", "CNS, health card", "check digit of a health card fails", DOCUMENTO_valida_CNS,
            DOCUMENTO_CNS_TEXT_SIZE, kNone, DOCUMENTO_edita_CNS),
    {"cartao", "payment card", "check digit of a payment card fails", DOCUMENTO_valida_cartao,
     DOCUMENTO_CARTAO_MENOR, DOCUMENTO_CARTAO_TEXT_SIZE - 1, kNone, DOCUMENTO_edita_cartao},
    exactly("processo", "court case", "check digits of a court case fail",
            DOCUMENTO_valida_processo, DOCUMENTO_PROCESSO_TEXT_SIZE, kNone,
            DOCUMENTO_edita_processo),
    exactly("chave_acesso", "access key of an electronic invoice",
            "check digit of an access key fails", DOCUMENTO_valida_chave_acesso,
            DOCUMENTO_CHAVE_ACESSO_TEXT_SIZE, kSome, DOCUMENTO_edita_chave_acesso),
    exactly("boleto_barras", "bar code of a bank slip", "check digit of a bank slip fails",
            DOCUMENTO_valida_boleto_barras, DOCUMENTO_BOLETO_BARRAS_TEXT_SIZE, kNone, nullptr),
    exactly("boleto_linha", "typed line of a bank slip", "check digits of a bank slip fail",
            DOCUMENTO_valida_boleto_linha, DOCUMENTO_BOLETO_LINHA_TEXT_SIZE, kNone,
            DOCUMENTO_edita_boleto_linha),
    exactly("arrecadacao_barras", "bar code of a utility slip",
            "check digit of a utility slip fails", DOCUMENTO_valida_arrecadacao_barras,
            DOCUMENTO_ARRECADACAO_BARRAS_TEXT_SIZE, kNone, nullptr),
    exactly("arrecadacao_linha", "typed line of a utility slip",
            "check digits of a utility slip fail", DOCUMENTO_valida_arrecadacao_linha,
            DOCUMENTO_ARRECADACAO_LINHA_TEXT_SIZE, kNone, DOCUMENTO_edita_arrecadacao_linha),
    {"modulo11", "modulo 11", "check digit modulo 11 fails", DIGVERIF_monta_dv_modulo11, 0, 0,
     kNone, nullptr},
};

}  // namespace

std::span<const NamedCheck> named_checks() { return kChecks; }

const NamedCheck *named_check(std::string_view name) {
  const auto *found = std::find_if(std::begin(kChecks), std::end(kChecks),
                                   [&](const NamedCheck &check) { return name == check.name; });
  return found == std::end(kChecks) ? nullptr : found;
}

std::string without_punctuation(std::string_view text) {
  std::string clean;
  for (const char c : text) {
    if (std::string_view(".-/ \t\r\n").find(c) == std::string_view::npos) clean += c;
  }
  return clean;
}

bool can_be(const NamedCheck &check, std::string_view text) {
  if (check.shortest == 0 || text.size() < check.shortest || text.size() > check.longest) {
    return false;
  }
  const auto is_capital = [](char c) { return c >= 'A' && c <= 'Z'; };
  const auto digits = std::count_if(text.begin(), text.end(), ascii::is_digit);
  const auto capitals = std::count_if(text.begin(), text.end(), is_capital);
  if (digits + capitals != static_cast<std::ptrdiff_t>(text.size())) return false;
  switch (check.letters) {
    case NamedCheck::kNone:
      return capitals == 0;
    case NamedCheck::kSome:
      return true;
    case NamedCheck::kAtLeastOne:
      return capitals > 0;
  }
  return false;  // GCOVR_EXCL_LINE: the switch has every value
}

std::string usual_form(const NamedCheck &check, const std::string &text) {
  if (check.punctuate == nullptr) return text;
  std::string form(kLongestForm, '\0');
  check.punctuate(form.data(), text.c_str());
  form.resize(form.find('\0'));
  return form;
}

bool holds(const NamedCheck &check, std::string_view text) {
  std::string clean = without_punctuation(text);
  if (clean.find_first_not_of('0') == std::string::npos) return true;
  if (clean.size() < check.shortest && ascii::all_digits(clean)) {
    clean.insert(0, check.shortest - clean.size(), '0');
  }
  // A field may be wider than its document.
  if (check.longest != 0 && clean.size() > check.longest &&
      clean.find_first_not_of('0') >= clean.size() - check.longest) {
    clean.erase(0, clean.size() - check.longest);
  }
  return check.holds(clean.data(), 0) != 0;
}

}  // namespace campotipo::records
