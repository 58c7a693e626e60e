#pragma once

#include <cstdint>

// Eight characters in one 64-bit word, the first in the lowest byte; what is found is marked by bit 7
// of each byte.
namespace campotipo::words {

inline constexpr std::uint64_t kHighBits = 0x8080808080808080;

constexpr std::uint64_t every(std::uint64_t byte) { return byte * 0x0101010101010101; }

// The bytes from `first` to `last`, both below 128. Without their high bits no sum leaves its byte.
constexpr std::uint64_t in_range(std::uint64_t word, unsigned first, unsigned last) {
  const std::uint64_t low = word & ~kHighBits;
  return (low + every(0x80 - first)) & ~(low + every(0x7F - last)) & ~word & kHighBits;
}
static_assert(in_range(0xB12F3A3930FF00B5, '0', '9') == 0x0000008080000000);

// Bit 7 of the bytes whose bit is set in `bits`.
constexpr std::uint64_t high_bits(unsigned char bits) {
  // Copies in each byte, of which each keeps the bit of its own number, moved to the top by a carry.
  const std::uint64_t own = every(bits) & 0x8040201008040201;
  return in_range(own, 0, 0) ^ kHighBits;
}
static_assert(high_bits(0b10000101) == 0x8000000000800080);

}  // namespace campotipo::words
