#include <campotipo/quantities.h>
#include <gtest/gtest.h>

#include <climits>
#include <cstring>
#include <string>

#include "base/digits.hpp"
#include "tests/quantities/sample_fields.hpp"

namespace {

namespace reference = campotipo::test::reference;
using campotipo::test::any_field;
using campotipo::test::bytes_of;
using campotipo::test::field_at;
using campotipo::test::GuardedBuffer;
using campotipo::test::Random;
using campotipo::test::sample_field;
using reference::Field;

struct Member {
  int bytes;
  int (*divide)(unsigned char *, const unsigned char *, unsigned int);
  int (*divide_by_10)(unsigned char *, const unsigned char *);
  int (*divide_by_100)(unsigned char *, const unsigned char *);
  void (*multiply)(unsigned char *, const unsigned char *, unsigned int);
  void (*multiply_by_10)(unsigned char *, const unsigned char *);
  void (*multiply_by_100)(unsigned char *, const unsigned char *);
};

constexpr Member kMembers[] = {
    {16, BINQ16_div_por_potencia_de_dez, BINQ16_div_por_10, BINQ16_div_por_100,
     BINQ16_mul_por_potencia_de_dez, BINQ16_mul_por_10, BINQ16_mul_por_100},
    {17, BINQ17_div_por_potencia_de_dez, BINQ17_div_por_10, BINQ17_div_por_100,
     BINQ17_mul_por_potencia_de_dez, BINQ17_mul_por_10, BINQ17_mul_por_100},
    {18, BINQ18_div_por_potencia_de_dez, BINQ18_div_por_10, BINQ18_div_por_100,
     BINQ18_mul_por_potencia_de_dez, BINQ18_mul_por_10, BINQ18_mul_por_100},
    {19, BINQ19_div_por_potencia_de_dez, BINQ19_div_por_10, BINQ19_div_por_100,
     BINQ19_mul_por_potencia_de_dez, BINQ19_mul_por_10, BINQ19_mul_por_100},
    {20, BINQ20_div_por_potencia_de_dez, BINQ20_div_por_10, BINQ20_div_por_100,
     BINQ20_mul_por_potencia_de_dez, BINQ20_mul_por_10, BINQ20_mul_por_100},
    {21, BINQ21_div_por_potencia_de_dez, BINQ21_div_por_10, BINQ21_div_por_100,
     BINQ21_mul_por_potencia_de_dez, BINQ21_mul_por_10, BINQ21_mul_por_100},
};

std::vector<unsigned> sample_powers() {
  std::vector<unsigned> powers = {100, 255, 256, 1000, 65536, INT_MAX, 1u << 31, UINT_MAX};
  for (unsigned power = 0; power <= 70; ++power) powers.push_back(power);
  for (unsigned power = 1; power <= 19; ++power) powers.push_back(UINT_MAX - power);
  return powers;
}

class ScalingTest : public testing::TestWithParam<Member> {
 protected:
  int width() const { return GetParam().bytes; }

  Field divided(const Field &field, unsigned power, int &remainder) {
    unsigned char *dest = dest_.at_end(field.size());
    remainder = GetParam().divide(dest, src_.field(bytes_of(field)), power);
    return field_at(dest, width());
  }

  Field multiplied(const Field &field, unsigned power) {
    unsigned char *dest = dest_.at_end(field.size());
    GetParam().multiply(dest, src_.field(bytes_of(field)), power);
    return field_at(dest, width());
  }

  GuardedBuffer dest_, src_;
};

TEST_P(ScalingTest, GivesWhatCuttingAndAppendingDigitsGives) {
  Random random(31);
  const std::vector<unsigned> powers = sample_powers();
  for (int round = 0; round < 40; ++round) {
    // Nines in one limb and in all: a remainder that an int64_t does not hold.
    const int nines = round == 1 ? 19 : reference::shape(width()).digits;
    const Field field = round == 0 ? Field(static_cast<std::size_t>(width()), '\0')
                        : round < 3
                            ? reference::from_text(width(), std::string(std::size_t(nines), '9'))
                        : round % 2 ? sample_field(random, width())
                                    : any_field(random, width());
    for (unsigned power : powers) {
      SCOPED_TRACE(reference::to_text(width(), field, 0) + " by 10^" + std::to_string(power));
      const reference::Quotient quotient = reference::divide(width(), field, power);
      int remainder = 0;
      EXPECT_EQ(divided(field, power, remainder), quotient.field);
      EXPECT_EQ(remainder, quotient.remainder);
      EXPECT_EQ(multiplied(field, power), reference::multiply(width(), field, power));
    }
  }
}

TEST_P(ScalingTest, WorksInPlaceAndByTenAndHundred) {
  Random random(32);
  for (int round = 0; round < 300; ++round) {
    const Field field = round % 3 == 0 ? any_field(random, width()) : sample_field(random, width());
    const auto power = random.between(0u, 60u);
    int remainder = 0, by_10 = 0, by_100 = 0;
    const Field up = multiplied(field, power);
    const Field down = divided(field, power, remainder);
    unsigned char *same = src_.field(bytes_of(field));
    GetParam().multiply(same, same, power);
    EXPECT_EQ(field_at(same, width()), up);
    same = src_.field(bytes_of(field));
    EXPECT_EQ(GetParam().divide(same, same, power), remainder);
    EXPECT_EQ(field_at(same, width()), down);

    const Field tenth = divided(field, 1, by_10), hundredth = divided(field, 2, by_100);
    const Field tenfold = multiplied(field, 1), hundredfold = multiplied(field, 2);
    const unsigned char *src = src_.field(bytes_of(field));
    unsigned char *dest = dest_.at_end(field.size());
    EXPECT_EQ(GetParam().divide_by_10(dest, src), by_10);
    EXPECT_EQ(field_at(dest, width()), tenth);
    EXPECT_EQ(GetParam().divide_by_100(dest, src), by_100);
    EXPECT_EQ(field_at(dest, width()), hundredth);
    GetParam().multiply_by_10(dest, src);
    EXPECT_EQ(field_at(dest, width()), tenfold);
    GetParam().multiply_by_100(dest, src);
    EXPECT_EQ(field_at(dest, width()), hundredfold);
  }
}

TEST_P(ScalingTest, ComesBackWhenNoDigitIsLost) {
  Random random(33);
  const int digits = reference::shape(width()).digits;
  for (int round = 0; round < 300; ++round) {
    const int power = random.between(0, digits);
    const Field field =
        reference::from_text(width(), random.digits(static_cast<std::size_t>(digits - power)));
    int remainder = -1;
    const Field up = multiplied(field, static_cast<unsigned>(power));
    EXPECT_EQ(divided(up, static_cast<unsigned>(power), remainder), field);
    EXPECT_EQ(remainder, 0);
  }
}

INSTANTIATE_TEST_SUITE_P(Members, ScalingTest, testing::ValuesIn(kMembers),
                         [](const auto &member) { return std::to_string(member.param.bytes); });

TEST(Reciprocal, DividesByEachPowerOfTenAsTheInstructionDoes) {
  Random random(34);
  std::uint64_t power = 1;
  for (unsigned j = 1; j <= 19; ++j) {
    power *= 10;
    for (int round = 0; round < 20000; ++round) {
      // Every other number is a multiple of the power or one below it.
      std::uint64_t number = random.word_of_any_size();
      if (round % 2 == 0) number = number - number % power - (round % 4 == 0);
      if (round == 1) number = ~std::uint64_t{0};
      ASSERT_EQ(campotipo::digits::divide_by_power(number, j), number / power)
          << number << ' ' << j;
    }
  }
}

}  // namespace
