#pragma once

#include <emmintrin.h>

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "kinds/type.hpp"
#include "text/charset.hpp"
#include "text/scan.hpp"

// Fields whose bytes are characters, and what all of them share: TEXT and DIGITS stand here, numbers
// and dates beside.
namespace campotipo::records::characters {

// Up to 16 bytes, zeros behind them. None beyond them is read: they may end a file.
inline __m128i load(const unsigned char *from, std::size_t size) {
  const auto word = [](const unsigned char *at, auto value) {
    std::memcpy(&value, at, sizeof value);
    return static_cast<std::uint64_t>(value);
  };
  std::uint64_t low = 0;
  std::uint64_t high = 0;
  if (size >= 8) {
    low = word(from, std::uint64_t{});
    if (size > 8) high = word(from + size - 8, std::uint64_t{}) >> 8 * (16 - size);
  } else if (size >= 4) {
    low = word(from, std::uint32_t{}) | word(from + size - 4, std::uint32_t{}) << 8 * (size - 4);
  } else if (size > 0) {
    low = from[0] | std::uint64_t{from[size / 2]} << 8 * (size / 2) |
          std::uint64_t{from[size - 1]} << 8 * (size - 1);
  }
  return _mm_set_epi64x(static_cast<long long>(high), static_cast<long long>(low));
}

inline bool all_digits(const unsigned char *from, std::size_t size) {
  unsigned other = 0;
  for (std::size_t at = 0; at < size; at += 16) {
    const std::size_t left = std::min<std::size_t>(16, size - at);
    other |= scan::not_digits(load(from + at, left)) & scan::first(left);
  }
  return other == 0;
}

// Whether the bytes are one of the forms that stand for no value.
inline bool is_absent(const unsigned char *field, const Params &p) {
  for (const std::string &form : p.empties) {
    // Most values differ in their first byte.
    if (field[0] != static_cast<unsigned char>(form[0])) continue;
    if (std::memcmp(field, form.data(), form.size()) == 0) return true;
  }
  return false;
}

// Stores what stands for no text: the first of those forms, or zeros in digits.
inline void store_absent(unsigned char *field, const Params &p) {
  if (p.empties.empty()) {
    std::memset(field, '0', static_cast<std::size_t>(p.bytes));
  } else {
    std::memcpy(field, p.empties[0].data(), p.empties[0].size());
  }
}

inline constexpr char kMeansNone[] = "stands for no value in this field";

inline std::size_t room(const Params &p) {
  return static_cast<std::size_t>(p.bytes) * p.charset->growth() + scan::kPadding;
}

// The bytes as they are, in UTF-8; what is no character, and a NUL, becomes U+FFFD.
char *put_bytes(char *out, const unsigned char *field, std::size_t size, const Params &p);

char *put_text(char *out, const unsigned char *field, const Params &p);
const char *take_text(unsigned char *field, PaddedText text, const Params &p);
const char *text_fault(const unsigned char *field, const Params &p);

char *put_digits(char *out, const unsigned char *field, const Params &p);
const char *take_digits(unsigned char *field, PaddedText text, const Params &p);
const char *digits_fault(const unsigned char *field, const Params &p);

constexpr FieldType row(const char *name, const char *family) {
  FieldType type = {};
  type.name = name;
  type.family = family;
  type.keys = kEmpty;
  type.room = room;
  type.compare = [](const unsigned char *a, const unsigned char *b, const Params &p) {
    return std::memcmp(a, b, static_cast<std::size_t>(p.bytes));
  };
  type.content = [](const unsigned char *field, const Params &p) {
    return is_absent(field, p) ? 0 : 1;
  };
  return type;
}

constexpr FieldType text(const char *name) {
  FieldType type = row(name, "text");
  type.unit = "bytes";
  type.form = "any text, blanks behind it";
  type.sql = "VARCHAR(%d)";
  type.keys |= kBytes | kPad | kEncoding;
  type.traits = kText | kChecked;
  type.put = put_text;
  type.take = take_text;
  type.fault = text_fault;
  type.column = ColumnForm::kCharacters;
  return type;
}

constexpr FieldType digits(const char *name) {
  FieldType type = row(name, "digits");
  type.unit = "digits";
  type.form = "000123";
  type.sql = "VARCHAR(%d)";
  type.keys |= kDigits;
  type.traits = kNoBlank | kChecked | kNullable | kShown;
  type.put = put_digits;
  type.take = take_digits;
  type.fault = digits_fault;
  type.column = ColumnForm::kDigitString;
  return type;
}

}  // namespace campotipo::records::characters
