#include <campotipo/bits.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#include "tests/bits/bit_order.hpp"
#include "tests/bits/platform.hpp"
#include "tests/util/guarded_buffer.hpp"
#include "tests/util/random.hpp"

namespace {

using campotipo::test::BitForm;
using campotipo::test::GuardedBuffer;
using campotipo::test::kBitForms;
using campotipo::test::Random;
namespace platform = campotipo::test::platform;

using Dump = void (*)(char *, int, const unsigned char *, const ZBTFIELD_CAMPO *);

class BitDumpTest : public testing::TestWithParam<BitForm> {
 protected:
  // Dumps into a buffer of that size, which has one byte at least, and expects each of its bytes.
  void expect(Dump dump, int size, const unsigned char *packed, const ZBTFIELD_CAMPO *table,
              const std::string &text) {
    const auto room = static_cast<std::size_t>(std::max(size, 1));
    char *buffer = buffer_.text_at_end(room);
    std::memset(buffer, '#', room);
    dump(buffer, size, packed, table);
    std::string expected = size > 0 ? text : "";
    expected.resize(room);
    EXPECT_EQ(std::string(buffer, room), expected) << size;
  }

  GuardedBuffer buffer_{8192}, packed_;
};

TEST_P(BitDumpTest, WritesExactlySizeBytes) {
  Random random(75);
  for (int round = 0; round < 40; ++round) {
    std::vector<ZBTFIELD_CAMPO> table(random.between<std::size_t>(0, 8));
    int bits = 0;
    for (ZBTFIELD_CAMPO &field : table) bits += field.bits = random.between(1, round % 2 ? 8 : 70);
    table.push_back({0, 0});
    unsigned char *packed = packed_.at_end(static_cast<std::size_t>(ZBTFIELD_BYTES(bits)));
    for (int i = 0; i < ZBTFIELD_BYTES(bits); ++i)
      packed[i] = static_cast<unsigned char>(random.word());

    const std::string in_bits = GetParam().order.bits_text(packed, table.data());
    const std::string in_values = GetParam().order.values_text(packed, table.data());
    const int fields = static_cast<int>(table.size()) - 1;
    EXPECT_EQ(in_bits.size() + 1,
              static_cast<std::size_t>(ZBTFIELD_DEPURA_BINARIO_SIZE(bits, fields)));
    EXPECT_LT(in_values.size(), static_cast<std::size_t>(ZBTFIELD_DEPURA_CONTEUDO_SIZE(fields)));
    for (const auto &[dump, text] :
         {std::pair{GetParam().bits_text, in_bits}, {GetParam().values_text, in_values}}) {
      const int length = static_cast<int>(text.size());
      for (const int size : {-1, 0, 1, length / 2, length - 1, length, length + 1, length + 300})
        expect(dump, size, packed, table.data(), text);
    }
  }
}

TEST_P(BitDumpTest, LeavesTheBufferWithoutMemory) {
  if (!platform::kOwnsHeap) GTEST_SKIP() << "the heap is the sanitizer's";
  const ZBTFIELD_CAMPO table[] = {{8, 0}, {0, 0}};
  const unsigned char packed[1] = {0x5A};
  for (const Dump dump : {GetParam().bits_text, GetParam().values_text}) {
    char buffer[4] = {'a', 'b', 'c', 'd'};
    {
      platform::Heap heap(true);
      dump(buffer, sizeof buffer, packed, table);
    }
    EXPECT_EQ(std::string(buffer, sizeof buffer), std::string("\0bcd", 4));
    platform::Heap heap(false);
    dump(buffer, sizeof buffer, packed, table);
    EXPECT_EQ(heap.blocks(), 0);
  }
}

INSTANTIATE_TEST_SUITE_P(Orders, BitDumpTest, testing::ValuesIn(kBitForms),
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
