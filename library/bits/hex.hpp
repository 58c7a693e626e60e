#pragma once

#include <array>

// Hexadecimal digits, the same in every locale.
namespace campotipo::bits::hex {

// Value of a character, -1 for one that is no digit.
inline constexpr auto kValue = [] {
  std::array<signed char, 256> value{};
  value.fill(-1);
  for (int digit = 0; digit < 16; ++digit) {
    value[static_cast<unsigned char>("0123456789abcdef"[digit])] = static_cast<signed char>(digit);
    value[static_cast<unsigned char>("0123456789ABCDEF"[digit])] = static_cast<signed char>(digit);
  }
  return value;
}();

constexpr int value(char c) { return kValue[static_cast<unsigned char>(c)]; }
static_assert(value('f') == 15 && value('A') == 10 && value('9') == 9 && value('g') == -1);

}  // namespace campotipo::bits::hex
