#pragma once

#include <campotipo/idnumbers.h>

#include <cstdint>

#include "base/bytes.hpp"
#include "idnumbers/check_digit.hpp"

// The tables of the library, and the numbers with two digits of them.
namespace campotipo::idnumbers {

// 2 to 9 over and over behind the digit's own place.
inline constexpr Table kModulo11 = [] {
  Table table{0, 11, 0, {}, {1, 0, 9, 8, 7, 6, 5, 4, 3, 2, 1, 10, 10, 10, 10, 10}};
  for (unsigned i = 1; i < kMaxLength; ++i)
    table.weights[i] = static_cast<unsigned char>(2 + (i - 1) % 8);
  return table;
}();
static_assert(kModulo11.weights[kMaxLength - 1] == 2);

struct Cpf {
  static constexpr unsigned kLength = 11;
  static constexpr Table kFirst{1,
                                11,
                                0,
                                {0, 0, 2, 3, 4, 5, 6, 7, 8, 9, 10},
                                {0, 0, 9, 8, 7, 6, 5, 4, 3, 2, 1, 10, 10, 10, 10, 10}};
  static constexpr Table kSecond{0,
                                 11,
                                 0,
                                 {0, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11},
                                 {0, 0, 9, 8, 7, 6, 5, 4, 3, 2, 1, 10, 10, 10, 10, 10}};
};

// Weights ten times the published ones turn a remainder r into 11 - r.
struct Cnpj {
  static constexpr unsigned kLength = 14;
  static constexpr Table kFirst{1,
                                11,
                                0,
                                {0, 0, 20, 30, 40, 50, 60, 70, 80, 90, 20, 30, 40, 50},
                                {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 0, 10, 10, 10, 10, 10}};
  static constexpr Table kSecond{0,
                                 11,
                                 0,
                                 {0, 20, 30, 40, 50, 60, 70, 80, 90, 20, 30, 40, 50, 60},
                                 {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 0, 10, 10, 10, 10, 10}};
};

// The weights of a table for the first and for the last eight characters of a number. What is in
// both counts in the last. Values of up to 42, a "Z", and weights of up to 90 fit the lanes.
template <class Number>
struct Weights {
  std::uint64_t front = 0, back = 0;

  constexpr explicit Weights(const Table &table) {
    for (unsigned i = 0; i < 8; ++i) back |= std::uint64_t{table.weights[i]} << (8 * i);
    for (unsigned i = 8; i < Number::kLength; ++i)
      front |= std::uint64_t{table.weights[i]} << (8 * (i + 8 - Number::kLength));
  }
  constexpr unsigned total(std::uint64_t first, std::uint64_t last) const {
    return static_cast<unsigned>((lanes(first, front) + lanes(last, back)) >> 48);
  }
};

// Both digits of a number of exactly the length, whose characters were looked at.
template <class Number>
inline int settle_both(char *text, int make) {
  static constexpr Weights<Number> kFirst(Number::kFirst), kSecond(Number::kSecond);
  char *place = text + Number::kLength - 2;
  const std::uint64_t front = bytes::load<std::uint64_t>(text) - digits::kZeros;
  const std::uint64_t back = bytes::load<std::uint64_t>(place - 6) - digits::kZeros;
  const unsigned total = kFirst.total(front, back);
  if (total == 0) return 0;
  const unsigned digit = Number::kFirst.results[total % 11];
  unsigned second = kSecond.total(front, back);
  // The second digit counts the first one that was made, in the place of what stood there.
  if (make != 0)
    second += Number::kSecond.weights[1] * (digit - static_cast<unsigned>(*place - '0'));
  const unsigned pair = digit | static_cast<unsigned>(Number::kSecond.results[second % 11]) << 8;
  const auto expected = static_cast<std::uint16_t>(0x3030 + pair);
  if (make != 0) bytes::store(place, expected);
  return bytes::load<std::uint16_t>(place) == expected;
}

template <class Number>
inline bool fits(const char *text) {
  while (*text == '0') ++text;
  unsigned length = 0;
  while (length <= Number::kLength && text[length] != '\0') ++length;
  return length <= Number::kLength;
}

template <class Number>
[[gnu::noinline]] inline int validate_by_tables(char *text, int make) {
  return treat(text, Number::kFirst, make) != 0 && treat(text, Number::kSecond, make) != 0 &&
         fits<Number>(text);
}

template <class Number>
[[gnu::always_inline]] inline int validate(char *text, int make) {
  if (consists_of(text, Number::kLength, 0)) [[likely]]
    return settle_both<Number>(text, make);
  return validate_by_tables<Number>(text, make);
}

}  // namespace campotipo::idnumbers
