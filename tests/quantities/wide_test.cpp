#include <campotipo/quantities.h>
#include <gtest/gtest.h>

#include <climits>
#include <cstring>
#include <string>

#include "tests/quantities/sample_fields.hpp"

namespace {

namespace reference = campotipo::test::reference;
using campotipo::test::any_field;
using campotipo::test::bytes_of;
using campotipo::test::field_at;
using campotipo::test::GuardedBuffer;
using campotipo::test::Random;
using campotipo::test::sample_digits;
using campotipo::test::sample_field;
using reference::Field;

struct Member {
  int bytes;
  int digits;
  int text_size;
  int (*from_text)(unsigned char *, const char *);
  int (*from_text_fixed)(unsigned char *, const char *, int);
  char *(*to_text_fixed)(char *, const unsigned char *, int);
  char *(*to_text)(char *, const unsigned char *);
  int (*compare)(const unsigned char *, const unsigned char *);
};

constexpr Member kMembers[] = {
    {BINQ9_BYTES, BINQ9_DIGITS, BINQ9_TEXT_SIZE, BINQ9_atob, BINQ9_atob_fixo, BINQ9_btoafixo,
     BINQ9_btoa, BINQ9_compara},
    {BINQ10_BYTES, BINQ10_DIGITS, BINQ10_TEXT_SIZE, BINQ10_atob, BINQ10_atob_fixo, BINQ10_btoafixo,
     BINQ10_btoa, BINQ10_compara},
    {BINQ11_BYTES, BINQ11_DIGITS, BINQ11_TEXT_SIZE, BINQ11_atob, BINQ11_atob_fixo, BINQ11_btoafixo,
     BINQ11_btoa, BINQ11_compara},
    {BINQ12_BYTES, BINQ12_DIGITS, BINQ12_TEXT_SIZE, BINQ12_atob, BINQ12_atob_fixo, BINQ12_btoafixo,
     BINQ12_btoa, BINQ12_compara},
    {BINQ13_BYTES, BINQ13_DIGITS, BINQ13_TEXT_SIZE, BINQ13_atob, BINQ13_atob_fixo, BINQ13_btoafixo,
     BINQ13_btoa, BINQ13_compara},
    {BINQ14_BYTES, BINQ14_DIGITS, BINQ14_TEXT_SIZE, BINQ14_atob, BINQ14_atob_fixo, BINQ14_btoafixo,
     BINQ14_btoa, BINQ14_compara},
    {BINQ15_BYTES, BINQ15_DIGITS, BINQ15_TEXT_SIZE, BINQ15_atob, BINQ15_atob_fixo, BINQ15_btoafixo,
     BINQ15_btoa, BINQ15_compara},
    {BINQ16_BYTES, BINQ16_DIGITS, BINQ16_TEXT_SIZE, BINQ16_atob, BINQ16_atob_fixo, BINQ16_btoafixo,
     BINQ16_btoa, BINQ16_compara},
    {BINQ17_BYTES, BINQ17_DIGITS, BINQ17_TEXT_SIZE, BINQ17_atob, BINQ17_atob_fixo, BINQ17_btoafixo,
     BINQ17_btoa, BINQ17_compara},
    {BINQ18_BYTES, BINQ18_DIGITS, BINQ18_TEXT_SIZE, BINQ18_atob, BINQ18_atob_fixo, BINQ18_btoafixo,
     BINQ18_btoa, BINQ18_compara},
    {BINQ19_BYTES, BINQ19_DIGITS, BINQ19_TEXT_SIZE, BINQ19_atob, BINQ19_atob_fixo, BINQ19_btoafixo,
     BINQ19_btoa, BINQ19_compara},
    {BINQ20_BYTES, BINQ20_DIGITS, BINQ20_TEXT_SIZE, BINQ20_atob, BINQ20_atob_fixo, BINQ20_btoafixo,
     BINQ20_btoa, BINQ20_compara},
    {BINQ21_BYTES, BINQ21_DIGITS, BINQ21_TEXT_SIZE, BINQ21_atob, BINQ21_atob_fixo, BINQ21_btoafixo,
     BINQ21_btoa, BINQ21_compara},
};

class WideTest : public testing::TestWithParam<Member> {
 protected:
  int width() const { return GetParam().bytes; }
  std::size_t size() const { return static_cast<std::size_t>(width()); }
  std::size_t capacity() const { return static_cast<std::size_t>(GetParam().digits); }

  // A text at the end of a page, where nothing may be read behind it, and one with digits behind.
  Field parse(const std::string &text) {
    char roomy[256];
    std::memset(roomy, '7', sizeof roomy);
    std::memcpy(roomy, text.c_str(), text.size() + 1);
    Field field;
    for (const char *at : {static_cast<const char *>(roomy), text_.text(text)}) {
      unsigned char *dest = dest_.at_end(size());
      const int result = GetParam().from_text(dest, at);
      if (at != roomy) {
        EXPECT_EQ(field_at(dest, width()), field) << '"' << text << '"';
      }
      field = field_at(dest, width());
      EXPECT_EQ(result, !reference::is_zero(field)) << '"' << text << '"';
    }
    return field;
  }

  std::string print(const Field &field, int decimals, std::size_t text_size) {
    char *text = text_.text_at_end(text_size);
    EXPECT_EQ(GetParam().to_text_fixed(text, dest_.field(bytes_of(field)), decimals), text);
    return text;
  }

  GuardedBuffer dest_, other_, text_;
};

TEST_P(WideTest, KeepsTheRightmostDigitsOfATextOfAnyLength) {
  Random random(21);
  EXPECT_EQ(capacity(), static_cast<std::size_t>(reference::shape(width()).digits));
  for (std::size_t length = 0; length <= capacity() + 25; ++length) {
    for (int round = 0; round < 12; ++round) {
      const std::string text = sample_digits(random, length);
      const Field field = parse(text);
      EXPECT_EQ(field, reference::from_text(width(), text)) << text;
      std::string number = reference::rightmost(text, capacity());
      number.erase(0, std::min(number.find_first_not_of('0'), number.size() - 1));
      char *out = text_.text_at_end(number.size() + 1);
      EXPECT_EQ(GetParam().to_text(out, dest_.field(bytes_of(field))), out);
      EXPECT_EQ(number, out);
      EXPECT_LE(number.size() + 1, static_cast<std::size_t>(GetParam().text_size));
    }
  }
}

TEST_P(WideTest, CutsByPositionWhateverTheCharacters) {
  Random random(22);
  for (std::size_t length = 1; length <= capacity() + 25; ++length) {
    for (int round = 0; round < 12; ++round) {
      std::string text = sample_digits(random, length);
      for (int marks = random.between(1, 3); marks > 0; --marks) {
        text[random.between<std::size_t>(0, length - 1)] =
            round % 2 == 0 ? " \t\r.,-a/:"[random.between(0, 8)]
                           : static_cast<char>(random.between(1, 255));
      }
      EXPECT_EQ(parse(text), reference::from_text(width(), text)) << '"' << text << '"';
    }
  }
}

TEST_P(WideTest, PutsThePointBeforeTheLastDecimals) {
  Random random(23);
  for (int round = 0; round < 60; ++round) {
    const Field field = round == 0       ? Field(size(), '\0')
                        : round % 4 == 0 ? any_field(random, width())
                                         : sample_field(random, width());
    for (int decimals : {INT_MIN, -1, 200}) {
      const std::string expected = reference::to_text(width(), field, decimals);
      EXPECT_EQ(print(field, decimals, expected.size() + 1), expected);
    }
    for (int decimals = 0; decimals <= GetParam().digits + 25; ++decimals) {
      const std::string expected = reference::to_text(width(), field, decimals);
      EXPECT_EQ(print(field, decimals, expected.size() + 1), expected);
      // One byte more for a high limb out of range.
      const int promised = BINQ_FIXO_TEXT_SIZE(GetParam().digits, decimals) + (round % 4 == 0);
      EXPECT_LE(expected.size() + 1, static_cast<std::size_t>(promised));
    }
  }
}

TEST_P(WideTest, ReadsATextWithADecimalPoint) {
  Random random(24);
  auto check = [&](const std::string &text) {
    const char *guarded = text_.text(text);
    for (int decimals : {INT_MIN, -1, 0,  1,  2,  3,  18, 19, 20,  37,      38,     39,
                         48,      49, 50, 51, 59, 60, 69, 70, 100, 1000000, INT_MAX}) {
      unsigned char *dest = dest_.at_end(size());
      const int result = GetParam().from_text_fixed(dest, guarded, decimals);
      const Field field = field_at(dest, width());
      EXPECT_EQ(field, reference::from_text_fixed(width(), text, decimals))
          << '"' << text << "\" with " << decimals;
      EXPECT_EQ(result, !reference::is_zero(field));
    }
  };
  for (const char *text : {"", ".", "..", "-5", "abc", " \t\n\v\f\r12.5",
                           "\x0E"
                           "1",
                           "1.2.3", ".5", "12,5", "12.", "12.5-", "1 2", "00.00", "\xB2"})
    check(text);
  for (int round = 0; round < 300; ++round) {
    std::string text = sample_digits(random, random.between<std::size_t>(0, 80));
    // Long fractions too, so that the digits run out at every limit on either side of the point.
    if (round % 5 != 0) text += '.' + sample_digits(random, random.between<std::size_t>(0, 80));
    if (round % 7 == 0) text += ".7";
    if (round % 11 == 0) text.insert(0, 3, ' ');
    check(text);
  }
}

TEST_P(WideTest, OrdersAsTheNumbersDo) {
  Random random(25);
  for (int round = 0; round < 2000; ++round) {
    const Field a = round % 3 == 0 ? any_field(random, width()) : sample_field(random, width());
    Field b = round % 3 == 0 ? any_field(random, width()) : sample_field(random, width());
    // Alike but for one place, so that the lower limbs decide too.
    if (round % 4 != 0) {
      b = a;
      if (round % 4 != 1)
        b[random.between<std::size_t>(0, size() - 1)] ^= static_cast<char>(random.word());
    }
    unsigned char *left = dest_.field(bytes_of(a));
    const int order = GetParam().compare(left, other_.field(bytes_of(b)));
    EXPECT_EQ(order, reference::compare(width(), a, b));
    EXPECT_EQ(GetParam().compare(left, left), 0);
    if (round % 12 == 4) {  // both within range: the digits themselves give the same order
      const int text_order =
          reference::rightmost(reference::to_text(width(), a, 0), 51)
              .compare(reference::rightmost(reference::to_text(width(), b, 0), 51));
      EXPECT_EQ(order, (text_order > 0) - (text_order < 0));
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Members, WideTest, testing::ValuesIn(kMembers),
                         [](const auto &member) { return std::to_string(member.param.bytes); });

TEST(WideStoredForms, HoldToTheByte) {
  const struct {
    int width;
    std::string text;
    Field bytes;
  } cases[] = {
      {9, "123456789012345678901", "\x35\x6C\x56\xB8\x4A\xFB\xF8\x2F\x0C"},
      {9, "10000000000000000000", Field(8, '\0') + '\1'},
      {9, "9999999999999999999", Field("\xFF\xFF\xE7\x89\x04\x23\xC7\x8A\0", 9)},
      {11, "12345678901234567890123456", "\xC0\xBA\x84\xC1\xAD\x89\x87\x7B\x87\xD6\x12"},
      {17, "1234567890123456789012345678901234567890",
       "\xD2\x0A\x37\x61\x88\x86\x8D\x20\x35\x6C\x56\xB8\x4A\xFB\xF8\x2F\x0C"},
      {21, std::string(1, '1').append(38, '0'), Field(16, '\0') + '\1' + Field(4, '\0')},
  };
  for (const auto &[width, text, bytes] : cases) {
    unsigned char field[BINQ21_BYTES];
    kMembers[width - 9].from_text(field, text.c_str());
    EXPECT_EQ(field_at(field, width), bytes) << text;
  }
}

}  // namespace
