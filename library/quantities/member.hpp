#pragma once

#include <campotipo/quantities.h>

#include <array>

// The numeric fields by their width in bytes: what follows from the width is worked out here.
namespace campotipo::quantities {

inline constexpr int kMaxWidth = ZBINARIO_MAX_WIDTH;
inline constexpr int kLimbDigits = 19;
inline constexpr int kLimbBytes = 8;

// Digits that every number of a width may have. 0 bytes stand for a width out of range.
inline constexpr int kDigits[kMaxWidth + 1] = {
    1,  2,  4,  7,  9,  12, 14, 16, 19,  // one binary number
    21, 23, 26, 28, 31, 33, 35, 38,      // two limbs
    40, 42, 45, 47, 50,                  // three limbs
};

constexpr bool is_valid(int width) { return width >= 1 && width <= kMaxWidth; }

constexpr int max_digits(int width) { return kDigits[is_valid(width) ? width : 0]; }

struct Member {
  int bytes;
  int digits;
  int limbs;
  int high_bytes;
  int high_digits;
  int scan_limit;

  constexpr int bytes_of(int limb) const { return limb == limbs - 1 ? high_bytes : kLimbBytes; }
  constexpr int digits_of(int limb) const { return limb == limbs - 1 ? high_digits : kLimbDigits; }
};

constexpr Member member(int width) {
  const int limbs = (width + kLimbBytes - 1) / kLimbBytes;
  const int high_bytes = width - kLimbBytes * (limbs - 1);
  const int scan_limit = limbs == 2 ? 49 : kDigits[width] + kLimbDigits;
  return {width, kDigits[width], limbs, high_bytes, kDigits[high_bytes], scan_limit};
}

template <int N>
inline constexpr Member kMember = [] {
  static_assert(N > kLimbBytes && N <= kMaxWidth);
  constexpr Member result = member(N);
  static_assert(result.digits == kLimbDigits * (result.limbs - 1) + result.high_digits);
  return result;
}();

// The sizes that the header promises.
consteval bool header_agrees() {
  constexpr std::array<std::array<int, 3>, 13> sizes = {{
      {BINQ9_BYTES, BINQ9_DIGITS, BINQ9_TEXT_SIZE},
      {BINQ10_BYTES, BINQ10_DIGITS, BINQ10_TEXT_SIZE},
      {BINQ11_BYTES, BINQ11_DIGITS, BINQ11_TEXT_SIZE},
      {BINQ12_BYTES, BINQ12_DIGITS, BINQ12_TEXT_SIZE},
      {BINQ13_BYTES, BINQ13_DIGITS, BINQ13_TEXT_SIZE},
      {BINQ14_BYTES, BINQ14_DIGITS, BINQ14_TEXT_SIZE},
      {BINQ15_BYTES, BINQ15_DIGITS, BINQ15_TEXT_SIZE},
      {BINQ16_BYTES, BINQ16_DIGITS, BINQ16_TEXT_SIZE},
      {BINQ17_BYTES, BINQ17_DIGITS, BINQ17_TEXT_SIZE},
      {BINQ18_BYTES, BINQ18_DIGITS, BINQ18_TEXT_SIZE},
      {BINQ19_BYTES, BINQ19_DIGITS, BINQ19_TEXT_SIZE},
      {BINQ20_BYTES, BINQ20_DIGITS, BINQ20_TEXT_SIZE},
      {BINQ21_BYTES, BINQ21_DIGITS, BINQ21_TEXT_SIZE},
  }};
  int width = kLimbBytes;
  for (const auto &[bytes, digits, text_size] : sizes) {
    if (bytes != ++width || digits != kDigits[width] || text_size != digits + 1) return false;
  }
  // The text of a field whose high limb is out of range has a digit more.
  return width == kMaxWidth && ZBINARIO_TEXT_SIZE == kDigits[kMaxWidth] + 2;
}
static_assert(header_agrees());

}  // namespace campotipo::quantities
