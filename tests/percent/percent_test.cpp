#include <campotipo-support/numbers.h>
#include <gtest/gtest.h>

#include <vector>

#include "tests/percent/agreement.hpp"
#include "tests/util/guarded_buffer.hpp"
#include "tests/util/random.hpp"

namespace {

using campotipo::test::GuardedBuffer;
using campotipo::test::Random;
namespace test = campotipo::test;

class PercentTest : public testing::TestWithParam<test::Family> {
 protected:
  ~PercentTest() override { PARCELA_fixo = 4; }

  // All patterns of one and two bytes; of four the edges and as many random ones.
  std::vector<std::uint64_t> percents() const {
    const bool small = GetParam().kind.bytes <= 2;
    const std::uint64_t count = std::uint64_t{1} << (small ? 8 * GetParam().kind.bytes : 16);
    std::vector<std::uint64_t> all;
    Random random(43);
    for (std::uint64_t i = 0; i < count; ++i) {
      all.push_back(i);
      if (!small) all.push_back(random.word_of_any_size() & 0xFFFFFFFF);
      if (!small) all.push_back(all.back() / 100 * 100);
    }
    if (!small) all.insert(all.end(), {1000000, 999999, 1000001, 0xFFFFFFFF, 4294960000});
    return all;
  }

  static std::int64_t any_amount(Random &random) {
    const auto size = static_cast<std::int64_t>(random.word_of_any_size() >> 1);
    const int kind = random.between(0, 9);
    return kind == 0   ? INT64_MAX - random.between(0, 200)
           : kind == 1 ? INT64_MIN + random.between(0, 200)
           : kind == 2 ? -size
                       : size;
  }

  GuardedBuffer places_, text_;
  unsigned char *field_ = places_.at_end(static_cast<std::size_t>(GetParam().kind.bytes));
};

TEST_P(PercentTest, AppliesEveryPercentUnderEveryRule) {
  Random random(44);
  const int rounds = GetParam().kind.bytes == 1 ? 200 : 1;
  for (std::uint64_t percent : percents()) {
    for (int round = 0; round < rounds; ++round) {
      PARCELA_fixo = random.between(0, 6);
      const std::int64_t base = any_amount(random);
      const int casas = random.between(-3, 9);
      EXPECT_TRUE(test::products_agree(GetParam(), field_, static_cast<std::int64_t>(percent), base,
                                       casas, false))
          << base << " by " << percent << " casas " << casas << " fixo " << PARCELA_fixo;
    }
  }
}

TEST_P(PercentTest, RoundsTiesAndTheirNeighbours) {
  const std::int64_t half = GetParam().kind.hundred / 2;
  for (std::int64_t base = -40; base <= 2020; ++base)
    for (std::int64_t percent : {half - 50, half - 1, half, half + 1, half + 100, 2 * half})
      EXPECT_TRUE(test::products_agree(GetParam(), field_, percent, base, 4, false))
          << base << " by " << percent;
}

TEST_P(PercentTest, DividesIntoAllBytesOfTheField) {
  Random random(46);
  for (int round = 0; round < 20000; ++round) {
    const std::int64_t over = any_amount(random);
    const std::int64_t under = round % 3 == 0 ? random.between(-30, 30) : any_amount(random);
    EXPECT_TRUE(test::ratios_agree(GetParam(), field_, over, under)) << over << " of " << under;
  }
}

TEST_P(PercentTest, InvertsEveryPercent) {
  for (std::uint64_t percent : percents())
    EXPECT_TRUE(test::inverse_agrees(GetParam(), field_, static_cast<std::int64_t>(percent)))
        << percent;
}

TEST_P(PercentTest, WritesEveryPercentInItsOwnBytes) {
  char room[32];
  for (std::uint64_t percent : percents()) {
    for (bool exact : {false, true}) {
      // To lay out a guarded place takes long: a sample of them.
      const bool guarded = percent % 61 == 0;
      const std::size_t size = edited(GetParam().kind, percent, exact).size() + 1;
      EXPECT_TRUE(test::text_agrees(GetParam(), field_, percent, exact,
                                    guarded ? text_.text_at_end(size) : room))
          << percent;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Families, PercentTest, testing::ValuesIn(test::kFamilies),
                         [](const auto &family) { return family.param.name; });

// What the plain form cuts before it rounds, the v4 form sees.
TEST(Percent, PlainFormsDecideOnFewerDigits) {
  unsigned char field[PORC4_BYTES];
  _ato4fixo(field, "50.01", 4);
  QUANTIA one = test::quantia(1);
  PORC4_multipl_arr_nbr(&one, &one, field);
  EXPECT_EQ(test::units(one), 0);
  PARCELA part = test::parcela(1);
  PORC4_v4_multipl_arr_nbr(&part, &part, field, PARCELA_fixo);
  EXPECT_EQ(test::units(part), 1);
}

}  // namespace
