#include <string_view>

#include "bench/subsystems.hpp"

namespace {

// Under callgrind: one dump of counters for each task, named after it. The first pass brings in what
// is bound or cached at first use.
void count_instructions() {
  for (const auto &[name, run] : campotipo::bench::counted()) {
    run();
    CALLGRIND_ZERO_STATS;
    CALLGRIND_TOGGLE_COLLECT;
    run();
    CALLGRIND_TOGGLE_COLLECT;
    CALLGRIND_DUMP_STATS_AT(name.c_str());
  }
}

}  // namespace

// usage: campotipo_bench [--instructions | options of Google Benchmark]
int main(int argc, char **argv) {
  using namespace campotipo::bench;
  const bool instructions = argc > 1 && std::string_view(argv[1]) == "--instructions";
  if (!instructions) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
  }
  register_floor();
  register_codes();
  register_quantities();
  register_percent();
  register_calendar();
  register_idnumbers();
  register_bits();
  if (instructions) {
    count_instructions();
    return 0;
  }
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
}
