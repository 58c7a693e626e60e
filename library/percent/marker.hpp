#pragma once

#include <atomic>

// The one switch of rounding: a file in the working directory, looked for at most once per process.
namespace campotipo::percent::marker {

enum State : int { kNotLooked, kAbsent, kPresent };

extern std::atomic<int> ARRED_estado_nbr;

// Looks for the file and keeps the answer.
int look();

inline bool present() {
  const int state = ARRED_estado_nbr.load(std::memory_order_relaxed);
  return (state == kNotLooked ? look() : state) == kPresent;
}

}  // namespace campotipo::percent::marker
