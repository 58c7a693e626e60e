#include <gtest/gtest.h>

#include <climits>

#include "tests/bits/agreement.hpp"
#include "tests/util/random.hpp"

namespace {

using campotipo::test::CheckedTable;
using campotipo::test::Random;

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

TEST(Table, HoldsWhatAMapOfTheWrittenIndicesHoldsInTwoLives) {
  Random random(71);
  for (const int count : {INT_MIN, -1, 0, 1, 7, 8, 9, 20, 1000})
    for (const int base : {INT_MIN, INT_MIN + 3, -5, 0, 10, INT_MAX - 10, INT_MAX})
      for (const int fallback : {0, 1, 5, 255, 256, -1}) {
        CheckedTable table(count, base, fallback);
        const std::vector<int> indices = indices_of(base, count, &random);
        const auto any = [&] {
          return indices[random.between<std::size_t>(0, indices.size() - 1)];
        };
        for (int round = 0; round < 400; ++round) {
          const int index = any();
          table.write(index, random.word() % 2 != 0);
          for (const int probe : {index, any()})
            ASSERT_TRUE(table.agrees(probe)) << count << ' ' << base << ' ' << fallback;
          if (round == 200) {
            ASSERT_TRUE(table.empties());
          }
        }
      }
}

TEST(Table, KeepsItsBitsLowestFirst) {
  TABBOOL table;
  TABBOOL_cria(&table, 20, 10, 1);
  TABBOOL_reseta(&table, 12);
  EXPECT_EQ(std::string(reinterpret_cast<char *>(table.mapa), 3), "\xFB\xFF\xFF");
  TABBOOL_reseta(&table, 29);
  TABBOOL_seta(&table, 12);
  EXPECT_EQ(std::string(reinterpret_cast<char *>(table.mapa), 3), "\xFF\xFF\xF7");
  TABBOOL_destroi(&table);
}

}  // namespace
