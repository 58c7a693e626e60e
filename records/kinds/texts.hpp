#pragma once

#include <campotipo/codes.h>

#include <cstring>
#include <string>

#include "kinds/conversion.hpp"
#include "kinds/numbers.hpp"
#include "kinds/type.hpp"
#include "text/charset.hpp"
#include "text/scan.hpp"

// Texts: packed codes, plain strings and digit strings.
namespace campotipo::records::texts {

// Stores a text in a plain string, through the character set of the record.
const char *take_string(unsigned char *field, PaddedText text, const Params &p);
const char *string_fault(const unsigned char *field, const Params &p);

inline std::size_t code_room(const Params &p) {
  return static_cast<std::size_t>(p.n) + 1 + scan::kPadding;
}

template <auto ToText>
char *put_code(char *out, const unsigned char *field, const Params &) {
  ToText(out, field);
  return scan::text_end(out);
}

// True for a text that fits and holds nothing that a code changes: then it is whole as soon as
// every character was known.
inline bool plain_code(PaddedText text, int positions) {
  return text.size() <= static_cast<std::size_t>(positions) && !text.empty() && text.back() > ' ' &&
         text.back() != '~' && std::strchr(CODALFA_ALFABETO, text.back());
}

// The text as a code sees it in the C locale. The library makes capitals by the locale of the
// process; what a record holds hangs on no locale.
PaddedString in_c_locale(PaddedText text);

template <auto Saved, auto ToText, int Positions>
const char *take_code(unsigned char *field, PaddedText text, const Params &p) {
  const bool plain = !scan::has_small_or_high(text.data(), text.size());
  const bool known = plain ? Saved(field, text.data(), p.options) != 0
                           : Saved(field, in_c_locale(text).text().data(), p.options) != 0;
  if (plain && known && plain_code(text, Positions)) return nullptr;
  char back[Positions + 1];
  ToText(back, field);
  if (conversion::same(text.view(), back)) return nullptr;
  return conversion::code(text.view(), back, known, (p.options & CODALFA_OPC_ZEROS) != 0, p.fold);
}

template <auto Compare>
int compare(const unsigned char *a, const unsigned char *b, const Params &) {
  return Compare(a, b);
}

template <auto Content>
int content(const unsigned char *field, const Params &) {
  return Content(field, 0);
}

constexpr FieldType code_row(const char *name, int positions) {
  FieldType type = {};
  type.name = name;
  type.family = "packed code";
  type.bytes = CODALFA_BYTES(positions);
  type.count = positions;
  type.unit = "positions";
  type.form = "A-Z 0-9 blank -._/+,:#@*$%!";
  type.sql = "VARCHAR(%d)";
  type.keys = kOptions | kFold | (positions == 0 ? kPositions : kNoKeys);
  type.traits = kText | kChecked;
  type.room = code_room;
  type.fault = [](const unsigned char *field, const Params &p) {
    return CODALFA_bem_formado(field, p.n) != 0 ? nullptr : "invalid packed code";
  };
  return type;
}

template <int Positions, auto Saved, auto ToText, auto Compare, auto Content>
constexpr FieldType code(const char *name) {
  FieldType type = code_row(name, Positions);
  type.put = put_code<ToText>;
  type.take = take_code<Saved, ToText, Positions>;
  type.compare = compare<Compare>;
  type.content = content<Content>;
  return type;
}

// A packed code of any size.
char *put_any_code(char *out, const unsigned char *field, const Params &p);
const char *take_any_code(unsigned char *field, PaddedText text, const Params &p);

constexpr FieldType any_code(const char *name) {
  FieldType type = code_row(name, 0);
  type.put = put_any_code;
  type.take = take_any_code;
  type.compare = [](const unsigned char *a, const unsigned char *b, const Params &p) {
    return CODALFA_compara(a, b, p.n);
  };
  type.content = [](const unsigned char *field, const Params &p) {
    return CODALFA_nao_zero(field, p.n, 0);
  };
  return type;
}

inline std::size_t string_room(const Params &p) {
  return static_cast<std::size_t>(p.n) * p.charset->growth() + scan::kPadding;
}

// Text of a plain string of p.n bytes, through the character set of the record.
char *put_string(char *out, const unsigned char *field, const Params &p);

constexpr FieldType string_row(const char *name, int bytes) {
  FieldType type = {};
  type.name = name;
  type.family = "string";
  type.bytes = bytes;
  type.count = bytes;
  type.unit = "bytes";
  type.form = "any text";
  type.sql = "VARCHAR(%d)";
  type.keys = kOptions | kEncoding | (bytes == 0 ? kBytes : kNoKeys);
  type.traits = kText | kChecked;
  type.room = string_room;
  type.put = put_string;
  type.take = take_string;
  type.fault = string_fault;
  return type;
}

template <int Bytes, auto Compare, auto Content>
constexpr FieldType string(const char *name) {
  FieldType type = string_row(name, Bytes);
  type.compare = compare<Compare>;
  type.content = content<Content>;
  return type;
}

constexpr FieldType any_string(const char *name) {
  FieldType type = string_row(name, 0);
  type.compare = [](const unsigned char *a, const unsigned char *b, const Params &p) {
    return CODSTR_compara(a, b, p.n);
  };
  type.content = [](const unsigned char *field, const Params &p) {
    return CODSTR_nao_zero(field, p.n, 0);
  };
  return type;
}

template <auto FromText, int Digits>
const char *take_digits(unsigned char *field, PaddedText text, const Params &) {
  const char *lost = conversion::digits(text.view(), Digits);
  if (lost == nullptr) FromText(field, text.data());
  return lost;
}

// Digit strings have no order of their own in the library: that of their texts.
template <auto ToText, int Digits>
int compare_digits(const unsigned char *a, const unsigned char *b, const Params &) {
  char first[Digits + 1];
  char second[Digits + 1];
  return std::strcmp(ToText(first, a), ToText(second, b));
}

template <int Digits, int Bytes, auto FromText, auto ToText, auto WellFormed>
constexpr FieldType digits(const char *name) {
  FieldType type = {};
  type.name = name;
  type.family = "digit string";
  type.bytes = Bytes;
  type.count = Digits;
  type.unit = "digits";
  type.form = "000123";
  type.sql = "VARCHAR(%d)";
  type.keys = kNoKeys;
  type.traits = kNoBlank | kChecked;
  type.room = [](const Params &) { return std::size_t{Digits + 1 + scan::kPadding}; };
  type.put = put_code<ToText>;
  type.take = take_digits<FromText, Digits>;
  type.fault = [](const unsigned char *field, const Params &) {
    return WellFormed(field) != 0 ? nullptr : "invalid digit string";
  };
  type.compare = compare_digits<ToText, Digits>;
  return type;
}

}  // namespace campotipo::records::texts
