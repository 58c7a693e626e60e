#include <dlfcn.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/percent/agreement.hpp"
#include "tests/util/random.hpp"

namespace {

int multiplications = 0;
int sevenths = 7;  // what the service gives of each product

}  // namespace

// Stands in front of the money service: counts, and on demand works as a site's own service might
// whose products are not those that the search works out.
extern "C" void _QUANTIA_porc_mul(QUANTIA *dest, const QUANTIA *src, long factor) noexcept {
  static const auto service =
      reinterpret_cast<decltype(&_QUANTIA_porc_mul)>(dlsym(RTLD_NEXT, "_QUANTIA_porc_mul"));
  ++multiplications;
  QUANTIA source = *src;
  if (sevenths != 7) _QUANTIA_div_byte(&source, &source, 7);
  service(dest, &source, factor);
  if (sevenths != 7) _QUANTIA_mul_byte(dest, dest, sevenths);
}

namespace {

using campotipo::test::Random;
using campotipo::test::Rule;
namespace reference = campotipo::reference;
namespace test = campotipo::test;

class InverseTest : public testing::TestWithParam<test::Family> {
 protected:
  ~InverseTest() override { sevenths = 7; }

  std::int64_t any_percent(Random &random) const {
    return static_cast<std::int64_t>(
        reference::low_bits(GetParam().kind, static_cast<std::int64_t>(random.word_of_any_size())));
  }

  void expect_answer(std::int64_t percent, std::int64_t target, long steps) {
    for (Rule rule : reference::kRules) {
      multiplications = 0;
      EXPECT_TRUE(test::search_agrees(GetParam(), field_, percent, target, rule, steps))
          << target << " at " << percent << " rule " << static_cast<int>(rule);
      // The place is worked out and only confirmed.
      EXPECT_LE(multiplications, percent == 0 || percent == GetParam().kind.hundred ? 0 : 6);
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

TEST_P(InverseTest, FindsTheLeastAboveTheEstimateOrTheTop) {
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

TEST_P(InverseTest, EndsRightWithServicesThatWorkInAnotherWay) {
  Random random(51);
  int most = 0;
  for (int round = 0; round < 800; ++round) {
    sevenths = round % 2 == 0 ? 6 : 8;
    const std::int64_t percent = any_percent(random);
    if (percent == 0 || percent == GetParam().kind.hundred) continue;
    const QUANTIA target = test::quantia(round == 0 ? INT64_MAX : random.between(0, 3000));
    put(GetParam(), field_, static_cast<std::uint64_t>(percent));
    for (int rule = 0; rule < 3; ++rule) {
      const auto reaches = [&](std::int64_t base) {
        QUANTIA value = test::quantia(base);
        GetParam().multiply[rule](&value, &value, field_);
        return _QUANTIA_comp(&value, &target) >= 0;
      };
      QUANTIA found;
      multiplications = 0;
      GetParam().search[rule](&found, &target, field_);
      const int made = multiplications;
      most = std::max(most, made);
      const std::int64_t result = test::units(found);
      if (made == 1) {  // the percent of the first number came out as nothing
        EXPECT_EQ(_QUANTIA_comp(&found, &target), 0);
        continue;
      }
      EXPECT_TRUE(reaches(result) || result == INT64_MAX) << percent;
      // Below a result that is not the estimate nothing reaches the target.
      EXPECT_FALSE(made > 3 && reaches(result - 1)) << percent;
    }
  }
  EXPECT_LE(most, 80);
}

INSTANTIATE_TEST_SUITE_P(Families, InverseTest, testing::ValuesIn(test::kFamilies),
                         [](const auto &family) { return family.param.name; });

}  // namespace
