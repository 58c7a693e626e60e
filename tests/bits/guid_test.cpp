#include <gtest/gtest.h>

#include <climits>
#include <ctime>
#include <set>

#include "tests/bits/agreement.hpp"
#include "tests/util/random.hpp"

namespace {

using campotipo::reference::Guid;
using campotipo::reference::guid_text;
using campotipo::reference::sequence_text;
using campotipo::test::BitMemory;
using campotipo::test::GuardedBuffer;
using campotipo::test::guid_agrees;
using campotipo::test::Random;

std::time_t now = 0;

}  // namespace

// What the library's clock shows.
extern "C" std::time_t time(std::time_t *result) {
  if (result != nullptr) *result = now;
  return now;
}

namespace {

Guid random_guid(Random *random) {
  Guid guid;
  for (unsigned char &byte : guid) byte = static_cast<unsigned char>(random->word());
  return guid;
}

class GuidTest : public testing::Test {
 protected:
  // A text at the end of a page and one with room behind it take different ways.
  void expect_parse(const std::string &text) {
    for (memory_.at_end = true; guid_agrees(&memory_, text); memory_.at_end = false)
      if (!memory_.at_end) return;
    FAIL() << text;
  }

  BitMemory memory_;
};

TEST_F(GuidTest, ReadsTheDigitsWhateverStandsBetween) {
  for (const char *text : {"", "0011", "0g1h2", "-", "{", "{}", "{{{-1", "\n\t f", "-----",
                           "00112233-4455-6677-8899-aabbccddeeff-0011",
                           "0011223344556677-8899aabbccddeeff", "{00112233-4455-6677-8899"})
    ASSERT_NO_FATAL_FAILURE(expect_parse(text));
}

TEST_F(GuidTest, ReadsAnyByteAtAnyPlace) {
  Random random(77);
  for (const int flags : {0, ZGUID_HIFENS, ZGUID_HIFENS | ZGUID_CHAVES | ZGUID_MAIUSCULAS}) {
    const std::string text = guid_text(random_guid(&random).data(), flags);
    for (std::size_t place = 0; place < text.size(); ++place)
      for (int byte = 0; byte < 256; ++byte) {
        std::string changed = text;
        changed[place] = static_cast<char>(byte);
        ASSERT_NO_FATAL_FAILURE(expect_parse(changed));
      }
  }
}

TEST_F(GuidTest, WritesWhatItReads) {
  Random random(78);
  for (int round = 0; round < 100; ++round) {
    const Guid guid = random_guid(&random);
    for (int flags = 0; flags < 8; ++flags) {
      for (const int more : {0, 8, INT_MIN, ~7})
        ASSERT_TRUE(campotipo::test::guid_text_agrees(&memory_, guid, flags | more)) << flags;
      ASSERT_NO_FATAL_FAILURE(expect_parse(guid_text(guid.data(), flags)));
    }
  }
  EXPECT_EQ(ZGUID_STRING_SIZE(7), ZGUID_STRING_MAX_SIZE);
}

TEST_F(GuidTest, ComesFromTheKernel) {
  std::set<Guid> made;
  for (int i = 0; i < 50; ++i) {
    unsigned char *dest = memory_.first.at_end(ZGUID_BYTES);
    ZGUID_gera(dest);
    EXPECT_EQ(dest[6] >> 4, 4);
    Guid guid;
    std::copy_n(dest, ZGUID_BYTES, guid.begin());
    made.insert(guid);
  }
  EXPECT_EQ(made.size(), 50u);
}

TEST(GuidSequence, CountsFromZeroAndBeginsAnewAtItsEnd) {
  const std::time_t begun = 0x15F3A1B2C;
  GuardedBuffer memory;
  const unsigned char bytes[9] = {0xAA, 0xBB, 3, 4, 5, 0xF6, 7, 8, 9};
  for (const int count : {INT_MIN, -1, 0, 1, 2, 5, 6, 7, 9, INT_MAX}) {
    unsigned char node[9] = {};
    std::memcpy(node, bytes, static_cast<std::size_t>(std::clamp(count, 0, 6)));
    GuardedBuffer given;
    // Bytes behind the sixth are not read.
    const auto size = static_cast<std::size_t>(std::clamp(count, 0, 6));
    const unsigned char *no = given.field({bytes, size});

    auto *state = reinterpret_cast<ZGUID_ESTADO *>(memory.at_end(sizeof(ZGUID_ESTADO)));
    now = begun;
    ZGUID_prepara(state, no, count);
    const std::uint32_t early = 0x5F3A1B2C, late = 0xFFFFFFFE;
    EXPECT_EQ(state->tempo, early);
    EXPECT_EQ(ZGUID_atual(state), state->texto);
    EXPECT_EQ(sequence_text(0, early, node), state->texto);
    EXPECT_EQ(state->texto[ZGUID_TEXTO_SIZE - 1], '\0');

    now = late;
    EXPECT_EQ(sequence_text(1, early, node), ZGUID_proximo(state));
    state->contador = 0xFFFFFFFE;
    EXPECT_EQ(sequence_text(0xFFFFFFFF, early, node), ZGUID_proximo(state));
    EXPECT_EQ(sequence_text(0, late, node), ZGUID_proximo(state));
    EXPECT_EQ(sequence_text(0, late, node), ZGUID_atual(state));
    EXPECT_EQ(sequence_text(1, late, node), ZGUID_proximo(state));
  }
}

TEST(GuidSequence, HoldsToTheByte) {
  now = 0x5F3A1B2C;
  const unsigned char node[ZGUID_NO_BYTES] = {1, 2, 3, 4, 5, 6};
  ZGUID_ESTADO state;
  ZGUID_prepara(&state, node, ZGUID_NO_BYTES);
  EXPECT_STREQ(ZGUID_proximo(&state), "00000001-1b2c-403a-805f-060504030201");
  const unsigned char head[] = {0x2C, 0x1B, 0x3A, 0x5F, 1, 2, 3, 4, 5, 6, 1, 0, 0, 0, '0'};
  EXPECT_EQ(std::memcmp(&state, head, sizeof head), 0);
}

}  // namespace
