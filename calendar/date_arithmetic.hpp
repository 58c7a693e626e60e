#pragma once

#include <time.h>

#include <array>
#include <cstdint>

#include "calendar/date.hpp"

// Day counts, steps and searches, in closed form: without a century rule the days of the calendar
// are one linear map, 1461 days for every four years.
namespace campotipo::calendar {

inline constexpr std::int32_t kStandingBase = 1980;

// Days before each month of a common and of a leap year, by the number of the month.
inline constexpr auto kDaysBefore = [] {
  std::array<std::uint16_t, 32> before{};
  for (unsigned leap = 0; leap < 2; ++leap) {
    unsigned days = 0;
    for (unsigned month = 1; month <= 12; ++month) {
      before[leap * 16 + month] = static_cast<std::uint16_t>(days);
      days += kMonthLengths[month - 1] + (leap != 0 && month == 2);
    }
  }
  return before;
}();

constexpr std::uint32_t days_before(std::int32_t month, bool leap) {
  return kDaysBefore[(leap ? 16u : 0u) + static_cast<std::uint32_t>(month)];
}

// Days of the first `years` years of a cycle that begins with its leap year.
constexpr std::uint64_t days_of_years(std::uint64_t years) { return (1461 * years + 3) / 4; }
static_assert(days_of_years(0) == 0 && days_of_years(1) == 366 && days_of_years(4) == 1461);

struct YearAndDay {
  std::uint32_t year;
  std::int32_t month;
  std::int32_t day;
};

// The date of a number of days after 1 January of a year 0 that is a leap year. Years are counted
// from March, which puts the leap day last, and begin one cycle early, which keeps all above zero.
// The months of such a year are a linear map too; its constants are those of Neri and Schneider,
// "Euclidean affine functions and their application to calendar algorithms" (2022).
constexpr YearAndDay date_after(std::uint64_t days) {
  const std::uint64_t quarters = 4 * (days + 1461 - 60) + 3;
  const std::uint64_t march_year = quarters / 1461;
  const auto day_of_year = static_cast<std::uint32_t>(quarters % 1461 / 4);
  const std::uint32_t months = 2141 * day_of_year + 197913;
  const bool next_year = day_of_year >= 306;
  return {static_cast<std::uint32_t>(march_year) - 4 + next_year,
          static_cast<std::int32_t>((months >> 16) - (next_year ? 12 : 0)),
          static_cast<std::int32_t>((months & 0xFFFF) / 2141 + 1)};
}

constexpr bool date_after_is_exact_over_two_cycles() {
  std::uint64_t days = 0;
  for (std::int32_t year = 0; year < 8; ++year) {
    for (std::int32_t month = 1; month <= 12; ++month) {
      const auto length = static_cast<std::int32_t>(days_in_month(month, year));
      for (std::int32_t day = 1; day <= length; ++day) {
        const YearAndDay date = date_after(days++);
        if (date.day != day || date.month != month) return false;
        if (date.year != static_cast<std::uint32_t>(year)) return false;
      }
    }
  }
  return true;
}
static_assert(date_after_is_exact_over_two_cycles());

// Years wrap at 32 bits where base and count together leave them.
constexpr Date date_from(std::uint64_t days, std::uint32_t year_of_cycle) {
  const YearAndDay date = date_after(days);
  return {date.day, date.month, static_cast<std::int32_t>(year_of_cycle + date.year)};
}

inline std::int32_t day_count(std::uint32_t number) {
  const Date date = read(number);
  return CRONOBASE_zuliano(date.day, date.month, date.year);
}

// The leap years are those at a multiple of four from the base, whatever the base.
inline std::int64_t day_count_since(std::uint32_t number, std::int32_t base) {
  const Date date = read(number);
  const std::int64_t years = std::int64_t{date.year} - base;
  if (years < 0 || static_cast<std::uint32_t>(date.month) - 1 >= 12) return 0;
  const auto whole_years =
      static_cast<std::int64_t>(days_of_years(static_cast<std::uint64_t>(years)));
  return whole_years + days_before(date.month, (years & 3) == 0) + date.day;
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
  const std::uint64_t days = static_cast<std::uint32_t>(count) - 1 + days_of_years(place);
  return number_of_existing(format, date_from(days, static_cast<std::uint32_t>(base) - place));
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
  const auto year = static_cast<std::uint32_t>(local.tm_year) + 1900;
  return number_of(format_in_force(),
                   {local.tm_mday, local.tm_mon + 1, static_cast<std::int32_t>(year)});
}

// Years added before a step and taken off behind it: whole cycles, and more than any step goes
// back, so that the numbers between stay above zero.
inline constexpr std::uint32_t kYearsAhead = 1u << 28;

inline void advance_days(unsigned char *field, std::int32_t days) {
  const Date date = read(load(field));
  if (!exists(date)) return;
  const auto year = static_cast<std::uint32_t>(date.year) + kYearsAhead;
  const std::uint64_t start = days_of_years(year) + days_before(date.month, (year & 3) == 0) +
                              static_cast<std::uint32_t>(date.day) - 1;
  const Date result =
      date_from(start + static_cast<std::uint64_t>(std::int64_t{days}), -kYearsAhead);
  store(field, number_of_existing(format_in_force(), result));
}

enum class Missing { kFirstOfNext, kLastOfMonth };

template <Missing missing>
inline void advance_months(unsigned char *field, std::int32_t months) {
  const Date date = read(load(field));
  if (!exists(date)) return;
  const std::int64_t ahead = std::int64_t{date.year} + kYearsAhead;
  const auto total = static_cast<std::uint64_t>(ahead * 12 + date.month - 1 + months);
  Date result{date.day, static_cast<std::int32_t>(total % 12) + 1,
              static_cast<std::int32_t>(static_cast<std::int64_t>(total / 12) - kYearsAhead)};
  const auto length = static_cast<std::int32_t>(days_in_month(result.month, result.year));
  if (length < result.day) {
    if constexpr (missing == Missing::kFirstOfNext) {
      // December has all days, so the year stays.
      result.day = 1;
      ++result.month;
    } else {
      result.day = length;
    }
  }
  store(field, number_of_existing(format_in_force(), result));
}

inline constexpr int kCandidateYears = 8;

// `direction` is 1 for the first date not before the reference, -1 for the last not after it. Each
// candidate is compared as it reads back, for neither encoding holds every year.
inline std::uint32_t nearest(std::uint32_t reference, std::int32_t ddmm, int direction) {
  const std::int32_t format = format_in_force();
  Date candidate{ddmm / 100, ddmm % 100, read(reference).year};
  for (int years = 0; years < kCandidateYears; ++years) {
    const std::uint32_t number = number_of(format, candidate) & kAllBits;
    if (compare(number, reference) * direction >= 0) return number;
    candidate.year += direction;
  }
  return zero_date(format);
}

}  // namespace campotipo::calendar
