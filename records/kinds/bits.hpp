#pragma once

#include <campotipo-support/numbers.h>
#include <campotipo/bits.h>

#include <cstring>

#include "kinds/conversion.hpp"
#include "kinds/numbers.hpp"
#include "kinds/type.hpp"

// Bit areas, GUIDs and unused bytes.
namespace campotipo::records::bits {

// A part of a bit area is shown as a number, which has at most so many bits.
constexpr int kWidest = 64;

inline void extract(unsigned char (&value)[8], const unsigned char *area, const Params &p) {
  std::memset(value, 0, sizeof value);
  (p.big ? ZBTFIELD_big_extrai_campo : ZBTFIELD_extrai_campo)(value, area, p.start, p.n);
}

inline char *put(char *out, const unsigned char *area, const Params &p) {
  unsigned char value[8];
  extract(value, area, p);
  _8toa(out, value);
  return out + std::strlen(out);
}

inline const char *take(unsigned char *area, PaddedText text, const Params &p) {
  if (text.empty()) return nullptr;
  const auto store = p.big ? ZBTFIELD_big_monta_campo : ZBTFIELD_monta_campo;
  unsigned char value[8];
  _ato8(value, text.data());
  store(value, area, p.start, p.n);
  char back[BIN8_TEXT_SIZE];
  const char *end = put(back, area, p);
  const char *lost = conversion::decimal(text.view(), {back, end}, 0);
  if (lost == nullptr || lost == conversion::kDecimalsCut) return lost;
  std::memset(value, 0, sizeof value);
  store(value, area, p.start, p.n);
  return lost;
}

// The spare bits behind the last part belong to the area.
inline const char *fault(const unsigned char *area, const Params &p) {
  if (p.area_bits == 0) return nullptr;
  const ZBTFIELD_CAMPO parts[] = {{p.area_bits, 0}, {0, 0}};
  const auto well_formed = p.big ? ZBTFIELD_big_bem_formado : ZBTFIELD_bem_formado;
  return well_formed(area, p.bytes, parts) != 0 ? nullptr : "spare bits set";
}

inline int compare(const unsigned char *a, const unsigned char *b, const Params &p) {
  unsigned char first[8];
  unsigned char second[8];
  extract(first, a, p);
  extract(second, b, p);
  return BIN8_compara(first, second);
}

constexpr FieldType area(const char *name) {
  FieldType type = numbers::row(name, "bit area", 0);
  type.count = 0;
  type.unit = "bits";
  type.form = "a number for each part";
  type.sql = "NUMERIC(20)";
  type.keys = kBits;
  type.traits = kRight | kNoBlank;
  type.column = ColumnForm::kBits;
  type.put = put;
  type.take = take;
  type.fault = fault;
  type.compare = compare;
  type.content = [](const unsigned char *field, const Params &p) {
    unsigned char value[8];
    extract(value, field, p);
    return numbers::limb(value, 8) != 0 ? 1 : 0;
  };
  type.measure = [](const unsigned char *field, const Params &p) {
    unsigned char value[8];
    extract(value, field, p);
    return static_cast<double>(numbers::limb(value, 8));
  };
  return type;
}

inline char *put_guid(char *out, const unsigned char *field, const Params &p) {
  ZGUID_string(out, field, p.options);
  return out + std::strlen(out);
}

inline const char *take_guid(unsigned char *field, PaddedText text, const Params &p) {
  if (text.empty()) return nullptr;
  ZGUID_parse(field, text.data());
  char back[ZGUID_STRING_MAX_SIZE];
  put_guid(back, field, p);
  if (conversion::same(text.view(), back)) return nullptr;
  const char *lost = conversion::guid(text.view(), back);
  if (lost != nullptr) std::memset(field, 0, ZGUID_BYTES);
  return lost;
}

constexpr FieldType guid(const char *name) {
  FieldType type = {};
  type.name = name;
  type.family = "GUID";
  type.bytes = ZGUID_BYTES;
  type.count = 32;
  type.unit = "digits";
  type.form = "00112233-4455-6677-8899-aabbccddeeff";
  type.sql = "UUID";
  type.keys = kOptions;
  type.traits = kNoBlank;
  type.room = [](const Params &) { return std::size_t{ZGUID_STRING_MAX_SIZE}; };
  type.put = put_guid;
  type.take = take_guid;
  type.fault = numbers::no_fault;
  type.compare = [](const unsigned char *a, const unsigned char *b, const Params &) {
    return std::memcmp(a, b, ZGUID_BYTES);
  };
  return type;
}

// No text of its own: it is checked and written, never shown as a column.
constexpr FieldType fill(const char *name) {
  FieldType type = {};
  type.name = name;
  type.family = "unused bytes";
  type.unit = "bytes";
  type.form = "no column";
  type.sql = "";
  type.keys = kBytes | kValue;
  type.room = [](const Params &) { return std::size_t{0}; };
  type.put = [](char *out, const unsigned char *, const Params &) { return out; };
  type.take = [](unsigned char *, PaddedText, const Params &) -> const char * { return nullptr; };
  type.fault = [](const unsigned char *field, const Params &p) -> const char * {
    return std::memcmp(field, p.fill.data(), p.fill.size()) == 0 ? nullptr
                                                                 : "other bytes than told";
  };
  type.compare = [](const unsigned char *, const unsigned char *, const Params &) { return 0; };
  return type;
}

}  // namespace campotipo::records::bits
