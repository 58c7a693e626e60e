#include <campotipo/codes.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#include "tests/util/guarded_buffer.hpp"
#include "tests/util/random.hpp"

namespace {

using campotipo::test::GuardedBuffer;
using campotipo::test::Random;

// One member of the family, its operations bound to its number of bytes.
struct Member {
  int n;
  void (*save)(unsigned char *, const char *, int);
  char *(*read)(char *, const unsigned char *, int, int);
  int (*has_content)(const unsigned char *, int);
  int (*compare)(const unsigned char *, const unsigned char *);
};

template <int n>
constexpr Member kAny = {
    n, [](unsigned char *dest, const char *text, int opc) { CODSTR_opc_salva(dest, text, n, opc); },
    [](char *dest, const unsigned char *src, int width, int opc) {
      CODSTR_opc_extrai(dest, src, n, width, opc);
      return dest;
    },
    [](const unsigned char *src, int opc) { return CODSTR_nao_zero(src, n, opc); },
    [](const unsigned char *a, const unsigned char *b) { return CODSTR_compara(a, b, n); }};

constexpr Member kMembers[] = {
    kAny<1>,
    kAny<5>,
    {CODSTR50_BYTES, CODSTR50_opc_atob, CODSTR50_opc_btoa, CODSTR50_nao_zero, CODSTR50_compara},
    {CODSTR52_BYTES, CODSTR52_opc_atob, CODSTR52_opc_btoa, CODSTR52_nao_zero, CODSTR52_compara},
};

class FixedStringTest : public testing::TestWithParam<Member> {
 protected:
  std::size_t size() const { return static_cast<std::size_t>(GetParam().n); }
  GuardedBuffer field_, other_, text_, out_;
};

TEST_P(FixedStringTest, KeepsTheEndThatTheFlagSaysAndNothingBehindTheNul) {
  Random random(6);
  for (std::size_t length = 0; length <= size() + 3; ++length) {
    std::string text = random.digits(length);
    for (int opc : {0, CODSTR_OPC_CORTA_ESQUERDA, ~CODSTR_OPC_CORTA_ESQUERDA, -1}) {
      const bool left = (opc & CODSTR_OPC_CORTA_ESQUERDA) != 0;
      unsigned char *field = field_.at_end(size());
      const std::string before(size(), '#');
      std::memcpy(field, before.data(), size());
      GetParam().save(field, text_.text(text), opc);

      std::string kept =
          left && length > size() ? text.substr(length - size()) : text.substr(0, size());
      std::string expected = kept;
      if (expected.size() < size()) expected += '\0';
      expected += before.substr(expected.size());
      EXPECT_EQ(std::string(reinterpret_cast<char *>(field), size()), expected);
      EXPECT_EQ(GetParam().has_content(field, opc), length > 0);

      for (int width : {0, 1, 3, GetParam().n, GetParam().n + 40}) {
        const std::size_t shown = std::min(kept.size(), static_cast<std::size_t>(width));
        char *out = out_.text_at_end(shown + 1);
        EXPECT_EQ(GetParam().read(out, field, width, opc), out);
        EXPECT_EQ(left ? kept.substr(kept.size() - shown) : kept.substr(0, shown), out);
      }
    }
  }
}

TEST_P(FixedStringTest, ComparesEveryByteUnsigned) {
  Random random(7);
  for (int round = 0; round < 3000; ++round) {
    unsigned char *a = field_.at_end(size());
    unsigned char *b = other_.at_end(size());
    for (std::size_t i = 0; i < size(); ++i) a[i] = static_cast<unsigned char>(random.word());
    std::memcpy(b, a, size());
    if (round % 4 != 0)
      b[random.between<std::size_t>(0, size() - 1)] ^= static_cast<unsigned char>(random.word());
    const auto [left, right] = std::mismatch(a, a + size(), b);
    const int expected = left == a + size() ? 0 : *left < *right ? -1 : 1;
    EXPECT_EQ(GetParam().compare(a, b), expected);
  }
}

INSTANTIATE_TEST_SUITE_P(Members, FixedStringTest, testing::ValuesIn(kMembers),
                         [](const auto &member) { return std::to_string(member.param.n); });

TEST(FixedString, ShortFormsAreTheLongFormsWithTheirDefaults) {
  unsigned char field[CODSTR52_BYTES], other[CODSTR52_BYTES];
  const std::string text(60, 'x');
  std::memset(field, 0, sizeof field);
  std::memset(other, 0, sizeof other);
  char out[CODSTR52_TEXT_SIZE];
  CODSTR50_atob(field, text.c_str());
  CODSTR50_opc_atob(other, text.c_str(), 0);
  EXPECT_EQ(CODSTR50_igual(field, other), 1);
  EXPECT_EQ(CODSTR50_btoa(out, field), text.substr(0, 50));
  CODSTR52_atob(field, "short");
  EXPECT_EQ(CODSTR52_igual(field, other), 0);
  EXPECT_STREQ(CODSTR52_btoa(out, field), "short");
  CODSTR_extrai(out, field, 3);
  EXPECT_STREQ(out, "sho");
}

TEST(FixedString, WithoutBytesIsNotTouched) {
  GuardedBuffer nothing, out;
  unsigned char *field = nothing.at_end(0);
  CODSTR_opc_salva(field, "text", 0, 0);
  CODSTR_opc_salva(field, "text", -1, CODSTR_OPC_CORTA_ESQUERDA);
  EXPECT_EQ(CODSTR_nao_zero(field, 0, 0), 0);
  EXPECT_EQ(CODSTR_compara(field, field, 0), 0);
  char *text = out.text_at_end(1);
  CODSTR_opc_extrai(text, field, 0, 5, 0);
  EXPECT_STREQ(text, "");
}

TEST(FixedString, ExampleOfTheManual) {
  unsigned char field[CODSTR50_BYTES] = {0};
  char text[CODSTR50_TEXT_SIZE];
  CODSTR50_atob(field, "Banco da Praca");
  CODSTR50_opc_btoa(text, field, 5, 0);
  EXPECT_STREQ(text, "Banco");
}

}  // namespace
