#pragma once

#include <campotipo/calendar.h>

#include <cstdint>

#include "base/bytes.hpp"
#include "base/digits.hpp"

// Times of day. A valid one is one word of text; what a field can hold beyond that is put digit by
// digit.
namespace campotipo::calendar::time_of_day {

constexpr bool exists(unsigned hour, unsigned minute, unsigned second) {
  return hour < 24 && minute < 60 && second < 60;
}

inline bool is_valid_hhmm(const unsigned char *field) {
  const auto number = static_cast<unsigned>(bytes::load_le<HORAC_BYTES>(field));
  return exists(number / 100, number % 100, 0);
}

inline bool is_valid_hhmmss(const unsigned char *field) {
  return exists(field[0], field[1], field[2]);
}

inline std::uint64_t pair(unsigned number) {
  return bytes::load<std::uint16_t>(digits::kPairs + 2 * number);
}

// Two digits with a blank for a leading zero.
inline std::uint64_t blank_pair(unsigned number) {
  return pair(number) - (number < 10 ? std::uint64_t{'0' - ' '} : 0);
}

// Up to three digits, at least two places, the first filled with `fill`.
inline char *put_wide(char *to, unsigned number, char fill) {
  if (number >= 100) *to++ = static_cast<char>('0' + number / 100);
  digits::put2(to, number % 100);
  if (number < 10) *to = fill;
  return to + 2;
}

struct Time {
  unsigned hour;
  unsigned minute;
  unsigned second;
};

[[gnu::noinline]] inline char *edit_wide(char *out, const Time &time, char sep, bool seconds) {
  char *to = put_wide(out, time.hour, ' ');
  *to++ = sep;
  to = put_wide(to, time.minute, '0');
  if (seconds) {
    *to++ = sep;
    to = put_wide(to, time.second, '0');
  }
  *to = '\0';
  return out;
}

inline char *edit(char *out, const Time &time, std::int32_t sep, bool seconds) {
  const auto separator = static_cast<unsigned char>(sep);
  if (time.hour >= 100 || time.minute >= 100 || (seconds && time.second >= 100)) [[unlikely]]
    return edit_wide(out, time, static_cast<char>(separator), seconds);
  const std::uint64_t hour_minute =
      blank_pair(time.hour) | std::uint64_t{separator} << 16 | pair(time.minute) << 24;
  if (seconds) {
    bytes::store(out, hour_minute | std::uint64_t{separator} << 40 | pair(time.second) << 48);
    out[8] = '\0';
  } else {
    bytes::store_low_bytes(out, hour_minute, 6);
  }
  return out;
}

inline char *edit_hhmm(char *out, const unsigned char *field, std::int32_t sep) {
  const auto number = static_cast<unsigned>(bytes::load_le<HORAC_BYTES>(field));
  return edit(out, {number / 100, number % 100, 0}, sep, false);
}

inline char *edit_hhmmss(char *out, const unsigned char *field, std::int32_t sep,
                         std::int32_t flags) {
  return edit(out, {field[0], field[1], field[2]}, sep, (flags & HHMMSS_EDITA_HHMM) == 0);
}

}  // namespace campotipo::calendar::time_of_day
