#pragma once

#include <cstddef>
#include <cstdint>

// The two orders of a stream of bits, in words of eight bytes. Three fields of 3, 5 and 4
// bits that hold 5, 19 and 9 (101, 10011 and 1001) stand in a word, its highest bit on the left, as
//
//     Little    0...0 1001 10011 101    shifts 0, 3 and 8: each field begins above the one before
//     Big       101 10011 1001 0...0    shifts 61, 56 and 52: each begins below the one before
//
// The last field in a word may go over its end. With two bits left for 10011, three are over:
//
//     Little    head 11, at the word's highest bits; tail 100, at the lowest bits of the next
//     Big       head 10, at the word's lowest bits; tail 011, at the highest bits of the next
namespace campotipo::bits::field {

// The first position is the least significant bit of the first byte, and of a field.
struct Little {
  static constexpr unsigned bit(std::int64_t position) { return 1u << (position & 7); }
  static constexpr std::uint64_t weigh(std::uint64_t word) { return word; }
  // The shift of the bits [begin, begin + count); the same for a word that ends at `word_end`.
  static constexpr unsigned shift(unsigned begin, unsigned) { return begin; }
  static constexpr unsigned shift_in(std::size_t word_end, std::size_t begin, std::size_t) {
    return (begin - word_end) & 63;
  }
  // The first `count` positions of a word, 0 to 63.
  static constexpr std::uint64_t first(unsigned count) { return ~(~std::uint64_t{0} << count); }
  // Of a value at `begin` that goes over the end by `over` bits.
  static constexpr std::uint64_t head(std::uint64_t value, unsigned begin, unsigned) {
    return value << begin;
  }
  static constexpr std::uint64_t tail(std::uint64_t value, unsigned width, unsigned over) {
    return value >> (width - over);
  }
  // Position in the stream of the bits [done, done + count) of a field.
  static constexpr std::size_t part(std::size_t start, std::size_t, std::size_t done, std::size_t) {
    return start + done;
  }
};

// The first position is the most significant bit of the first byte, and of a field.
struct Big {
  static constexpr unsigned bit(std::int64_t position) { return 0x80u >> (position & 7); }
  static constexpr std::uint64_t weigh(std::uint64_t word) { return __builtin_bswap64(word); }
  static constexpr unsigned shift(unsigned begin, unsigned count) { return 64 - begin - count; }
  static constexpr unsigned shift_in(std::size_t word_end, std::size_t, std::size_t end) {
    return (word_end - end) & 63;
  }
  static constexpr std::uint64_t first(unsigned count) { return ~(~std::uint64_t{0} >> count); }
  static constexpr std::uint64_t head(std::uint64_t value, unsigned, unsigned over) {
    return value >> over;
  }
  static constexpr std::uint64_t tail(std::uint64_t value, unsigned, unsigned over) {
    return value << (64 - over);
  }
  static constexpr std::size_t part(std::size_t start, std::size_t width, std::size_t done,
                                    std::size_t count) {
    return start + width - done - count;
  }
};

}  // namespace campotipo::bits::field
