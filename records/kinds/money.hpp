#pragma once

#include <campotipo-support/money.h>
#include <campotipo-support/numbers.h>
#include <campotipo/percent.h>

#include "kinds/numbers.hpp"

// Percents and money values.
namespace campotipo::tool::money {

// The text without the percent sign, which a reader of CSV would take for a part of a word.
template <int Bytes, int Decimals, auto Edit>
char *put_percent(char *out, const unsigned char *field, const Params &) {
  Edit(out, field);
  return out + numbers::text_length(numbers::value_of<Bytes>(field), Decimals);
}

template <int Bytes, int Decimals, auto FromText, auto Edit>
const char *take_percent(unsigned char *field, std::string_view text, const Params &) {
  if (!text.empty() && text.back() == '%') text.remove_suffix(1);
  if (text.empty()) return nullptr;
  FromText(field, text.data(), Decimals);
  if (numbers::sure(text, Bytes, Decimals)) return nullptr;
  char back[PORC4_TEXT_SIZE];
  const char *end = put_percent<Bytes, Decimals, Edit>(back, field, {});
  return judge::decimal(text, {back, end}, Decimals);
}

template <auto Edit>
double measure_percent(const unsigned char *field, const Params &) {
  char text[PORC4_TEXT_SIZE];
  return std::strtod(Edit(text, field), nullptr);
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
  return type;
}

// A money value as the services handle it; the field may stand at any address.
template <class Value>
Value load(const unsigned char *field) {
  Value value;
  std::memcpy(&value, field, sizeof value);
  return value;
}

template <class Value, auto ToText>
char *put(char *out, const unsigned char *field, const Params &) {
  const Value value = load<Value>(field);
  ToText(out, &value);
  return out + std::strlen(out);
}

template <class Value, auto FromText, auto ToText>
const char *take(unsigned char *field, std::string_view text, const Params &p) {
  if (text.empty()) return nullptr;
  Value value;
  FromText(&value, text.data());
  std::memcpy(field, &value, sizeof value);
  char back[2 * numbers::kMaxDecimals + 8];
  ToText(back, &value);
  return judge::same(text, back) ? nullptr : judge::decimal(text, back, p.decimals);
}

template <class Value, auto Compare>
int compare(const unsigned char *a, const unsigned char *b, const Params &) {
  const Value first = load<Value>(a);
  const Value second = load<Value>(b);
  return Compare(&first, &second);
}

template <class Value, auto ToText>
double measure(const unsigned char *field, const Params &) {
  const Value value = load<Value>(field);
  char text[2 * numbers::kMaxDecimals + 8];
  return std::strtod(ToText(text, &value), nullptr);
}

template <class Value, auto FromText, auto ToText, auto Compare>
constexpr FieldType money(const char *name, const char *form, const char *sql) {
  FieldType type = numbers::row(name, "money value", sizeof(Value));
  type.keys = kNoKeys;
  type.form = form;
  type.sql = sql;
  type.put = put<Value, ToText>;
  type.take = take<Value, FromText, ToText>;
  type.compare = compare<Value, Compare>;
  type.measure = measure<Value, ToText>;
  return type;
}

}  // namespace campotipo::tool::money
