#include <campotipo/quantities.h>
#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <cstring>
#include <string>

#include "tests/quantities/sample_fields.hpp"

namespace {

namespace reference = campotipo::test::reference;
using campotipo::test::any_field;
using campotipo::test::bytes_of;
using campotipo::test::field_at;
using campotipo::test::GuardedBuffer;
using campotipo::test::Random;
using campotipo::test::sample_digits;
using campotipo::test::sample_field;
using reference::Field;

constexpr int kOutOfRange[] = {0, 22, 23, 64, 1000, INT_MAX, -1, -9, INT_MIN};

class WidthTest : public testing::TestWithParam<int> {
 protected:
  int width() const { return GetParam(); }
  std::size_t size() const { return static_cast<std::size_t>(width()); }
  Field sample(int round) {
    return round % 3 == 0 ? any_field(random_, width()) : sample_field(random_, width());
  }

  Random random_{41};
  GuardedBuffer field_, other_, text_;
};

TEST_P(WidthTest, HasTheDigitsThatAlwaysFit) {
  const int high = width() - (width() - 1) / 8 * 8;
  const int digits = (width() - 1) / 8 * 19 + static_cast<int>(high * 8 * std::log10(2.0));
  EXPECT_EQ(ZBINARIO_max_digitos_decimais(width()), digits);
}

TEST_P(WidthTest, LeadsToTheOperationOfTheWidth) {
  for (int round = 0; round < 200; ++round) {
    std::string text = sample_digits(random_, random_.between<std::size_t>(0, 60));
    if (round % 2 == 0 && !text.empty())
      text[random_.between<std::size_t>(0, text.size() - 1)] = " .-:/"[random_.between(0, 4)];
    const int decimals = random_.between(-2, 60);
    unsigned char *dest = field_.at_end(size());
    EXPECT_EQ(ZBINARIO_converteu_para_binario(dest, width(), text_.text(text)), 1);
    EXPECT_EQ(field_at(dest, width()), reference::from_text(width(), text)) << text;
    dest = field_.at_end(size());
    ZBINARIO_atobfixo(width(), dest, text_.text(text), decimals);
    EXPECT_EQ(field_at(dest, width()), reference::from_text_fixed(width(), text, decimals)) << text;

    const Field a = sample(round), b = sample(round);
    const unsigned char *src = field_.field(bytes_of(a));
    EXPECT_EQ(ZBINARIO_compara(width(), src, other_.field(bytes_of(b))),
              reference::compare(width(), a, b));
    const std::string plain = reference::to_text(width(), a, 0);
    char *out = text_.text_at_end(plain.size() + 1);
    EXPECT_EQ(ZBINARIO_converteu_de_binario(out, src, width()), 1);
    EXPECT_EQ(plain, out);
    const std::string fixed = reference::to_text(width(), a, decimals);
    out = text_.text_at_end(fixed.size() + 1);
    EXPECT_EQ(ZBINARIO_btoafixo(width(), out, src, decimals), out);
    EXPECT_EQ(fixed, out);
  }
}

TEST_P(WidthTest, WritesExactlySoManyDigits) {
  for (int round = 0; round < 12; ++round) {
    const Field field = round == 0 ? Field(size(), '\0') : sample(round);
    const std::string plain = reference::to_text(width(), field, 0);
    for (int n = -1; n <= 60; ++n) {
      const auto count = static_cast<std::size_t>(n < 0 ? 0 : n);
      char *out = text_.text_at_end(count + 1);
      EXPECT_EQ(ZBINARIO_converteu_n_de_binario(out, field_.field(bytes_of(field)), width(), n), 1);
      EXPECT_EQ(reference::rightmost(plain, count), out);
    }
  }
}

TEST_P(WidthTest, MovesToEveryOtherWidth) {
  for (int to = 1; to <= ZBINARIO_MAX_WIDTH; ++to) {
    for (int round = 0; round < 30; ++round) {
      const Field field = sample(round);
      const Field expected = reference::from_text(to, reference::to_text(width(), field, 0));
      unsigned char *dest = other_.at_end(static_cast<std::size_t>(to));
      EXPECT_EQ(ZBINARIO_move_para_de(dest, to, field_.field(bytes_of(field)), width()), 1);
      EXPECT_EQ(field_at(dest, to), expected);
      unsigned char *same = other_.at_end(static_cast<std::size_t>(std::max(to, width())));
      std::memcpy(same, field.data(), field.size());
      EXPECT_EQ(ZBINARIO_move_para_de(same, to, same, width()), 1);
      EXPECT_EQ(field_at(same, to), expected);
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Widths, WidthTest, testing::Range(1, ZBINARIO_MAX_WIDTH + 1));

TEST(Width, OneTextSizeServesEveryWidthAndContent) {
  GuardedBuffer field, room;
  std::size_t longest = 0;
  for (int width = 1; width <= ZBINARIO_MAX_WIDTH; ++width) {
    unsigned char *src = field.at_end(static_cast<std::size_t>(width));
    std::memset(src, 0xFF, static_cast<std::size_t>(width));
    char *text = room.text_at_end(ZBINARIO_TEXT_SIZE);
    ASSERT_EQ(ZBINARIO_converteu_de_binario(text, src, width), 1);
    longest = std::max(longest, std::strlen(text));
  }
  EXPECT_EQ(longest + 1, ZBINARIO_TEXT_SIZE);
}

TEST(WidthOutOfRange, IsAnsweredByEachInItsWayAndTouchesNothingElse) {
  GuardedBuffer nothing, field;
  unsigned char *const none = nothing.at_end(0);
  char *const no_text = reinterpret_cast<char *>(none);
  unsigned char *src = field.at_end(1);
  *src = 5;
  for (int width : kOutOfRange) {
    SCOPED_TRACE(width);
    EXPECT_EQ(ZBINARIO_max_digitos_decimais(width), 1);
    EXPECT_EQ(ZBINARIO_compara(width, none, none), -1);
    EXPECT_EQ(ZBINARIO_converteu_para_binario(none, width, "12"), 0);
    EXPECT_EQ(ZBINARIO_converteu_de_binario(no_text, none, width), 0);
    EXPECT_EQ(ZBINARIO_converteu_n_de_binario(no_text, none, width, 3), 0);
    EXPECT_EQ(ZBINARIO_move_para_de(none, width, src, 1), 0);
    EXPECT_EQ(ZBINARIO_move_para_de(src, 1, none, width), 0);
    EXPECT_EQ(*src, 5);
    char text[] = "before";
    EXPECT_EQ(ZBINARIO_btoafixo(width, text, none, 2), text);
    EXPECT_STREQ(text, "");
    if (width > 4096) continue;
    GuardedBuffer cleared;
    unsigned char *dest = cleared.at_end(static_cast<std::size_t>(std::max(width, 0)));
    ZBINARIO_atobfixo(width, dest, "12", 0);
    for (int i = 0; i < width; ++i) EXPECT_EQ(dest[i], 0);
  }
}

TEST(QuantitiesManual, Example) {
  unsigned char field[BINQ9_BYTES], wide[BINQ21_BYTES];
  char text[BINQ_FIXO_TEXT_SIZE(BINQ21_DIGITS, 2)];
  BINQ9_atob_fixo(field, "123456789012.5", 2);
  ZBINARIO_move_para_de(wide, 21, field, 9);
  BINQ21_mul_por_10(wide, wide);
  EXPECT_STREQ(BINQ21_btoafixo(text, wide, 2), "1234567890125.00");
}

}  // namespace
