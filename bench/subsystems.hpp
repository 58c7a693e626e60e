#pragma once

#include "bench/harness.hpp"

// Each compares its answers with those of the peers, and leaves its tasks to be timed.
namespace campotipo::bench {

void register_floor();
void register_quantities();

}  // namespace campotipo::bench
