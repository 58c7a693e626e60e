#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace campotipo::records {

// A sum of numbers of up to 50 digits, exact for as many of them as a file can hold: limbs of 18
// digits that are carried when they are read.
class Exact {
 public:
  // The digits of a text; points and the sign of a percent do not count. False for other texts.
  static bool read(std::string_view text, Exact &value);

  void add(const Exact &other) {
    for (int i = 0; i < kLimbs; ++i) limbs_[i] += other.limbs_[i];
  }
  void subtract(const Exact &other) {
    for (int i = 0; i < kLimbs; ++i) limbs_[i] -= other.limbs_[i];
  }
  void add(std::int64_t number) { limbs_[0] += number; }

  // With so many of the digits behind a point.
  std::string text(int decimals = 0) const;

 private:
  static constexpr int kLimbs = 3;
  static constexpr int kDigits = 18;
  static constexpr std::int64_t kBase = 1000000000000000000;
  __extension__ using Wide = __int128;

  Wide limbs_[kLimbs] = {};
};

}  // namespace campotipo::records
