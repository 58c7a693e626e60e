#include <gtest/gtest.h>
#include <time.h>

#include <cstdlib>

#include "tests/calendar/date_field.hpp"

namespace {

using namespace campotipo::test;
namespace reference = campotipo::reference;
using reference::Ymd;

constexpr std::int32_t kEnds[] = {INT32_MIN, INT32_MIN + 1, INT32_MAX, INT32_MAX - 1};

std::int32_t any_int32(Random &random) {
  const auto number = static_cast<std::int32_t>(random.word_of_any_size());
  return random.between(0, 1) == 1 ? number : -number;
}

// Walks day by day to the end of what a packed year holds, and counts along.
TEST(DateArithmetic, EveryDayOfThePackedYears) {
  const InForce in_force(DATAC_FORMATO_COMPACTO);
  DateField field, back;
  std::int32_t from_zero = 0, from_1980 = 0, weekday = 2;
  for (Ymd date{1, 1, 0}; date.year <= 4095; ++date.year) {
    for (date.month = 1; date.month <= 12; ++date.month) {
      const std::int32_t last = reference::days_in_month(date.month, date.year);
      for (date.day = 1; date.day <= last; ++date.day) {
        ++from_zero;
        if (date.year >= 1980) weekday = ++from_1980 == 1 ? 3 : (weekday + 1) % 7;
        const std::uint32_t before = field.number();
        field(reference::build(1, date));
        bool agree = DATAC_zuliano_desde(field(), 0) == from_zero &&
                     DATAC_zuliano(field()) == from_1980 && DATAC_dia_da_semana(field()) == weekday;
        DATAC_de_zuliano_desde(back(0), from_zero, 0);
        agree = agree && back.number() == field.number();
        if (from_1980 > 0) {
          DATAC_de_zuliano(back(0), from_1980);
          agree = agree && back.number() == field.number();
        }
        if (from_zero > 1) {
          DATAC_avanca_dias(back(before), 1);
          agree = agree && back.number() == field.number();
          DATAC_avanca_dias(back(), -1);
          agree = agree && back.number() == before;
        }
        ASSERT_TRUE(agree) << date.day << '/' << date.month << '/' << date.year;
      }
    }
  }
}

// Up to 28/02/2100 the calendar is the Gregorian one, which the C library knows.
TEST(DateArithmetic, EveryDayThatTheGregorianCalendarShares) {
  DateField field;
  for (std::int32_t format : {0, 1}) {
    const InForce in_force(format);
    for (std::int32_t count = 1; count <= (format == 1 ? 43889 : 36525); ++count) {
      const time_t moment = (count + 3651) * INT64_C(86400);
      tm gregorian;
      gmtime_r(&moment, &gregorian);
      DATAC_de_zuliano(field(0), count);
      ASSERT_EQ(field.number(), reference::build(format, {gregorian.tm_mday, gregorian.tm_mon + 1,
                                                          gregorian.tm_year + 1900}));
      ASSERT_EQ(DATAC_valida(field()), 1);
      ASSERT_EQ(DATAC_zuliano(field()), count);
      ASSERT_EQ(DATAC_zuliano_desde(field(), 1980), count);
      ASSERT_EQ(DATAC_dia_da_semana(field()), (gregorian.tm_wday + 1) % 7);
    }
  }
}

TEST(DateArithmetic, CountsFollowTheirStepsForEveryBase) {
  DateField field;
  Random random(54);
  for (int round = 0; round < 20000; ++round) {
    const std::int32_t format = random.between(0, 2);
    const InForce in_force(format);
    const std::uint32_t n = random_pattern(random);
    const Ymd date = reference::read(n);
    const std::int32_t base =
        round % 8 == 0 ? kEnds[round / 8 % 4] : date.year - random.between(-3, 300);
    if (base > INT32_MIN + 1) {
      ASSERT_EQ(DATAC_zuliano_desde(field(n), base), reference::count_since(date, base))
          << std::hex << n << std::dec << " from " << base;
    }
    std::int32_t count = random.between(-800, 40000);
    if (round % 16 == 0) count = any_int32(random);
    if (round % 64 == 0) count = kEnds[round / 64 % 4];
    DATAC_de_zuliano_desde(field(0x5A5A5A), count, base);
    const Ymd expected = count < 1 ? Ymd{count, 1, base} : reference::date_of_count(count, base);
    ASSERT_EQ(field.number(), reference::build(format, expected)) << count << " from " << base;
  }
}

TEST(DateArithmetic, StepsByDaysAndMonths) {
  DateField field;
  Random random(55);
  for (int round = 0; round < 20000; ++round) {
    const std::int32_t format = random.between(0, 2);
    const InForce in_force(format);
    const std::uint32_t n = round % 8 == 0 ? random_pattern(random) : random_date(random);
    const Ymd date = reference::read(n);
    std::int32_t step = round % 4 == 0 ? any_int32(random) : random.between(-800, 800);
    if (round % 32 == 0) step = kEnds[round / 32 % 4];
    // Around year 0, where the remainder of a year changes its sign.
    if (round % 16 == 1) step = -random.between(1800 * 365, 2200 * 365);
    if (round % 16 == 2) step = -random.between(1800 * 12, 2200 * 12);
    const auto expected = [&](const Ymd &result) {
      return reference::valid(n) ? reference::build(format, result) : n;
    };
    const Ymd exists = reference::valid(n) ? date : Ymd{1, 1, 2000};
    DATAC_avanca_dias(field(n), step);
    ASSERT_EQ(field.number(), expected(reference::step_days(exists, step)))
        << std::hex << n << std::dec << " by " << step;
    DATAC_avanca_meses(field(n), step);
    ASSERT_EQ(field.number(), expected(reference::step_months(exists, step, false)))
        << std::hex << n << std::dec << " by " << step;
    DATAC_avanca_meses_dentro(field(n), step);
    ASSERT_EQ(field.number(), expected(reference::step_months(exists, step, true)))
        << std::hex << n << std::dec << " by " << step;
  }
}

TEST(DateArithmetic, SearchesEndForEveryInput) {
  DateField reference_field, out;
  Random random(56);
  for (int round = 0; round < 40000; ++round) {
    const std::int32_t format = random.between(0, 2);
    const InForce in_force(format);
    const std::uint32_t from = random_pattern(random);
    const Ymd same = reference::read(from);
    std::int32_t ddmm = random.between(1, 31) * 100 + random.between(1, 12);
    if (round % 3 == 0) ddmm = same.day * 100 + same.month;
    if (round % 5 == 0) ddmm = 2902;
    if (round % 16 == 0) ddmm = any_int32(random);
    if (round % 64 == 0) ddmm = kEnds[round / 64 % 4];
    DATAC_proximo_ddmm(out(0x5A5A5A), reference_field(from), ddmm);
    ASSERT_EQ(out.number(), reference::search(format, from, ddmm, 1))
        << format << ": " << std::hex << from << std::dec << " to " << ddmm;
    DATAC_ultimo_ddmm(out(0x5A5A5A), reference_field(from), ddmm);
    ASSERT_EQ(out.number(), reference::search(format, from, ddmm, -1))
        << format << ": " << std::hex << from << std::dec << " to " << ddmm;
  }
}

struct Found {
  std::int32_t format, ddmm;
  Ymd reference, next, last;
};

TEST(DateArithmetic, FindsTheDayOfTheYear) {
  constexpr Ymd kNone = {0, 0, 0};
  constexpr Found kFound[] = {
      {1, 101, {15, 6, 2024}, {1, 1, 2025}, {1, 1, 2024}},
      {0, 2512, {15, 6, 2024}, {25, 12, 2024}, {25, 12, 2023}},
      {0, 1506, {15, 6, 2024}, {15, 6, 2024}, {15, 6, 2024}},
      {1, 2902, {15, 3, 2023}, {29, 2, 2024}, kNone},
      {1, 2902, {15, 1, 2023}, {29, 2, 2024}, kNone},
      {0, 2902, {15, 1, 2023}, {29, 2, 2023}, {29, 2, 2022}},
      {0, 2902, {15, 3, 2023}, {29, 2, 2024}, {29, 2, 2023}},
      {1, 3102, {15, 3, 2023}, kNone, kNone},
      {1, 101, {2, 1, 4095}, kNone, {1, 1, 4095}},
      {0, 101, {2, 1, 2079}, kNone, {1, 1, 2079}},
      {0, 3112, {1, 1, 1980}, {31, 12, 1980}, kNone},
  };
  unsigned char from[DATAC_BYTES];
  DateField out;
  for (const auto &[format, ddmm, day, next, last] : kFound) {
    const InForce in_force(format);
    DATAC_fmt_monta(from, format, day.day, day.month, day.year);
    DATAC_proximo_ddmm(out(), from, ddmm);
    EXPECT_EQ(out.number(), reference::build(format, next)) << ddmm << " in " << format;
    DATAC_ultimo_ddmm(out(), from, ddmm);
    EXPECT_EQ(out.number(), reference::build(format, last)) << ddmm << " in " << format;
  }
}

struct Stepped {
  void (*step)(unsigned char *, std::int32_t);
  std::int32_t by;
  Ymd from, to;
};

TEST(DateArithmetic, StepsOverTheEndsOfMonthsAndYears) {
  constexpr Stepped kStepped[] = {
      {DATAC_avanca_dias, 1, {31, 12, 2023}, {1, 1, 2024}},
      {DATAC_avanca_dias, 1, {28, 2, 2024}, {29, 2, 2024}},
      {DATAC_avanca_dias, -1, {1, 3, 2023}, {28, 2, 2023}},
      {DATAC_avanca_dias, -1, {1, 1, 2024}, {31, 12, 2023}},
      {DATAC_avanca_dias, 0, {29, 2, 2024}, {29, 2, 2024}},
      {DATAC_avanca_meses, 1, {31, 1, 2023}, {1, 3, 2023}},
      {DATAC_avanca_meses, 2, {31, 12, 2023}, {1, 3, 2024}},
      {DATAC_avanca_meses, -1, {31, 3, 2023}, {1, 3, 2023}},
      {DATAC_avanca_meses, -1, {15, 1, 2023}, {15, 12, 2022}},
      {DATAC_avanca_meses, 13, {15, 1, 2023}, {15, 2, 2024}},
      {DATAC_avanca_meses, -15, {15, 3, 2023}, {15, 12, 2021}},
      {DATAC_avanca_meses_dentro, 1, {31, 1, 2023}, {28, 2, 2023}},
      {DATAC_avanca_meses_dentro, 2, {31, 12, 2023}, {29, 2, 2024}},
      {DATAC_avanca_meses_dentro, -1, {31, 3, 2023}, {28, 2, 2023}},
  };
  DateField field;
  for (const auto &[step, by, from, to] : kStepped) {
    for (std::int32_t before : {0, 1}) {
      for (std::int32_t after : {0, 1}) {
        const InForce in_force(after);
        step(field(reference::build(before, from)), by);
        EXPECT_EQ(field.number(), reference::build(after, to))
            << from.day << '/' << from.month << '/' << from.year << " by " << by;
      }
    }
  }
}

TEST(DateArithmetic, CountsOfABaseThatIsNoMultipleOfFour) {
  const InForce in_force(DATAC_FORMATO_COMPACTO);
  DateField field;
  EXPECT_EQ(DATAC_zuliano_desde(field(reference::build(1, {1, 3, 1981})), 1981), 61);
  DATAC_de_zuliano_desde(field(), 61, 1981);
  EXPECT_EQ(field.number(), reference::build(1, {2, 3, 1981}));
  EXPECT_EQ(DATAC_zuliano(field(reference::build(1, {29, 2, 2100}))), 43890);
  EXPECT_EQ(DATAC_zuliano_desde(field(reference::build(1, {29, 2, 2000})), 1980), 7365);
}

class LocalTimeTest : public testing::TestWithParam<const char *> {
 protected:
  LocalTimeTest() { set_zone(GetParam()); }
  ~LocalTimeTest() override { set_zone("UTC"); }
  static void set_zone(const char *name) {
    setenv("TZ", name, 1);
    tzset();
  }
};

TEST_P(LocalTimeTest, NoonOfADayIsThatDay) {
  DateField field, back;
  const time_t standard_noon = std::string(GetParam()) == "UTC" ? 12 : 15;
  for (std::int32_t format : {0, 1}) {
    const InForce in_force(format);
    for (std::int32_t count = 1; count <= 36525; ++count) {
      DATAC_de_zuliano(field(), count);
      const time_t moment = DATAC_para_time_t(field());
      ASSERT_EQ(moment, ((count + 3651) * INT64_C(24) + standard_noon) * 3600) << count;
      DATAC_de_time_t(back(), moment);
      ASSERT_EQ(back.number(), field.number()) << count;
    }
  }
}

TEST_P(LocalTimeTest, MomentsFallOnTheirLocalDay) {
  DateField field;
  Random random(57);
  for (int round = 0; round < 20000; ++round) {
    const std::int32_t format = random.between(0, 1);
    const InForce in_force(format);
    const time_t moment = random.between<time_t>(-2208988800, 4102444800);
    tm local;
    localtime_r(&moment, &local);
    DATAC_de_time_t(field(), moment);
    ASSERT_EQ(field.number(),
              reference::build(format, {local.tm_mday, local.tm_mon + 1, local.tm_year + 1900}));
  }
  for (const time_t never : {time_t{1} << 62, time_t{INT64_MAX}, time_t{INT64_MIN}}) {
    for (std::int32_t format : {0, 1}) {
      const InForce in_force(format);
      DATAC_de_time_t(field(), never);
      EXPECT_EQ(field.number(), format == 1 ? 0x800000u : 0u);
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Zones, LocalTimeTest, testing::Values("UTC", "America/Sao_Paulo"),
                         [](const auto &zone) { return zone.index == 0 ? "Utc" : "SummerTime"; });

}  // namespace
