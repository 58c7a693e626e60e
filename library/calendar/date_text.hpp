#pragma once

#include <bit>
#include <cstdint>
#include <cstdlib>

#include "base/bytes.hpp"
#include "base/digits.hpp"
#include "calendar/date.hpp"

// Texts of a date, put together and taken apart in one word of eight characters.
namespace campotipo::calendar {

// Two digits of 0 to 99 as the low bytes of a word, tens first.
inline std::uint64_t pair(std::int32_t number) {
  return bytes::load<std::uint16_t>(digits::kPairs + 2 * static_cast<std::uint32_t>(number));
}

constexpr std::uint64_t character(std::int32_t code, unsigned place) {
  return std::uint64_t{static_cast<unsigned char>(code)} << (8 * place);
}

// Day and month with a separator behind each.
inline std::uint64_t edited_day_month(const Date &date, std::int32_t sep) {
  return pair(date.day) | pair(date.month) << 24 | (character(sep, 2) | character(sep, 5));
}

inline char *edit_two_digit_year(char *out, std::uint32_t number, std::int32_t sep) {
  const Date date = read_short(number);
  bytes::store(out, edited_day_month(date, sep) | pair(date.year % 100) << 48);
  out[8] = '\0';
  return out;
}

inline char *edit_four_digit_year(char *out, std::uint32_t number, std::int32_t sep) {
  const Date date = read_short(number);
  const std::uint64_t day_month = edited_day_month(date, sep);
  const std::int32_t year = full_year(number, date);
  bytes::store(out, day_month | pair(year / 100) << 48);
  bytes::store(out + 8, static_cast<std::uint16_t>(pair(year % 100)));
  out[10] = '\0';
  return out;
}

inline char *edit(char *out, std::uint32_t number, std::int32_t sep, std::int32_t flags) {
  return (flags & DATAC_EDITA_ANO4) != 0 ? edit_four_digit_year(out, number, sep)
                                         : edit_two_digit_year(out, number, sep);
}

// A decimal date shows the digits that it stores, so that its number is printed as it stands.
inline char *digits6(char *out, const unsigned char *field) {
  if ((field[2] & kPacked >> 16) == 0) {
    unsigned char wide[8];
    _3to8(wide, field);
    _8btoa(wide, out, 6);
    return out;
  }
  const Date date = read(load(field));
  const std::uint64_t word = pair(date.day) | pair(date.month) << 16 | pair(date.year % 100) << 32;
  bytes::store_low_bytes(out, word, DATAC_DDMMAA_TEXT_SIZE);
  return out;
}

inline char *digits8(char *out, std::uint32_t number) {
  const Date date = read_short(number);
  const std::uint64_t day_month = pair(date.day) | pair(date.month) << 16;
  const std::int32_t year = full_year(number, date);
  bytes::store(out, day_month | pair(year / 100) << 32 | pair(year % 100) << 48);
  out[8] = '\0';
  return out;
}

// The values of a text of one to eight plain digits, the last one in the highest byte and zeros for
// those that lack. False for any other text.
inline bool plain_digits(const char *text, std::uint64_t &values) {
  if (!bytes::same_page(text, 8)) return false;
  const auto characters = bytes::load<std::uint64_t>(text);
  const std::uint64_t others = digits::non_digits(characters);
  values = characters ^ digits::kZeros;
  // Behind a digit comes at least the NUL, so the ninth byte may be read.
  if (others == 0) return static_cast<unsigned char>(text[8] - '0') > 9;
  const auto bits = static_cast<unsigned>(std::countr_zero(others)) & ~7u;
  values <<= (64 - bits) & 63;
  return bits != 0;
}

inline std::uint32_t number_of_plain(std::int32_t format, bool year4, std::uint64_t values) {
  if (format == DATAC_FORMATO_DECIMAL && !year4)
    return static_cast<std::uint32_t>(digits::join8(values)) & ~kPacked;
  // Four numbers of two digits, 16 bits apart.
  const std::uint64_t pairs = values * 10 + (values >> 8);
  const auto at = [pairs](unsigned place) {
    return static_cast<std::int32_t>(pairs >> (16 * place) & 0xFF);
  };
  if (year4) return number_of(format, {at(0), at(1), at(2) * 100 + at(3)});
  return number_of(format, {at(1), at(2), CRONOBASE_ano_com_quatro(at(3))});
}

inline std::uint32_t number_of_any(std::int32_t format, bool year4, std::int32_t number) {
  if (format == DATAC_FORMATO_DECIMAL && !year4)
    return static_cast<std::uint32_t>(number) & ~kPacked;
  const std::int32_t rest = number / (year4 ? 10000 : 100);
  const std::int32_t year = year4 ? number % 10000 : CRONOBASE_ano_com_quatro(number % 100);
  return number_of(format, {rest / 100 % 100, rest % 100, year});
}

inline void from_text(unsigned char *out, std::int32_t format, bool year4, const char *text) {
  std::uint64_t values;
  if (plain_digits(text, values)) [[likely]] {
    store(out, number_of_plain(format, year4, values));
  } else {
    store(out, number_of_any(format, year4, static_cast<std::int32_t>(std::atol(text))));
  }
}

}  // namespace campotipo::calendar
