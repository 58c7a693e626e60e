#include <campotipo/bits.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstring>
#include <ctime>
#include <set>
#include <string>

#include "tests/bits/platform.hpp"
#include "tests/reference/guid.hpp"
#include "tests/util/guarded_buffer.hpp"
#include "tests/util/random.hpp"

namespace {

using campotipo::reference::Guid;
using campotipo::reference::guid_parse;
using campotipo::reference::guid_text;
using campotipo::reference::sequence_text;
using campotipo::test::GuardedBuffer;
using campotipo::test::Random;
namespace platform = campotipo::test::platform;

Guid random_guid(Random *random) {
  Guid guid;
  for (unsigned char &byte : guid) byte = static_cast<unsigned char>(random->word());
  return guid;
}

class GuidTest : public testing::Test {
 protected:
  // Reads a text at the end of a page and one with room behind it, which take different ways.
  void expect_parse(const std::string &text) {
    const Guid expected = guid_parse(text.c_str());
    for (const bool at_end : {true, false}) {
      const char *from = text_.text(text);
      if (!at_end) {
        unsigned char *copy = text_.at_start(text.size() + 1);
        std::memcpy(copy, text.c_str(), text.size() + 1);
        from = reinterpret_cast<const char *>(copy);
      }
      unsigned char *dest = guid_.at_end(ZGUID_BYTES);
      ZGUID_parse(dest, from);
      ASSERT_EQ(std::memcmp(dest, expected.data(), ZGUID_BYTES), 0) << '"' << text << '"';
    }
  }

  GuardedBuffer text_, guid_;
};

TEST_F(GuidTest, ReadsTheDigitsWhateverStandsBetween) {
  for (const char *text : {"", "0011", "0g1h2", "-", "{", "{}", "{{{-1", "\n\t f", "-----",
                           "00112233-4455-6677-8899-aabbccddeeff-0011",
                           "0011223344556677-8899aabbccddeeff", "{00112233-4455-6677-8899"})
    ASSERT_NO_FATAL_FAILURE(expect_parse(text));
  Random random(76);
  for (int round = 0; round < 300; ++round) {
    std::string text;
    for (std::size_t length = random.between<std::size_t>(0, 60); text.size() < length;)
      text += random.word() % 8 == 0 ? static_cast<char>(random.between(1, 255))
                                     : "0123456789abcdefABCDEF-"[random.word() % 23];
    ASSERT_NO_FATAL_FAILURE(expect_parse(text));
  }
}

TEST_F(GuidTest, ReadsAnyByteAtAnyPlace) {
  Random random(77);
  for (const int flags : {0, ZGUID_HIFENS, ZGUID_HIFENS | ZGUID_CHAVES | ZGUID_MAIUSCULAS}) {
    const std::string text = guid_text(random_guid(&random).data(), flags);
    for (std::size_t place = 0; place < text.size(); ++place) {
      for (int byte = 0; byte < 256; ++byte) {
        std::string changed = text;
        changed[place] = static_cast<char>(byte);
        ASSERT_NO_FATAL_FAILURE(expect_parse(changed));
      }
    }
  }
}

TEST_F(GuidTest, WritesWhatItReads) {
  Random random(78);
  for (int round = 0; round < 100; ++round) {
    const Guid guid = random_guid(&random);
    for (int flags = 0; flags < 8; ++flags) {
      const std::string expected = guid_text(guid.data(), flags);
      for (const int more : {0, 8, INT_MIN, ~7}) {
        char *dest = text_.text_at_end(static_cast<std::size_t>(ZGUID_STRING_SIZE(flags)));
        ZGUID_string(dest, guid_.field(guid), flags | more);
        ASSERT_EQ(dest, expected);
        ASSERT_EQ(expected.size() + 1, static_cast<std::size_t>(ZGUID_STRING_SIZE(flags)));
      }
      ASSERT_NO_FATAL_FAILURE(expect_parse(expected));
    }
  }
}

TEST_F(GuidTest, ComesFromTheKernel) {
  std::set<Guid> made;
  for (int i = 0; i < 50; ++i) {
    unsigned char *dest = guid_.at_end(ZGUID_BYTES);
    ZGUID_gera(dest);
    Guid guid;
    std::copy_n(dest, ZGUID_BYTES, guid.begin());
    made.insert(guid);
    EXPECT_EQ(dest[6] >> 4, 4);
  }
  EXPECT_EQ(made.size(), 50u);
}

TEST_F(GuidTest, SequenceCountsFromZeroAndBeginsAnewAtItsEnd) {
  const std::time_t begun = 0x15F3A1B2C;
  platform::Clock clock(begun);
  const unsigned char bytes[9] = {0xAA, 0xBB, 3, 4, 5, 0xF6, 7, 8, 9};
  for (const int count : {INT_MIN, -1, 0, 1, 2, 5, 6, 7, 9, INT_MAX}) {
    unsigned char node[9] = {};
    std::memcpy(node, bytes, static_cast<std::size_t>(std::clamp(count, 0, 6)));
    GuardedBuffer given;
    // Bytes behind the sixth are not read.
    const auto size = static_cast<std::size_t>(std::clamp(count, 0, 6));
    const unsigned char *no = given.field({bytes, size});

    auto *state = reinterpret_cast<ZGUID_ESTADO *>(guid_.at_end(sizeof(ZGUID_ESTADO)));
    clock.set(begun);
    ZGUID_prepara(state, no, count);
    const std::uint32_t early = 0x5F3A1B2C, late = 0xFFFFFFFE;
    EXPECT_EQ(state->tempo, early);
    EXPECT_EQ(ZGUID_atual(state), state->texto);
    EXPECT_EQ(sequence_text(0, early, node), state->texto);
    EXPECT_EQ(state->texto[ZGUID_TEXTO_SIZE - 1], '\0');

    clock.set(late);
    EXPECT_EQ(sequence_text(1, early, node), ZGUID_proximo(state));
    state->contador = 0xFFFFFFFE;
    EXPECT_EQ(sequence_text(0xFFFFFFFF, early, node), ZGUID_proximo(state));
    EXPECT_EQ(sequence_text(0, late, node), ZGUID_proximo(state));
    EXPECT_EQ(sequence_text(0, late, node), ZGUID_atual(state));
    EXPECT_EQ(sequence_text(1, late, node), ZGUID_proximo(state));
  }
}

TEST(GuidSequence, HoldsToTheByte) {
  platform::Clock clock(0x5F3A1B2C);
  const unsigned char node[ZGUID_NO_BYTES] = {1, 2, 3, 4, 5, 6};
  ZGUID_ESTADO state;
  ZGUID_prepara(&state, node, ZGUID_NO_BYTES);
  EXPECT_STREQ(ZGUID_proximo(&state), "00000001-1b2c-403a-805f-060504030201");
  const unsigned char head[] = {0x2C, 0x1B, 0x3A, 0x5F, 1, 2, 3, 4, 5, 6, 1, 0, 0, 0, '0'};
  EXPECT_EQ(std::memcmp(&state, head, sizeof head), 0);
}

TEST(Guid, ExampleOfTheManual) {
  unsigned char guid[ZGUID_BYTES];
  char text[ZGUID_STRING_SIZE(ZGUID_HIFENS)];
  ZGUID_parse(guid, "{00112233-4455-6677-8899-AABBCCDDEEFF}");
  ZGUID_string(text, guid, ZGUID_HIFENS);
  EXPECT_STREQ(text, "00112233-4455-6677-8899-aabbccddeeff");
  EXPECT_EQ(ZGUID_STRING_SIZE(7), ZGUID_STRING_MAX_SIZE);
}

}  // namespace
