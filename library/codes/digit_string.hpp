#pragma once

#include <campotipo-support/numbers.h>
#include <campotipo/codes.h>

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "base/bytes.hpp"
#include "base/digits.hpp"
#include "quantities/wide.hpp"

// Digits that keep their leading zeros: a count in byte 0 and a quantity of N bytes behind it.
namespace campotipo::codes::digit_string {

using quantities::kLimbDigits;
using quantities::kMember;
namespace wide = quantities::wide;

// The sizes that the header promises.
consteval bool header_agrees() {
  constexpr int sizes[][2] = {
      {BSTR21_BYTES, BSTR21_TEXT_SIZE}, {BSTR23_BYTES, BSTR23_TEXT_SIZE},
      {BSTR26_BYTES, BSTR26_TEXT_SIZE}, {BSTR28_BYTES, BSTR28_TEXT_SIZE},
      {BSTR31_BYTES, BSTR31_TEXT_SIZE}, {BSTR33_BYTES, BSTR33_TEXT_SIZE},
      {BSTR35_BYTES, BSTR35_TEXT_SIZE}, {BSTR38_BYTES, BSTR38_TEXT_SIZE},
  };
  int width = quantities::kLimbBytes;
  for (const auto &[bytes, text_size] : sizes) {
    if (bytes != ++width + 1 || text_size != quantities::kDigits[width] + 1) return false;
  }
  return width == 2 * quantities::kLimbBytes;
}
static_assert(header_agrees());

// How many digits a text begins with, at most `limit`.
inline std::size_t count_digits(const char *text, std::size_t limit) {
  std::size_t count = 0;
  while (count < limit && bytes::same_page(text + count, 8)) {
    const std::uint64_t others = digits::non_digits(bytes::load<std::uint64_t>(text + count));
    count += static_cast<std::size_t>(std::countr_zero(others)) / 8;
    if (others != 0) return std::min(count, limit);
  }
  while (count < limit && digits::is_digit(text[count])) ++count;
  return std::min(count, limit);
}

// The number services are given digits alone, and all are taken from the text before the first byte
// is written: the text may stand where the field will.
template <int N>
inline int from_text(unsigned char *dest, const char *text) {
  const std::size_t count = text != nullptr ? count_digits(text, kMember<N>.digits) : 0;
  unsigned char *const low = dest + 1, *const high = low + quantities::kLimbBytes;
  if (count > kLimbDigits) {
    const auto above = static_cast<unsigned>(count) - kLimbDigits;
    const wide::LimbText upper(text, above), lower(text + above, kLimbDigits);
    wide::kServiceOf<N, 1>.from_text(high, upper.text());
    _ato8(low, lower.text());
  } else {
    if (count != 0) {
      const wide::LimbText digits(text, static_cast<unsigned>(count));
      _ato8(low, digits.text());
    } else {
      std::memset(low, 0, quantities::kLimbBytes);
    }
    std::memset(high, 0, N - quantities::kLimbBytes);
  }
  dest[0] = static_cast<unsigned char>(count);
  return count != 0;
}

// For a number that does not fit its count of digits, which no text makes.
template <int N>
[[gnu::noinline]] inline char *cut_to_text(char *text, const unsigned char *number,
                                           std::size_t count) {
  // The high limb from elsewhere may have a digit more than it should.
  char whole[kMember<N>.digits + 1 + 1];
  wide::to_text_fixed<N>(whole, number, 0);
  const std::size_t length = std::strlen(whole);
  const std::size_t zeros = length < count ? count - length : 0;
  std::memset(text, '0', zeros);
  std::memcpy(text + zeros, whole, count - zeros);
  text[count] = '\0';
  return text;
}

// Whether the limbs have no more digits than the count.
inline bool holds(std::size_t count, std::uint64_t low, std::uint64_t high) {
  if (count <= kLimbDigits) return high == 0 && low < digits::kPowerOfTen[count];
  return low < digits::kPowerOfTen[kLimbDigits] && high < digits::kPowerOfTen[count - kLimbDigits];
}

template <int N>
inline char *to_text(char *text, const unsigned char *src) {
  const std::size_t count = src[0];
  if (count == 0 || count > kMember<N>.digits) {
    *text = '\0';
    return text;
  }
  // Both limbs before the first digit: the text may be written where the field stands.
  const std::uint64_t low = wide::load_limb<N, 0>(src + 1);
  const std::uint64_t high = wide::load_limb<N, 1>(src + 1);
  if (!holds(count, low, high)) return cut_to_text<N>(text, src + 1, count);
  unsigned char limb[8];
  std::size_t above = 0;
  if (count > kLimbDigits) {
    above = count - kLimbDigits;
    bytes::store(limb, high);
    _8btoa(limb, text, static_cast<int>(above));
  }
  bytes::store(limb, low);
  _8btoa(limb, text + above, static_cast<int>(count - above));
  return text;
}

template <int N>
inline int is_well_formed(const unsigned char *src) {
  return src[0] <= kMember<N>.digits &&
         holds(src[0], wide::load_limb<N, 0>(src + 1), wide::load_limb<N, 1>(src + 1));
}

}  // namespace campotipo::codes::digit_string
