#include "tests/bits/agreement.hpp"

#include <gtest/gtest.h>

#include <climits>

#include "tests/util/random.hpp"

namespace {

using campotipo::test::BitForm;
using campotipo::test::BitMemory;
using campotipo::test::Bytes;
using campotipo::test::GuardedBuffer;
using campotipo::test::kBitForms;
using campotipo::test::Random;

// Random bytes, or all 0 or all 1, which show a spare bit that was lost.
Bytes some_bytes(int size, Random *random) {
  const std::uint64_t kind = random->word() % 4;
  Bytes bytes(static_cast<std::size_t>(size), kind == 0 ? 0x00 : 0xFF);
  if (kind > 1)
    for (unsigned char &byte : bytes) byte = static_cast<unsigned char>(random->word());
  return bytes;
}

class BitFieldTest : public testing::TestWithParam<BitForm> {
 protected:
  // Of the last entry only the width can be read.
  const ZBTFIELD_CAMPO *place(const std::vector<ZBTFIELD_CAMPO> &fields) {
    const std::size_t size = fields.size() * sizeof(ZBTFIELD_CAMPO);
    unsigned char *at = table_.at_end(size + sizeof(int));
    if (size != 0) std::memcpy(at, fields.data(), size);
    std::memset(at + size, 0, sizeof(int));
    return reinterpret_cast<const ZBTFIELD_CAMPO *>(at);
  }

  Random random_{72};
  BitMemory memory_;
  GuardedBuffer table_;
};

TEST_P(BitFieldTest, MovesAFieldOfAnyWidthFromAnyStart) {
  for (int start = 0; start < 32; ++start)
    for (int width = -1; width <= 140; ++width)
      for (const bool at_end : {false, true}) {
        const int bits = std::max(width, 0);
        const int extent = bits == 0 ? 0 : ZBTFIELD_BYTES(start % 8 + bits);
        memory_.at_end = at_end;
        ASSERT_TRUE(
            campotipo::test::field_agrees(GetParam(), &memory_, some_bytes(extent, &random_),
                                          some_bytes(ZBTFIELD_BYTES(bits), &random_), start, width))
            << start << ' ' << width;
      }
}

// Widths of each kind, fields that overlap or end the record, and an area with bytes to spare.
TEST_P(BitFieldTest, MovesARecordAsItsFieldsOneByOne) {
  constexpr int kRecord = 64, kWidest[] = {3, 9, 33, 64, 130};
  for (int round = 0; round < 6000; ++round) {
    std::vector<ZBTFIELD_CAMPO> fields(random_.between<std::size_t>(0, 12));
    int bits = 0;
    for (ZBTFIELD_CAMPO &field : fields) {
      bits += field.bits = random_.between(1, kWidest[round % 5]);
      field.deslocamento = random_.between(0, kRecord - ZBTFIELD_BYTES(field.bits));
    }
    memory_.at_end = round % 2 == 0;
    const int spare = round % 8 == 0 ? 2 : 0;
    ASSERT_TRUE(campotipo::test::record_agrees(GetParam(), &memory_, place(fields),
                                               some_bytes(ZBTFIELD_BYTES(bits) + spare, &random_),
                                               some_bytes(kRecord, &random_)))
        << round;
  }
}

TEST_P(BitFieldTest, MovesNothingForANegativeWidth) {
  const ZBTFIELD_CAMPO table[] = {{50, 0}, {-40, 3}, {5, 8}, {-9, 1}, {30, 9}, {0, 0}};
  for (int round = 0; round < 20; ++round)
    EXPECT_TRUE(campotipo::test::record_agrees(GetParam(), &memory_, table,
                                               some_bytes(ZBTFIELD_BYTES(50), &random_),
                                               some_bytes(13, &random_)));
}

TEST_P(BitFieldTest, SetsClearsAndReadsOnePosition) {
  for (int position = 0; position < 200; ++position) {
    Bytes expected = some_bytes(position / 8 + 1, &random_);
    unsigned char *area = memory_.put(&memory_.first, expected);
    EXPECT_EQ(GetParam().test(area, position), GetParam().order.get(expected.data(), position));
    for (const bool bit : {true, false, true}) {
      (bit ? GetParam().set : GetParam().clear)(area, position);
      GetParam().order.put(expected.data(), position, bit);
      EXPECT_TRUE(campotipo::test::holds(area, expected));
      EXPECT_EQ(GetParam().test(area, position), bit);
    }
  }
}

// One bit set in an area of twelve bits and two bytes more.
TEST_P(BitFieldTest, IsWellFormedWithNothingBehindTheFields) {
  const ZBTFIELD_CAMPO table[] = {{3, 0}, {5, 1}, {4, 2}, {0, 0}};
  for (int position = 0; position < 32; ++position) {
    unsigned char *area = memory_.put(&memory_.first, Bytes(4));
    GetParam().set(area, position);
    for (int bytes = -1; bytes <= 4; ++bytes)
      EXPECT_EQ(GetParam().well_formed(area, bytes, table),
                position < 12 || position >= 8 * std::max(bytes, 2))
          << position << ' ' << bytes;
  }
}

INSTANTIATE_TEST_SUITE_P(Orders, BitFieldTest, testing::ValuesIn(kBitForms),
                         [](const auto &form) { return form.param.name; });

TEST(BitField, CountsUpToTheGreatestTotal) {
  const ZBTFIELD_CAMPO table[] = {{INT_MAX - 5, 0}, {5, 0}, {0, 0}};
  EXPECT_EQ(ZBTFIELD_total_de_bits(table), INT_MAX);
  EXPECT_EQ(ZBTFIELD_total_de_bytes(table), 268435456);
}

TEST(BitField, HoldsToTheByte) {
  static const ZBTFIELD_CAMPO table[] = {{3, 0}, {5, 1}, {4, 2}, {0, 0}};
  const unsigned char values[3] = {5, 19, 9};
  unsigned char record[3] = {0xFF, 0xFF, 0xFF}, packed[2] = {0xFF, 0xFF}, big[2] = {0, 0};
  ZBTFIELD_monta_dados(packed, table, values);
  ZBTFIELD_big_monta_dados(big, table, values);
  ZBTFIELD_extrai_dados(record, packed, table);
  EXPECT_EQ(Bytes(packed, packed + 2), (Bytes{0x9D, 0xF9}));
  EXPECT_EQ(Bytes(big, big + 2), (Bytes{0xB3, 0x90}));
  EXPECT_EQ(Bytes(record, record + 3), (Bytes{0xFD, 0xF3, 0xF9}));
}

}  // namespace
