#include <campotipo/codes.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <string>

#include "tests/members/fixed_string.hpp"
#include "tests/util/guarded_buffer.hpp"
#include "tests/util/random.hpp"

namespace {

using namespace campotipo::test;

class FixedStringTest : public testing::TestWithParam<FixedString> {
 protected:
  std::size_t size() const { return static_cast<std::size_t>(GetParam().n); }
  GuardedBuffer field_, other_, text_, out_;
};

TEST_P(FixedStringTest, KeepsTheEndThatTheFlagSaysAndNothingBehindTheNul) {
  Random random(6);
  EXPECT_EQ(GetParam().text_size, GetParam().n + 1);
  for (std::size_t length = 0; length <= size() + 3; ++length)
    for (int opc : {0, CODSTR_OPC_CORTA_ESQUERDA, ~CODSTR_OPC_CORTA_ESQUERDA, -1}) {
      const bool left = (opc & CODSTR_OPC_CORTA_ESQUERDA) != 0;
      const std::string text = random.digits(length);
      const std::string kept =
          left && length > size() ? text.substr(length - size()) : text.substr(0, size());
      std::string expected = kept + std::string(kept.size() < size() ? 1 : 0, '\0');
      expected.resize(size(), '#');
      unsigned char *field = field_.at_end(size());
      std::memset(field, '#', size());
      GetParam().save(field, text_.text(text), opc);
      EXPECT_EQ(std::string(reinterpret_cast<char *>(field), size()), expected);
      unsigned char *plain = other_.at_end(size());
      std::memset(plain, '#', size());
      GetParam().save_plain(plain, text_.text(kept));
      EXPECT_EQ(GetParam().equal(field, plain), 1);

      EXPECT_EQ(GetParam().has_content(field, opc), length > 0);
      char *out = out_.text_at_end(kept.size() + 1);
      EXPECT_EQ(kept, GetParam().read_whole(out, field));
      for (int width : {0, 1, 3, GetParam().n, GetParam().n + 40}) {
        const std::size_t shown = std::min(kept.size(), static_cast<std::size_t>(width));
        out = out_.text_at_end(shown + 1);
        EXPECT_EQ(GetParam().read(out, field, width, opc), out);
        EXPECT_EQ(left ? kept.substr(kept.size() - shown) : kept.substr(0, shown), out);
      }
    }
}

TEST_P(FixedStringTest, LooksAtEveryByteUnsigned) {
  Random random(7);
  for (int round = 0; round < 3000; ++round) {
    unsigned char *a = field_.at_end(size());
    unsigned char *b = other_.at_end(size());
    const std::size_t content = random.between<std::size_t>(0, size());
    for (std::size_t i = 0; i < size(); ++i)
      a[i] = static_cast<unsigned char>(i < content ? random.between(1, 255) : 0);
    std::memcpy(b, a, size());
    if (round % 4 != 0)
      b[random.between<std::size_t>(0, size() - 1)] ^= static_cast<unsigned char>(random.word());
    const auto [left, right] = std::mismatch(a, a + size(), b);
    const int expected = left == a + size() ? 0 : *left < *right ? -1 : 1;
    EXPECT_EQ(GetParam().compare(a, b), expected);
    EXPECT_EQ(GetParam().equal(a, b), expected == 0);
    for (const unsigned char *field : {a, b}) {
      const unsigned char *end = std::find(field, field + size(), 0);
      EXPECT_EQ(GetParam().well_formed(field),
                std::count(end, field + size(), 0) == field + size() - end);
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Members, FixedStringTest, testing::ValuesIn(kFixedStrings),
                         [](const auto &member) { return std::to_string(member.param.n); });

TEST(FixedString, WithoutBytesIsNotTouched) {
  GuardedBuffer nothing, out;
  unsigned char *field = nothing.at_end(0);
  CODSTR_opc_salva(field, "text", 0, 0);
  CODSTR_opc_salva(field, "text", -1, CODSTR_OPC_CORTA_ESQUERDA);
  EXPECT_EQ(CODSTR_nao_zero(field, 0, 0) + CODSTR_compara(field, field, 0), 0);
  EXPECT_EQ(CODSTR_bem_formado(field, 0) + CODSTR_bem_formado(field, -1), 2);
  char *text = out.text_at_end(1);
  CODSTR_opc_extrai(text, field, 0, 5, 0);
  EXPECT_STREQ(text, "");
}

}  // namespace
