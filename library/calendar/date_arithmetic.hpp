#pragma once

#include <time.h>

#include <array>
#include <cstdint>

#include "calendar/date.hpp"

// Day counts, steps and searches, in closed form: without a century rule the days of the calendar
// are one linear map, 1461 days for every four years.
namespace campotipo::calendar {

inline constexpr std::int32_t kStandingBase = 1980;

// Days of the years from 0 to before `year`, where year 0 is a leap year. Goes on below year 0.
constexpr std::int64_t days_of_years(std::int64_t years) { return (1461 * years + 3) >> 2; }
static_assert(days_of_years(0) == 0 && days_of_years(1) == 366 && days_of_years(4) == 1461);
static_assert(days_of_years(-1) == -365 && days_of_years(-4) == -1461);

// A date as its packed number has it, but with any number of years above bit 9.
using WideDate = std::uint64_t;

// March first, which puts the leap day last: what turns the day of such a year, counted from 0,
// into year, month and day. The year begins a cycle early, see date_after.
inline constexpr auto kMarchMonths = [] {
  std::array<std::int16_t, 12> months{};
  int days_before = 0;
  for (int place = 0; place < 12; ++place) {
    const int next_year = place >= 10;
    const int month = place + 3 - 12 * next_year;
    months[static_cast<unsigned>(place)] = static_cast<std::int16_t>(
        (next_year - 4) * (1 << kYearShift) + month * (1 << kMonthShift) + 1 - days_before);
    days_before += kMonthLengths[month - 1];
  }
  return months;
}();

inline constexpr std::uint64_t kYearsOfQuarters = UINT64_MAX / 1461 + 1;

// The date of a number of days, below 2^33, after 1 January of a year 0 that is a leap year. The
// count begins one cycle early, which keeps all above zero. Years and the months of a year both are
// linear maps of the days, worked out with the high and the low half of one product, after Neri and
// Schneider, "Euclidean affine functions and their application to calendar algorithms" (2022).
constexpr WideDate date_after(std::uint64_t days) {
  const std::uint64_t quarters = 4 * (days + 1461 - 60) + 3;
  const bytes::uint128 scaled = bytes::uint128{kYearsOfQuarters} * quarters;
  const auto year = static_cast<std::uint64_t>(scaled >> 64);
  const auto day =
      // cppcheck-suppress shiftTooManyBits ; the product has 128 bits
      static_cast<std::uint32_t>((bytes::uint128{static_cast<std::uint64_t>(scaled)} * 1461) >> 66);
  const std::int64_t month = kMarchMonths[(2141 * day + 1305) >> 16];
  return (year << kYearShift) + static_cast<std::uint64_t>(month + day);
}

constexpr bool follows_the_calendar(std::int32_t years) {
  std::uint64_t days = 0;
  for (std::int32_t year = 0; year < years; ++year) {
    for (std::int32_t month = 1; month <= 12; ++month) {
      for (std::int32_t day = 1; day <= days_in_month(month, year); ++day) {
        if ((date_after(days++) | kPacked) != packed_number({day, month, year})) return false;
      }
    }
  }
  return true;
}
static_assert(follows_the_calendar(8));

// Years wrap at 32 bits where the first year and the days together leave them.
constexpr std::uint32_t number_after(std::int32_t format, std::uint64_t days,
                                     std::uint32_t first_year) {
  const WideDate date = date_after(days) + (WideDate{first_year} << kYearShift);
  const auto low = static_cast<std::uint32_t>(date);
  if (format == DATAC_FORMATO_COMPACTO) [[likely]]
    return kPacked | (low & (kRepeated - 1));
  return decimal_number(
      {static_cast<std::int32_t>(low & kDayMask),
       static_cast<std::int32_t>(low >> kMonthShift & kMonthMask),
       static_cast<std::int32_t>(static_cast<std::uint32_t>(date >> kYearShift))});
}

inline std::int32_t day_count(std::uint32_t number) {
  const Date date = read(number);
  return CRONOBASE_zuliano(date.day, date.month, date.year);
}

// The leap years are those at a multiple of four from the base, whatever the base.
inline std::int64_t day_count_since(std::uint32_t number, std::int32_t base) {
  const Date date = read_short(number);
  const auto month = static_cast<std::uint32_t>(date.month);
  if (month - 1 >= 12) [[unlikely]]
    return 0;
  // The two digits of the year give the distance modulo four.
  const auto distance = static_cast<std::uint32_t>(date.year) - static_cast<std::uint32_t>(base);
  const std::int32_t in_year = month_of_year(month, distance).days_before + date.day;
  const std::int64_t years = std::int64_t{full_year(number, date)} - base;
  return years >= 0 ? days_of_years(years) + in_year : 0;
}

inline std::int32_t weekday(std::uint32_t number) {
  const auto shifted = static_cast<std::uint32_t>(day_count(number)) + 2;
  return static_cast<std::int32_t>(shifted) % 7;
}

// The leap years are the true ones, so the base stands somewhere in its cycle of four.
inline std::uint32_t number_of_day_count(std::int32_t count, std::int32_t base) {
  const std::int32_t format = format_in_force();
  if (count <= 0) [[unlikely]]
    return number_of(format, {count, 1, base});
  const std::uint32_t place = static_cast<std::uint32_t>(base) & 3;
  const auto days = static_cast<std::uint64_t>(days_of_years(place) + count - 1);
  return number_after(format, days, static_cast<std::uint32_t>(base) - place);
}

inline time_t noon(std::uint32_t number) {
  const Date date = read(number);
  tm local{};
  local.tm_year = date.year - 1900;
  local.tm_mon = date.month - 1;
  local.tm_mday = date.day;
  local.tm_hour = 12;
  return mktime(&local);
}

inline std::uint32_t number_of_moment(time_t moment) {
  tm local;
  CRONOBASE_localtime(&moment, &local);
  const std::int32_t format = format_in_force();
  // No month has such a day: the moment could not be converted.
  if (local.tm_mday == 0) return zero_date(format);
  const auto year = static_cast<std::uint32_t>(local.tm_year) + 1900;
  return number_of(format, {local.tm_mday, local.tm_mon + 1, static_cast<std::int32_t>(year)});
}

// Cycles added before a step by days and taken off behind it: more than any step goes back, so that
// the numbers between stay above zero.
inline constexpr std::uint32_t kCyclesAhead = 1u << 21;
static_assert(1461 * std::int64_t{kCyclesAhead} > std::int64_t{INT32_MAX} + 1);

// The year to step from. Between decimal dates the century never shows: any year with the same two
// digits does, as long as the step cannot lead below year 0, and the call is spared.
inline constexpr std::int32_t kShortStepYears = 1900;

inline std::int32_t starting_year(std::uint32_t number, const Date &date, std::int32_t format,
                                  bool short_step) {
  if (is_packed(number)) [[likely]]
    return date.year;
  if (format != DATAC_FORMATO_COMPACTO && short_step) return kShortStepYears + date.year;
  return CRONOBASE_ano_com_quatro(date.year);
}

inline void advance_days(unsigned char *field, std::int32_t days) {
  const std::uint32_t number = load(field);
  const Date date = read_short(number);
  if (!exists(date)) return;
  const Month &month =
      month_of_year(static_cast<std::uint32_t>(date.month), static_cast<std::uint32_t>(date.year));
  const std::int64_t from_year = std::int64_t{days} + (month.days_before + date.day);
  const std::int32_t format = format_in_force();
  const std::int32_t year = starting_year(number, date, format, days > -365 * kShortStepYears);
  const std::int64_t total =
      days_of_years(year) + from_year + (1461 * std::int64_t{kCyclesAhead} - 1);
  store(field, number_after(format, static_cast<std::uint64_t>(total), 0u - 4 * kCyclesAhead));
}

// The same for steps by months.
inline constexpr std::int64_t kYearsAhead = 1 << 28;
static_assert(12 * kYearsAhead > std::int64_t{INT32_MAX} + 1);

enum class Missing { kFirstOfNext, kLastOfMonth };

template <Missing missing>
inline void advance_months(unsigned char *field, std::int32_t months) {
  const std::uint32_t number = load(field);
  const Date date = read_short(number);
  if (!exists(date)) return;
  const std::int64_t from_year = std::int64_t{months} + (date.month - 1);
  const std::int32_t format = format_in_force();
  const std::int64_t years =
      kYearsAhead + starting_year(number, date, format, months > -12 * kShortStepYears);
  const auto total = static_cast<std::uint64_t>(12 * years + from_year);
  Date result{date.day, static_cast<std::int32_t>(total % 12) + 1,
              static_cast<std::int32_t>(static_cast<std::int64_t>(total / 12) - kYearsAhead)};
  const std::int32_t last = days_in_month(result.month, result.year);
  if (last < result.day) [[unlikely]] {
    if constexpr (missing == Missing::kFirstOfNext) {
      // December has all days, so the year stays.
      result.day = 1;
      ++result.month;
    } else {
      result.day = last;
    }
  }
  store(field, number_of_existing(format, result));
}

inline constexpr int kCandidateYears = 8;

// `direction` is 1 for the first date not before the reference, -1 for the last not after it. Each
// candidate is compared as it reads back, for neither encoding holds every year.
inline std::uint32_t nearest(std::uint32_t reference, std::int32_t ddmm, int direction) {
  const std::int32_t format = format_in_force();
  Date date = read(reference);
  const std::int64_t wanted = order(kPacked, date);
  date = {ddmm / 100, ddmm % 100, date.year};
  for (int years = 0; years < kCandidateYears; ++years) {
    const std::uint32_t number = number_of(format, date) & kAllBits;
    const std::int64_t found = order(number, read_short(number));
    if (direction > 0 ? found >= wanted : found <= wanted) return number;
    date.year += direction;
  }
  return zero_date(format);
}

}  // namespace campotipo::calendar
