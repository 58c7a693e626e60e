#include <gtest/gtest.h>

#include "tests/bits/agreement.hpp"
#include "tests/util/random.hpp"

namespace {

using campotipo::test::BitForm;
using campotipo::test::BitMemory;
using campotipo::test::Bytes;
using campotipo::test::Random;

class BitDumpTest : public testing::TestWithParam<BitForm> {};

TEST_P(BitDumpTest, WritesExactlySizeBytes) {
  Random random(75);
  BitMemory memory;
  for (int round = 0; round < 40; ++round) {
    std::vector<ZBTFIELD_CAMPO> table(random.between<std::size_t>(0, 8));
    int bits = 0;
    for (ZBTFIELD_CAMPO &field : table) bits += field.bits = random.between(1, round % 2 ? 8 : 70);
    const auto fields = static_cast<int>(table.size());
    table.push_back({0, 0});
    Bytes packed(static_cast<std::size_t>(ZBTFIELD_BYTES(bits)));
    for (unsigned char &byte : packed) byte = static_cast<unsigned char>(random.word());

    const std::string in_values = GetParam().order.values_text(packed.data(), table.data());
    EXPECT_LT(in_values.size(), static_cast<std::size_t>(ZBTFIELD_DEPURA_CONTEUDO_SIZE(fields)));
    const int in_bits = ZBTFIELD_DEPURA_BINARIO_SIZE(bits, fields) - 1;
    for (const int length : {in_bits, static_cast<int>(in_values.size())})
      for (const int size : {-1, 0, 1, length / 2, length - 1, length, length + 1, length + 300})
        ASSERT_TRUE(campotipo::test::dumps_agree(GetParam(), &memory, table.data(), packed, size))
            << size;
  }
}

INSTANTIATE_TEST_SUITE_P(Orders, BitDumpTest, testing::ValuesIn(campotipo::test::kBitForms),
                         [](const auto &form) { return form.param.name; });

TEST(BitDump, TellsAFieldTooWideForANumber) {
  const ZBTFIELD_CAMPO table[] = {{64, 0}, {65, 8}, {1, 17}, {0, 0}};
  unsigned char packed[17];
  for (unsigned char i = 0; i < sizeof packed; ++i) packed[i] = static_cast<unsigned char>(i + 1);
  char buffer[ZBTFIELD_DEPURA_CONTEUDO_SIZE(3)];
  ZBTFIELD_depura_conteudo(buffer, sizeof buffer, packed, table);
  EXPECT_STREQ(buffer, "[0;64b]=578437695752307201 [1;65b]=muitos bits [2;1b]=0");
}

}  // namespace
