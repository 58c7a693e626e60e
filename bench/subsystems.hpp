#pragma once

#include "bench/harness.hpp"

// Each compares its answers with those of the peers, and leaves its tasks to be timed.
namespace campotipo::bench {

void register_floor();
void register_codes();
void register_quantities();
void register_percent();
void register_calendar();
void register_idnumbers();
void register_bits();

}  // namespace campotipo::bench
