// Dates and times over all checks of agreement.hpp, and against the C library where the calendar is
// its own.
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <time.h>

#include <cstdlib>

#include "base/bytes.hpp"
#include "tests/calendar/agreement.hpp"
#include "tests/util/random.hpp"

// Stands in front of the number service, as a site's own might that gives no result of use.
extern "C" char *_8btoa(const unsigned char *src, char *text, int digits) noexcept {
  static const auto service = reinterpret_cast<decltype(&_8btoa)>(dlsym(RTLD_NEXT, "_8btoa"));
  service(src, text, digits);
  return nullptr;
}

namespace {

using namespace campotipo::test;
namespace reference = campotipo::reference;

constexpr std::uint32_t kPatterns = 1u << 24;
// Every n-th bit pattern of a field is looked at: all of them, but in slow builds.
constexpr std::uint32_t kStep = campotipo::bytes::kWideReads ? 1 : 61;
constexpr std::int32_t kEnds[] = {INT32_MIN, INT32_MIN + 1, INT32_MAX, INT32_MAX - 1};

class CalendarTest : public testing::Test {
 protected:
  std::int32_t any_int32() {
    const auto number = static_cast<std::int32_t>(random_.word_of_any_size());
    const int kind = random_.between(0, 15);
    return kind == 0 ? kEnds[random_.between(0, 3)] : kind % 2 == 0 ? number : -number;
  }

  // A date that exists, in either encoding.
  std::uint32_t any_date() {
    const std::int32_t month = random_.between(1, 12);
    const bool packed = random_.between(0, 1) == 1;
    const std::int32_t year = packed ? random_.between(0, 4095) : random_.between(1980, 2079);
    const std::int32_t day = random_.between(1, reference::days_in_month(month, year));
    return reference::build(packed, {day, month, year});
  }

  // Any bit pattern, with the unusual kinds as common as the others.
  std::uint32_t any_pattern() {
    const std::uint32_t kinds[] = {
        random_.between(0u, kPatterns - 1), random_.between(0, 1) == 1 ? 0x800000u : 0,
        0xA00000 | random_.between(0u, 0x1FFFFFu), random_.between(0u, 999999u)};
    const int kind = random_.between(0, 5);
    return kind < 4 ? kinds[kind] : any_date();
  }

  Random random_{51};
  DateMemory in_;
};

TEST_F(CalendarTest, ReadsAndConvertsEveryBitPattern) {
  for (std::uint32_t n = 0; n < kPatterns; n += kStep)
    ASSERT_TRUE(reads(in_, n) && converts(in_, n)) << std::hex << n;
}

TEST_F(CalendarTest, BuildsWhatExistsAndNothingElse) {
  const auto expect = [this](const Ymd &date) {
    for (const std::int32_t format : {0, 1, 2, -1})
      ASSERT_TRUE(builds(in_, format, date)) << date.day << '/' << date.month << '/' << date.year;
  };
  for (const int year : {0, 1, 4, 11, 22, 99, 1900, 1999, 2000, 2023, 2024, 2100, 4095, 5000, -1})
    for (int month = -2; month <= 17; ++month)
      for (int day = -2; day <= 33; ++day) expect({day, month, year});
  for (int same = -130; same <= 1300; ++same) expect({same, same, same});
  for (int round = 0; round < 5000; ++round) expect({any_int32(), any_int32(), any_int32()});
}

TEST_F(CalendarTest, MonthsHaveTheirDaysAndOthersNone) {
  for (const std::int32_t year : {-4, -3, -1, 0, 1, 1900, 2023, 2024, 2100, INT32_MAX, INT32_MIN}) {
    for (std::int32_t month = -70; month <= 70; ++month)
      EXPECT_EQ(DATAC_dias_no_mes(month, year), reference::days_in_month(month, year));
    for (const std::int32_t month : kEnds) EXPECT_EQ(DATAC_dias_no_mes(month, year), 0);
  }
}

TEST_F(CalendarTest, OrdersAllKindsByYearMonthAndDay) {
  for (int round = 0; round < 100000; ++round) {
    const std::uint32_t left = any_pattern();
    std::uint32_t right = any_pattern();
    // Near dates and dates that are the same in the other encoding.
    if (round % 4 == 0) right = left ^ 1u << random_.between(0, 23);
    if (round % 4 == 1) right = reference::build(!reference::packed(left), reference::read(left));
    ASSERT_TRUE(orders(in_, left, right)) << std::hex << left << ' ' << right;
  }
  const unsigned char *date = in_.a(0x8FD19F);
  for (const std::int64_t far : {INT64_C(1) << 32, -(INT64_C(1) << 32), INT64_C(1)})
    EXPECT_EQ(DATAC_ddmmaa_igual(date, 311224 + far), 0);
}

TEST_F(CalendarTest, ShowsEveryKindOfBitPattern) {
  constexpr int kSeparators[] = {'-', '/', ' ', 0, 0xE1, 256 + '-', -1};
  // The step is prime to everything in the make-up of a pattern.
  for (std::uint32_t n = 0; n < kPatterns; n += 61 * kStep)
    ASSERT_TRUE(shows(in_, n, kSeparators[n % 7], static_cast<int>(n % 5) - 2)) << std::hex << n;
  for (const std::uint32_t n : {0u, 0x800000u, 524u, 999999u, 0x7FFFFFu, 0xA00002u, 0xFFFFFFu})
    EXPECT_TRUE(shows(in_, n, '-', 1)) << std::hex << n;
}

TEST_F(CalendarTest, ReadsTextsAsAtolDoes) {
  const auto expect = [this](const std::string &text) {
    for (const std::int32_t format : {0, 1, 2})
      for (const std::size_t behind : {0, 1, 5, 9})
        ASSERT_TRUE(parses(in_, format, text, behind)) << '"' << text << "\" in " << format;
  };
  for (const char *text :
       {"",         " ",     "31/12/24", "10124",   "310224", "31122024", "22222222", "22220022",
        "111111",   "x1",    "-311224",  "+311224", "- 1",    "+-1",      "-",        "0x1F",
        "1234567:", "1\xB2", "29022100", "290200",  "290201", "8388608"})
    expect(text);
  for (const char *text :
       {"\t\v\f\r\n 31122024", "00000000311224", "9999999999999999", "99999999999999999999999",
        "-99999999999999999999999", "4294967296", "2147483648", "-2147483648", "12345678.",
        "123456789", "31122024\x80", "1234567\xFF"})
    expect(text);
  for (int round = 0; round < 2000; ++round) {
    std::string text = random_.digits(random_.between<std::size_t>(0, 12));
    if (round % 3 == 0) {
      text.insert(random_.between<std::size_t>(0, text.size()), 1,
                  static_cast<char>(random_.between(1, 255)));
    }
    expect(text);
  }
}

TEST_F(CalendarTest, StepsCountsAndSearchesFromAnyDate) {
  for (int round = 0; round < 20000; ++round) {
    const std::int32_t format = random_.between(0, 2);
    const std::uint32_t n = round % 8 == 0 ? any_pattern() : any_date();
    const std::int32_t year = reference::read(n).year;
    std::int32_t by = round % 4 == 0 ? any_int32() : random_.between(-800, 800);
    // Around year 0, where the remainder of a year changes its sign.
    if (round % 16 == 1) by = -random_.between(1800 * 365, 2200 * 365);
    if (round % 16 == 2) by = -random_.between(1800 * 12, 2200 * 12);
    ASSERT_TRUE(steps(in_, format, n, by)) << std::hex << n << std::dec << " by " << by;
    const std::uint32_t other = any_pattern();
    const std::int32_t base = year - random_.between(-3, 300);
    ASSERT_TRUE(counts(in_, n, base)) << std::hex << n << std::dec << " from " << base;
    ASSERT_TRUE(counts(in_, other, reference::read(other).year - 1)) << std::hex << other;
    const std::int32_t count = round % 8 == 0 ? any_int32() : random_.between(-800, 40000);
    const std::int32_t from = round % 8 == 1 ? any_int32() : base;
    ASSERT_TRUE(is_date_of_count(in_, format, count, from)) << count << " from " << from;
    std::int32_t ddmm = random_.between(1, 31) * 100 + random_.between(1, 12);
    if (round % 3 == 0) ddmm = reference::read(other).day * 100 + reference::read(other).month;
    if (round % 5 == 0) ddmm = 2902;
    if (round % 16 == 0) ddmm = any_int32();
    ASSERT_TRUE(searches(in_, format, other, ddmm)) << std::hex << other << std::dec << ' ' << ddmm;
  }
  EXPECT_EQ(DATAC_zuliano_desde(in_.a(0), INT32_MAX), 0);
}

// Walks day by day to the end of what a packed year holds, and counts along.
TEST_F(CalendarTest, EveryDayOfThePackedYears) {
  const InForce in_force(DATAC_FORMATO_COMPACTO);
  std::int32_t from_zero = 0, from_1980 = 0, weekday = 2;
  std::uint32_t before = 0;
  for (Ymd date{1, 1, 0}; date.year <= 4095; ++date.year) {
    for (date.month = 1; date.month <= 12; ++date.month) {
      const std::int32_t last = reference::days_in_month(date.month, date.year);
      for (date.day = 1; date.day <= last; ++date.day) {
        ++from_zero;
        if (date.year >= 1980) weekday = ++from_1980 == 1 ? 3 : (weekday + 1) % 7;
        const std::uint32_t n = reference::build(1, date);
        const unsigned char *field = in_.a(n);
        const auto is = [&](std::uint32_t expected, std::uint32_t from, auto make) {
          return in_.makes(expected, from, make);
        };
        ASSERT_TRUE(
            DATAC_zuliano_desde(field, 0) == from_zero && DATAC_zuliano(field) == from_1980 &&
            DATAC_dia_da_semana(field) == weekday &&
            is(n, 0, [&](auto *out) { DATAC_de_zuliano_desde(out, from_zero, 0); }) &&
            (from_1980 < 1 || is(n, 0, [&](auto *out) { DATAC_de_zuliano(out, from_1980); })) &&
            (from_zero < 2 || is(n, before, [](auto *out) { DATAC_avanca_dias(out, 1); })) &&
            (from_zero < 2 || is(before, n, [](auto *out) { DATAC_avanca_dias(out, -1); })))
            << date.day << '/' << date.month << '/' << date.year;
        before = n;
      }
    }
  }
}

TEST_F(CalendarTest, TellsEveryTimeOfDay) {
  for (std::uint32_t n = 0; n < 65536; ++n) {
    const std::uint32_t second = n % 251;
    ASSERT_TRUE(tells_time(in_, n | second << 16,
                           n % 3 == 0   ? ':'
                           : n % 3 == 1 ? 0
                                        : 256 + '.',
                           static_cast<int>(n % 5) - 2))
        << n;
    // As many with a valid hour and minute.
    ASSERT_TRUE(tells_time(in_, n % 25 | n / 25 % 61 << 8 | n % 256 << 16, 'h', 0)) << n;
  }
}

// What a field is, byte for byte, for the model and the library could be wrong in the same way.
TEST_F(CalendarTest, KeepsItsStoredForm) {
  constexpr struct {
    std::int32_t format, day, month, year;
    std::uint32_t number;
  } kStored[] = {
      {0, 31, 12, 2024, 0x04BFB8}, {1, 31, 12, 2024, 0x8FD19F}, {0, 1, 1, 1980, 0x0027C4},
      {1, 1, 1, 1980, 0x8F7821},   {0, 22, 22, 22, 0x03640E},   {1, 22, 22, 22, 0xA00002},
      {1, 99, 99, 99, 0xA00009},   {1, 11, 11, 11, 0x80176B},   {0, 0, 0, 0, 0},
      {1, 0, 0, 0, 0x800000},      {1, 22, 22, 2222, 0x800000}, {1, 31, 2, 2024, 0x800000},
      {1, 1, 1, 5000, 0x871021},
  };
  for (const auto &[format, day, month, year, number] : kStored) {
    EXPECT_EQ(reference::build(format, {day, month, year}), number);
    EXPECT_TRUE(builds(in_, format, {day, month, year})) << day << '/' << month << '/' << year;
  }
}

// The answers that users rely on where months differ and days lack, told by hand.
TEST_F(CalendarTest, StepsAndSearchesAsTheManualTells) {
  constexpr Ymd kNone = {0, 0, 0};
  constexpr struct {
    void (*step)(unsigned char *, std::int32_t);
    std::int32_t by;
    Ymd from, to;
  } kSteps[] = {
      {DATAC_avanca_dias, 1, {28, 2, 2024}, {29, 2, 2024}},
      {DATAC_avanca_dias, -1, {1, 1, 2024}, {31, 12, 2023}},
      {DATAC_avanca_meses, 1, {31, 1, 2023}, {1, 3, 2023}},
      {DATAC_avanca_meses, -1, {31, 3, 2023}, {1, 3, 2023}},
      {DATAC_avanca_meses, -15, {15, 3, 2023}, {15, 12, 2021}},
      {DATAC_avanca_meses_dentro, 1, {31, 1, 2023}, {28, 2, 2023}},
      {DATAC_avanca_meses_dentro, 2, {31, 12, 2023}, {29, 2, 2024}},
  };
  constexpr struct {
    std::int32_t format, ddmm;
    Ymd day, next, last;
  } kFound[] = {
      {1, 101, {15, 6, 2024}, {1, 1, 2025}, {1, 1, 2024}},
      {0, 2512, {15, 6, 2024}, {25, 12, 2024}, {25, 12, 2023}},
      {1, 2902, {15, 3, 2023}, {29, 2, 2024}, kNone},
      {0, 2902, {15, 3, 2023}, {29, 2, 2024}, {29, 2, 2023}},
      {1, 3102, {15, 3, 2023}, kNone, kNone},
  };
  for (const std::int32_t format : {0, 1}) {
    const InForce in_force(format);
    for (const auto &[step, by, from, to] : kSteps)
      EXPECT_TRUE(in_.makes(reference::build(format, to), reference::build(1, from),
                            [&](auto *out) { step(out, by); }))
          << from.day << '/' << from.month << '/' << from.year << " by " << by;
  }
  for (const auto &[format, ddmm, day, next, last] : kFound) {
    const std::uint32_t from = reference::build(format, day);
    EXPECT_EQ(reference::search(format, from, ddmm, 1), reference::build(format, next));
    EXPECT_EQ(reference::search(format, from, ddmm, -1), reference::build(format, last));
    EXPECT_TRUE(searches(in_, format, from, ddmm)) << ddmm << " in " << format;
  }
  const InForce in_force(DATAC_FORMATO_COMPACTO);
  EXPECT_EQ(DATAC_zuliano_desde(in_.a(reference::build(1, {1, 3, 1981})), 1981), 61);
  EXPECT_TRUE(in_.makes(reference::build(1, {2, 3, 1981}), 0,
                        [](auto *out) { DATAC_de_zuliano_desde(out, 61, 1981); }));
}

TEST(DateText, WeekdaysAreNamedFromSaturdayOn) {
  const char *const names[] = {"S\341bado",    "Domingo",      "Segunda-feira", "Ter\347a-feira",
                               "Quarta-feira", "Quinta-feira", "Sexta-feira"};
  for (std::size_t i = 0; i < 7; ++i) EXPECT_STREQ(DATAC_txt_semana[i], names[i]);
}

class LocalTimeTest : public testing::TestWithParam<const char *> {
 protected:
  LocalTimeTest() { set_zone(GetParam()); }
  ~LocalTimeTest() override { set_zone("UTC"); }
  static void set_zone(const char *name) {
    setenv("TZ", name, 1);
    tzset();
  }
  DateMemory in_;
};

// Up to 28/02/2100 the calendar is the Gregorian one, which the C library knows.
TEST_P(LocalTimeTest, NoonOfADayIsThatDay) {
  const time_t standard_noon = std::string(GetParam()) == "UTC" ? 12 : 15;
  for (const std::int32_t format : {0, 1}) {
    const InForce in_force(format);
    for (std::int32_t count = 1; count <= (format == 1 ? 43889 : 36525); ++count) {
      const time_t days = count + 3651;
      tm gregorian;
      const time_t midnight = days * 86400;
      gmtime_r(&midnight, &gregorian);
      const std::uint32_t n = reference::build(
          format, {gregorian.tm_mday, gregorian.tm_mon + 1, gregorian.tm_year + 1900});
      ASSERT_TRUE(in_.makes(n, 0, [&](auto *out) { DATAC_de_zuliano(out, count); })) << count;
      ASSERT_EQ(DATAC_dia_da_semana(in_.a(n)), (gregorian.tm_wday + 1) % 7);
      const time_t moment = DATAC_para_time_t(in_.a(n));
      if (count > 36525) continue;  // the C library's own rules of summer time end before
      ASSERT_EQ(moment, (days * 24 + standard_noon) * 3600) << count;
      ASSERT_TRUE(in_.makes(n, 0, [&](auto *out) { DATAC_de_time_t(out, moment); })) << count;
    }
  }
}

TEST_P(LocalTimeTest, MomentsFallOnTheirLocalDay) {
  Random random(57);
  for (int round = 0; round < 20000; ++round) {
    const std::int32_t format = random.between(0, 1);
    const InForce in_force(format);
    const time_t moment = random.between<time_t>(-2208988800, 4102444800);
    tm local;
    localtime_r(&moment, &local);
    const Ymd day = {local.tm_mday, local.tm_mon + 1, local.tm_year + 1900};
    ASSERT_TRUE(in_.makes(reference::build(format, day), 0,
                          [&](auto *out) { DATAC_de_time_t(out, moment); }));
  }
  for (const time_t never : {time_t{1} << 62, time_t{INT64_MAX}, time_t{INT64_MIN}}) {
    for (const std::int32_t format : {0, 1}) {
      const InForce in_force(format);
      EXPECT_TRUE(in_.makes(format == 1 ? 0x800000 : 0, 0x5A5A5A,
                            [&](auto *out) { DATAC_de_time_t(out, never); }));
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Zones, LocalTimeTest, testing::Values("UTC", "America/Sao_Paulo"),
                         [](const auto &zone) { return zone.index == 0 ? "Utc" : "SummerTime"; });

}  // namespace
