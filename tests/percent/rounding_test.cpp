#include <gtest/gtest.h>

#include <climits>
#include <vector>

#include "tests/percent/agreement.hpp"
#include "tests/util/random.hpp"

namespace {

namespace test = campotipo::test;
namespace reference = campotipo::reference;

// Counts around every place where a rule turns: halves, their neighbours and both ends.
std::vector<std::int64_t> counts_to_round() {
  std::vector<std::int64_t> all{INT64_MAX, INT64_MAX - 1, INT64_MIN, INT64_MIN + 1};
  for (std::int64_t count = -1200; count <= 12000; ++count) all.push_back(count);
  test::Random random(41);
  for (int digits = 1; digits <= 19; ++digits) {
    const auto power = static_cast<std::uint64_t>(reference::power_of_ten(digits));
    for (int round = 0; round < 12; ++round) {
      const std::uint64_t kept = random.word() % (INT64_MAX / power + 1);
      for (std::uint64_t rest : {power / 2 - 1, power / 2, power / 2 + 1, power / 100 * 50,
                                 power / 100 * 51 - 1, power / 100 * 51}) {
        const reference::wide count = reference::wide{kept} * power + rest;
        all.push_back(reference::nearest(count));
        all.push_back(reference::nearest(-count));
      }
    }
  }
  return all;
}

class RoundingTest : public testing::Test {
 protected:
  ~RoundingTest() override { PARCELA_fixo = 4; }

  void expect_places(std::int64_t count, int casas, int extras) {
    EXPECT_TRUE(test::places_agree(count, casas, extras, false))
        << count << " casas " << casas << " extras " << extras << " fixo " << PARCELA_fixo;
  }
};

TEST_F(RoundingTest, DivFormsDropTheirDigits) {
  for (std::int64_t count : counts_to_round())
    EXPECT_TRUE(test::div_forms_agree(count, false)) << count;
}

TEST_F(RoundingTest, KeepsTheDecimalsAskedForAtAnyScale) {
  const std::vector<std::int64_t> counts = counts_to_round();
  for (PARCELA_fixo = 0; PARCELA_fixo <= 6; ++PARCELA_fixo)
    for (int casas = -3; casas <= 9; ++casas)
      for (int extras = 0; extras <= 4; ++extras)
        for (auto i = static_cast<std::size_t>(casas + 3); i < counts.size(); i += 29)
          expect_places(counts[i], casas, extras);
}

TEST_F(RoundingTest, HoldsFarOutOfRangeAndAtBothEndsOfInt) {
  const int far[] = {INT_MIN, INT_MIN + 1, INT_MIN / 2, -100, -25, -21, -20, -19, -18, -17,    -1,
                     0,       1,           2,           3,    16,  17,  18,  19,  20,  INT_MAX};
  const std::int64_t counts[] = {0, 1, -1, 4, 5, 50, 51, INT64_MAX, INT64_MIN, 5000000000000000000};
  for (int fixo : {0, 4, 18, INT_MAX, -3}) {
    PARCELA_fixo = fixo;
    for (int casas : far)
      for (int extras : far)
        for (std::int64_t count : counts) expect_places(count, casas, extras);
  }
}

}  // namespace
