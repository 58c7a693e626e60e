#include <campotipo/idnumbers.h>
#include <gtest/gtest.h>

#include <climits>
#include <cstdint>
#include <cstdio>
#include <string>

#include "tests/util/guarded_buffer.hpp"
#include "tests/util/random.hpp"

namespace {

using campotipo::test::GuardedBuffer;
using campotipo::test::Random;

using Compose = int (*)(char *, int, const int *, const int *, const int *, const int *,
                        const int *, const int *);

// The six values, and which of them are given.
struct Values {
  int of[6];
  unsigned given;

  const int *at(int which) const { return given >> which & 1 ? of + which : nullptr; }
  unsigned reduced(int which, unsigned modulus) const {
    return at(which) == nullptr ? 0 : static_cast<unsigned>(of[which]) % modulus;
  }
  int compose(Compose operation, char *out, int size) const {
    return operation(out, size, at(0), at(1), at(2), at(3), at(4), at(5));
  }
};

std::string printed(const char *format, unsigned value) {
  char text[16];
  std::snprintf(text, sizeof text, format, value);
  return text;
}

std::string check(const char *format, unsigned value) {
  std::string text = printed(format, value);
  DIGVERIF_monta_dv_modulo11(text.data(), 1);
  return text.substr(text.size() - 1);
}

std::string text_form(const Values &values) {
  std::string text;
  if (values.at(2)) text += printed("%04u", values.reduced(2, 10000));
  if (values.at(0)) text += printed("%02u", values.reduced(0, 100));
  text += printed("%03u", values.reduced(1, 1000));
  if (values.at(2)) text += check("%04u0", values.reduced(2, 10000));
  if (values.at(3)) text += check("%06u0", values.reduced(3, 1000000));
  if (values.at(4)) text += check("%03u0", values.reduced(4, 1000));
  if (values.at(5)) text += check("%04u0", values.reduced(5, 10000));
  return text;
}

std::string form_b(const Values &values) {
  const std::uint64_t number =
      ((values.reduced(2, 2048) * std::uint64_t{128} + values.reduced(0, 128)) * 256 +
       values.reduced(4, 256)) *
          1024 +
      values.reduced(1, 1024);
  const std::string text = std::to_string(number);
  return std::string(11 - text.size(), '0') + text;
}

void expect_composed(Compose operation, const Values &values, const std::string &expected) {
  static GuardedBuffer buffer;
  const int size = static_cast<int>(expected.size()) + 1;
  char *out = buffer.text_at_end(expected.size() + 1);
  EXPECT_EQ(values.compose(operation, out, size), 0);
  EXPECT_EQ(expected, out);
  EXPECT_EQ(values.compose(operation, out, INT_MAX), 0);
  EXPECT_EQ(expected, out);
  for (int small = size - 1; small >= 1; small -= 3) {
    out = buffer.text_at_end(static_cast<std::size_t>(small));
    *out = '#';
    EXPECT_EQ(values.compose(operation, out, small), 1);
    EXPECT_STREQ(out, "");
  }
}

TEST(UniqueNumber, ComposesWhatIsGivenInBothForms) {
  Random random(1);
  for (unsigned round = 0; round < 64 * 40; ++round) {
    Values values{{}, round % 64 | 2};
    for (int &value : values.of) {
      value = static_cast<int>(random.word_of_any_size());
      // A negative value has no meaning, but has to leave the text in its bounds.
      if (round < 64 * 30) value &= INT_MAX;
    }
    expect_composed(ZALGORITM_gera_numero_unico, values, text_form(values));
    expect_composed(ZALGORITM_gera_numeroB_unico, values, form_b(values));
  }
}

TEST(UniqueNumber, HasTheCheckCharacterOfEverySmallValue) {
  for (int value = 0; value < 12000; ++value) {
    const Values values{{0, 0, value, value, value, value}, 0b111110};
    char out[ZALGORITM_NUMERO_UNICO_TEXT_SIZE];
    ASSERT_EQ(values.compose(ZALGORITM_gera_numero_unico, out, sizeof out), 0);
    ASSERT_EQ(text_form(values), out);
  }
}

TEST(UniqueNumber, ComesBackFromFormBInItsBits) {
  Random random(2);
  GuardedBuffer buffer;
  for (int round = 0; round < 500; ++round) {
    Values values{{}, 63};
    for (int &value : values.of) value = static_cast<int>(random.word_of_any_size()) & INT_MAX;
    char text[ZALGORITM_NUMEROB_UNICO_TEXT_SIZE];
    ASSERT_EQ(values.compose(ZALGORITM_gera_numeroB_unico, text, sizeof text), 0);
    const int expected[6] = {
        values.of[0] & 127, values.of[1] & 1023, values.of[2] & 2047, 0, values.of[4] & 255, 0};
    int back[6] = {-1, -1, -1, -1, -1, -1};
    const auto pointer = [&](int which) { return round >> which & 1 ? back + which : nullptr; };
    EXPECT_EQ(ZALGORITM_extrai_numeroB_unico(buffer.text(text), pointer(0), pointer(1), pointer(2),
                                             pointer(3), pointer(4), pointer(5)),
              0);
    for (int i = 0; i < 6; ++i) EXPECT_EQ(back[i], pointer(i) ? expected[i] : -1);
  }
}

TEST(UniqueNumber, KnownNumbers) {
  struct Case {
    Compose operation;
    Values values;
    const char *text;
  };
  const Case kCases[] = {
      {ZALGORITM_gera_numero_unico, {{12, 345, 2024, 123456, 789, 2024}, 63}, "2024123459179"},
      {ZALGORITM_gera_numero_unico, {{5, 7, 100}, 0b111}, "0100050077"},
      {ZALGORITM_gera_numero_unico, {{0, 345}, 0b10}, "345"},
      {ZALGORITM_gera_numero_unico, {{0, 7, 0, 0, 0, 0}, 0b111010}, "007000"},
      {ZALGORITM_gera_numeroB_unico, {{0, 1023}, 0b10}, "00000001023"},
      {ZALGORITM_gera_numeroB_unico, {{127, 1023, 2047, 0, 255}, 63}, "68719476735"},
      {ZALGORITM_gera_numeroB_unico, {{12, 345, 2024, 0, 200}, 63}, "67917521241"},
      {ZALGORITM_gera_numeroB_unico, {{100, 1000, 2050, 0, 300}, 63}, "00093369320"},
  };
  for (const Case &c : kCases) expect_composed(c.operation, c.values, c.text);

  int back[6];
  EXPECT_EQ(ZALGORITM_extrai_numeroB_unico("99999999999", back, back + 1, back + 2, back + 3,
                                           back + 4, back + 5),
            0);
  EXPECT_EQ(back[2], 2980);
}

TEST(UniqueNumber, RefusesWithoutTouchingAnything) {
  for (Compose operation : {ZALGORITM_gera_numero_unico, ZALGORITM_gera_numeroB_unico}) {
    char out[16] = "before";
    const Values values{{1, 2, 3, 4, 5, 6}, 63};
    const Values without_second{{1, 2, 3, 4, 5, 6}, 0b111101};
    EXPECT_EQ(values.compose(operation, nullptr, 16), 1);
    EXPECT_EQ(values.compose(operation, out, 0), 1);
    EXPECT_EQ(values.compose(operation, out, INT_MIN), 1);
    EXPECT_EQ(without_second.compose(operation, out, 16), 1);
    EXPECT_STREQ(out, "before");
  }
  int value = 7;
  EXPECT_EQ(ZALGORITM_extrai_numeroB_unico(nullptr, &value, &value, &value, &value, &value, &value),
            1);
  EXPECT_EQ(value, 7);
}

TEST(UniqueNumber, IsWellFormedInItsBitsAlone) {
  GuardedBuffer buffer;
  const struct {
    const char *text;
    int result;
  } cases[] = {{"00000000000", 1},  {"67917521241", 1}, {"68719476735", 1}, {"68719476736", 0},
               {"70000000000", 0},  {"99999999999", 0}, {"6791752124", 0},  {"067917521241", 0},
               {"6791752124 ", 0},  {"6791752124:", 0}, {"/7917521241", 0}, {"", 0},
               {"679175212411", 0}, {"-7917521241", 0}};
  for (const auto &[text, result] : cases)
    EXPECT_EQ(ZALGORITM_numeroB_unico_bem_formado(buffer.text(text)), result) << text;
}

}  // namespace
