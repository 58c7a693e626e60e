#include "columns/kernels.hpp"

#include <cstdlib>
#include <cstring>

namespace campotipo::records {

namespace baseline {
Decode decode(const FieldType &type, const ColumnType &column);
}
#ifdef CAMPOTIPO_KERNELS_V3
namespace v3 {
Decode decode(const FieldType &type, const ColumnType &column);
}
#endif

namespace {

constexpr Kernels kBaseline = {"baseline", baseline::decode};
#ifdef CAMPOTIPO_KERNELS_V3
constexpr Kernels kV3 = {"x86-64-v3", v3::decode};

bool are_plain_wanted() {
  const char *wanted = std::getenv("CAMPOTIPO_KERNELS");
  return wanted != nullptr && std::strcmp(wanted, "plain") == 0;
}

bool is_v3() {
  __builtin_cpu_init();
  return __builtin_cpu_supports("avx2") != 0 && __builtin_cpu_supports("bmi") != 0 &&
         __builtin_cpu_supports("bmi2") != 0 && __builtin_cpu_supports("fma") != 0;
}
#endif

}  // namespace

const Kernels &kernels() {
#ifdef CAMPOTIPO_KERNELS_V3
  static const Kernels &chosen = is_v3() && !are_plain_wanted() ? kV3 : kBaseline;
  return chosen;
#else
  return kBaseline;
#endif
}

std::vector<const Kernels *> all_kernels() {
  std::vector<const Kernels *> all = {&kBaseline};
#ifdef CAMPOTIPO_KERNELS_V3
  if (is_v3()) all.push_back(&kV3);
#endif
  return all;
}

}  // namespace campotipo::records
