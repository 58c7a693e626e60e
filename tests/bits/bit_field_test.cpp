#include <campotipo/bits.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstring>
#include <vector>

#include "tests/bits/bit_order.hpp"
#include "tests/util/guarded_buffer.hpp"
#include "tests/util/random.hpp"

namespace {

using campotipo::test::BitForm;
using campotipo::test::GuardedBuffer;
using campotipo::test::kBitForms;
using campotipo::test::Random;
using Bytes = std::vector<unsigned char>;

// Random bytes, or all 0 or all 1, which show a spare bit that was lost.
Bytes some_bytes(std::size_t size, Random *random) {
  const std::uint64_t kind = random->word() % 4;
  Bytes bytes(size, kind == 0 ? 0x00 : 0xFF);
  if (kind > 1)
    for (unsigned char &byte : bytes) byte = static_cast<unsigned char>(random->word());
  return bytes;
}

Bytes taken(const unsigned char *from, std::size_t size) { return {from, from + size}; }

class BitFieldTest : public testing::TestWithParam<BitForm> {
 protected:
  // The bytes against the inaccessible page behind them or before them.
  static unsigned char *place(GuardedBuffer *guard, const Bytes &bytes, bool at_end) {
    unsigned char *at = at_end ? guard->at_end(bytes.size()) : guard->at_start(bytes.size());
    std::copy(bytes.begin(), bytes.end(), at);
    return at;
  }

  // Of the last entry only the width can be read.
  const ZBTFIELD_CAMPO *place(const std::vector<ZBTFIELD_CAMPO> &fields) {
    const std::size_t size = fields.size() * sizeof(ZBTFIELD_CAMPO);
    unsigned char *at = table_.at_end(size + sizeof(int));
    if (size != 0) std::memcpy(at, fields.data(), size);
    std::memset(at + size, 0, sizeof(int));
    return reinterpret_cast<const ZBTFIELD_CAMPO *>(at);
  }

  GuardedBuffer packed_, record_, table_;
};

TEST_P(BitFieldTest, MovesAFieldOfAnyWidthFromAnyStart) {
  Random random(72);
  for (int start = 0; start < 32; ++start) {
    for (int width = -1; width <= 140; ++width) {
      // Only the bytes that hold a bit of the field can be touched.
      const int bits = std::max(width, 0);
      const int first = bits == 0 ? 0 : start / 8;
      const auto extent =
          bits == 0 ? 0 : static_cast<std::size_t>((start + bits - 1) / 8 - first + 1);
      const auto size = static_cast<std::size_t>(ZBTFIELD_BYTES(bits));
      for (const bool at_end : {false, true}) {
        const Bytes packed = some_bytes(extent, &random);
        const Bytes field = some_bytes(size, &random);
        unsigned char *area = place(&packed_, packed, at_end);
        unsigned char *unpacked = place(&record_, field, at_end);

        Bytes expected = field;
        GetParam().order.unpack(expected.data(), packed.data(), start % 8, width);
        GetParam().unpack(unpacked, area - first, start, width);
        ASSERT_EQ(taken(unpacked, size), expected) << start << ' ' << width;
        ASSERT_EQ(taken(area, extent), packed);

        const Bytes source = some_bytes(size, &random);
        unpacked = place(&record_, source, at_end);
        expected = packed;
        GetParam().order.pack(source.data(), expected.data(), start % 8, width);
        GetParam().pack(unpacked, area - first, start, width);
        ASSERT_EQ(taken(area, extent), expected) << start << ' ' << width;
        ASSERT_EQ(taken(unpacked, size), source);
      }
    }
  }
}

TEST_P(BitFieldTest, MovesARecordAsItsFieldsOneByOne) {
  Random random(73);
  constexpr int kRecord = 64;
  constexpr int kWidest[] = {3, 9, 33, 64, 130};
  for (int round = 0; round < 6000; ++round) {
    const int widest = kWidest[round % 5];
    std::vector<ZBTFIELD_CAMPO> fields(random.between<std::size_t>(0, 12));
    for (ZBTFIELD_CAMPO &field : fields) {
      field.bits = random.between(1, widest);
      // Fields may overlap, and the last one may end the record.
      field.deslocamento = random.between(0, kRecord - ZBTFIELD_BYTES(field.bits));
    }
    const ZBTFIELD_CAMPO *table = place(fields);
    const int bits = campotipo::reference::total_bits(table);
    ASSERT_EQ(ZBTFIELD_total_de_bits(table), bits);
    ASSERT_EQ(ZBTFIELD_total_de_bytes(table), (bits + 7) / 8);

    const Bytes packed = some_bytes(static_cast<std::size_t>(ZBTFIELD_BYTES(bits)), &random);
    const Bytes record = some_bytes(kRecord, &random);
    unsigned char *area = place(&packed_, packed, round % 2 == 0);
    unsigned char *unpacked = place(&record_, record, round % 2 == 0);
    Bytes expected = record;
    GetParam().order.unpack_all(expected.data(), packed.data(), table);
    GetParam().unpack_all(unpacked, area, table);
    ASSERT_EQ(taken(unpacked, kRecord), expected);

    const Bytes source = some_bytes(kRecord, &random);
    unpacked = place(&record_, source, round % 2 == 0);
    expected = packed;
    GetParam().order.pack_all(expected.data(), table, source.data());
    GetParam().pack_all(area, table, unpacked);
    ASSERT_EQ(taken(area, packed.size()), expected);
  }
}

TEST_P(BitFieldTest, MovesNothingForANegativeWidth) {
  const ZBTFIELD_CAMPO table[] = {{50, 0}, {-40, 3}, {5, 8}, {-9, 1}, {30, 9}, {0, 0}};
  Random random(75);
  for (int round = 0; round < 20; ++round) {
    const Bytes packed = some_bytes(ZBTFIELD_BYTES(50), &random);
    const Bytes record = some_bytes(13, &random);
    Bytes expected = record;
    GetParam().order.unpack_all(expected.data(), packed.data(), table);
    unsigned char *unpacked = place(&record_, record, true);
    GetParam().unpack_all(unpacked, place(&packed_, packed, true), table);
    EXPECT_EQ(taken(unpacked, record.size()), expected);
    expected = packed;
    GetParam().order.pack_all(expected.data(), table, record.data());
    unsigned char *area = place(&packed_, packed, true);
    GetParam().pack_all(area, table, record.data());
    EXPECT_EQ(taken(area, packed.size()), expected);
  }
}

TEST_P(BitFieldTest, SetsClearsAndReadsOnePosition) {
  Random random(74);
  for (int position = 0; position < 200; ++position) {
    Bytes expected = some_bytes(static_cast<std::size_t>(position / 8 + 1), &random);
    unsigned char *area = place(&packed_, expected, true);
    EXPECT_EQ(GetParam().test(area, position), GetParam().order.get(expected.data(), position));
    for (const bool bit : {true, false, true}) {
      (bit ? GetParam().set : GetParam().clear)(area, position);
      GetParam().order.put(expected.data(), position, bit);
      EXPECT_EQ(taken(area, expected.size()), expected);
      EXPECT_EQ(GetParam().test(area, position), bit);
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Orders, BitFieldTest, testing::ValuesIn(kBitForms),
                         [](const auto &form) { return form.param.name; });

TEST(BitField, CountsUpToTheGreatestTotal) {
  const ZBTFIELD_CAMPO table[] = {{INT_MAX - 5, 0}, {5, 0}, {0, 0}};
  EXPECT_EQ(ZBTFIELD_total_de_bits(table), INT_MAX);
  EXPECT_EQ(ZBTFIELD_total_de_bytes(table), 268435456);
}

TEST(BitField, ExampleOfTheManual) {
  static const ZBTFIELD_CAMPO table[] = {{3, 0}, {5, 1}, {4, 2}, {0, 0}};
  unsigned char record[3] = {5, 19, 9};
  unsigned char packed[ZBTFIELD_BYTES(12)] = {0};
  char line[ZBTFIELD_DEPURA_CONTEUDO_SIZE(3)];
  ZBTFIELD_monta_dados(packed, table, record);
  EXPECT_EQ(taken(packed, 2), (Bytes{0x9D, 0x09}));
  ZBTFIELD_depura_conteudo(line, sizeof line, packed, table);
  EXPECT_STREQ(line, "[0;3b]=5 [1;5b]=19 [2;4b]=9");
  ZBTFIELD_big_monta_dados(packed, table, record);
  EXPECT_EQ(taken(packed, 2), (Bytes{0xB3, 0x99}));

  // With nothing clear before.
  std::memset(packed, 0xFF, sizeof packed);
  std::memset(record, 0xFF, sizeof record);
  const unsigned char values[3] = {5, 19, 9};
  ZBTFIELD_monta_dados(packed, table, values);
  EXPECT_EQ(taken(packed, 2), (Bytes{0x9D, 0xF9}));
  ZBTFIELD_extrai_dados(record, packed, table);
  EXPECT_EQ(taken(record, 3), (Bytes{0xFD, 0xF3, 0xF9}));
}

}  // namespace
