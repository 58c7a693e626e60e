#include <campotipo-support/calendar.h>
#include <campotipo-support/money.h>
#include <campotipo-support/text.h>
#include <gtest/gtest.h>

#include <climits>
#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

#include "tests/util/guarded_buffer.hpp"
#include "tests/util/random.hpp"

namespace {

using campotipo::test::GuardedBuffer;
using campotipo::test::Random;

__extension__ using wide = __int128;

// Both money kinds behind one name, so that each case runs on both.
template <class Value>
struct Kind;

template <>
struct Kind<QUANTIA> {
  static constexpr auto from_text = _QUANTIA_atov;
  static constexpr auto to_text = _QUANTIA_vtoa;
  static constexpr auto compare = _QUANTIA_comp;
  static constexpr auto copy = _QUANTIA_copia;
  static constexpr auto sign = _QUANTIA_se_zero;
  static constexpr auto divide = _QUANTIA_div_byte;
  static constexpr auto multiply = _QUANTIA_mul_byte;
  static constexpr auto add = _QUANTIA_som_long;
  static constexpr auto percent_of = _QUANTIA_porc_mul;
  static constexpr auto ratio = _QUANTIA_porc_div;
  static int decimals() { return 2; }
};

template <>
struct Kind<PARCELA> {
  static constexpr auto from_text = PARCELA_atov;
  static constexpr auto to_text = PARCELA_vtoa;
  static constexpr auto compare = PARCELA_comp;
  static constexpr auto copy = PARCELA_copia;
  static constexpr auto sign = PARCELA_se_zero;
  static constexpr auto divide = PARCELA_div_byte;
  static constexpr auto multiply = PARCELA_mul_byte;
  static constexpr auto add = PARCELA_som_long;
  static constexpr auto percent_of = PARCELA_porc_mul;
  static constexpr auto ratio = PARCELA_porc_div;
  static int decimals() { return PARCELA_fixo; }
};

std::int64_t nearest(wide value) {
  return value > INT64_MAX   ? INT64_MAX
         : value < INT64_MIN ? INT64_MIN
                             : static_cast<std::int64_t>(value);
}

template <class Value>
class MoneyTest : public testing::Test {
 protected:
  static Value make(std::int64_t units) {
    Value value;
    Kind<Value>::from_text(&value, "0");
    Kind<Value>::add(&value, &value, units);
    return value;
  }
  // Units read back through the text, the only way out that an application has.
  static std::int64_t units(const Value &value) {
    GuardedBuffer buffer;
    char *text = buffer.text_at_end(PARCELA_TEXT_SIZE(PARCELA_fixo));
    std::string digits = Kind<Value>::to_text(text, &value);
    if (const auto point = digits.find('.'); point != std::string::npos) digits.erase(point, 1);
    return std::strtoll(digits.c_str(), nullptr, 10);
  }
  const std::vector<std::int64_t> samples_ = [] {
    std::vector<std::int64_t> all{0, 1, -1, 99, -100, 1005, INT64_MAX, INT64_MIN, INT64_MAX - 1};
    Random random(5);
    for (int i = 0; i < 40; ++i) {
      const auto value = static_cast<std::int64_t>(random.word_of_any_size());
      all.push_back(i % 2 == 0 ? value : -value);
    }
    return all;
  }();
};

using MoneyKinds = testing::Types<QUANTIA, PARCELA>;
TYPED_TEST_SUITE(MoneyTest, MoneyKinds);

TYPED_TEST(MoneyTest, AgreesWithExactArithmetic) {
  using K = Kind<TypeParam>;
  for (const std::int64_t a : this->samples_) {
    const TypeParam value = this->make(a);
    ASSERT_EQ(this->units(value), a);
    EXPECT_EQ(K::sign(&value), (a > 0) - (a < 0));
    for (int by : {0, 1, 3, 9, 10, 11, 99, 100, 101, 255}) {
      TypeParam result = value;
      const int remainder = K::divide(&result, &result, by);
      EXPECT_EQ(this->units(result), by == 0 ? 0 : a / by);
      EXPECT_EQ(remainder, by == 0 ? 0 : static_cast<int>(a % by));
      K::multiply(&result, &value, by);
      EXPECT_EQ(this->units(result), nearest(wide{a} * by));
    }
    for (long factor : {0L, 1L, 5000L, 10000L, 1000000L, 429496729500L, -10000L}) {
      TypeParam result;
      K::percent_of(&result, &value, factor);
      EXPECT_EQ(this->units(result), nearest(wide{a} * factor / 10000)) << a << " x " << factor;
    }
    for (const std::int64_t b : this->samples_) {
      const TypeParam other = this->make(b);
      EXPECT_EQ(K::compare(&value, &other), (a > b) - (a < b));
      long ratio = 1;
      K::ratio(&ratio, &value, &other);
      EXPECT_EQ(ratio, b == 0 ? 0 : nearest(wide{a} * 10000 / b));
      TypeParam sum;
      K::add(&sum, &value, b);
      EXPECT_EQ(this->units(sum), nearest(wide{a} + b));
    }
    TypeParam copy;
    K::copy(&copy, &value);
    EXPECT_EQ(K::compare(&copy, &value), 0);
  }
}

TYPED_TEST(MoneyTest, ReadsTexts) {
  using K = Kind<TypeParam>;
  const std::int64_t whole = K::decimals() == 2 ? 100 : 10000;
  const struct {
    const char *text;
    std::int64_t units;
  } cases[] = {
      {"100", 100 * whole},
      {"10000", 10000 * whole},
      {" \t-1.5", -whole - whole / 2},
      {"+2", 2 * whole},
      {"0.019999", whole / 100 + (whole == 10000 ? 99 : 0)},
      {".5x", whole / 2},
      {"", 0},
      {"-", 0},
      {"abc", 0},
      {"1.", whole},
      {"1.2.3", whole + whole / 5},
      {"99999999999999999999", INT64_MAX},
      {"-99999999999999999999", INT64_MIN},
      {"- 5", 0},
  };
  GuardedBuffer buffer;
  for (const auto &[text, units] : cases) {
    TypeParam value;
    K::from_text(&value, buffer.text(text));
    EXPECT_EQ(this->units(value), units) << '"' << text << '"';
  }
}

TEST(Parcela, FollowsItsDecimalsAtEachUse) {
  PARCELA value;
  char text[PARCELA_TEXT_SIZE(30)];
  PARCELA_atov(&value, "12.5");
  EXPECT_STREQ(PARCELA_vtoa(text, &value), "12.5000");
  for (const auto &[decimals, expected] :
       {std::pair{0, "125000"}, {2, "1250.00"}, {30, "0.000000000000000000000000125000"}}) {
    PARCELA_fixo = decimals;
    EXPECT_STREQ(PARCELA_vtoa(text, &value), expected);
  }
  PARCELA_atov(&value, "1");
  EXPECT_STREQ(PARCELA_vtoa(text, &value), "0.000000000009223372036854775807");
  PARCELA_fixo = 4;
}

TEST(Calendar, ExpandsTwoDigitYears) {
  for (int year = 1980; year <= 2079; ++year) EXPECT_EQ(CRONOBASE_ano_com_quatro(year % 100), year);
  EXPECT_EQ(CRONOBASE_ano_com_quatro(-1), 1999);
  EXPECT_EQ(CRONOBASE_ano_com_quatro(180), 1980);
  EXPECT_EQ(CRONOBASE_ano_com_quatro(INT_MIN), 2052);
  EXPECT_EQ(CRONOBASE_ano_com_quatro(INT_MAX), 2047);
}

TEST(Calendar, CountsEveryDayOnce) {
  constexpr int kDays[12] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  int count = 0;
  for (int year = 1980; year <= 4095; ++year)
    for (int month = 1; month <= 12; ++month)
      for (int day = 1; day <= kDays[month - 1] + (month == 2 && year % 4 == 0); ++day)
        ASSERT_EQ(CRONOBASE_zuliano(day, month, year), ++count)
            << day << '/' << month << '/' << year;
  EXPECT_EQ(CRONOBASE_zuliano(31, 12, 1979), 0);
  EXPECT_EQ(CRONOBASE_zuliano(0, 0, 0), 0);
  EXPECT_EQ(CRONOBASE_zuliano(1, 13, 2000), 0);
  EXPECT_EQ(CRONOBASE_zuliano(1, 0, 2000), 0);
}

TEST(Calendar, BreaksDownLocalTime) {
  const time_t moment = 1700000000;  // 14 November, 22:13 in UTC
  struct tm local;
  const std::pair<const char *, int> zones[] = {{"UTC0", 14}, {"EAST-3", 15}, {"WEST3", 14}};
  for (const auto &[zone, day] : zones) {
    setenv("TZ", zone, 1);
    CRONOBASE_localtime(&moment, &local);
    EXPECT_EQ(local.tm_mday, day) << zone;
    EXPECT_EQ(mktime(&local), moment) << zone;
  }
  unsetenv("TZ");
  const time_t never = static_cast<time_t>(INT64_MAX);
  CRONOBASE_localtime(&never, &local);
  EXPECT_EQ(local.tm_mday, 0);
}

TEST(GrowableText, GrowsToAnyLength) {
  LINHAFLEX line = nullptr;
  ASSERT_EQ(LINHAFLEX_cria(&line), 0);
  EXPECT_STREQ(LINHAFLEX_str(line), "");
  std::string expected;
  for (int i = 0; i < 3000; ++i) {
    const std::string piece(static_cast<std::size_t>(i % 300), static_cast<char>('a' + i % 26));
    EXPECT_EQ(LINHAFLEX_printf(line, "%s%d", piece.c_str(), i),
              static_cast<int>(piece.size() + std::to_string(i).size()));
    expected += piece + std::to_string(i);
  }
  EXPECT_EQ(LINHAFLEX_str(line), expected);
  // Half of a pair, which no locale has for a character: what was written in front does not stay.
  EXPECT_EQ(LINHAFLEX_printf(line, "abc%lc", static_cast<wint_t>(0xD800)), -1);
  EXPECT_EQ(LINHAFLEX_printf(line, "%s", ""), 0);
  EXPECT_EQ(LINHAFLEX_str(line), expected);
  LINHAFLEX_destroi(line);
}

}  // namespace
