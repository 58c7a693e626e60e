#pragma once

#include "columns/decode_values.hpp"

// Digits read eight at a time, in words of the processor. Of a record only its own bytes are read.
namespace campotipo::records::CAMPOTIPO_KERNELS_NAMESPACE {

namespace {

constexpr U64 kZeros = 0x3030303030303030;
constexpr U64 kHighs = 0x8080808080808080;

// One to eight digits: the last one in the highest byte of the word, zeros below the first.
class FirstDigits {
 public:
  FirstDigits(std::size_t offset, std::size_t digits)
      : at_(offset + digits < 8 ? offset : offset + digits - 8),
        digits_(digits),
        mask_(~U64{0} << 8 * (8 - digits)),
        near_(offset + digits < 8) {}

  U64 read(const unsigned char *record) const {
    if (near_) return read_near(record);
    return (load<8>(record + at_) ^ kZeros) & mask_;
  }

 private:
  // The record begins less than eight bytes in front of their end.
  U64 read_near(const unsigned char *record) const {
    U64 word = 0;
    for (std::size_t i = 0; i < digits_; ++i) word = word >> 8 | U64{record[at_ + i]} << 56;
    return (word ^ kZeros) & mask_;
  }

  std::size_t at_;
  std::size_t digits_;
  U64 mask_;
  bool near_;
};

// Each byte above 9 sets a bit of kHighs: its own, or that of the one above it.
inline U64 faults(U64 digits) { return digits | (digits + 0x7676767676767676); }

// Pairs, fours and the eight are added up within the word.
inline U64 number_of(U64 digits) {
  digits = (digits * (10 * 256 + 1)) >> 8 & 0x00FF00FF00FF00FF;
  digits = (digits * (100 * 65536 + 1)) >> 16 & 0x0000FFFF0000FFFF;
  return (digits * (10000 * (U64{1} << 32) + 1)) >> 32;
}

constexpr U64 kEightDigits = 100000000;

// A number of up to 8 * Words digits, and more than eight less.
template <int Words, class Number>
class DigitWords {
 public:
  DigitWords(std::size_t offset, std::size_t digits)
      : first_(offset, digits - 8 * (Words - 1)), rest_(offset + digits - 8 * (Words - 1)) {}

  // False where a byte is no digit.
  bool read(const unsigned char *record, Number &number) const {
    U64 digits = first_.read(record);
    U64 wrong = faults(digits);
    number = number_of(digits);
    for (std::size_t i = 0; i + 1 < Words; ++i) {
      digits = load<8>(record + rest_ + 8 * i) ^ kZeros;
      wrong |= faults(digits);
      number = number * kEightDigits + number_of(digits);
    }
    return (wrong & kHighs) == 0;
  }

 private:
  FirstDigits first_;
  std::size_t rest_;
};

}  // namespace
}  // namespace campotipo::records::CAMPOTIPO_KERNELS_NAMESPACE
