#include <campotipo/bits.h>
#include <gtest/gtest.h>

#include <climits>
#include <cstdint>
#include <map>
#include <vector>

#include "tests/bits/platform.hpp"
#include "tests/util/random.hpp"

namespace {

using campotipo::test::Random;
namespace platform = campotipo::test::platform;

// Indices around both ends of a table and of int, and some inside.
std::vector<int> indices_of(std::int64_t base, std::int64_t count, Random *random) {
  std::vector<int> indices = {INT_MIN, INT_MIN + 1, -1, 0, 1, INT_MAX - 1, INT_MAX};
  for (const std::int64_t end : {base, base + count})
    for (std::int64_t index = end - 9; index <= end + 9; ++index)
      if (index >= INT_MIN && index <= INT_MAX) indices.push_back(static_cast<int>(index));
  for (int i = 0; i < 40; ++i) {
    const std::int64_t index = base + random->between<std::int64_t>(0, count > 0 ? count - 1 : 0);
    if (index <= INT_MAX) indices.push_back(static_cast<int>(index));
  }
  return indices;
}

struct Shape {
  int count, base, fallback;
  bool holds(std::int64_t index) const { return index >= base && index - base < count; }
};

// Two lives of one table against a map of the indices that were written.
void expect_like_a_map(const Shape &shape, Random *random) {
  platform::Heap heap(false);
  TABBOOL table;
  TABBOOL_cria(&table, shape.count, shape.base, shape.fallback);
  const std::vector<int> indices = indices_of(shape.base, shape.count, random);
  const auto any = [&] { return indices[random->between<std::size_t>(0, indices.size() - 1)]; };
  const int padrao = shape.fallback & 0xFF;
  const long before = heap.blocks();
  for (int life = 0; life < 2; ++life) {
    ASSERT_EQ(table.mapa, nullptr);
    std::map<int, bool> written;
    for (int round = 0; round < 200; ++round) {
      const int index = any();
      const bool value = random->word() % 2 != 0;
      const bool allocates = shape.holds(index) && written.empty();
      const long blocks = heap.blocks();
      (value ? TABBOOL_seta : TABBOOL_reseta)(&table, index);
      if (platform::kOwnsHeap) {
        ASSERT_EQ(heap.blocks() - blocks, allocates ? 1 : 0);
      }
      if (shape.holds(index)) written[index] = value;
      for (const int probe : {index, any()}) {
        const bool bit = written.contains(probe) ? written[probe] : padrao != 0;
        const bool stored = shape.holds(probe) && !written.empty();
        ASSERT_EQ(TABBOOL_testa(&table, probe), stored ? bit : padrao) << probe;
      }
    }
    TABBOOL_destroi(&table);
  }
  TABBOOL_destroi(&table);
  if (platform::kOwnsHeap) {
    EXPECT_EQ(heap.blocks(), before);
  }
  EXPECT_EQ(table.tamanho, shape.count);
  EXPECT_EQ(table.base, shape.base);
  EXPECT_EQ(table.padrao, padrao);
}

TEST(Table, HoldsWhatAMapOfTheWrittenIndicesHolds) {
  Random random(71);
  for (const int count : {INT_MIN, -1, 0, 1, 7, 8, 9, 20, 1000})
    for (const int base : {INT_MIN, INT_MIN + 3, -5, 0, 10, INT_MAX - 10, INT_MAX})
      for (const int fallback : {0, 1, 5, 255, 256, -1}) {
        SCOPED_TRACE(testing::Message() << count << ' ' << base << ' ' << fallback);
        ASSERT_NO_FATAL_FAILURE(expect_like_a_map({count, base, fallback}, &random));
      }
}

TEST(Table, KeepsItsBitsLowestFirst) {
  platform::Heap heap(false);
  TABBOOL table;
  TABBOOL_cria(&table, 20, 10, 1);
  TABBOOL_reseta(&table, 12);
  if (platform::kOwnsHeap) {
    EXPECT_EQ(heap.last_size(), 3u);
  }
  EXPECT_EQ(table.mapa[0], 0xFB);
  EXPECT_EQ(table.mapa[1], 0xFF);
  EXPECT_EQ(table.mapa[2], 0xFF);
  TABBOOL_reseta(&table, 29);
  EXPECT_EQ(table.mapa[2], 0xF7);
  TABBOOL_seta(&table, 12);
  EXPECT_EQ(table.mapa[0], 0xFF);
  TABBOOL_destroi(&table);
}

TEST(Table, LosesTheWriteWithoutMemory) {
  if (!platform::kOwnsHeap) GTEST_SKIP() << "the heap is the sanitizer's";
  TABBOOL table;
  TABBOOL_cria(&table, INT_MAX, INT_MIN, 3);
  {
    platform::Heap heap(true);
    TABBOOL_seta(&table, -2);
    EXPECT_EQ(heap.last_size(), 268435456u);
    TABBOOL_reseta(&table, INT_MIN);
    EXPECT_EQ(TABBOOL_testa(&table, INT_MIN), 3);
  }
  EXPECT_EQ(table.mapa, nullptr);
  TABBOOL_cria(&table, 1, INT_MAX, 3);
  TABBOOL_reseta(&table, INT_MAX);
  EXPECT_EQ(TABBOOL_testa(&table, INT_MAX), 0);
  TABBOOL_destroi(&table);
}

TEST(Table, ExampleOfTheManual) {
  TABBOOL holidays;
  TABBOOL_cria(&holidays, 366, 1, 0);
  TABBOOL_seta(&holidays, 359);
  EXPECT_EQ(TABBOOL_testa(&holidays, 359), 1);
  EXPECT_EQ(TABBOOL_testa(&holidays, 360), 0);
  TABBOOL_destroi(&holidays);
}

}  // namespace
