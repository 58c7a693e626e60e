#pragma once

#include <campotipo/idnumbers.h>

#include <cstdint>
#include <cstring>

#include "base/bytes.hpp"
#include "base/char_words.hpp"
#include "base/digits.hpp"
#include "idnumbers/x86/weights.hpp"

// Texts of digits, and of capitals at some places, eight characters at a time.
namespace campotipo::idnumbers {

using digits::is_digit;
constexpr bool is_capital(char c) { return c >= 'A' && c <= 'Z'; }

// Places where capitals may stand, one bit each.
using Letters = std::uint64_t;

constexpr Letters places(unsigned from, unsigned to) {
  return (std::uint64_t{1} << to) - (std::uint64_t{1} << from);
}

inline constexpr unsigned kMaxLength = ZALGORITM_TABELA_PESOS;

// How many digits a text begins with; of too many, more than kMaxLength.
[[gnu::noinline]] inline unsigned count_digits(const char *text) {
  unsigned count = 0;
  while (count <= kMaxLength) {
    if (bytes::same_page(text + count, 8)) [[likely]] {
      const unsigned here = digits::count_leading(bytes::load<std::uint64_t>(text + count));
      count += here;
      if (here < 8) break;
    } else {
      if (!is_digit(text[count])) break;
      ++count;
    }
  }
  return count;
}

// Length of a text of digits alone; 0 for any other text and for one that is too long.
inline unsigned digit_length(const char *text) {
  unsigned length;
  if (!x86::counted_digits(text, &length)) length = count_digits(text);
  return length <= kMaxLength && text[length] == '\0' ? length : 0;
}

[[gnu::noinline, gnu::cold]] inline bool has_length(const char *text, unsigned length) {
  return strnlen(text, length + 1) == length;
}

// Not 0 if one of eight characters is no digit, and no capital at a place of `letters`.
constexpr std::uint64_t misplaced(std::uint64_t word, unsigned char letters) {
  if (letters == 0) return digits::non_digits(word);
  const std::uint64_t capitals = words::in_range(word, 'A', 'Z') & words::high_bits(letters);
  return words::in_range(word, '0', '9') ^ capitals ^ words::kHighBits;
}

// Exactly `length` digits, or capitals at the places of `letters`. The last eight characters may
// overlap those before them, of which there are eight at least.
[[gnu::always_inline]] inline bool consists_of(const char *text, unsigned length, Letters letters) {
  if (!bytes::same_page(text, length + 1)) [[unlikely]] {
    if (!has_length(text, length)) return false;
  } else if (text[length] != '\0') {
    return false;
  }
  std::uint64_t bad = 0;
  for (unsigned at = 0; at < length; at += 8) {
    const unsigned from = at + 8 < length ? at : length - 8;
    bad |= misplaced(bytes::load<std::uint64_t>(text + from),
                     static_cast<unsigned char>(letters >> from));
  }
  return bad == 0;
}

// The products of eight values, the last one with the first weight, added up: in the top one of the
// four lanes of 16 bits of both multiplications,
//     values 0 2 4 6 times weights 7 5 3 1, and values 1 3 5 7 times weights 6 4 2 0.
// No lane runs over into the next while all eight products stay below 65536. `lanes` may be added
// up as far as that, before the top one is taken.
constexpr std::uint64_t lanes(std::uint64_t values, std::uint64_t weights) {
  constexpr std::uint64_t kLow = 0x00FF00FF00FF00FF;
  return (values & kLow) * (weights >> 8 & kLow) + (values >> 8 & kLow) * (weights & kLow);
}
constexpr unsigned weigh(std::uint64_t values, std::uint64_t weights) {
  return static_cast<unsigned>(lanes(values, weights) >> 48);
}
static_assert(weigh(0x0807060504030201, 0x0102030405060708) ==
              8 * 8 + 7 * 7 + 6 * 6 + 5 * 5 + 4 * 4 + 3 * 3 + 2 * 2 + 1);

}  // namespace campotipo::idnumbers
