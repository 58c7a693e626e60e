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
  static constexpr bool kLetters = false;
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
  static constexpr bool kLetters = false;
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

// A table's weights by place from the left, for a number of exactly its length.
template <class Number>
struct LeftWeights {
  alignas(16) unsigned char first[16] = {};
  alignas(16) unsigned char second[16] = {};

  // Totals stay below 256 a pair of places only with the published weights.
  constexpr LeftWeights() {
    for (unsigned i = 0; i < Number::kLength; ++i) {
      first[i] = published(Number::kFirst.weights[Number::kLength - 1 - i]);
      second[i] = published(Number::kSecond.weights[Number::kLength - 1 - i]);
    }
  }
  static constexpr unsigned char published(unsigned char weight) {
    return static_cast<unsigned char>(weight >= 20 ? weight / 10 : weight);
  }
};

template <class Number>
inline constexpr LeftWeights<Number> kLeftWeights;

// 11 less the remainder, and 0 for the remainders 0 and 1.
constexpr unsigned published_digit(unsigned total) {
  const unsigned digit = total * 10 % 11;
  return digit == 10 ? 0 : digit;
}

template <class Number>
inline __m128i left_weights(const unsigned char (LeftWeights<Number>::*which)[16]) {
  return _mm_load_si128(reinterpret_cast<const __m128i *>(kLeftWeights<Number>.*which));
}

struct Totals {
  unsigned first, second;
};

// Pairs of digits give less than 256 and are summed as bytes; letters need the wider lanes.
template <bool kLetters>
inline Totals sum_both(__m128i first, __m128i second) {
  __m128i totals;
  if constexpr (kLetters) {
    const __m128i ones = _mm_set1_epi16(1);
    totals = _mm_packs_epi32(_mm_madd_epi16(first, ones), _mm_madd_epi16(second, ones));
    totals = _mm_madd_epi16(totals, ones);
    totals = _mm_add_epi32(totals, _mm_srli_epi64(totals, 32));
  } else {
    totals = _mm_sad_epu8(_mm_packus_epi16(first, second), _mm_setzero_si128());
  }
  return {static_cast<unsigned>(_mm_cvtsi128_si32(totals)),
          static_cast<unsigned>(_mm_extract_epi16(totals, 4))};
}

// Values of a number of exactly the length: both digits at once.
template <class Number>
inline int settle_both(char *text, __m128i values, int make) {
  using Weights = LeftWeights<Number>;
  Totals totals =
      sum_both<Number::kLetters>(vector::multiply_pairs(values, left_weights(&Weights::first)),
                                 vector::multiply_pairs(values, left_weights(&Weights::second)));
  if (totals.first == 0) return 0;
  char *place = text + Number::kLength - 2;
  const unsigned digit = published_digit(totals.first);
  if (make != 0) totals.second += 2 * (digit - static_cast<unsigned char>(place[0] - '0'));
  const auto expected =
      static_cast<std::uint16_t>(0x3030 + digit + (published_digit(totals.second) << 8));
  if (make != 0) bytes::store(place, expected);
  return make != 0 || bytes::load<std::uint16_t>(place) == expected;
}

template <class Number>
inline bool fits(const char *text) {
  while (*text == '0') ++text;
  unsigned length = 0;
  while (length <= Number::kLength && text[length] != '\0') ++length;
  return length <= Number::kLength;
}

template <class Number>
inline int validate_by_tables(char *text, int make) {
  return treat(text, Number::kFirst, make) != 0 && treat(text, Number::kSecond, make) != 0 &&
         fits<Number>(text);
}

template <class Number>
inline int validate(char *text, int make) {
  constexpr unsigned kEnd = 1u << Number::kLength;
  if (bytes::same_page(text, 16)) [[likely]] {
    const __m128i values = vector::values(text);
    const bool usual = (vector::non_digits(values) & (2 * kEnd - 1)) == kEnd;
    if (usual && text[Number::kLength] == '\0') [[likely]]
      return settle_both<Number>(text, values, make);
  }
  return validate_by_tables<Number>(text, make);
}

}  // namespace campotipo::idnumbers
