#include "bench/subsystems.hpp"

int main(int argc, char **argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
  campotipo::bench::register_floor();
  campotipo::bench::register_quantities();
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
}
