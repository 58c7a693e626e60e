#include <gtest/gtest.h>

#include "tests/percent/agreement.hpp"
#include "tests/util/random.hpp"

// The money services of this program are a site's own, of tests/site/money.c.
extern "C" int site_money_breaches, site_money_multiplications;

namespace {

using campotipo::test::Random;
using campotipo::test::Rule;
namespace reference = campotipo::reference;
namespace test = campotipo::test;

class InverseTest : public testing::TestWithParam<test::Family> {
 protected:
  std::int64_t any_percent(Random &random) const {
    return static_cast<std::int64_t>(
        reference::low_bits(GetParam().kind, static_cast<std::int64_t>(random.word_of_any_size())));
  }

  void expect_answer(std::int64_t percent, std::int64_t target, long steps) {
    for (Rule rule : reference::kRules) {
      site_money_breaches = site_money_multiplications = 0;
      EXPECT_TRUE(test::search_agrees(GetParam(), field_, percent, target, rule, steps))
          << target << " at " << percent << " rule " << static_cast<int>(rule);
      EXPECT_EQ(site_money_breaches, 0);
      const bool copied = percent == 0 || percent == GetParam().kind.hundred;
      EXPECT_LE(site_money_multiplications, copied ? 0 : 80);
    }
  }

  unsigned char field_[4];
};

TEST_P(InverseTest, GivesWhatTheClimbBySingleUnitsGives) {
  Random random(48);
  for (int round = 0; round < 6000; ++round) {
    const bool all = GetParam().kind.bytes == 1;
    expect_answer(all ? round % 256 : any_percent(random), random.between(-20, 400), 3000);
  }
}

TEST_P(InverseTest, FindsTheLeastAboveTheEstimateOrTheTopOverServicesThatWrap) {
  Random random(50);
  for (int round = 0; round < 20000; ++round) {
    auto target = static_cast<std::int64_t>(random.word_of_any_size() >> 1);
    if (round % 5 == 0) target = INT64_MAX - random.between(0, 3);
    if (round % 7 == 0) target = -target - 1;
    expect_answer(any_percent(random), target, 0);
  }
  for (std::int64_t target : {INT64_MIN, std::int64_t{0}, INT64_MAX}) {
    expect_answer(0, target, 0);
    expect_answer(GetParam().kind.hundred, target, 0);
  }
}

INSTANTIATE_TEST_SUITE_P(Families, InverseTest, testing::ValuesIn(test::kFamilies),
                         [](const auto &family) { return family.param.name; });

}  // namespace
