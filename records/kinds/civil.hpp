#pragma once

#include <cstdint>

// The calendar of everyday life, with the leap years of 1582, for all years from 1 on. Always inlined:
// it is compiled for several kinds of processor.
namespace campotipo::records::civil {

[[gnu::always_inline]] constexpr bool is_leap(int year) {
  return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

[[gnu::always_inline]] constexpr int days_in_month(int month, int year) {
  constexpr int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  return kDays[month - 1] + (month == 2 && is_leap(year) ? 1 : 0);
}

[[gnu::always_inline]] constexpr bool exists(int day, int month, int year) {
  return year >= 1 && month >= 1 && month <= 12 && day >= 1 && day <= days_in_month(month, year);
}

// Days since 1970-01-01. Howard Hinnant, "chrono-Compatible Low-Level Date Algorithms": years that
// begin in March, in eras of 400.
[[gnu::always_inline]] constexpr std::int32_t days(int day, int month, int year) {
  const int from_march = month > 2 ? year : year - 1;
  const int era = from_march / 400;
  const int of_era = from_march - era * 400;
  const int of_year = (153 * (month > 2 ? month - 3 : month + 9) + 2) / 5 + day - 1;
  return era * 146097 + of_era * 365 + of_era / 4 - of_era / 100 + of_year - 719468;
}

}  // namespace campotipo::records::civil
