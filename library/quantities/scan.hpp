#pragma once

#include <cstddef>
#include <cstring>

#include "base/bytes.hpp"
#include "base/digits.hpp"

// From a text with a decimal point to the digits of a number with that many decimals.
namespace campotipo::quantities {

// Of the digits and zeros, only the last `Kept` will be looked at.
template <int Limit, int Kept>
class ScannedDigits {
 public:
  ScannedDigits(const char *text, int decimals) {
    while (*text == ' ' || (*text >= '\t' && *text <= '\r')) ++text;
    const char *integer_end = copy_digits(text, Limit);
    int missing = decimals;
    if (*integer_end == '.' && decimals > 0) {
      const char *fraction = integer_end + 1;
      const int room = Limit - static_cast<int>(length_);
      const int wanted = decimals < room ? decimals : room;
      const char *end = copy_digits(fraction, static_cast<std::size_t>(wanted));
      missing -= static_cast<int>(end - fraction);
      // A digit that finds the scratch full is turned away, but counts as a decimal: with a limit of 5
      // "123.4567" and 6 decimals give 12345 and three zeros, for 4, 5 and 6 have been taken.
      if (end - fraction == room && missing > 0 && digits::is_digit(*end)) --missing;
    }
    append_zeros(missing);
  }

  const char *text() const { return digits_; }
  std::size_t length() const { return length_; }

 private:
  const char *copy_digits(const char *from, std::size_t limit) {
    std::size_t count = 0;
    while (count < limit && digits::is_digit(from[count])) {
      digits_[length_ + count] = from[count];
      ++count;
    }
    length_ += count;
    return from + count;
  }

  // More than `Kept` zeros end in the same number.
  void append_zeros(int count) {
    if (count > Kept) count = Kept;
    if (count > 0) {
      // NOLINTNEXTLINE(bugprone-suspicious-memset-usage): the character, not the number
      std::memset(digits_ + length_, '0', static_cast<std::size_t>(count));
      length_ += static_cast<std::size_t>(count);
    }
    digits_[length_] = '\0';
  }

  char digits_[Limit + Kept + 1];
  std::size_t length_ = 0;
};

}  // namespace campotipo::quantities
