#include "documents.hpp"

#include <campotipo/documents.h>
#include <campotipo/idnumbers.h>

#include <cstring>

namespace campotipo::python {

namespace {

// A document of one length.
constexpr Document of(const char *name, int (*valida)(char *, int),
                      int (*limpa)(char *, const char *), char *(*edita)(char *, const char *),
                      std::size_t text_size, std::size_t form_size, int bit) {
  return {name, valida, limpa, edita, text_size - 1, text_size - 1, form_size - 1, bit};
}

constexpr bool is_punctuation(char c) {
  return c == '.' || c == '-' || c == '/' || c == ' ' || (c >= '\t' && c <= '\r');
}

constexpr char folded(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool same_name(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (folded(a[i]) != folded(b[i])) return false;
  }
  return true;
}

// A copy that ends in a NUL; false for a text that no document has.
bool terminated(std::string_view text, char *dest) {
  if (text.size() >= kDocumentRoom || std::memchr(text.data(), 0, text.size()) != nullptr) {
    return false;
  }
  std::memcpy(dest, text.data(), text.size());
  dest[text.size()] = '\0';
  return true;
}

// limpa of a document whose characters are digits.
std::size_t clean_digits(const Document &document, std::string_view text, char *dest) {
  std::size_t length = 0;
  for (const char c : text) {
    if (is_punctuation(c)) continue;
    if (c < '0' || c > '9' || length == document.longest) return 0;
    dest[length++] = c;
  }
  dest[length] = '\0';
  return length >= document.shortest ? length : 0;
}

}  // namespace

#define D(name) DOCUMENTO_##name
const Document kDocument[kDocuments] = {
    of("CPF", ZALGORITM_valida_CPF, D(limpa_CPF), D(edita_CPF), D(CPF_TEXT_SIZE),
       D(CPF_EDITADO_SIZE), D(BIT_CPF)),
    of("CNPJ", ZALGORITM_valida_CNPJ, nullptr, D(edita_CNPJ), D(CNPJ_TEXT_SIZE),
       D(CNPJ_EDITADO_SIZE), D(BIT_CNPJ)),
    of("CNPJ_alfa", D(valida_CNPJ_alfa), D(limpa_CNPJ), D(edita_CNPJ), D(CNPJ_TEXT_SIZE),
       D(CNPJ_EDITADO_SIZE), D(BIT_CNPJ_ALFA)),
    of("PIS", D(valida_PIS), D(limpa_PIS), D(edita_PIS), D(PIS_TEXT_SIZE), D(PIS_EDITADO_SIZE),
       D(BIT_PIS)),
    of("RENAVAM", D(valida_RENAVAM), nullptr, nullptr, D(RENAVAM_TEXT_SIZE), D(RENAVAM_TEXT_SIZE),
       D(BIT_RENAVAM)),
    of("CNH", D(valida_CNH), nullptr, nullptr, D(CNH_TEXT_SIZE), D(CNH_TEXT_SIZE), D(BIT_CNH)),
    of("titulo", D(valida_titulo), D(limpa_titulo), D(edita_titulo), D(TITULO_TEXT_SIZE),
       D(TITULO_EDITADO_SIZE), D(BIT_TITULO)),
    of("CNS", D(valida_CNS), D(limpa_CNS), D(edita_CNS), D(CNS_TEXT_SIZE), D(CNS_EDITADO_SIZE),
       D(BIT_CNS)),
    {"cartao", D(valida_cartao), D(limpa_cartao), D(edita_cartao), D(CARTAO_MENOR),
     D(CARTAO_TEXT_SIZE) - 1, D(CARTAO_EDITADO_SIZE) - 1, D(BIT_CARTAO)},
    of("processo", D(valida_processo), D(limpa_processo), D(edita_processo), D(PROCESSO_TEXT_SIZE),
       D(PROCESSO_EDITADO_SIZE), D(BIT_PROCESSO)),
    of("chave_acesso", D(valida_chave_acesso), D(limpa_chave_acesso), D(edita_chave_acesso),
       D(CHAVE_ACESSO_TEXT_SIZE), D(CHAVE_ACESSO_EDITADO_SIZE), D(BIT_CHAVE_ACESSO)),
    of("boleto_barras", D(valida_boleto_barras), nullptr, nullptr, D(BOLETO_BARRAS_TEXT_SIZE),
       D(BOLETO_BARRAS_TEXT_SIZE), D(BIT_BOLETO_BARRAS)),
    of("boleto_linha", D(valida_boleto_linha), D(limpa_boleto_linha), D(edita_boleto_linha),
       D(BOLETO_LINHA_TEXT_SIZE), D(BOLETO_LINHA_EDITADO_SIZE), D(BIT_BOLETO_LINHA)),
    of("arrecadacao_barras", D(valida_arrecadacao_barras), nullptr, nullptr,
       D(ARRECADACAO_BARRAS_TEXT_SIZE), D(ARRECADACAO_BARRAS_TEXT_SIZE), D(BIT_ARRECADACAO_BARRAS)),
    of("arrecadacao_linha", D(valida_arrecadacao_linha), D(limpa_arrecadacao_linha),
       D(edita_arrecadacao_linha), D(ARRECADACAO_LINHA_TEXT_SIZE),
       D(ARRECADACAO_LINHA_EDITADO_SIZE), D(BIT_ARRECADACAO_LINHA)),
};
#undef D

const Document *document_of(std::string_view name) {
  for (const Document &document : kDocument) {
    if (same_name(name, document.name)) return &document;
  }
  return nullptr;
}

std::size_t clean(const Document &document, std::string_view text, char *dest) {
  if (text.size() < document.shortest) return 0;
  if (document.limpa == nullptr) return clean_digits(document, text, dest);
  char copy[kDocumentRoom];
  if (!terminated(text, copy) || document.limpa(dest, copy) == 0) return 0;
  return document.shortest == document.longest ? document.shortest : std::strlen(dest);
}

bool holds(const Document &document, std::string_view text) {
  char copy[kDocumentRoom];
  if (text.size() == document.shortest && document.shortest == document.longest) {
    // Nothing of this length is left once there is punctuation in it.
    std::memcpy(copy, text.data(), text.size());
    copy[text.size()] = '\0';
    return document.valida(copy, 0) != 0 && std::strlen(copy) == text.size();
  }
  return clean(document, text, copy) != 0 && document.valida(copy, 0) != 0;
}

std::size_t usual_form(const Document &document, std::string_view text, char *dest) {
  if (document.edita == nullptr) return clean(document, text, dest);
  char plain[kDocumentRoom];
  if (clean(document, text, plain) == 0) return 0;
  document.edita(dest, plain);
  return std::strlen(dest);
}

unsigned identify(std::string_view text) {
  char copy[kDocumentRoom];
  if (!terminated(text, copy)) return 0;
  const int bits = DOCUMENTO_identifica(copy);
  unsigned found = 0;
  for (int i = 0; i < kDocuments; ++i) {
    // A number of digits alone is a CNPJ, and not one with letters besides.
    const bool digits =
        kDocument[i].bit == DOCUMENTO_BIT_CNPJ_ALFA && (bits & DOCUMENTO_BIT_CNPJ) != 0;
    if ((bits & kDocument[i].bit) != 0 && !digits) found |= 1U << i;
  }
  return found;
}

}  // namespace campotipo::python
