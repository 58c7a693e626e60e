#include "percent/marker.hpp"

#include <unistd.h>

namespace campotipo::percent::marker {

constinit std::atomic<int> ARRED_estado_nbr{kNotLooked};

int look() {
  const int answer = access("NBR_COM_ERRO.TXT", F_OK) == 0 ? kPresent : kAbsent;
  int first = kNotLooked;
  // Callers that race may have seen the file come or go; the first answer stands for all.
  const bool stored =
      ARRED_estado_nbr.compare_exchange_strong(first, answer, std::memory_order_relaxed);
  return stored ? answer : first;
}

}  // namespace campotipo::percent::marker
