// Fields stored as characters: every shape of a number, every day, and what means no value, held
// against texts that are put together by hand.

#include <gtest/gtest.h>

#include "errors/error.hpp"
#include "kinds/text_numbers.hpp"
#include "tests/records/tool_fixture.hpp"
#include "tests/util/guarded_buffer.hpp"

namespace campotipo::records::test {
namespace {

Layout one_field(const std::string &keys) {
  return parse_layout("name = \"r\"\n[[field]]\nname = \"f\"\n" + keys, "test");
}

// A field in memory that ends with it, or begins with it.
struct Stored {
  explicit Stored(const Field &of) : field(&of), guarded(2 * of.bytes + 1) {}

  const char *fault(const std::string &bytes) {
    const unsigned char *place = put(bytes);
    return field->type->fault(place, field->params);
  }
  std::string text(const std::string &bytes) { return field_text(*field, put(bytes)); }

  // Over bytes that are none of a field.
  const char *take(const std::string &text, std::string &bytes) {
    unsigned char *place = guarded.at_end(field->bytes);
    std::memset(place, 0xFF, field->bytes);
    const char *lost = test::take(*field, text, place);
    guarded.expect_canaries();
    bytes.assign(reinterpret_cast<const char *>(place), field->bytes);
    return lost;
  }

  const unsigned char *put(const std::string &bytes) {
    EXPECT_EQ(field->bytes, bytes.size());
    at_end = !at_end;
    unsigned char *place = at_end ? guarded.at_end(field->bytes) : guarded.at_start(field->bytes);
    std::memcpy(place, bytes.data(), bytes.size());
    return place;
  }

  const Field *field;
  campotipo::test::GuardedBuffer guarded;
  bool at_end = false;
};

struct Shape {
  int digits, decimals;
  std::string sign, pad;

  std::string keys() const {
    return "type = 'NUM'\ndigits = " + std::to_string(digits) +
           "\ndecimals = " + std::to_string(decimals) +
           (sign.empty() ? "" : "\nsign = '" + sign + "'") +
           (pad.empty() ? "" : "\npad = '" + pad + "'");
  }

  std::string stored(std::string number, bool negative) const {
    if (sign == "overpunch") {
      const std::string letters = negative ? "}JKLMNOPQR" : "{ABCDEFGHI";
      number.back() = letters[std::size_t(number.back() - '0')];
    }
    for (std::size_t at = 0; pad == " " && at + 1 < number.size() && number[at] == '0'; ++at) {
      number[at] = ' ';
    }
    if (sign == "leading") number.insert(0, negative ? "-" : "+");
    if (sign == "trailing") number += negative ? "-" : "+";
    return number;
  }

  std::string text(std::string number, bool negative) const {
    number.insert(std::size_t(digits - decimals), ".");
    while (number.size() > 1 && number[0] == '0' && number[1] != '.') number.erase(0, 1);
    if (number[0] == '.') number.insert(0, "0");
    if (decimals == 0) number.pop_back();
    return (negative ? "-" : "") + number;
  }
};

std::vector<Shape> shapes() {
  std::vector<Shape> all;
  for (int digits = 1; digits <= text_numbers::kMostDigits; ++digits) {
    for (const int decimals : {0, 1, digits / 2, digits}) {
      for (const char *sign : {"", "leading", "trailing", "overpunch"}) {
        for (const char *pad : {"", " "}) all.push_back({digits, decimals, sign, pad});
      }
    }
  }
  return all;
}

struct Number {
  std::string digits;
  bool negative;
};

Number random_number(const Shape &shape, Random &random) {
  Number number = {random.digits(std::size_t(shape.digits)), false};
  const auto zeros = random.between<std::size_t>(0, number.digits.size());
  number.digits.replace(0, zeros, zeros, '0');
  number.negative = !shape.sign.empty() && random.between(0, 1) == 1 &&
                    number.digits.find_first_not_of('0') != std::string::npos;
  return number;
}

TEST(Characters, NumbersOfEveryShape) {
  Random random(11);
  for (const Shape &shape : shapes()) {
    SCOPED_TRACE(shape.keys());
    const Layout layout = one_field(shape.keys());
    const Field &field = layout.types[0].fields[0];
    Stored stored(field);
    Number before = {std::string(std::size_t(shape.digits), '0'), false};
    std::string bytes_before = shape.stored(before.digits, false);
    for (int i = 0; i < 12; ++i) {
      const Number number = random_number(shape, random);
      const std::string bytes = shape.stored(number.digits, number.negative);
      const std::string text = shape.text(number.digits, number.negative);
      ASSERT_EQ(text, stored.text(bytes));
      ASSERT_EQ(nullptr, stored.fault(bytes));
      std::string again;
      ASSERT_EQ(nullptr, stored.take(text, again)) << text;
      ASSERT_EQ(bytes, again) << text;
      const auto order = [&](const std::string &a, const std::string &b) {
        return field.type->compare(reinterpret_cast<const unsigned char *>(a.data()),
                                   reinterpret_cast<const unsigned char *>(b.data()), field.params);
      };
      const bool lower = number.negative != before.negative ? number.negative
                         : number.negative                  ? number.digits > before.digits
                                                            : number.digits < before.digits;
      ASSERT_EQ(lower, order(bytes, bytes_before) < 0);
      ASSERT_EQ(0, order(bytes, bytes));
      before = number;
      bytes_before = bytes;
    }
  }
}

// Any one byte that no number has there is found, and is shown as it stands.
TEST(Characters, AnotherByteInANumberIsFound) {
  Random random(12);
  std::size_t found = 0;
  for (const Shape &shape : shapes()) {
    SCOPED_TRACE(shape.keys());
    const Layout layout = one_field(shape.keys());
    Stored stored(layout.types[0].fields[0]);
    const Number number = random_number(shape, random);
    std::string bytes = shape.stored(number.digits, number.negative);
    const auto at = random.between<std::size_t>(0, bytes.size() - 1);
    const char other = "/:aS;!_@"[random.between(0, 7)];
    bytes[at] = other;
    ASSERT_NE(nullptr, stored.fault(bytes)) << bytes;
    ASSERT_EQ(bytes, stored.text(bytes));
    ++found;
    // Behind a digit there is no blank.
    bytes = shape.stored(std::string(std::size_t(shape.digits), '7'), false);
    if (shape.digits > 1 && shape.sign != "overpunch") {
      bytes[bytes.size() - (shape.sign == "trailing" ? 2 : 1)] = ' ';
      ASSERT_NE(nullptr, stored.fault(bytes)) << bytes;
    }
  }
  EXPECT_GT(found, 1000U);
}

// A calendar that only counts: each day is the one behind the last.
struct Calendar {
  int day = 1, month = 1, year = 1;

  void next() {
    const bool leap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
    const int months[] = {31, leap ? 29 : 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    if (++day <= months[month - 1]) return;
    day = 1;
    if (++month <= 12) return;
    month = 1;
    ++year;
  }

  std::string text(const char *format, int a, int b, int c) const {
    char text[40];
    std::snprintf(text, sizeof text, format, a, b, c);
    return text;
  }
};

TEST(Characters, EveryDayHasItsPlace) {
  const Layout layout = one_field("type = 'DATE'\nstored = 'AAAAMMDD'");
  const Field &field = layout.types[0].fields[0];
  Calendar calendar;
  double place = 0;
  for (; calendar.year < 10000; calendar.next(), ++place) {
    const std::string bytes =
        calendar.text("%04d%02d%02d", calendar.year, calendar.month, calendar.day);
    const auto *stored = reinterpret_cast<const unsigned char *>(bytes.data());
    ASSERT_EQ(place, field.type->measure(stored, field.params)) << bytes;
    if (calendar.day != 1 && calendar.day < 28) continue;
    const std::string text =
        calendar.text("%02d/%02d/%04d", calendar.day, calendar.month, calendar.year);
    ASSERT_EQ(text, field_text(field, stored));
    std::string again(8, '\0');
    ASSERT_EQ(nullptr, take(field, text, reinterpret_cast<unsigned char *>(again.data())));
    ASSERT_EQ(bytes, again);
  }
  EXPECT_EQ(3652059, place);
}

TEST(Characters, OnlyDaysOfTheCalendarAreDates) {
  const Layout layout = one_field("type = 'DATE'\nstored = 'DDMMAAAA'\nempty = ' '");
  const Field &field = layout.types[0].fields[0];
  for (const int year : {0, 1, 4, 1600, 1900, 2000, 2023, 2024, 2100, 9999}) {
    for (int month = 0; month < 100; ++month) {
      for (int day = 0; day < 100; ++day) {
        const Calendar date = {day, month, year};
        Calendar before = {day - 1, month, year};
        bool exists = year > 0 && month >= 1 && month <= 12 && day >= 1 && day <= 31;
        if (exists && day > 1) {
          before.next();
          exists = before.month == month;
        }
        const std::string bytes = date.text("%02d%02d%04d", day, month, year);
        const auto *stored = reinterpret_cast<const unsigned char *>(bytes.data());
        ASSERT_EQ(exists, field.type->fault(stored, field.params) == nullptr) << bytes;
        std::string again(8, '\0');
        const char *lost = take(field, date.text("%02d/%02d/%04d", day, month, year),
                                reinterpret_cast<unsigned char *>(again.data()));
        ASSERT_EQ(exists, lost == nullptr) << bytes;
        ASSERT_EQ(exists ? bytes : "        ", again);
      }
    }
  }
}

TEST(Characters, YearsOfTwoDigitsGoByThePivot) {
  for (int pivot = 0; pivot <= 100; ++pivot) {
    const Layout layout = one_field("type = 'DATE'\nstored = 'DD.MM.AA'\nempty = ' '\npivot = " +
                                    std::to_string(pivot));
    Stored stored(layout.types[0].fields[0]);
    for (int year = 1850; year < 2150; ++year) {
      char text[16];
      std::snprintf(text, sizeof text, "28/02/%04d", year);
      char expected[16];
      std::snprintf(expected, sizeof expected, "28.02.%02d", year % 100);
      std::string bytes;
      const char *lost = stored.take(text, bytes);
      const bool fits = year >= 1900 + pivot && year < 2000 + pivot;
      ASSERT_EQ(fits, lost == nullptr) << text << " " << pivot;
      ASSERT_EQ(fits ? expected : "        ", bytes);
      if (fits) {
        ASSERT_EQ(text, stored.text(bytes));
      }
    }
  }
}

TEST(Characters, EveryMinuteIsATime) {
  const Layout layout = one_field("type = 'TIME'\nstored = 'HHMM'\nseparator = 'h'");
  Stored stored(layout.types[0].fields[0]);
  for (int hour = 0; hour < 100; ++hour) {
    for (int minute = 0; minute < 100; ++minute) {
      const Calendar parts;
      const std::string bytes = parts.text("%02d%02d", hour, minute, 0);
      const bool exists = hour < 24 && minute < 60;
      ASSERT_EQ(exists, stored.fault(bytes) == nullptr) << bytes;
      ASSERT_EQ(parts.text("%02dh%02d", hour, minute, 0), stored.text(bytes));
      std::string again;
      ASSERT_EQ(exists, stored.take(parts.text("%dh%02d", hour, minute, 0), again) == nullptr);
      ASSERT_EQ(exists ? bytes : "    ", again);
    }
  }
}

struct Known {
  const char *keys, *bytes, *text, *fault;
};

TEST(Characters, WhatStandsThereIsSaid) {
  const Known known[] = {
      {"type = 'TEXT'\nbytes = 5", "AB C ", "AB C", nullptr},
      {"type = 'TEXT'\nbytes = 5", " AB  ", " AB", nullptr},
      {"type = 'TEXT'\nbytes = 5", "     ", "", nullptr},
      {"type = 'TEXT'\nbytes = 2", "\xE7\xE3", "\xC3\xA7\xC3\xA3", nullptr},
      {"type = 'TEXT'\nbytes = 2\nencoding = 'UTF-8'", "\xE7 ", "\xEF\xBF\xBD", "no character"},
      {"type = 'TEXT'\nbytes = 3\nencoding = 'CP850'", "\x87  ", "\xC3\xA7", nullptr},
      {"type = 'TEXT'\nbytes = 5\npad = '0'", "00A1 ", "00A1 ", nullptr},
      {"type = 'TEXT'\nbytes = 5\npad = '0'", "     ", "", nullptr},
      {"type = 'TEXT'\nbytes = 5\nempty = ['0', ' ']", "00000", "", nullptr},
      {"type = 'TEXT'\nbytes = 5\nempty = ['0', ' ']", "     ", "", "does not come back"},
      {"type = 'TEXT'\nbytes = 3\nempty = ['N/A', ' ']", "N/A", "", nullptr},
      {"type = 'DIGITS'\ndigits = 4", "0012", "0012", nullptr},
      {"type = 'DIGITS'\ndigits = 4", "    ", "    ", "no digit"},
      {"type = 'DIGITS'\ndigits = 4\nempty = ' '", "    ", "", nullptr},
      {"type = 'DIGITS'\ndigits = 4", "00,2", "00,2", "no digit"},
      {"type = 'NUM'\ndigits = 3\nsign = 'leading'", " 007", "7", "does not come back"},
      {"type = 'NUM'\ndigits = 3\nsign = 'leading'", "-000", "0", "does not come back"},
      {"type = 'NUM'\ndigits = 3\nsign = 'leading'", "*007", "*007", "a sign"},
      {"type = 'NUM'\ndigits = 3\nsign = 'overpunch'", "007", "7", "does not come back"},
      {"type = 'NUM'\ndigits = 3\nsign = 'overpunch'", "00}", "0", "does not come back"},
      {"type = 'NUM'\ndigits = 3\npad = ' '", "007", "7", "does not come back"},
      {"type = 'NUM'\ndigits = 3\npad = ' '", "   ", "   ", "no digit"},
      {"type = 'NUM'\ndigits = 3\npad = ' '\nempty = ' '", "   ", "", nullptr},
      {"type = 'NUM'\ndigits = 3", "  7", "  7", "no digit"},
      {"type = 'NUM'\ndigits = 3\ndecimals = 2\nempty = ['9', ' ']", "999", "", nullptr},
      {"type = 'NUM'\ndigits = 3\ndecimals = 2\nempty = ['9', ' ']", "   ", "",
       "does not come back"},
      {"type = 'DATE'\nstored = 'DDMMAA'", "010180", "01/01/1980", nullptr},
      {"type = 'DATE'\nstored = 'DDMMAA'", "311279", "31/12/2079", nullptr},
      {"type = 'DATE'\nstored = 'DDMMAA'", "000000", "", nullptr},
      {"type = 'DATE'\nstored = 'DDMMAA'", "      ", "      ", "no date of the form"},
      {"type = 'DATE'\nstored = 'DD/MM/AA'", "00/00/00", "", nullptr},
      {"type = 'DATE'\nstored = 'DD/MM/AA'", "01-01-80", "01-01-80", "no date of the form"},
      {"type = 'DATE'\nstored = 'AAAAMMDD'", "20240230", "30/02/2024", "does not exist"},
      {"type = 'DATE'\nstored = 'AAAAMMDD'\nformat = 'AA-MM-DD'", "20240229", "24-02-29", nullptr},
      {"type = 'DATE'\nstored = 'AAAAMMDD'\nformat = 'AA-MM-DD'", "19240229", "24-02-29",
       "does not come back"},
      {"type = 'DATE'\nstored = 'AAAAMMDD'\nempty = ['99991231', '0']", "99991231", "", nullptr},
      {"type = 'TIME'\nstored = 'HHMMSS'", "000000", "00:00:00", nullptr},
      {"type = 'TIME'\nstored = 'HHMMSS'", "      ", "", nullptr},
      {"type = 'TIME'\nstored = 'HHMMSS'", "240000", "24:00:00", "does not exist"},
      {"type = 'NUM'\ndigits = 11\ncheck = 'CPF'", "12345678909", "12345678909", nullptr},
      {"type = 'NUM'\ndigits = 11\ncheck = 'CPF'", "12345678908", "12345678908", "CPF"},
      {"type = 'TEXT'\nbytes = 14\ncheck = 'CPF'", "123.456.789-09", "123.456.789-09", nullptr},
  };
  for (const Known &each : known) {
    SCOPED_TRACE(std::string(each.keys) + " " + each.bytes);
    const Layout layout = one_field(each.keys);
    const Field &field = layout.types[0].fields[0];
    Stored stored(field);
    EXPECT_EQ(each.text, stored.text(each.bytes));
    const char *fault = field_fault(field, stored.put(each.bytes));
    EXPECT_EQ(each.fault == nullptr, fault == nullptr) << fault;
    if (fault != nullptr && each.fault != nullptr) {
      EXPECT_NE(nullptr, strstr(fault, each.fault)) << fault;
    }
  }
}

TEST(Characters, ANulIsNoCharacter) {
  const Layout layout = one_field("type = 'TEXT'\nbytes = 3");
  Stored stored(layout.types[0].fields[0]);
  EXPECT_EQ(
      "A\xEF\xBF\xBD"
      "B",
      stored.text(std::string("A\0B", 3)));
  EXPECT_NE(nullptr, stored.fault(std::string("A\0B", 3)));
  std::string bytes;
  EXPECT_NE(nullptr, stored.take(std::string("A\0B", 3), bytes));
  EXPECT_EQ("A?B", bytes);
}

}  // namespace
}  // namespace campotipo::records::test
