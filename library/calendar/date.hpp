#pragma once

#include <campotipo-support/calendar.h>
#include <campotipo-support/numbers.h>
#include <campotipo/calendar.h>

#include <array>
#include <cstdint>

#include "base/bytes.hpp"

// The date field: its number N in two encodings, and the day, month and year that it stands for.
namespace campotipo::calendar {

inline constexpr std::uint32_t kPacked = 0x800000;
inline constexpr std::uint32_t kRepeated = 0x200000;
inline constexpr std::uint32_t kAllBits = 0xFFFFFF;
inline constexpr unsigned kMonthShift = 5;
inline constexpr unsigned kYearShift = 9;
inline constexpr std::uint32_t kDayMask = 31;
inline constexpr std::uint32_t kMonthMask = 15;
inline constexpr std::uint32_t kYearMask = 0xFFF;

struct Date {
  std::int32_t day;
  std::int32_t month;
  std::int32_t year;
};

struct Month {
  std::uint16_t days;
  std::uint16_t days_before;
};

inline constexpr std::uint8_t kMonthLengths[12] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};

// Sixteen months for each of the four years of a cycle. Months that do not exist have no days, so
// that one look-up also says whether a month exists.
inline constexpr auto kMonths = [] {
  std::array<Month, 64> months{};
  for (unsigned year = 0; year < 4; ++year) {
    unsigned before = 0;
    for (unsigned month = 1; month <= 12; ++month) {
      const unsigned days = kMonthLengths[month - 1] + (year == 0 && month == 2);
      months[year * 16 + month] = {static_cast<std::uint16_t>(days),
                                   static_cast<std::uint16_t>(before)};
      before += days;
    }
  }
  return months;
}();

// `month` is 0 to 15. Of the year only the place in its cycle of four is looked at.
constexpr const Month &month_of_year(std::uint32_t month, std::uint32_t year) {
  return kMonths[(year & 3) * 16 + month];
}

constexpr std::int32_t days_in_month(std::int32_t month, std::int32_t year) {
  const auto place = static_cast<std::uint32_t>(month);
  return place < 16 ? month_of_year(place, static_cast<std::uint32_t>(year)).days : 0;
}
static_assert(days_in_month(2, 2100) == 29 && days_in_month(2, -1) == 28);
static_assert(days_in_month(0, 0) + days_in_month(13, 0) + days_in_month(-1, 0) == 0);

constexpr bool exists(const Date &date) {
  return static_cast<std::uint32_t>(date.day) - 1 <
         static_cast<std::uint32_t>(days_in_month(date.month, date.year));
}

inline std::int32_t format_in_force() { return __atomic_load_n(&DATAC_formato, __ATOMIC_RELAXED); }

inline std::uint32_t load(const unsigned char *field) { return _3ulong(field); }

inline unsigned char *store(unsigned char *field, std::uint32_t number) {
  bytes::store_le<DATAC_BYTES>(field, number);
  return field;
}

constexpr bool is_packed(std::uint32_t number) { return (number & kPacked) != 0; }

constexpr std::uint32_t zero_date(std::int32_t format) {
  return format == DATAC_FORMATO_COMPACTO ? kPacked : 0;
}

// Bits above the field's 24 may be set; storing drops them.
constexpr std::uint32_t decimal_number(const Date &date) {
  return static_cast<std::uint32_t>(date.day) * 10000 +
         static_cast<std::uint32_t>(date.month) * 100 + static_cast<std::uint32_t>(date.year % 100);
}

constexpr std::uint32_t packed_number(const Date &date) {
  return kPacked | (static_cast<std::uint32_t>(date.year) & kYearMask) << kYearShift |
         static_cast<std::uint32_t>(date.month) << kMonthShift |
         static_cast<std::uint32_t>(date.day);
}

constexpr std::uint32_t packed_repeated_or_zero(const Date &date) {
  const bool repeated = date.day == date.month && date.month == date.year && date.day >= 22 &&
                        date.day <= 99 && date.day % 11 == 0;
  return repeated ? kPacked | kRepeated | static_cast<std::uint32_t>(date.day) / 11 : kPacked;
}

// Number of a date that exists.
constexpr std::uint32_t number_of_existing(std::int32_t format, const Date &date) {
  return format == DATAC_FORMATO_COMPACTO ? packed_number(date) : decimal_number(date);
}

constexpr std::uint32_t number_of(std::int32_t format, const Date &date) {
  if (format != DATAC_FORMATO_COMPACTO) return decimal_number(date);
  return exists(date) ? packed_number(date) : packed_repeated_or_zero(date);
}
static_assert(number_of(1, {31, 12, 2024}) == 0x8FD19F && number_of(0, {31, 12, 2024}) == 311224);
static_assert(number_of(1, {11, 11, 11}) == 0x80176B && number_of(1, {22, 22, 22}) == 0xA00002);

// A decimal number is 0 to 8388607, so that even the day may need its last two digits taken.
constexpr Date read_decimal(std::uint32_t number) {
  const std::uint32_t hundreds = number / 100;
  std::uint32_t day = hundreds / 100;
  const std::uint32_t month = hundreds - day * 100;
  if (day >= 100) [[unlikely]]
    day %= 100;
  const std::uint32_t year = day != 0 ? number - hundreds * 100 : 0;
  return {static_cast<std::int32_t>(day), static_cast<std::int32_t>(month),
          static_cast<std::int32_t>(year)};
}

constexpr Date read_repeated(std::uint32_t number) {
  const auto digit = static_cast<std::int32_t>((number & kDayMask) % 10);
  return {digit * 11, digit * 11, digit * 1111};
}

constexpr Date read_ordinary_packed(std::uint32_t number) {
  return {static_cast<std::int32_t>(number & kDayMask),
          static_cast<std::int32_t>(number >> kMonthShift & kMonthMask),
          static_cast<std::int32_t>(number >> kYearShift & kYearMask)};
}

// The date with the year of a decimal one in two digits. The expansion keeps them, and 100 is a
// multiple of four: two-digit texts and leap years need no more, and the call is spared.
constexpr Date read_short(std::uint32_t number) {
  if (!is_packed(number)) [[unlikely]]
    return read_decimal(number);
  if ((number & kRepeated) != 0) [[unlikely]]
    return read_repeated(number);
  return read_ordinary_packed(number);
}

// The year of the date that read_short gave for the number.
inline std::int32_t full_year(std::uint32_t number, const Date &date) {
  return is_packed(number) || date.day == 0 ? date.year : CRONOBASE_ano_com_quatro(date.year);
}

inline Date read(std::uint32_t number) {
  Date date = read_short(number);
  date.year = full_year(number, date);
  return date;
}

constexpr bool is_valid(std::uint32_t number) { return exists(read_short(number)); }

inline constexpr std::uint32_t kGreatestDecimal = 999999;

// The packed forms are those that building the date again gives: the repeated digits from their two,
// for they read back with four of a year.
constexpr bool is_well_formed(std::uint32_t number) {
  if (!is_packed(number)) return number <= kGreatestDecimal;
  Date date = read_short(number);
  if ((number & kRepeated) != 0) date.year = date.day;
  return number_of(DATAC_FORMATO_COMPACTO, date) == number;
}
static_assert(is_well_formed(0xA00002) && is_well_formed(kPacked) && is_well_formed(0x8FD19F));
static_assert(!is_well_formed(0xA00001) && !is_well_formed(0xCFD19F) && !is_well_formed(0x80005F));

// Year, month and day in one number, for dates of any kind.
inline std::int64_t order(std::uint32_t number, const Date &date) {
  const std::int32_t in_year = date.month * 128 + date.day;
  return std::int64_t{full_year(number, date)} * (128 * 128) + in_year;
}

inline int compare(std::uint32_t a, std::uint32_t b) {
  std::int64_t left, right;
  if (is_packed(a & b) && ((a | b) & kRepeated) == 0) [[likely]] {
    left = a & (kRepeated - 1);
    right = b & (kRepeated - 1);
  } else {
    left = order(a, read_short(a));
    right = order(b, read_short(b));
  }
  return (left > right) - (left < right);
}

inline std::uint32_t ddmmaa(std::uint32_t number) {
  return is_packed(number) ? decimal_number(read(number)) : number;
}

inline int convert(unsigned char *field, std::int32_t format) {
  const std::uint32_t number = load(field);
  const int wanted = is_packed(number) ? DATAC_FORMATO_DECIMAL : DATAC_FORMATO_COMPACTO;
  if (format != wanted) return 0;
  store(field, number_of(format, read(number)));
  return 1;
}

}  // namespace campotipo::calendar
