#include <gtest/gtest.h>

#include <cstring>
#include <fstream>
#include <string>

#include "tests/idnumbers/agreement.hpp"
#include "tests/util/random.hpp"

namespace {

using campotipo::test::GuardedBuffer;
using campotipo::test::Random;
using campotipo::test::TextMemory;
namespace reference = campotipo::reference;

ZALGORITM_TABELA random_table(Random &random) {
  ZALGORITM_TABELA table;
  table.position = static_cast<unsigned char>(random.between(0, random.between(0, 55)));
  table.modulus = static_cast<unsigned char>(random.between(0, 17));
  table.flags = static_cast<unsigned char>(random.word());
  const int greatest = random.between(0, 255);
  for (auto &weight : table.weights)
    weight = static_cast<unsigned char>(random.between(0, greatest));
  for (auto &result : table.results)
    result = static_cast<unsigned char>(random.between(0, random.between(9, 255)));
  return table;
}

TEST(Trata, DoesWhatTheTableSaysForEveryLengthAndFlag) {
  Random random(1);
  TextMemory memory;
  for (std::size_t length = 0; length <= 52; ++length)
    for (int round = 0; round < 40; ++round) {
      const ZALGORITM_TABELA table = random_table(random);
      const std::string text = round % 7 == 0 ? std::string(length, '0') : random.digits(length);
      std::string made = text;
      // A digit that fits is seen to fit, where it is one at all.
      if (!reference::treat(made, table, 1) || !reference::all_digits(made)) made = text;
      for (const int make : {0, 1, -3})
        ASSERT_TRUE(campotipo::test::engine_agrees(&memory, table, text, make)) << text;
      ASSERT_TRUE(campotipo::test::engine_agrees(&memory, table, made, 0)) << made;
    }
}

TEST(Trata, RefusesEveryOtherCharacterAtEveryPlace) {
  Random random(2);
  ZALGORITM_TABELA table = random_table(random);
  table.modulus = 11;
  table.position = 0;
  GuardedBuffer buffer;
  for (std::size_t length = 2; length <= 50; ++length) {
    const std::string digits = random.digits(length - 1) + '7';
    for (bool at_end : {true, false}) {
      auto *text = reinterpret_cast<char *>(at_end ? buffer.at_end(length + 1)
                                                   : buffer.at_start(length + 1));
      std::memcpy(text, digits.c_str(), length + 1);
      for (std::size_t place = 0; place < length; ++place) {
        for (int byte = 0; byte < 256; ++byte) {
          text[place] = static_cast<char>(byte);
          // A NUL only shortens the text.
          if (byte == 0 || (byte >= '0' && byte <= '9')) continue;
          ASSERT_EQ(ZALGORITM_trata(text, &table, 1), 0) << length << ' ' << place << ' ' << byte;
          ASSERT_EQ(text[length - 1], place == length - 1 ? static_cast<char>(byte) : '7');
        }
        text[place] = digits[place];
      }
    }
  }
}

TEST(Trata, TakesEachFlagAndModulusAsTold) {
  struct Case {
    int modulus, flags, weight;
    const char *text;
    int make, result;
    const char *after;
  };
  // Result i stands for remainder i; the digit is the last one.
  static constexpr Case kCases[] = {
      {10, 0, 2, "70", 1, 1, "74"}, {10, 1, 2, "70", 1, 1, "75"},  {10, 4, 2, "70", 1, 1, "75"},
      {10, 5, 2, "70", 1, 1, "75"}, {10, 5, 9, "70", 1, 1, "79"},  {10, 0, 2, "00", 1, 0, "00"},
      {10, 2, 2, "05", 1, 1, "00"}, {16, 0, 15, "10", 1, 1, "1?"}, {17, 0, 2, "70", 1, 0, "70"},
      {0, 0, 2, "70", 1, 0, "70"},  {1, 0, 255, "90", 0, 1, "90"}, {10, 0xF8, 2, "74", 0, 1, "74"},
      {10, 0, 2, "7", 1, 0, "7"},   {10, 0, 2, "", 1, 0, ""},
  };
  for (const Case &c : kCases) {
    ZALGORITM_TABELA table{};
    table.modulus = static_cast<unsigned char>(c.modulus);
    table.flags = static_cast<unsigned char>(c.flags);
    table.weights[1] = static_cast<unsigned char>(c.weight);
    for (unsigned i = 0; i < 16; ++i) table.results[i] = static_cast<unsigned char>(i);
    char text[8];
    std::strcpy(text, c.text);
    EXPECT_EQ(ZALGORITM_trata(text, &table, c.make), c.result) << c.text << ' ' << c.flags;
    EXPECT_STREQ(text, c.after);
  }
  ZALGORITM_TABELA refused{0, 17, 0, {}, {}};
  EXPECT_EQ(ZALGORITM_trata(nullptr, &refused, 1), 0) << "the text is not looked at";
}

TEST(Modulo11, MakesTheDigitOfEveryShortNumber) {
  ZALGORITM_TABELA table{0, 11, 0, {}, {1, 0, 9, 8, 7, 6, 5, 4, 3, 2, 1}};
  for (int i = 1; i < 50; ++i) table.weights[i] = static_cast<unsigned char>(2 + (i - 1) % 8);
  TextMemory memory;
  const auto expect = [&](const std::string &text, int make) {
    ASSERT_TRUE(
        campotipo::test::same(&memory, text, make, DIGVERIF_monta_dv_modulo11,
                              [&](std::string &t, int m) { return reference::treat(t, table, m); }))
        << text;
  };
  for (int number = 0; number < 10000; ++number) expect(std::to_string(number), number % 2);
  Random random(3);
  for (std::size_t length = 0; length <= 52; ++length)
    for (const int make : {0, 1}) expect(random.digits(length), make);
}

struct Taxpayer {
  const char *name;
  std::size_t digits;
  int (*validate)(char *, int);
};

constexpr Taxpayer kTaxpayers[] = {{"CPF", 11, ZALGORITM_valida_CPF},
                                   {"CNPJ", 14, ZALGORITM_valida_CNPJ}};

class TaxpayerTest : public testing::TestWithParam<Taxpayer> {};

TEST(Taxpayers, FollowThePublishedRuleInEveryLength) {
  Random random(4);
  TextMemory memory;
  const auto expect = [&](const std::string &text, int make) {
    ASSERT_TRUE(campotipo::test::taxpayers_agree(&memory, text, make)) << text << ' ' << make;
  };
  for (std::size_t length = 0; length <= 52; ++length)
    for (int round = 0; round < 60; ++round) {
      std::string text = random.digits(length);
      // Zeros in front, up to all of them.
      if (round % 2) std::fill_n(text.begin(), random.between<std::size_t>(0, length), '0');
      for (const int make : {1, 0}) expect(text, make);
      for (const auto &[digits, last] : {std::pair{11, 11}, {14, 9}}) {
        std::string made = text;
        if (reference::taxpayer(made, static_cast<std::size_t>(digits), last, 1)) expect(made, 0);
      }
      if (length == 0) continue;
      text[random.between<std::size_t>(0, length - 1)] = static_cast<char>(random.between(1, 255));
      expect(text, round % 2);
    }
}

TEST_P(TaxpayerTest, HasOnePairOfDigitsForEveryNumberButZero) {
  for (int number = 0; number < 3000; ++number) {
    std::string text(GetParam().digits, '0');
    const std::string digits = std::to_string(number * 32507 % 100000);
    text.replace(text.size() - 2 - digits.size(), digits.size(), digits);
    int valid = 0;
    for (int pair = 0; pair < 100; ++pair) {
      text[text.size() - 2] = static_cast<char>('0' + pair / 10);
      text[text.size() - 1] = static_cast<char>('0' + pair % 10);
      valid += GetParam().validate(text.data(), 0);
    }
    EXPECT_EQ(valid, number * 32507 % 100000 != 0) << text;
  }
}

INSTANTIATE_TEST_SUITE_P(Numbers, TaxpayerTest, testing::ValuesIn(kTaxpayers),
                         [](const auto &number) { return number.param.name; });

TEST(CheckDigit, KnownNumbers) {
  struct Case {
    int (*operation)(char *, int);
    std::string text;
    int make, result;
    std::string after;
  };
  const std::string zeros(25, '0');
  const Case kCases[] = {
      {ZALGORITM_valida_CPF, "12345678909", 0, 1, "12345678909"},
      {ZALGORITM_valida_CPF, "12345678908", 0, 0, "12345678908"},
      {ZALGORITM_valida_CPF, "12345678900", 1, 1, "12345678909"},
      {ZALGORITM_valida_CPF, "191", 0, 1, "191"},
      {ZALGORITM_valida_CPF, "00000000191", 0, 1, "00000000191"},
      {ZALGORITM_valida_CPF, zeros + "12345678909", 0, 1, zeros + "12345678909"},
      {ZALGORITM_valida_CPF, zeros + zeros + "9", 0, 0, zeros + zeros + "9"},
      {ZALGORITM_valida_CPF, "00000000000", 1, 0, "00000000000"},
      {ZALGORITM_valida_CPF, "11111111111", 0, 1, "11111111111"},
      {ZALGORITM_valida_CPF, "123456789012", 1, 0, "123456789092"},
      {ZALGORITM_valida_CPF, "123.456.789-09", 0, 0, "123.456.789-09"},
      {ZALGORITM_valida_CPF, "9", 1, 0, "9"},
      {ZALGORITM_valida_CPF, "", 1, 0, ""},
      {ZALGORITM_valida_CNPJ, "11222333000100", 1, 1, "11222333000181"},
      {ZALGORITM_valida_CNPJ, "191", 0, 1, "191"},
      {DIGVERIF_monta_dv_modulo11, "12340", 1, 1, "12343"},
      {DIGVERIF_monta_dv_modulo11, "00140", 1, 1, "00141"},
      {DIGVERIF_monta_dv_modulo11, "00060", 1, 1, "00060"},
      {DIGVERIF_monta_dv_modulo11, "00000", 1, 0, "00000"},
      {DIGVERIF_monta_dv_modulo11, "12340", 0, 0, "12340"},
  };
  for (const Case &c : kCases) {
    std::string text = c.text;
    EXPECT_EQ(c.operation(text.data(), c.make), c.result) << c.text;
    EXPECT_EQ(text, c.after);
  }
}

// The companies that hold a bank's code.
TEST(CheckDigit, EveryBankHasAGoodNumber) {
  std::ifstream banks(BANKS_CSV);
  std::string line;
  std::getline(banks, line);
  int count = 0;
  while (std::getline(banks, line)) {
    const std::size_t from = line.find(',', line.find(',') + 1) + 1;
    std::string number = line.substr(from, line.find(',', from) - from);
    EXPECT_EQ(ZALGORITM_valida_CNPJ(number.data(), 0), 1) << line;
    std::string made = number.substr(0, number.size() - 2) + "00";
    EXPECT_EQ(ZALGORITM_valida_CNPJ(made.data(), 1), 1);
    EXPECT_EQ(made, number);
    ++count;
  }
  EXPECT_EQ(count, 513);
}

}  // namespace
