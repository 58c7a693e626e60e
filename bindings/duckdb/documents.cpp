// campotipo_valida, campotipo_limpa, campotipo_edita, campotipo_identifica.
#include <algorithm>
#include <string>

#include "kinds/checks.hpp"
#include "scalar.hpp"
#include "text/ascii.hpp"

namespace campotipo::duckdb {

namespace {

using records::NamedCheck;

// Letters of either case are taken for the word.
bool is_word(std::string_view told, std::string_view word) {
  return std::equal(told.begin(), told.end(), word.begin(), word.end(), [](char a, char b) {
    return records::ascii::capital(a) == records::ascii::capital(b);
  });
}

// The documents of a chunk: mostly the same word in every row.
class Document {
 public:
  const NamedCheck &of(std::string_view word) {
    if (check_ != nullptr && is_word(word, check_->name)) return *check_;
    std::string words;
    for (const NamedCheck &check : records::named_checks()) {
      if (check.shortest == 0) continue;
      if (is_word(word, check.name)) return *(check_ = &check);
      words += (words.empty() ? "" : ", ") + std::string(check.name);
    }
    throw Failure("no document is called '" + std::string(word) + "', expected one of " + words);
  }

 private:
  const NamedCheck *check_ = nullptr;
};

// Whether a clean text is of the document's form; letters may stand in some places alone.
bool is_form(const NamedCheck &check, const std::string &clean) {
  if (!records::can_be(check, clean)) return false;
  return check.letters == NamedCheck::kNone || !records::usual_form(check, clean).empty();
}

// Calls `put` for each row in which neither argument is null and the text has the document's length
// and characters, with its clean text, and `other` where it has not.
template <class Put, class Other>
void each(duckdb_function_info info, duckdb_data_chunk chunk, Result &result, Put put,
          Other other) {
  const Argument words(chunk, 0);
  const Argument texts(chunk, 1);
  Document document;
  for_rows(info, chunk, [&](idx_t row) {
    if (words.is_null(row) || texts.is_null(row)) return result.null(row);
    const NamedCheck &check = document.of(words.text(row));
    std::string clean = records::without_punctuation(texts.text(row));
    if (is_form(check, clean)) {
      put(row, check, clean);
    } else {
      other(row);
    }
  });
}

void valida(duckdb_function_info info, duckdb_data_chunk chunk, duckdb_vector out) {
  Result result(out);
  each(
      info, chunk, result,
      [&](idx_t row, const NamedCheck &check, std::string &clean) {
        result.value(row, check.holds(clean.data(), 0) != 0);
      },
      [&](idx_t row) { result.value(row, false); });
}

void limpa(duckdb_function_info info, duckdb_data_chunk chunk, duckdb_vector out) {
  Result result(out);
  each(
      info, chunk, result,
      [&](idx_t row, const NamedCheck &, const std::string &clean) { result.text(row, clean); },
      [&](idx_t row) { result.null(row); });
}

void edita(duckdb_function_info info, duckdb_data_chunk chunk, duckdb_vector out) {
  Result result(out);
  each(
      info, chunk, result,
      [&](idx_t row, const NamedCheck &check, const std::string &clean) {
        result.text(row, records::usual_form(check, clean));
      },
      [&](idx_t row) { result.null(row); });
}

// A list of words for each text.
void identifica(duckdb_function_info info, duckdb_data_chunk chunk, duckdb_vector out) {
  const Argument texts(chunk, 0);
  Result result(out);
  duckdb_vector words = duckdb_list_vector_get_child(out);
  idx_t made = 0;
  for_rows(info, chunk, [&](idx_t row) {
    const idx_t begin = made;
    if (texts.is_null(row)) {
      result.value(row, duckdb_list_entry{begin, 0});
      return result.null(row);
    }
    std::string clean = records::without_punctuation(texts.text(row));
    for (const NamedCheck &check : records::named_checks()) {
      if (!records::can_be(check, clean) || check.holds(clean.data(), 0) == 0) continue;
      duckdb_list_vector_reserve(out, made + 1);
      duckdb_vector_assign_string_element(words, made++, check.name);
    }
    result.value(row, duckdb_list_entry{begin, made - begin});
  });
  duckdb_list_vector_set_size(out, made);
}

duckdb_logical_type of(duckdb_type type) { return duckdb_create_logical_type(type); }

}  // namespace

void add_documents(duckdb_connection connection) {
  const auto two_texts = [] {
    return std::vector{of(DUCKDB_TYPE_VARCHAR), of(DUCKDB_TYPE_VARCHAR)};
  };
  add_scalar(connection, "campotipo_valida", {two_texts(), of(DUCKDB_TYPE_BOOLEAN), valida});
  add_scalar(connection, "campotipo_limpa", {two_texts(), of(DUCKDB_TYPE_VARCHAR), limpa});
  add_scalar(connection, "campotipo_edita", {two_texts(), of(DUCKDB_TYPE_VARCHAR), edita});
  add_scalar(connection, "campotipo_identifica",
             {{of(DUCKDB_TYPE_VARCHAR)}, Type::list_of(DUCKDB_TYPE_VARCHAR), identifica});
}

}  // namespace campotipo::duckdb
