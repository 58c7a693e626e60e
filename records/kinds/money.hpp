#pragma once

#include <campotipo-support/money.h>
#include <campotipo-support/numbers.h>
#include <campotipo/percent.h>

#include "kinds/numbers.hpp"

// Percents and money values.
namespace campotipo::records::money {

// The text without the percent sign, which a reader of CSV would take for a part of a word.
template <int Bytes, int Decimals, auto Edit>
char *put_percent(char *out, const unsigned char *field, const Params &) {
  Edit(out, field);
  return out + numbers::text_length(numbers::value_of<Bytes>(field), Decimals);
}

template <int Bytes, int Decimals, auto FromText, auto Edit>
const char *take_percent(unsigned char *field, PaddedText text, const Params &p) {
  if (text.empty()) return nullptr;
  if (text.back() == '%') {
    const PaddedString bare(text.view().substr(0, text.size() - 1));
    if (bare.text().empty()) return "is no number";
    return take_percent<Bytes, Decimals, FromText, Edit>(field, bare.text(), p);
  }
  FromText(field, text.data(), Decimals);
  if (numbers::sure(text, Bytes, Decimals)) return nullptr;
  char back[PORC4_TEXT_SIZE];
  const char *end = put_percent<Bytes, Decimals, Edit>(back, field, {});
  return numbers::keep_number(field, Bytes, text.view(), {back, end}, Decimals);
}

template <auto Edit>
double measure_percent(const unsigned char *field, const Params &) {
  char text[PORC4_TEXT_SIZE];
  return numbers::near(Edit(text, field));
}

template <int Bytes, int Decimals, auto FromText, auto Edit, auto Compare>
constexpr FieldType percent(const char *name) {
  FieldType type = numbers::row(name, "percent", Bytes);
  type.keys = kNoKeys;
  type.form = Decimals == 0 ? "12" : Decimals == 1 ? "12.5" : Decimals == 2 ? "12.50" : "12.5000";
  type.sql = Decimals == 0   ? "NUMERIC(3)"
             : Decimals == 1 ? "NUMERIC(5, 1)"
             : Decimals == 2 ? "NUMERIC(5, 2)"
                             : "NUMERIC(10, 4)";
  type.put = put_percent<Bytes, Decimals, Edit>;
  type.take = take_percent<Bytes, Decimals, FromText, Edit>;
  type.compare = numbers::compare<Compare>;
  type.measure = measure_percent<Edit>;
  type.decimals = Decimals;
  type.column = ColumnForm::kUnsigned;
  return type;
}

// A money value is a signed 64-bit count of units of 10^-decimals. The services of a PARCELA would
// take its decimals from PARCELA_fixo, which is the application's, and one for all layouts.
constexpr int kBytes = sizeof(PARCELA);
static_assert(kBytes == 8 && sizeof(QUANTIA) == kBytes);

inline std::int64_t count_of(const unsigned char *field) {
  return static_cast<std::int64_t>(numbers::value_of<kBytes>(field));
}

inline char *put(char *out, const unsigned char *field, const Params &p) {
  std::uint64_t size = numbers::value_of<kBytes>(field);
  if (count_of(field) < 0) {
    *out++ = '-';
    size = 0 - size;
  }
  unsigned char magnitude[kBytes];
  std::memcpy(magnitude, &size, kBytes);
  return numbers::put<kBytes, _8toafixo>(out, magnitude, p);
}

inline const char *take(unsigned char *field, PaddedText text, const Params &p) {
  if (text.empty()) return nullptr;
  const bool negative = text.data()[0] == '-';
  _ato8fixo(field, text.data() + (negative ? 1 : 0), p.decimals);
  if (negative) {
    const std::uint64_t count = 0 - numbers::value_of<kBytes>(field);
    std::memcpy(field, &count, kBytes);
  }
  char back[2 * numbers::kMaxDecimals + 8];
  const char *end = put(back, field, p);
  return numbers::keep_number(field, kBytes, text.view(), {back, end}, p.decimals);
}

constexpr FieldType money(const char *name, const char *form, const char *sql) {
  FieldType type = numbers::row(name, "money value", kBytes);
  type.keys = kNoKeys;
  type.form = form;
  type.sql = sql;
  type.put = put;
  type.take = take;
  type.compare = [](const unsigned char *a, const unsigned char *b, const Params &) {
    const std::int64_t first = count_of(a);
    const std::int64_t second = count_of(b);
    return first < second ? -1 : first > second ? 1 : 0;
  };
  type.measure = [](const unsigned char *field, const Params &p) {
    char text[2 * numbers::kMaxDecimals + 8];
    const char *end = put(text, field, p);
    return numbers::near({text, end});
  };
  type.column = ColumnForm::kSigned;
  return type;
}

}  // namespace campotipo::records::money
