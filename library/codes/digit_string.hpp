#pragma once

#include <campotipo-support/numbers.h>
#include <campotipo/codes.h>

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

inline bool is_digit(char c) { return static_cast<unsigned char>(c - '0') < 10; }

// The digits that a text begins with, at most `limit`.
inline std::size_t count_digits(const char *text, std::size_t limit) {
  std::size_t count = 0;
  while (count < limit && bytes::same_page(text + count, 8)) {
    const std::uint64_t others = digits::non_digits(bytes::load<std::uint64_t>(text + count));
    count += static_cast<std::size_t>(std::countr_zero(others)) / 8;
    if (others != 0) return count < limit ? count : limit;
  }
  while (count < limit && is_digit(text[count])) ++count;
  return count < limit ? count : limit;
}

template <int N>
inline int from_text(unsigned char *dest, const char *text) {
  constexpr std::size_t limit = kMember<N>.digits;
  const std::size_t count = text != nullptr ? count_digits(text, limit) : 0;
  if (count == 0) {
    std::memset(dest, 0, N + 1);
    return 0;
  }
  if (text[count] != '\0') {
    // The number services are given digits alone.
    char first[limit + 1];
    std::memcpy(first, text, count);
    first[count] = '\0';
    wide::from_text<N>(dest + 1, first, count);
  } else {
    wide::from_text<N>(dest + 1, text, count);
  }
  dest[0] = static_cast<unsigned char>(count);
  return 1;
}

// For a number that does not fit its count of digits, which no text makes.
template <int N>
[[gnu::noinline]] inline char *cut_to_text(char *text, const unsigned char *number,
                                           std::size_t count) {
  // A limb from elsewhere may have a digit more than it should.
  char whole[kMember<N>.digits + 2 + 1];
  wide::to_text_fixed<N>(whole, number, 0);
  const std::size_t length = std::strlen(whole);
  const std::size_t zeros = length < count ? count - length : 0;
  std::memset(text, '0', zeros);
  std::memcpy(text + zeros, whole, count - zeros);
  text[count] = '\0';
  return text;
}

template <int N>
inline char *to_text(char *text, const unsigned char *src) {
  constexpr std::size_t limit = kMember<N>.digits;
  const std::size_t count = src[0];
  if (count == 0 || count > limit) {
    *text = '\0';
    return text;
  }
  const unsigned char *number = src + 1;
  const std::uint64_t low = wide::load_limb<N, 0>(number);
  const std::uint64_t high = wide::load_limb<N, 1>(number);
  if (count <= kLimbDigits) {
    if (high != 0 || low >= digits::kPowerOfTen[count]) return cut_to_text<N>(text, number, count);
    _8btoa(number, text, static_cast<int>(count));
    return text;
  }
  const std::size_t above = count - kLimbDigits;
  if (low >= digits::kPowerOfTen[kLimbDigits] || high >= digits::kPowerOfTen[above])
    return cut_to_text<N>(text, number, count);
  unsigned char widened[8];
  bytes::store(widened, high);
  _8btoa(widened, text, static_cast<int>(above));
  _8btoa(number, text + above, kLimbDigits);
  return text;
}

}  // namespace campotipo::codes::digit_string
