#include <gtest/gtest.h>

#include "tests/calendar/date_field.hpp"

namespace {

using namespace campotipo::test;
namespace reference = campotipo::reference;
using reference::Ymd;

bool accessors_agree(const unsigned char *field, std::uint32_t n) {
  const Ymd date = reference::read(n);
  const std::int32_t ddmmaa = date.day * 10000 + date.month * 100 + date.year % 100;
  return DATAC_dia(field) == date.day && DATAC_mes(field) == date.month &&
         DATAC_ano1(field) == date.year && DATAC_ano(field) == date.year % 100 &&
         DATAC_nao_zero(field) == (n != 0 && n != 0x800000) &&
         DATAC_valida(field) == reference::valid(n) && DATAC_igual(field, field) == 1 &&
         DATAC_compara(field, field) == 0 &&
         DATAC_ulong(field) == (reference::packed(n) ? static_cast<std::uint32_t>(ddmmaa) : n);
}

bool conversions_agree(DateField &field, std::uint32_t n) {
  for (std::int32_t format : {0, 1, 2, -1}) {
    const bool other = format == !reference::packed(n);
    if (DATAC_converteu_formato(field(n), format) != other) return false;
    if (field.number() != (other ? reference::build(format, reference::read(n)) : n)) return false;
  }
  return true;
}

TEST(Date, ReadsEveryBitPattern) {
  DateField field;
  for (std::uint32_t n = 0; n < kPatterns; n += kPatternStep)
    ASSERT_TRUE(accessors_agree(field(n), n)) << std::hex << n;
}

TEST(Date, ConvertsEveryBitPattern) {
  DateField field;
  for (std::uint32_t n = 0; n < kPatterns; n += kPatternStep)
    ASSERT_TRUE(conversions_agree(field, n)) << std::hex << n;
}

void expect_built(DateField &field, const Ymd &date) {
  for (std::int32_t format : {0, 1, 2, -1}) {
    const std::uint32_t expected = reference::build(format, date);
    const InForce in_force(format);
    EXPECT_EQ(DATAC_monta(field(0x5A5A5A), date.day, date.month, date.year), field());
    ASSERT_EQ(field.number(), expected) << date.day << '/' << date.month << '/' << date.year;
    EXPECT_EQ(DATAC_fmt_monta(field(0x5A5A5A), format, date.day, date.month, date.year), field());
    ASSERT_EQ(field.number(), expected) << date.day << '/' << date.month << '/' << date.year;
  }
}

TEST(Date, BuildsWhatExistsAndNothingElse) {
  DateField field(true);
  for (std::int32_t year :
       {0, 1, 4, 11, 22, 99, 1900, 1999, 2000, 2023, 2024, 2100, 4095, 5000, -1})
    for (std::int32_t month = -2; month <= 17; ++month)
      for (std::int32_t day = -2; day <= 33; ++day) expect_built(field, {day, month, year});
  for (std::int32_t same = -130; same <= 1300; ++same) expect_built(field, {same, same, same});
  Random random(51);
  for (int round = 0; round < 5000; ++round) {
    const auto any = [&random] { return static_cast<std::int32_t>(random.word_of_any_size()); };
    expect_built(field, {any(), any(), any()});
  }
}

TEST(Date, MonthsHaveTheirDaysAndOthersNone) {
  constexpr std::int32_t kInt32Ends[] = {INT32_MIN, INT32_MAX};
  for (std::int32_t year : {-4, -3, -1, 0, 1, 1900, 2023, 2024, 2100, INT32_MAX, INT32_MIN}) {
    for (std::int32_t month = -70; month <= 70; ++month)
      EXPECT_EQ(DATAC_dias_no_mes(month, year), reference::days_in_month(month, year));
    for (std::int32_t month : kInt32Ends) EXPECT_EQ(DATAC_dias_no_mes(month, year), 0);
  }
}

TEST(Date, OrdersAllKindsByYearMonthAndDay) {
  DateField a, b(true);
  Random random(52);
  for (int round = 0; round < 300000; ++round) {
    const std::uint32_t left = random_pattern(random);
    std::uint32_t right = random_pattern(random);
    // Near dates and dates that are the same in the other encoding.
    if (round % 4 == 0) right = left ^ 1u << random.between(0, 23);
    if (round % 4 == 1) right = reference::build(!reference::packed(left), reference::read(left));
    const int expected = reference::compare(left, right);
    ASSERT_EQ(DATAC_compara(a(left), b(right)), expected) << std::hex << left << ' ' << right;
    ASSERT_EQ(DATAC_igual(a(left), b(right)), expected == 0);
  }
}

struct Stored {
  std::int32_t format, day, month, year;
  unsigned char bytes[DATAC_BYTES];
};

TEST(Date, KeepsItsStoredForm) {
  constexpr Stored kStored[] = {
      {0, 31, 12, 2024, {0xB8, 0xBF, 0x04}}, {1, 31, 12, 2024, {0x9F, 0xD1, 0x8F}},
      {0, 1, 1, 1980, {0xC4, 0x27, 0x00}},   {1, 1, 1, 1980, {0x21, 0x78, 0x8F}},
      {0, 22, 22, 22, {0x0E, 0x64, 0x03}},   {1, 22, 22, 22, {0x02, 0x00, 0xA0}},
      {1, 99, 99, 99, {0x09, 0x00, 0xA0}},   {1, 11, 11, 11, {0x6B, 0x17, 0x80}},
      {0, 0, 0, 0, {0x00, 0x00, 0x00}},      {1, 0, 0, 0, {0x00, 0x00, 0x80}},
      {1, 22, 22, 2222, {0x00, 0x00, 0x80}}, {1, 31, 2, 2024, {0x00, 0x00, 0x80}},
      {1, 1, 1, 5000, {0x21, 0x10, 0x87}},
  };
  for (const Stored &stored : kStored) {
    unsigned char field[DATAC_BYTES];
    DATAC_fmt_monta(field, stored.format, stored.day, stored.month, stored.year);
    EXPECT_EQ(std::memcmp(field, stored.bytes, DATAC_BYTES), 0)
        << stored.format << ": " << stored.day << '/' << stored.month << '/' << stored.year;
  }
}

TEST(Date, IsEqualToItsDigitsAsA64BitNumber) {
  DateField field;
  field(0x8FD19F);
  EXPECT_EQ(DATAC_ddmmaa_igual(field(), 311224), 1);
  for (std::int64_t other : {INT64_C(0), INT64_C(311225), INT64_C(311224) + (INT64_C(1) << 32),
                             INT64_C(311224) - (INT64_C(1) << 32), INT64_C(-311224)})
    EXPECT_EQ(DATAC_ddmmaa_igual(field(), other), 0) << other;
}

TEST(Date, ExampleOfTheManual) {
  unsigned char due[DATAC_BYTES];
  char text[DATAC_EDITA4_TEXT_SIZE];
  DATAC_fmt_monta(due, DATAC_FORMATO_COMPACTO, 31, 1, 2024);
  EXPECT_EQ(std::memcmp(due, "\x3F\xD0\x8F", DATAC_BYTES), 0);
  const InForce in_force(DATAC_FORMATO_COMPACTO);
  DATAC_avanca_meses_dentro(due, 1);
  EXPECT_STREQ(DATAC_edita4(text, due), "29/02/2024");
}

}  // namespace
