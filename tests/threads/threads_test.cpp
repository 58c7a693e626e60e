// Every family from several threads at once. Under ThreadSanitizer a write to shared data shows even
// where the results happen to be right.

#include <gtest/gtest.h>

#include <barrier>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "tests/util/workloads.hpp"

#ifdef __SANITIZE_THREAD__
// mktime and localtime_r take a lock that lies inside the C library, where it is not seen.
extern "C" const char *__tsan_default_suppressions() { return "race:tzset_internal\n"; }
#endif

namespace {

using campotipo::test::kWorkloads;

constexpr unsigned kThreads = 4;

// Runs the body in all threads, which begin it together.
void together(const std::function<void(unsigned)> &body) {
  std::barrier start(kThreads);
  std::vector<std::jthread> threads;
  for (unsigned i = 0; i < kThreads; ++i)
    threads.emplace_back([&, i] {
      start.arrive_and_wait();
      body(i);
    });
}

// First in the file, so that both caches are still empty in a run of the whole program too.
TEST(Threads, FillBothCachesAtOnce) {
  std::vector<std::int64_t> sums(kThreads);
  together([&](unsigned i) {
    QUANTIA tie = campotipo::test::quantia(12500);
    PARCELA tie4 = campotipo::test::parcela(12500);
    ARRED_div1000_nbr(&tie);
    ARRED_v4_nbr(&tie4, 1, 0);
    sums[i] = campotipo::test::units(tie) * 1000000 + campotipo::test::units(tie4) +
              CODALFA_maior_caracter();
  });
  for (const std::int64_t sum : sums) EXPECT_EQ(sum, 12 * 1000000 + 12000 + '_');
}

using Bytes = std::vector<unsigned char>;

Bytes results_of(std::size_t family, unsigned seed) {
  campotipo::test::Sample sample(seed);
  kWorkloads[family].work(&sample);
  return {sample.results, sample.results + sample.count};
}

TEST(Threads, GetTheResultsOfOneThread) {
  constexpr unsigned kSeeds = 60;
  constexpr std::size_t kCount = std::size(kWorkloads);
  std::vector<Bytes> expected;
  for (std::size_t family = 0; family < kCount; ++family)
    for (unsigned seed = 0; seed < kSeeds; ++seed) expected.push_back(results_of(family, seed));

  // Each thread begins with another family, so that unlike operations meet as well as like ones.
  std::vector<std::string> wrong(kThreads);
  together([&](unsigned thread) {
    for (unsigned seed = 0; seed < kSeeds; ++seed)
      for (std::size_t i = 0; i < kCount; ++i) {
        const std::size_t family = (i + thread / 2) % kCount;
        if (results_of(family, seed) != expected[family * kSeeds + seed])
          wrong[thread] = kWorkloads[family].name;
      }
  });
  for (const std::string &name : wrong) EXPECT_EQ(name, "");
}

}  // namespace
