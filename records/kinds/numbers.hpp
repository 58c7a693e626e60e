#pragma once

#include <campotipo/quantities.h>

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cstdint>
#include <cstring>

#include "kinds/conversion.hpp"
#include "kinds/type.hpp"
#include "text/scan.hpp"

// Numbers: binary ones, wide quantities, percents and money. All have a decimal text.
namespace campotipo::records::numbers {

constexpr int kMaxDecimals = 50;

inline std::size_t room(const Params &) { return 2 * kMaxDecimals + 8; }

// Digits that fit a width whatever they are: 2, 4, 7, 9 for the bytes of a limb, 19 for each full
// limb below.
constexpr int sure_digits(int bytes) {
  constexpr int kLimb[] = {0, 2, 4, 7, 9, 12, 14, 16, 19};
  return bytes <= 8 ? kLimb[bytes] : 19 + sure_digits(bytes - 8);
}

// The number in up to 8 bytes.
template <int Bytes>
std::uint64_t value_of(const unsigned char *field) {
  std::uint64_t value = 0;
  std::memcpy(&value, field, Bytes);
  return value;
}

constexpr std::uint64_t power_of_ten(int exponent) {
  return exponent == 0 ? 1 : 10 * power_of_ten(exponent - 1);
}

// Length of the text of a number, from its bits: looking for the NUL would wait for the bytes that
// have just been written.
inline std::size_t text_length(std::uint64_t value, int decimals) {
  static constexpr auto kPowers = [] {
    std::array<std::uint64_t, 20> powers = {};
    for (int i = 0; i < 20; ++i) powers[static_cast<std::size_t>(i)] = power_of_ten(i);
    return powers;
  }();
  const int guess = std::bit_width(value | 1) * 1233 >> 12;
  const int digits = guess + (value >= kPowers[static_cast<std::size_t>(guess)] ? 1 : 0);
  return static_cast<std::size_t>(decimals == 0 ? std::max(digits, 1)
                                                : std::max(digits, decimals + 1) + 1);
}

template <int Bytes, auto ToText>
char *put(char *out, const unsigned char *field, const Params &p) {
  ToText(out, field, p.decimals);
  if constexpr (Bytes <= 8) return out + text_length(value_of<Bytes>(field), p.decimals);
  return out + std::strlen(out);
}

// True for plain digits that the width and the decimals hold for sure.
inline bool sure(PaddedText text, int bytes, int decimals) {
  const scan::Number number = scan::number(text.data(), text.size());
  return number.plain && number.behind <= decimals &&
         number.digits + decimals - number.behind <= sure_digits(bytes);
}

// What was lost of the text of a number that was stored and gives `back`. A field that says another
// number than its text is made zero: the beginning of a text, or its lowest digits, are no value.
inline const char *keep_number(unsigned char *field, std::size_t bytes, std::string_view text,
                               std::string_view back, int decimals) {
  const char *lost = conversion::decimal(text, back, decimals);
  if (lost != nullptr && lost != conversion::kDecimalsCut) std::memset(field, 0, bytes);
  return lost;
}

template <int Bytes, auto FromText, auto ToText>
const char *take(unsigned char *field, PaddedText text, const Params &p) {
  if (text.empty()) return nullptr;
  FromText(field, text.data(), p.decimals);
  if (sure(text, Bytes, p.decimals)) return nullptr;
  char back[2 * kMaxDecimals + 8];
  return keep_number(field, Bytes, text.view(), ToText(back, field, p.decimals), p.decimals);
}

inline const char *no_fault(const unsigned char *, const Params &) { return nullptr; }

inline std::uint64_t limb(const unsigned char *field, int bytes) {
  std::uint64_t value = 0;
  for (int i = bytes; i-- > 0;) value = value << 8 | field[i];
  return value;
}

template <auto WellFormed>
const char *limb_fault(const unsigned char *field, const Params &) {
  return WellFormed(field) != 0 ? nullptr : "digits past a limb";
}

template <auto Compare>
int compare(const unsigned char *a, const unsigned char *b, const Params &) {
  return Compare(a, b);
}

// The number of a text that the library wrote, as near as a double is; its point is a point in every
// locale.
inline double near(std::string_view text) {
  double value = 0;
  std::from_chars(text.data(), text.data() + text.size(), value);
  return value;
}

template <auto ToText>
double measure(const unsigned char *field, const Params &p) {
  char text[2 * kMaxDecimals + 8];
  return near(ToText(text, field, p.decimals));
}

constexpr FieldType row(const char *name, const char *family, int bytes) {
  FieldType type = {};
  type.name = name;
  type.family = family;
  type.bytes = bytes;
  type.count = sure_digits(bytes);
  type.unit = "digits";
  type.form = "123 or 1.23";
  type.sql = "NUMERIC(%d, %s)";
  type.keys = kDecimals;
  type.traits = kRight | kNoBlank | (bytes <= 6 ? kJsonNumber : kPlain);
  type.room = room;
  type.fault = no_fault;
  return type;
}

// A binary number, of which every pattern of bits is one; its text may have a digit more.
template <int Bytes, auto FromText, auto ToText, auto Compare>
constexpr FieldType binary(const char *name) {
  FieldType type = row(name, "binary number", Bytes);
  type.traits |= kChecked;
  type.put = put<Bytes, ToText>;
  type.take = take<Bytes, FromText, ToText>;
  type.compare = compare<Compare>;
  type.measure = measure<ToText>;
  type.column = ColumnForm::kUnsigned;
  return type;
}

template <int Bytes, auto FromText, auto ToText, auto Compare, auto WellFormed>
constexpr FieldType quantity(const char *name) {
  FieldType type = binary<Bytes, FromText, ToText, Compare>(name);
  type.family = "wide quantity";
  type.column = ColumnForm::kLimbs;
  type.fault = limb_fault<WellFormed>;
  return type;
}

}  // namespace campotipo::records::numbers
