#pragma once

#include <campotipo/idnumbers.h>

#include <array>
#include <cstddef>
#include <cstdint>

#include "base/bytes.hpp"
#include "idnumbers/digit_text.hpp"

// One check digit of a text of digits, as a table describes it.
namespace campotipo::idnumbers {

using Table = ZALGORITM_TABELA;
static_assert(sizeof(Table) == ZALGORITM_TABELA_BYTES && alignof(Table) == 1);
static_assert(offsetof(Table, weights) == 3 && offsetof(Table, results) == 53);

inline constexpr unsigned kDigitSum = ZALGORITM_SOMA_ALGARISMOS;
inline constexpr unsigned kZeroAccepted = ZALGORITM_ACEITA_ZERO;
inline constexpr unsigned kLessNine = ZALGORITM_NOVES_FORA;

static_assert(sizeof(Table::weights) == kMaxLength);

// Sums of the decimal digits of every product of a digit and a weight.
inline constexpr auto kDigitSums = [] {
  std::array<unsigned char, 9 * 255 + 1> sums{};
  for (std::size_t i = 1; i != sums.size(); ++i) {
    sums[i] = static_cast<unsigned char>(sums[i / 10] + i % 10);
  }
  return sums;
}();

inline unsigned counted_total(const char *text, unsigned length, const Table &table) {
  const unsigned nine = (table.flags & kLessNine) != 0 ? 9 : 0;
  const bool digit_sum = (table.flags & kDigitSum) != 0;
  unsigned total = 0;
  for (unsigned i = 0; i < length; ++i) {
    unsigned product = static_cast<unsigned>(text[length - 1 - i] - '0') * table.weights[i];
    product -= product > 9 ? nine : 0;
    total += digit_sum ? kDigitSums[product] : product;
  }
  return total;
}

// What is loaded behind the last weight lies in the table too, where there are no characters.
[[gnu::noinline]] inline unsigned weighted_total_plain(const char *text, unsigned length,
                                                       const Table &table) {
  if ((table.flags & (kDigitSum | kLessNine)) != 0) return counted_total(text, length, table);
  const char *weights = reinterpret_cast<const char *>(&table) + offsetof(Table, weights);
  unsigned total = 0;
  for (; length >= 8; length -= 8, weights += 8) {
    const auto characters = bytes::load<std::uint64_t>(text + length - 8);
    total += weigh(characters - digits::kZeros, bytes::load<std::uint64_t>(weights));
  }
  if (length == 0) return total;
  const std::uint64_t values = bytes::load_low_bytes(text, length) - digits::kZeros;
  return total + weigh(values << (8 * (8 - length)), bytes::load<std::uint64_t>(weights));
}

inline unsigned weighted_total(const char *text, unsigned length, const Table &table) {
  unsigned total;
  if ((table.flags & (kDigitSum | kLessNine)) == 0 && x86::weighed(text, length, table, &total))
    return total;
  return weighted_total_plain(text, length, table);
}

// Writes or compares the character that the total asks for.
inline int settle(char *place, unsigned total, const Table &table, int make) {
  if (total == 0 && (table.flags & kZeroAccepted) == 0) return 0;
  const char expected = static_cast<char>('0' + table.results[total % table.modulus]);
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
