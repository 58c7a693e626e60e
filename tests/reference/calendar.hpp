#pragma once

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

// The calendar, step by step: days and months are walked one after the other and texts are printed
// by the C library. A date field is its number N.
namespace campotipo::reference {

struct Ymd {
  std::int32_t day, month, year;
};

// The first year from 1980 on that ends in these digits.
inline std::int32_t expand(std::int32_t last_two) {
  return 1980 + ((last_two - 1980) % 100 + 100) % 100;
}

inline bool leap(std::int64_t year) { return (year & 3) == 0; }

inline std::int32_t days_in_month(std::int32_t month, std::int64_t year) {
  switch (month) {
    case 2:
      return leap(year) ? 29 : 28;
    case 4:
    case 6:
    case 9:
    case 11:
      return 30;
    default:
      return month >= 1 && month <= 12 ? 31 : 0;
  }
}

inline bool packed(std::uint32_t n) { return n >> 23 & 1; }

inline Ymd read(std::uint32_t n) {
  if (!packed(n)) {
    const auto two = [n](std::uint32_t unit) { return static_cast<std::int32_t>(n / unit % 100); };
    return {two(10000), two(100), two(10000) == 0 ? 0 : expand(two(1))};
  }
  const auto digit = static_cast<std::int32_t>((n & 31) % 10);
  if (n >> 21 & 1) return {digit * 11, digit * 11, digit * 1111};
  return {static_cast<std::int32_t>(n & 31), static_cast<std::int32_t>(n >> 5 & 15),
          static_cast<std::int32_t>(n >> 9 & 0xFFF)};
}

inline std::uint32_t build(std::int32_t format, const Ymd &date) {
  const auto [day, month, year] = date;
  if (format != 1) {
    const std::int64_t n = std::int64_t{day} * 10000 + std::int64_t{month} * 100 + year % 100;
    return static_cast<std::uint32_t>(n) & 0xFFFFFF;
  }
  if (day >= 1 && day <= days_in_month(month, year))
    return 0x800000 + ((static_cast<std::uint32_t>(year) & 0xFFF) << 9) +
           (static_cast<std::uint32_t>(month) << 5) + static_cast<std::uint32_t>(day);
  if (day == month && month == year)
    for (std::int32_t digit = 2; digit <= 9; ++digit)
      if (day == digit * 11) return 0xA00000 + static_cast<std::uint32_t>(digit);
  return 0x800000;
}

inline bool valid(std::uint32_t n) {
  const Ymd date = read(n);
  return date.day >= 1 && date.day <= days_in_month(date.month, date.year);
}

// Whether one of the encodings has this form, bit by bit.
inline bool well_formed(std::uint32_t n) {
  if (!packed(n)) return n < 1000000;
  const std::uint32_t low = n & 0x7FFFFF;
  const bool repeated = low >= 0x200002 && low <= 0x200009;
  return low == 0 || repeated || (low < 0x200000 && valid(n));
}

inline int compare(std::uint32_t a, std::uint32_t b) {
  const Ymd l = read(a), r = read(b);
  if (l.year != r.year) return l.year < r.year ? -1 : 1;
  if (l.month != r.month) return l.month < r.month ? -1 : 1;
  if (l.day != r.day) return l.day < r.day ? -1 : 1;
  return 0;
}

template <class... Values>
std::string print(const char *format, Values... values) {
  char text[64];
  const int length = std::snprintf(text, sizeof text, format, values...);
  return {text, static_cast<std::size_t>(length)};
}

inline std::string edit(std::uint32_t n, int sep, int flags) {
  const Ymd date = read(n);
  if ((flags & 1) != 0) return print("%02u%c%02u%c%04u", date.day, sep, date.month, sep, date.year);
  return print("%02u%c%02u%c%02u", date.day, sep, date.month, sep, date.year % 100);
}

inline std::string digits6(std::uint32_t n) {
  const Ymd date = read(n);
  return packed(n) ? print("%02d%02d%02d", date.day, date.month, date.year % 100)
                   : print("%06u", n % 1000000);
}

inline std::string digits8(std::uint32_t n) {
  const Ymd date = read(n);
  return print("%02d%02d%04d", date.day, date.month, date.year);
}

inline std::uint32_t parse(std::int32_t format, bool year4, const char *text) {
  auto n = static_cast<std::int32_t>(std::atol(text));
  if (format == 0 && !year4) return static_cast<std::uint32_t>(n) & 0x7FFFFF;
  const std::int32_t year = year4 ? n % 10000 : expand(n % 100);
  n /= year4 ? 10000 : 100;
  return build(format, {n / 100 % 100, n % 100, year});
}

inline std::int64_t count_since(const Ymd &date, std::int32_t base) {
  if (date.year < base || date.month < 1 || date.month > 12) return 0;
  std::int64_t count = date.day;
  for (std::int64_t distance = 0; distance < std::int64_t{date.year} - base; ++distance)
    count += leap(distance) ? 366 : 365;
  for (std::int32_t month = 1; month < date.month; ++month)
    count += days_in_month(month, std::int64_t{date.year} - base);
  return count;
}

// Four years are always 1461 days, so that far counts and steps are walked from a near one.
inline std::int32_t add_wrapping(std::int32_t year, std::int64_t years) {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(year + years));
}

inline Ymd date_of_count(std::int32_t count, std::int32_t base) {
  std::int64_t rest = std::int64_t{count} - 1;
  const std::int64_t cycles = rest > 0 ? rest / 1461 : 0;
  rest -= cycles * 1461;
  std::int64_t year = base;
  for (; rest >= (leap(year) ? 366 : 365); ++year) rest -= leap(year) ? 366 : 365;
  std::int32_t month = 1;
  for (; rest >= days_in_month(month, year); ++month) rest -= days_in_month(month, year);
  return {static_cast<std::int32_t>(rest + 1), month, add_wrapping(base, year - base + 4 * cycles)};
}

inline Ymd step_days(Ymd date, std::int32_t days) {
  for (std::int32_t left = days % 1461; left > 0; --left) {
    if (++date.day <= days_in_month(date.month, date.year)) continue;
    date.day = 1;
    if (++date.month > 12) date.month = 1, ++date.year;
  }
  for (std::int32_t left = days % 1461; left < 0; ++left) {
    if (--date.day >= 1) continue;
    if (--date.month < 1) date.month = 12, --date.year;
    date.day = days_in_month(date.month, date.year);
  }
  date.year += days / 1461 * 4;
  return date;
}

inline Ymd step_months(Ymd date, std::int32_t months, bool stay_inside) {
  const std::div_t step = std::div(months, 12);
  date.year += step.quot;
  date.month += step.rem;
  if (date.month > 12) date.month -= 12, ++date.year;
  if (date.month < 1) date.month += 12, --date.year;
  const std::int32_t last = days_in_month(date.month, date.year);
  if (date.day <= last) return date;
  if (stay_inside) return {last, date.month, date.year};
  return {1, date.month + 1, date.year};
}

inline std::uint32_t search(std::int32_t format, std::uint32_t from, std::int32_t ddmm, int step) {
  Ymd date{ddmm / 100, ddmm % 100, read(from).year};
  for (int tries = 0; tries < 8; ++tries, date.year += step) {
    const std::uint32_t n = build(format, date);
    const int order = compare(n, from);
    if (step > 0 ? order >= 0 : order <= 0) return n;
  }
  return format == 1 ? 0x800000 : 0;
}

inline bool valid_time(unsigned hour, unsigned minute, unsigned second) {
  return hour < 24 && minute < 60 && second < 60;
}

inline std::string edit_time(unsigned hour, unsigned minute, int sep) {
  return print("%2u%c%02u", hour, sep, minute);
}

inline std::string edit_time(unsigned hour, unsigned minute, unsigned second, int sep) {
  return edit_time(hour, minute, sep) + print("%c%02u", sep, second);
}

}  // namespace campotipo::reference
