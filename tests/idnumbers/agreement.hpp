#pragma once

#include <algorithm>
#include <cstring>
#include <string>

#include "tests/members/documents.hpp"
#include "tests/util/guarded_buffer.hpp"

// The operations held against the digit-by-digit models, for the tests and the fuzzer: each check is
// true when they agree on one input.
namespace campotipo::test {

struct TextMemory {
  GuardedBuffer in, out;

  char *copy(const std::string &text, bool at_end) {
    const std::size_t size = text.size() + 1;
    auto *at = reinterpret_cast<char *>(at_end ? in.at_end(size) : in.at_start(size));
    std::memcpy(at, text.c_str(), size);
    return at;
  }
};

// What an operation gives and what it leaves in the text, at the end of the readable memory and with
// room for wide loads behind it.
template <class Operation, class Model>
bool same(TextMemory *memory, const std::string &text, int make, Operation operation, Model model) {
  std::string expected = text;
  const int valid = model(expected, make);
  for (const bool at_end : {true, false}) {
    char *copy = memory->copy(text, at_end);
    if (operation(copy, make) != valid) return false;
    if (std::memcmp(copy, expected.c_str(), text.size() + 1) != 0) return false;
  }
  return true;
}

inline bool engine_agrees(TextMemory *memory, const ZALGORITM_TABELA &table,
                          const std::string &text, int make) {
  return same(
      memory, text, make, [&](char *t, int m) { return ZALGORITM_trata(t, &table, m); },
      [&](std::string &t, int m) { return reference::treat(t, table, m); });
}

inline bool taxpayers_agree(TextMemory *memory, const std::string &text, int make) {
  return same(memory, text, make, ZALGORITM_valida_CPF,
              [](std::string &t, int m) { return reference::taxpayer(t, 11, 11, m); }) &&
         same(memory, text, make, ZALGORITM_valida_CNPJ,
              [](std::string &t, int m) { return reference::taxpayer(t, 14, 9, m); });
}

// Both older operations take other lengths too and are held to that by taxpayers_agree.
inline bool takes_any_length(const Document &document) {
  return document.bit == DOCUMENTO_BIT_CPF || document.bit == DOCUMENTO_BIT_CNPJ;
}

inline bool document_agrees(TextMemory *memory, const Document &document, const std::string &text,
                            int make) {
  if (takes_any_length(document) && text.size() != std::strlen(document.valid)) return true;
  return same(memory, text, make, document.validate,
              [&](std::string &t, int m) { return reference::validate(document.made, t, m); });
}

inline std::string without_punctuation(const std::string &text) {
  std::string kept;
  for (const char c : text)
    if (c == '\0' || std::strchr(".-/ \t\n\v\f\r", c) == nullptr) kept += c;
  return kept;
}

// The text in the pattern of the document, or nothing where it has another shape.
inline std::string edited(const Document &document, const std::string &text) {
  const std::string pattern = document.pattern;
  const auto longest = static_cast<std::size_t>(std::count(pattern.begin(), pattern.end(), '#'));
  const std::size_t shortest =
      document.bit == DOCUMENTO_BIT_CARTAO ? DOCUMENTO_CARTAO_MENOR : longest;
  if (text.size() < shortest || text.size() > longest ||
      !reference::all_digits(
          reference::with_letters(text, document.letters_from, document.letters_to)))
    return "";
  std::string shown;
  for (std::size_t i = 0, place = 0; i < text.size(); ++place)
    shown += pattern[place] == '#' ? text[i++] : pattern[place];
  return shown;
}

// Both take no more than the document's own sizes, however long the text is.
inline bool punctuation_agrees(TextMemory *memory, const Document &document,
                               const std::string &text) {
  if (document.clean == nullptr) return true;
  const std::string kept = without_punctuation(text), pattern = document.pattern;
  const std::string clean = edited(document, kept).empty() ? "" : kept;
  const auto most = static_cast<std::size_t>(std::count(pattern.begin(), pattern.end(), '#'));
  char *cleaned = memory->out.text_at_end(most + 1);
  if (document.clean(cleaned, memory->copy(text, true)) == clean.empty() || clean != cleaned)
    return false;
  char *both = memory->copy(text, true);
  if (document.clean(both, both) == clean.empty() || clean != both) return false;
  char *shown = memory->out.text_at_end(document.edited_size);
  return document.edit(shown, memory->copy(text, true)) == shown && edited(document, text) == shown;
}

inline bool identified(TextMemory *memory, const std::string &text) {
  const std::string kept = without_punctuation(text);
  int bits = 0;
  for (const Document &document : kDocuments)
    if (!kept.empty() && document.made(kept) == kept) bits |= document.bit;
  return DOCUMENTO_identifica(memory->copy(text, true)) == bits;
}

}  // namespace campotipo::test
