#pragma once

#include <emmintrin.h>
#ifdef __SSSE3__
#include <tmmintrin.h>
#endif
#include <campotipo/idnumbers.h>

#include <bit>
#include <cstddef>
#include <cstdint>

#include "base/bytes.hpp"
#include "idnumbers/digit_vector.hpp"

// One check digit of a text of digits, as a table tells it.
namespace campotipo::idnumbers {

using Table = ZALGORITM_TABELA;
static_assert(sizeof(Table) == ZALGORITM_TABELA_BYTES && alignof(Table) == 1);
static_assert(offsetof(Table, weights) == 3 && offsetof(Table, results) == 53);

inline constexpr unsigned kDigitSum = ZALGORITM_SOMA_ALGARISMOS;
inline constexpr unsigned kZeroAccepted = ZALGORITM_ACEITA_ZERO;
inline constexpr unsigned kLessNine = ZALGORITM_NOVES_FORA;

inline constexpr unsigned kMaxLength = sizeof(Table::weights);

// The same for a text that may end close to the end of its page.
[[gnu::noinline]] inline unsigned digit_length_stepwise(const char *text) {
  unsigned length = 0;
  while (length <= kMaxLength) {
    if (bytes::same_page(text + length, 16)) {
      const unsigned mask = vector::non_digits(vector::values(text + length));
      if (mask == 0) {
        length += 16;
        continue;
      }
      length += static_cast<unsigned>(std::countr_zero(mask));
      return length <= kMaxLength && text[length] == '\0' ? length : 0;
    }
    if (!vector::is_digit(text[length])) return text[length] == '\0' ? length : 0;
    ++length;
  }
  return 0;
}

// Length of a text of digits alone; 0 for any other text and for one that is too long.
inline unsigned digit_length(const char *text) {
#ifdef __AVX2__
  if (bytes::same_page(text, 64)) [[likely]] {
    const auto length = static_cast<unsigned>(std::countr_zero(vector::non_digits64(text)));
    return length <= kMaxLength && text[length] == '\0' ? length : 0;
  }
#endif
  return digit_length_stepwise(text);
}

constexpr unsigned decimal_digit_sum(unsigned product) {
  unsigned sum = 0;
  for (; product != 0; product /= 10) sum += product % 10;
  return sum;
}

constexpr unsigned counted(unsigned product, unsigned flags) {
  if ((flags & kLessNine) != 0 && product > 9) product -= 9;
  return (flags & kDigitSum) != 0 ? decimal_digit_sum(product) : product;
}

[[gnu::noinline]] inline unsigned weighted_total_plain(const char *text, unsigned length,
                                                       const Table &table) {
  unsigned total = 0;
  for (unsigned i = 0; i < length; ++i) {
    const unsigned digit = static_cast<unsigned char>(text[length - 1 - i] - '0');
    total += counted(digit * table.weights[i], table.flags);
  }
  return total;
}

// `counted` for eight products at a time. The reciprocals are exact for every product of a digit
// and a byte.
inline __m128i counted8(__m128i products, unsigned flags) {
  if ((flags & kLessNine) != 0) {
    const __m128i nine = _mm_set1_epi16(9);
    products = _mm_sub_epi16(products, _mm_and_si128(_mm_cmpgt_epi16(products, nine), nine));
  }
  if ((flags & kDigitSum) != 0) {
    const __m128i tens = _mm_mulhi_epu16(products, _mm_set1_epi16(6554));
    const __m128i hundreds = _mm_srli_epi16(_mm_mulhi_epu16(products, _mm_set1_epi16(5243)), 3);
    const __m128i thousands = _mm_srli_epi16(_mm_mulhi_epu16(products, _mm_set1_epi16(8389)), 7);
    // 1234 - 9 * (123 + 12 + 1) is 1 + 2 + 3 + 4.
    const __m128i quotients = _mm_add_epi16(tens, _mm_add_epi16(hundreds, thousands));
    products = _mm_sub_epi16(products, _mm_mullo_epi16(quotients, _mm_set1_epi16(9)));
  }
  return products;
}

// Sums that add up to the products of 16 values and weights, in eight lanes of at most 4590.
template <bool kFlags>
inline __m128i lanes(__m128i values, __m128i weights, unsigned flags) {
  if constexpr (!kFlags) return vector::multiply_pairs(values, weights);
  const __m128i zero = _mm_setzero_si128();
  const __m128i low =
      _mm_mullo_epi16(_mm_unpacklo_epi8(values, zero), _mm_unpacklo_epi8(weights, zero));
  const __m128i high =
      _mm_mullo_epi16(_mm_unpackhi_epi8(values, zero), _mm_unpackhi_epi8(weights, zero));
  return _mm_add_epi16(counted8(low, flags), counted8(high, flags));
}

// The last 16 weights that are loaded reach into the results, where the values are 0.
template <bool kFlags>
inline unsigned weighted_total_vector(const char *text, unsigned length, const Table &table) {
  const char *weights = reinterpret_cast<const char *>(&table) + offsetof(Table, weights);
  __m128i sums = _mm_setzero_si128();
  for (; length >= 16; length -= 16, weights += 16) {
    const __m128i values = vector::last_first(text + length - 16, 16);
    sums = _mm_add_epi16(sums, lanes<kFlags>(values, vector::load(weights), table.flags));
  }
  if (length != 0) {
    const __m128i values = vector::last_first(text, length);
    sums = _mm_add_epi16(sums, lanes<kFlags>(values, vector::load(weights), table.flags));
  }
  return vector::sum_of_lanes(sums);
}

inline unsigned weighted_total(const char *text, unsigned length, const Table &table) {
  if (length < 16 && !bytes::same_page(text, 16)) [[unlikely]]
    return weighted_total_plain(text, length, table);
  return (table.flags & (kDigitSum | kLessNine)) == 0
             ? weighted_total_vector<false>(text, length, table)
             : weighted_total_vector<true>(text, length, table);
}

// ceil(2^32 / m) for a modulus m: the product's upper half is the quotient for every total below
// 2^28.
inline constexpr auto kReciprocals = [] {
  struct {
    std::uint64_t of[17];
  } table{};
  for (std::uint64_t m = 1; m <= 16; ++m) table.of[m] = ((std::uint64_t{1} << 32) + m - 1) / m;
  return table;
}();

inline unsigned remainder(unsigned total, unsigned modulus) {
  return total - static_cast<unsigned>(total * kReciprocals.of[modulus] >> 32) * modulus;
}

// Writes or compares the character that the total asks for.
inline int settle(char *place, unsigned total, const Table &table, int make) {
  if (total == 0 && (table.flags & kZeroAccepted) == 0) return 0;
  const char expected = static_cast<char>('0' + table.results[remainder(total, table.modulus)]);
  if (make != 0) *place = expected;
  return *place == expected;
}

inline int treat(char *text, const Table &table, int make) {
  if (table.modulus - 1u > 15) return 0;
  const unsigned length = digit_length(text);
  if (length < 2 || table.position >= length) return 0;
  return settle(text + length - 1 - table.position, weighted_total(text, length, table), table,
                make);
}

}  // namespace campotipo::idnumbers
