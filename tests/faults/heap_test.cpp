// Memory that runs out at each allocation in turn.

#include <campotipo-support/text.h>
#include <campotipo/bits.h>
#include <campotipo/codes.h>
#include <gtest/gtest.h>

#include <climits>
#include <string>
#include <vector>

#include "tests/util/failing_malloc.hpp"
#include "tests/util/random.hpp"

namespace {

using campotipo::test::FailingHeap;
using campotipo::test::nothing_behind_newest_block;

// Runs the body with the heap failing from its first allocation on, from the second, and so on up to
// the run in which none fails; nothing may stay allocated. Returns the number of runs.
template <class Body>
int at_each_point(Body body) {
  for (int point = 1;; ++point) {
    SCOPED_TRACE(point);
    FailingHeap heap(point);
    body(heap);
    EXPECT_EQ(heap.blocks(), 0);
    if (!heap.failed() || testing::Test::HasFailure()) return point;
  }
}

TEST(FailingHeap, LeavesARecordThatIsNotValid) {
  const int runs = at_each_point([](const FailingHeap &heap) {
    CODALFNN record;
    char text[21] = "before";
    CODALFNN_cria(&record, 20, 0);
    CODALFNN_atob(&record, "CODE");
    EXPECT_EQ(CODALFNN_ok(&record), !heap.failed());
    EXPECT_EQ(CODALFNN_numero_de_caracteres(&record), heap.failed() ? 0 : 20);
    EXPECT_STREQ(CODALFNN_btoa(text, &record), heap.failed() ? "" : "CODE");
    CODALFNN_destroi(&record);
  });
  EXPECT_EQ(runs, 2);
}

TEST(FailingHeap, LosesTheWriteIntoATable) {
  for (const auto write : {TABBOOL_seta, TABBOOL_reseta})
    for (const int fallback : {0, 1}) {
      const int runs = at_each_point([=](const FailingHeap &heap) {
        TABBOOL table;
        TABBOOL_cria(&table, 1000, -500, fallback);
        write(&table, 7);
        EXPECT_EQ(TABBOOL_testa(&table, 7), heap.failed() ? fallback : write == TABBOOL_seta);
        EXPECT_EQ(TABBOOL_testa(&table, 8), fallback);
        EXPECT_EQ(table.mapa == nullptr, heap.failed());
        TABBOOL_destroi(&table);
      });
      EXPECT_EQ(runs, 2);
    }
}

TEST(FailingHeap, IsAskedForATableAtItsFirstWriteInRangeAlone) {
  TABBOOL table;
  const FailingHeap heap(LONG_MAX);
  TABBOOL_cria(&table, 20, 10, 1);
  for (const int index : {9, 30}) TABBOOL_seta(&table, index);
  EXPECT_EQ(heap.blocks(), 0);
  for (const int index : {12, 10, 29, 30}) TABBOOL_reseta(&table, index);
  EXPECT_EQ(heap.blocks(), 1);
  EXPECT_EQ(campotipo::test::last_size, 3u);
  EXPECT_TRUE(nothing_behind_newest_block());
  TABBOOL_destroi(&table);
  TABBOOL_destroi(&table);
  EXPECT_EQ(heap.blocks(), 0);
}

TEST(FailingHeap, IsNotAskedForAGuid) {
  const FailingHeap heap(1);
  unsigned char guid[ZGUID_BYTES];
  ZGUID_gera(guid);
  EXPECT_EQ(guid[6] >> 4, 4);
  EXPECT_FALSE(heap.failed());
}

// The pieces up to the first that did not fit, and none behind it.
TEST(FailingHeap, KeepsTheTextSoFar) {
  campotipo::test::Random random(91);
  std::vector<std::string> pieces;
  for (int i = 0; i < 60; ++i) pieces.emplace_back(random.between(0, 300), "abcdefg"[i % 7]);
  const int runs = at_each_point([&](const FailingHeap &heap) {
    int untouched = 0;
    LINHAFLEX line = &untouched;
    if (LINHAFLEX_cria(&line) != 0) {
      EXPECT_TRUE(heap.failed());
      EXPECT_EQ(line, &untouched);
      return;
    }
    std::string expected;
    for (const std::string &piece : pieces) {
      const int count = LINHAFLEX_printf(line, "%s", piece.c_str());
      if (!heap.failed()) expected += piece;
      EXPECT_EQ(count, heap.failed() ? -1 : static_cast<int>(piece.size()));
      EXPECT_EQ(LINHAFLEX_str(line), expected);
      EXPECT_TRUE(nothing_behind_newest_block());
    }
    LINHAFLEX_destroi(line);
  });
  EXPECT_GT(runs, 4);
}

TEST(FailingHeap, CutsADumpBetweenTwoPieces) {
  std::vector<ZBTFIELD_CAMPO> table(200, {13, 0});
  table.push_back({0, 0});
  const std::vector<unsigned char> packed(ZBTFIELD_BYTES(13 * 200), 0x5A);
  for (const auto dump : {ZBTFIELD_depura_binario, ZBTFIELD_depura_conteudo,
                          ZBTFIELD_big_depura_binario, ZBTFIELD_big_depura_conteudo}) {
    std::string whole(ZBTFIELD_DEPURA_CONTEUDO_SIZE(200), '#');
    dump(whole.data(), static_cast<int>(whole.size()), packed.data(), table.data());
    whole = whole.c_str();
    std::string buffer(whole.size() + 1, '#');
    const int runs = at_each_point([&](const FailingHeap &heap) {
      dump(buffer.data(), static_cast<int>(buffer.size()), packed.data(), table.data());
      const std::string text = buffer.c_str();
      EXPECT_EQ(text, whole.substr(0, text.size()));
      EXPECT_EQ(text.size() < whole.size(), heap.failed());
    });
    EXPECT_GT(runs, 4);
  }
}

}  // namespace
