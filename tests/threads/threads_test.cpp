// The answers that the library keeps for a process, asked for by several threads at once.

#include <campotipo/codes.h>
#include <gtest/gtest.h>

#include <barrier>
#include <thread>
#include <vector>

#include "tests/percent/agreement.hpp"

namespace {

TEST(Threads, FillBothCachesAtOnce) {
  constexpr unsigned kThreads = 4;
  std::vector<std::int64_t> sums(kThreads);
  std::barrier start(kThreads);
  {
    std::vector<std::jthread> threads;
    for (std::int64_t &sum : sums)
      threads.emplace_back([&] {
        start.arrive_and_wait();
        QUANTIA tie = campotipo::test::quantia(12500);
        PARCELA tie4 = campotipo::test::parcela(12500);
        ARRED_div1000_nbr(&tie);
        ARRED_v4_nbr(&tie4, 1, 0);
        sum = campotipo::test::units(tie) * 1000000 + campotipo::test::units(tie4) +
              CODALFA_maior_caracter();
      });
  }
  for (const std::int64_t sum : sums) EXPECT_EQ(sum, 12 * 1000000 + 12000 + '_');
}

}  // namespace
