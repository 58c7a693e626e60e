#include <campotipo/quantities.h>
#include <gtest/gtest.h>

TEST(QuantitiesManual, Example) {
  unsigned char field[BINQ9_BYTES], wide[BINQ21_BYTES];
  char text[BINQ_FIXO_TEXT_SIZE(BINQ21_DIGITS, 2)];
  BINQ9_atob_fixo(field, "123456789012.5", 2);
  EXPECT_EQ(ZBINARIO_move_para_de(wide, 21, field, 9), 1);
  BINQ21_mul_por_10(wide, wide);
  EXPECT_STREQ(BINQ21_btoafixo(text, wide, 2), "1234567890125.00");
}
