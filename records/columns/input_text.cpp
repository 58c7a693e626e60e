#include "columns/input_text.hpp"

#include <algorithm>

#include "kinds/dates.hpp"

namespace campotipo::records {

namespace {

// Digits, lowest first, with their sign and point, as a text.
std::string with_point(std::string digits, bool negative, int scale) {
  if (scale < 0) {
    if (digits != "0") digits.insert(0, static_cast<std::size_t>(-scale), '0');
    scale = 0;
  }
  const auto behind = static_cast<std::size_t>(scale);
  if (digits.size() <= behind) digits.append(behind + 1 - digits.size(), '0');
  if (behind != 0) digits.insert(behind, 1, '.');
  if (negative) digits += '-';
  std::reverse(digits.begin(), digits.end());
  return digits;
}

struct Civil {
  int day;
  int month;
  std::int64_t year;
};

// Howard Hinnant, "chrono-Compatible Low-Level Date Algorithms", of days that are not below zero once
// they count from the year 0.
Civil civil_of(std::int64_t day) {
  const std::int64_t from_zero = day + 719468;
  const std::int64_t era = from_zero / 146097;
  const auto of_era = static_cast<int>(from_zero % 146097);
  const int year = (of_era - of_era / 1460 + of_era / 36524 - of_era / 146096) / 365;
  const int of_year = of_era - (365 * year + year / 4 - year / 100);
  const int month = (5 * of_year + 2) / 153;
  const int first = (153 * month + 2) / 5;
  return {of_year - first + 1, month < 10 ? month + 3 : month - 9,
          era * 400 + year + (month < 10 ? 0 : 1)};
}

constexpr std::int64_t kFirstDay = -719162;  // 1 January of the year 1
constexpr std::int64_t kLastDay = 2932896;   // 31 December 9999

void two_digits(char *out, int number) {
  out[0] = static_cast<char>('0' + number / 10);
  out[1] = static_cast<char>('0' + number % 10);
}

}  // namespace

std::string decimal_text(Int128 number, int scale) {
  __extension__ typedef unsigned __int128 Uint128;
  const bool negative = number < 0;
  auto size = static_cast<Uint128>(number);
  if (negative) size = 0 - size;
  std::string digits;
  do {
    digits += static_cast<char>('0' + static_cast<int>(size % 10));
    size /= 10;
  } while (size != 0);
  return with_point(std::move(digits), negative, scale);
}

std::string decimal_text(const std::uint64_t (&words)[4], int scale) {
  __extension__ typedef unsigned __int128 Uint128;
  std::uint64_t size[4];
  std::copy(std::begin(words), std::end(words), size);
  const bool negative = size[3] >> 63 != 0;
  if (negative) {
    for (std::uint64_t &word : size) word = ~word;
    for (std::uint64_t &word : size) {
      if (++word != 0) break;
    }
  }
  std::string digits;
  const auto any = [&] { return (size[0] | size[1] | size[2] | size[3]) != 0; };
  do {
    Uint128 rest = 0;
    for (int i = 3; i >= 0; --i) {
      rest = rest << 64 | size[i];
      size[i] = static_cast<std::uint64_t>(rest / 10);
      rest %= 10;
    }
    digits += static_cast<char>('0' + static_cast<int>(rest));
  } while (any());
  return with_point(std::move(digits), negative, scale);
}

std::string day_text(std::int64_t day, const Params &p) {
  if (day < kFirstDay || day > kLastDay) return "";
  const Civil civil = civil_of(day);
  char digits[DatePattern::kDigits];
  two_digits(digits, civil.day);
  two_digits(digits + 2, civil.month);
  two_digits(digits + 4, static_cast<int>(civil.year / 100));
  two_digits(digits + 6, static_cast<int>(civil.year % 100));
  const DatePattern::Form &form = p.pattern->full;
  std::string text(form.length, '0');
  for (std::size_t i = 0; i < form.length; ++i) {
    text[i] = form.source[i] == DatePattern::kOwn ? form.character[i] : digits[form.source[i]];
  }
  return text;
}

std::string time_text(std::int64_t second, bool minutes, const Params &p) {
  char text[8];
  two_digits(text, static_cast<int>(second / 3600));
  text[2] = p.separator;
  two_digits(text + 3, static_cast<int>(second / 60 % 60));
  text[5] = p.separator;
  two_digits(text + 6, static_cast<int>(second % 60));
  return {text, minutes && second % 60 == 0 ? std::size_t{5} : sizeof text};
}

}  // namespace campotipo::records
