#pragma once

#include <array>
#include <cstdint>

#include "base/char_words.hpp"

// Hexadecimal digits, the same in every locale.
namespace campotipo::hex {

inline constexpr char kDigits[2][17] = {"0123456789abcdef", "0123456789ABCDEF"};

// Value of a character, -1 for one that is no digit.
inline constexpr auto kValue = [] {
  std::array<signed char, 256> value{};
  value.fill(-1);
  for (const auto &digits : kDigits)
    for (int digit = 0; digit < 16; ++digit)
      value[static_cast<unsigned char>(digits[digit])] = static_cast<signed char>(digit);
  return value;
}();

constexpr int value(char c) { return kValue[static_cast<unsigned char>(c)]; }
static_assert(value('f') == 15 && value('A') == 10 && value('9') == 9 && value('g') == -1);

// Eight digits of four bytes, the first in the lowest byte.
constexpr std::uint64_t split8(std::uint32_t bytes, bool capitals) {
  std::uint64_t values = (bytes | std::uint64_t{bytes} << 16) & 0x0000FFFF0000FFFF;
  values = (values | values << 8) & 0x00FF00FF00FF00FF;
  values = (values >> 4 | values << 8) & words::every(15);
  const std::uint64_t letters = (values + words::every(6)) >> 4 & words::every(1);
  return values + words::every('0') + letters * (capitals ? 'A' - '9' - 1 : 'a' - '9' - 1);
}
static_assert(split8(0xFF9BAA01, true) == 0x4646423941413130);

}  // namespace campotipo::hex
