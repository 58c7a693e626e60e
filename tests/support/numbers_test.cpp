#include <campotipo-support/numbers.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <string>

#include "tests/util/guarded_buffer.hpp"
#include "tests/util/random.hpp"

namespace {

using campotipo::test::GuardedBuffer;
using campotipo::test::Random;

struct Width {
  int bytes;
  std::size_t text_size;
  int (*parse)(unsigned char *, const char *);
  int (*parse_fixed)(unsigned char *, const char *, int);
  char *(*print)(char *, const unsigned char *);
  char *(*print_fixed)(char *, const unsigned char *, int);
  int (*compare)(const unsigned char *, const unsigned char *);
};

constexpr Width kWidths[] = {
    {1, BIN1_TEXT_SIZE, _ato1, _ato1fixo, _1toa, _1toafixo, BIN1_compara},
    {2, BIN2_TEXT_SIZE, _ato2, _ato2fixo, _2toa, _2toafixo, BIN2_compara},
    {3, BIN3_TEXT_SIZE, _ato3, _ato3fixo, _3toa, _3toafixo, BIN3_compara},
    {4, BIN4_TEXT_SIZE, _ato4, _ato4fixo, _4toa, _4toafixo, BIN4_compara},
    {5, BIN5_TEXT_SIZE, _ato5, _ato5fixo, _5toa, _5toafixo, BIN5_compara},
    {6, BIN6_TEXT_SIZE, _ato6, _ato6fixo, _6toa, _6toafixo, BIN6_compara},
    {7, BIN7_TEXT_SIZE, _ato7, _ato7fixo, _7toa, _7toafixo, BIN7_compara},
    {8, BIN8_TEXT_SIZE, _ato8, _ato8fixo, _8toa, _8toafixo, BIN8_compara},
};

// The obvious reading of a text, one digit after the other.
std::uint64_t reference(const std::string &text, int decimals) {
  std::size_t at = text.find_first_not_of(" \t\n\v\f\r");
  std::uint64_t value = 0;
  bool point = decimals < 0;  // without decimals asked for, a point ends the text
  int taken = 0;
  for (; at < text.size(); ++at) {
    if (text[at] == '.' && !point) {
      point = true;
    } else if (text[at] >= '0' && text[at] <= '9') {
      if (point && decimals >= 0 && taken++ == decimals) break;
      value = value * 10 + static_cast<unsigned>(text[at] - '0');
    } else {
      break;
    }
  }
  for (; taken < decimals; ++taken) value *= 10;
  return value;
}

class NumberTest : public testing::TestWithParam<Width> {
 protected:
  std::uint64_t mask() const { return ~std::uint64_t{0} >> (64 - 8 * GetParam().bytes); }

  unsigned char *field(std::uint64_t value) {
    unsigned char bytes[8];
    std::memcpy(bytes, &value, 8);
    return field_.field({bytes, static_cast<std::size_t>(GetParam().bytes)});
  }

  std::uint64_t value_of(const unsigned char *at) const {
    std::uint64_t value = 0;
    std::memcpy(&value, at, static_cast<std::size_t>(GetParam().bytes));
    return value;
  }

  GuardedBuffer field_, other_, text_, pages_{8192};
};

TEST_P(NumberTest, ReadsWhatTheDigitsSay) {
  Random random(1);
  const char *const texts[] = {"",       "0",
                               "7",      " \t\n\v\f\r42",
                               "99",     "12a",
                               "-5",     "+5",
                               ".5",     "1.5",
                               "12.345", "1.2.3",
                               "abc",    "18446744073709551616",
                               "1 2 3",  "12,5",
                               "9",      "00000000000000000000000000000000000000017"};
  std::vector<std::string> all(std::begin(texts), std::end(texts));
  for (std::size_t length = 0; length <= 45; ++length) {
    all.push_back(random.digits(length));
    all.push_back(random.digits(length) + "." + random.digits(length));
    all.push_back(random.digits(length) + static_cast<char>(random.between(1, 255)) + "123");
  }
  for (const std::string &text : all) {
    // At the end of a page, where a text may go on in the next one, it is read by bytes, elsewhere by
    // vectors that reach behind it.
    char roomy[256];
    std::memset(roomy, '7', sizeof roomy);
    std::memcpy(roomy, text.c_str(), text.size() + 1);
    char *across = pages_.text_at_end(4096 + 1 + text.size() % 31);
    std::memcpy(across, text.c_str(), text.size() + 1);
    for (const char *at :
         {text_.text(text), static_cast<const char *>(roomy), static_cast<const char *>(across)}) {
      unsigned char *dest = field(~std::uint64_t{0});
      const int result = GetParam().parse(dest, at);
      EXPECT_EQ(value_of(dest), reference(text, -1) & mask()) << '"' << text << '"';
      EXPECT_EQ(result, value_of(dest) != 0);
      for (int decimals : {0, 1, 2, 4, 19, 40, 63, 64, 1000}) {
        const int fixed = GetParam().parse_fixed(dest, at, decimals);
        EXPECT_EQ(value_of(dest), reference(text, decimals) & mask()) << text << ' ' << decimals;
        EXPECT_EQ(fixed, value_of(dest) != 0);
      }
    }
  }
  unsigned char *dest = field(1);
  GetParam().parse_fixed(dest, "3.7", -1);
  EXPECT_EQ(value_of(dest), 3u);
  GetParam().parse_fixed(dest, "3", 2147483647);
  EXPECT_EQ(value_of(dest), 0u);
}

TEST_P(NumberTest, WritesWhatPrintfWrites) {
  Random random(2);
  for (int round = 0; round < 2000; ++round) {
    const std::uint64_t value =
        (round < 100 ? static_cast<std::uint64_t>(round) : random.word_of_any_size()) & mask();
    const std::string expected = std::to_string(value);
    char *text = text_.text_at_end(expected.size() + 1);
    EXPECT_EQ(GetParam().print(text, field(value)), text);
    EXPECT_EQ(expected, text);
    EXPECT_LE(expected.size() + 1, GetParam().text_size);
    for (int decimals : {-1, 0, 1, 2, 7, 19, 25}) {
      std::string fixed = expected;
      if (decimals > 0) {
        const auto places = static_cast<std::size_t>(decimals);
        if (fixed.size() <= places) fixed.insert(0, places + 1 - fixed.size(), '0');
        fixed.insert(fixed.size() - places, 1, '.');
      }
      text = text_.text_at_end(fixed.size() + 1);
      EXPECT_EQ(GetParam().print_fixed(text, field(value), decimals), text);
      EXPECT_EQ(fixed, text);
    }
  }
  for (std::uint64_t power = 1; power != 0 && power <= mask();
       power = power > mask() / 10 ? 0 : power * 10) {
    for (std::uint64_t value : {power - 1, power}) {
      const std::string expected = std::to_string(value);
      EXPECT_EQ(expected, GetParam().print(text_.text_at_end(expected.size() + 1), field(value)));
    }
  }
}

TEST_P(NumberTest, ComparesByValue) {
  Random random(3);
  for (int round = 0; round < 2000; ++round) {
    const std::uint64_t a = random.word_of_any_size() & mask();
    const std::uint64_t b = (round % 3 == 0 ? a : a ^ (random.word_of_any_size() & mask()));
    unsigned char *left = field(a);
    unsigned char bytes[8];
    std::memcpy(bytes, &b, 8);
    unsigned char *right = other_.field({bytes, static_cast<std::size_t>(GetParam().bytes)});
    EXPECT_EQ(GetParam().compare(left, right), (a > b) - (a < b));
  }
}

INSTANTIATE_TEST_SUITE_P(Widths, NumberTest, testing::ValuesIn(kWidths),
                         [](const auto &width) { return std::to_string(width.param.bytes); });

TEST(EightByteNumber, WritesExactlyTheDigitsAskedFor) {
  Random random(4);
  GuardedBuffer field, text;
  for (int round = 0; round < 200; ++round) {
    const std::uint64_t value = round == 0 ? 0 : random.word_of_any_size();
    unsigned char bytes[8];
    std::memcpy(bytes, &value, 8);
    const unsigned char *src = field.field(bytes);
    const std::string padded = std::string(30, '0') + std::to_string(value);
    for (int digits = -1; digits <= 30; ++digits) {
      const auto count = static_cast<std::size_t>(digits < 0 ? 0 : digits);
      char *out = text.text_at_end(count + 1);
      EXPECT_EQ(_8btoa(src, out, digits), out);
      EXPECT_EQ(padded.substr(padded.size() - count), out);
    }
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
  GuardedBuffer field, wide;
  const unsigned char *src = field.field(std::to_array<unsigned char>({0x9F, 0xD1, 0x8F}));
  EXPECT_EQ(_3ulong(src), 0x8FD19Fu);
  unsigned char *dest = wide.at_end(8);
  _3to8(dest, src);
  const unsigned char expected[8] = {0x9F, 0xD1, 0x8F};
  EXPECT_EQ(std::memcmp(dest, expected, 8), 0);
}

TEST(NumberExamples, HoldToTheByte) {
  unsigned char field[8];
  _ato8(field, "9999999999999999999");
  const unsigned char limb[8] = {0xFF, 0xFF, 0xE7, 0x89, 0x04, 0x23, 0xC7, 0x8A};
  EXPECT_EQ(std::memcmp(field, limb, 8), 0);
  _ato2fixo(field, "100", 1);
  EXPECT_EQ(field[0], 0xE8);
  EXPECT_EQ(field[1], 0x03);
  char text[BIN2_TEXT_SIZE + 1];
  _ato2fixo(field, "12.5", 2);
  EXPECT_STREQ(_2toafixo(text, field, 2), "12.50");
}

}  // namespace
