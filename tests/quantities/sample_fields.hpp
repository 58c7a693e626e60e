#pragma once

#include <algorithm>
#include <cstdint>
#include <span>
#include <string>

#include "tests/reference/decimal_text.hpp"
#include "tests/util/guarded_buffer.hpp"
#include "tests/util/random.hpp"

namespace campotipo::test {

inline std::span<const unsigned char> bytes_of(const reference::Field &field) {
  return {reinterpret_cast<const unsigned char *>(field.data()), field.size()};
}

inline reference::Field field_at(const unsigned char *bytes, int width) {
  return {reinterpret_cast<const char *>(bytes), static_cast<std::size_t>(width)};
}

// Digits with runs of zeros and nines among them, where carries and leading zeros go wrong.
inline std::string sample_digits(Random &random, std::size_t count) {
  std::string text = random.digits(count);
  for (int runs = random.between(0, 2); runs > 0 && count > 0; --runs) {
    const auto from = random.between<std::size_t>(0, count - 1);
    const auto length = random.between<std::size_t>(1, count - from);
    std::fill_n(text.begin() + static_cast<std::ptrdiff_t>(from), length,
                random.between(0, 1) == 0 ? '0' : '9');
  }
  return text;
}

// What a library that behaves stores: a number of any length that fits.
inline reference::Field sample_field(Random &random, int width) {
  const int digits = reference::shape(width).digits;
  return reference::from_text(
      width, sample_digits(random, static_cast<std::size_t>(random.between(0, digits))));
}

// What a damaged record may hold: each limb with any value, often at the ends of its range.
inline reference::Field any_field(Random &random, int width) {
  const reference::Shape shape = reference::shape(width);
  reference::Field field;
  for (int limb = 0; limb < shape.limbs; ++limb) {
    const std::uint64_t ends[] = {0,
                                  1,
                                  9999999999999999999u,
                                  10000000000000000000u,
                                  ~std::uint64_t{0},
                                  random.word(),
                                  random.word_of_any_size()};
    field += reference::number_field(ends[random.between(0, 6)],
                                     limb == shape.limbs - 1 ? shape.high_bytes : 8);
  }
  return field;
}

}  // namespace campotipo::test
