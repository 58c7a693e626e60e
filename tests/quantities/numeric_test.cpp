// Fields of every width, 1 to 21 bytes, over all checks of agreement.hpp.
#include <gtest/gtest.h>

#include <algorithm>
#include <climits>

#include "base/digits.hpp"
#include "tests/quantities/agreement.hpp"
#include "tests/util/random.hpp"

namespace {

namespace reference = campotipo::test::reference;
using namespace campotipo::test;

constexpr int kDecimals[] = {INT_MIN, -1, 0,  1,  2,  3,  4,  18, 19, 20, 37, 38,  39,
                             40,      48, 49, 50, 51, 59, 60, 63, 64, 69, 70, 200, 1000};

// Digits with runs of zeros and nines among them, where carries and leading zeros go wrong.
std::string sample_digits(Random &random, std::size_t count) {
  std::string text = random.digits(count);
  for (int runs = random.between(0, 2); runs > 0 && count > 0; --runs) {
    const auto from = random.between<std::size_t>(0, count - 1);
    const auto length = random.between<std::size_t>(1, count - from);
    std::fill_n(text.begin() + static_cast<std::ptrdiff_t>(from), length,
                random.between(0, 1) == 0 ? '0' : '9');
  }
  return text;
}

// What the library stores, or what a damaged record may hold: each limb with any value, often at the
// ends of its range.
Field sample_field(Random &random, int width) {
  const reference::Shape shape = reference::shape(width);
  if (random.between(0, 2) != 0)
    return reference::from_text(
        width, sample_digits(random, random.between<std::size_t>(0, size_of(shape.digits))));
  Field field;
  for (int limb = 0; limb < shape.limbs; ++limb) {
    const std::uint64_t ends[] = {0,
                                  1,
                                  9999999999999999999u,
                                  10000000000000000000u,
                                  ~std::uint64_t{0},
                                  random.word(),
                                  random.word_of_any_size()};
    field += reference::number_field(ends[random.between(0, 6)],
                                     limb == shape.limbs - 1 ? shape.high_bytes : 8);
  }
  return field;
}

class NumericTest : public testing::TestWithParam<int> {
 protected:
  Field sample() { return sample_field(random_, width_); }

  void expect_reads(const std::string &text, int decimals) {
    // At the end of the last page, with a vector's bytes behind, and over the end of a page.
    for (const std::size_t behind :
         {std::size_t{0}, std::size_t{40}, 4095 + text.size() % 31 - text.size()})
      EXPECT_TRUE(reads(in_, width_, text, decimals, behind))
          << '"' << text << "\" with " << decimals << " before " << behind;
  }

  const int width_ = GetParam();
  Random random_{21};
  NumericMemory in_;
};

TEST_P(NumericTest, HasTheDigitsThatAlwaysFit) {
  EXPECT_EQ(ZBINARIO_max_digitos_decimais(width_), reference::shape(width_).digits);
  EXPECT_EQ(member_of(width_).digits, reference::shape(width_).digits);
  EXPECT_EQ(member_of(width_).bytes, width_);
}

TEST_P(NumericTest, ReadsTextsOfAnyLengthAndAnyCharacters) {
  for (const char *text :
       {"", ".", "..", "-5", "abc", " \t\n\v\f\r12.5",
        "\x0E"
        "1",
        "1.2.3", ".5", "12,5", "12.", "12.5-", "1 2", "00.00", "\xB2", "18446744073709551616"})
    for (const int decimals : kDecimals) expect_reads(text, decimals);
  expect_reads("3.7", INT_MAX);
  for (std::size_t length = 0; length <= 75; ++length) {
    for (int round = 0; round < 6; ++round) {
      std::string text = sample_digits(random_, length);
      // Long fractions too, so that the digits run out at every limit on either side of the point.
      if (round >= 3) text += '.' + sample_digits(random_, random_.between<std::size_t>(0, 75));
      if (round % 3 == 2 && !text.empty()) {
        text[random_.between<std::size_t>(0, text.size() - 1)] =
            length % 2 == 0 ? " \t\r.,-a/:"[random_.between(0, 8)]
                            : static_cast<char>(random_.between(1, 255));
      }
      expect_reads(text, kDecimals[random_.between<std::size_t>(0, std::size(kDecimals) - 1)]);
    }
  }
}

TEST_P(NumericTest, ShowsEveryFieldInItsOwnBytes) {
  for (int round = 0; round < 60; ++round) {
    Field field = round == 0   ? Field(size_of(width_), '\0')
                  : round == 1 ? Field(size_of(width_), '\xFF')
                               : sample();
    // A power of ten and its neighbour, of every length.
    if (round >= 2 && round < 53 && round - 2 < reference::shape(width_).digits)
      field = reference::from_text(width_, '1' + std::string(size_of(round - 2), '0'));
    for (int count = -1; count <= 60; ++count)
      EXPECT_TRUE(shows(in_, width_, field, count, count)) << round << ' ' << count;
    for (const int decimals : kDecimals)
      EXPECT_TRUE(shows(in_, width_, field, decimals, 1)) << round << ' ' << decimals;
  }
}

TEST_P(NumericTest, OrdersAsTheNumbersDo) {
  for (int round = 0; round < 2000; ++round) {
    const Field a = sample();
    Field b = round % 4 == 0 ? sample() : a;
    // Alike but for one place, so that the lower limbs decide too.
    if (round % 4 > 1)
      b[random_.between<std::size_t>(0, b.size() - 1)] ^= static_cast<char>(random_.word());
    EXPECT_TRUE(orders(in_, width_, a, b));
  }
}

TEST_P(NumericTest, MovesToEveryOtherWidth) {
  for (int to = 1; to <= ZBINARIO_MAX_WIDTH; ++to)
    for (int round = 0; round < 20; ++round)
      EXPECT_TRUE(moves(in_, width_, sample(), to)) << "to " << to;
}

TEST_P(NumericTest, IsScaledAsByCuttingAndAppendingDigits) {
  if (width_ < kFirstScaled) return;
  std::vector<unsigned> powers = {100, 255, 256, 1000, 65536, INT_MAX, 1u << 31, UINT_MAX};
  for (unsigned power = 0; power <= 70; ++power) powers.push_back(power);
  for (unsigned power = 1; power <= 19; ++power) powers.push_back(UINT_MAX - power);
  for (int round = 0; round < 40; ++round) {
    // Nines in one limb and in all: a remainder that an int64_t does not hold.
    const int nines = round == 0 ? 19 : reference::shape(width_).digits;
    const Field field =
        round < 2 ? reference::from_text(width_, std::string(size_of(nines), '9')) : sample();
    for (const unsigned power : powers)
      EXPECT_TRUE(scales(in_, width_, field, power))
          << reference::to_text(width_, field, 0) << " by 10^" << power;
  }
}

INSTANTIATE_TEST_SUITE_P(Widths, NumericTest, testing::Range(1, ZBINARIO_MAX_WIDTH + 1));

TEST(NumericForms, HoldToTheByte) {
  const struct {
    int width;
    std::string text;
    Field bytes;
  } cases[] = {
      {2, "1000", "\xE8\x03"},
      {8, "9999999999999999999", "\xFF\xFF\xE7\x89\x04\x23\xC7\x8A"},
      {9, "123456789012345678901", "\x35\x6C\x56\xB8\x4A\xFB\xF8\x2F\x0C"},
      {9, "10000000000000000000", Field(8, '\0') + '\1'},
      {9, "9999999999999999999", Field("\xFF\xFF\xE7\x89\x04\x23\xC7\x8A\0", 9)},
      {11, "12345678901234567890123456", "\xC0\xBA\x84\xC1\xAD\x89\x87\x7B\x87\xD6\x12"},
      {17, "1234567890123456789012345678901234567890",
       "\xD2\x0A\x37\x61\x88\x86\x8D\x20\x35\x6C\x56\xB8\x4A\xFB\xF8\x2F\x0C"},
      {21, std::string(1, '1').append(38, '0'), Field(16, '\0') + '\1' + Field(4, '\0')},
  };
  for (const auto &[width, text, bytes] : cases) {
    unsigned char field[ZBINARIO_MAX_WIDTH];
    member_of(width).from_text(field, text.c_str());
    EXPECT_EQ(field_at(field, width), bytes) << text;
  }
  unsigned char widest[ZBINARIO_MAX_WIDTH];
  std::memset(widest, 0xFF, sizeof widest);
  char text[ZBINARIO_TEXT_SIZE];
  EXPECT_STREQ(BINQ21_btoa(text, widest), "109951162777584467440737095516158446744073709551615");
}

TEST(WidthOutOfRange, IsAnsweredByEachInItsWayAndTouchesNothingElse) {
  GuardedBuffer nothing, field;
  unsigned char *const none = nothing.at_end(0);
  char *const no_text = reinterpret_cast<char *>(none);
  unsigned char *src = field.at_end(1);
  *src = 5;
  for (const int width : {0, 22, 23, 64, 1000, INT_MAX, -1, -9, INT_MIN}) {
    SCOPED_TRACE(width);
    EXPECT_EQ(ZBINARIO_max_digitos_decimais(width), 1);
    EXPECT_EQ(ZBINARIO_bem_formado(width, none), 0);
    EXPECT_EQ(ZBINARIO_compara(width, none, none), -1);
    EXPECT_EQ(ZBINARIO_converteu_para_binario(none, width, "12"), 0);
    EXPECT_EQ(ZBINARIO_converteu_de_binario(no_text, none, width), 0);
    EXPECT_EQ(ZBINARIO_converteu_n_de_binario(no_text, none, width, 3), 0);
    EXPECT_EQ(ZBINARIO_move_para_de(none, width, src, 1), 0);
    EXPECT_EQ(ZBINARIO_move_para_de(src, 1, none, width), 0);
    EXPECT_EQ(*src, 5);
    char text[] = "before";
    EXPECT_EQ(ZBINARIO_btoafixo(width, text, none, 2), text);
    EXPECT_STREQ(text, "");
    if (width > 4096) continue;
    GuardedBuffer cleared;
    unsigned char *dest = cleared.at_end(size_of(std::max(width, 0)));
    ZBINARIO_atobfixo(width, dest, "12", 0);
    for (int i = 0; i < width; ++i) EXPECT_EQ(dest[i], 0);
  }
}

TEST(EightByteNumber, WritesExactlyTheDigitsAskedFor) {
  Random random(4);
  NumericMemory in;
  for (int round = 0; round < 200; ++round) {
    const std::uint64_t value = round == 0 ? 0 : random.word_of_any_size();
    const unsigned char *src = place(in.dest, reference::number_field(value, 8));
    for (int digits = -1; digits <= 30; ++digits)
      EXPECT_TRUE(
          shows_text(in, reference::rightmost(std::to_string(value), size_of(std::max(digits, 0))),
                     [&](char *out) { return _8btoa(src, out, digits) == out; }));
  }
}

TEST(EightByteNumber, CalculatesModulo2To64InPlaceToo) {
  const std::uint64_t a = 0xFEDCBA9876543210, b = 0x123456789ABCDEF1;
  for (int factor : {0, 1, 2, 255}) {
    std::uint64_t value = a;
    auto *bytes = reinterpret_cast<unsigned char *>(&value);
    _8byte_mul_byte(bytes, bytes, factor);
    EXPECT_EQ(value, a * static_cast<unsigned>(factor));
    value = a;
    _8byte_div_byte(bytes, bytes, factor);
    EXPECT_EQ(value, factor == 0 ? 0 : a / static_cast<unsigned>(factor));
  }
  std::uint64_t sum = a;
  auto *bytes = reinterpret_cast<unsigned char *>(&sum);
  _8soma(bytes, bytes, reinterpret_cast<const unsigned char *>(&b));
  EXPECT_EQ(sum, a + b);
}

TEST(ThreeByteNumber, IsReadAndWidened) {
  NumericMemory in;
  const unsigned char *src = place(in.dest, "\x9F\xD1\x8F");
  EXPECT_EQ(_3ulong(src), 0x8FD19Fu);
  unsigned char *dest = in.other.at_end(8);
  _3to8(dest, src);
  EXPECT_EQ(field_at(dest, 8), reference::number_field(0x8FD19F, 8));
}

TEST(Reciprocal, DividesByEachPowerOfTenAsTheInstructionDoes) {
  Random random(34);
  std::uint64_t power = 1;
  for (unsigned j = 1; j <= 19; ++j) {
    power *= 10;
    for (int round = 0; round < 20000; ++round) {
      // Every other number is a multiple of the power or one below it.
      std::uint64_t number = round == 1 ? ~std::uint64_t{0} : random.word_of_any_size();
      if (round % 2 == 0) number = number - number % power - (round % 4 == 0);
      ASSERT_EQ(campotipo::digits::divide_by_power(number, j), number / power)
          << number << ' ' << j;
    }
  }
}

}  // namespace
