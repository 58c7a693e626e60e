#pragma once

#include <campotipo/percent.h>

#include <cstdint>

#include "base/bytes.hpp"

// The four stored percents. A member is named in the engines by its decimals.
namespace campotipo::percent {

struct Family {
  int decimals;
  int bytes;
  std::int64_t hundred;  // stored number of 100%
  // Stored number to factor of the money services, where 10000 is 100%, and ratio back to stored
  // number.
  std::int64_t scale;
  // Decimals that a product carries beyond its kind because 100% stands above 10000.
  int spare;
  const char *base;  // text of an amount whose smallest percent is still above zero
};

inline constexpr Family kFamilies[] = {
    {0, PORC0_BYTES, PORC0_CEM, 100, 0, "100"},
    {1, PORC1_BYTES, PORC1_CEM, 10, 0, "100"},
    {2, PORC2_BYTES, PORC2_CEM, 1, 0, "100"},
    {4, PORC4_BYTES, PORC4_CEM, 1, 2, "10000"},
};

constexpr Family find_family(int decimals) {
  for (const Family &member : kFamilies)
    if (member.decimals == decimals) return member;
  return {};
}

template <int Decimals>
inline constexpr Family kFamily = find_family(Decimals);

template <int Decimals>
inline std::int64_t stored(const unsigned char *percent) {
  return static_cast<std::int64_t>(bytes::load_le<kFamily<Decimals>.bytes>(percent));
}

}  // namespace campotipo::percent
