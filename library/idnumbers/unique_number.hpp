#pragma once

#include <campotipo-support/numbers.h>
#include <campotipo/idnumbers.h>

#include <cstdint>
#include <cstring>

#include "base/bytes.hpp"
#include "base/digits.hpp"
#include "idnumbers/taxpayer.hpp"

// Numbers composed of up to six values.
namespace campotipo::idnumbers {

struct Parts {
  const int *of[6];
  const int *operator[](unsigned which) const { return of[which - 1]; }
};

template <unsigned kModulus>
inline unsigned reduced(const int *part) {
  return static_cast<unsigned>(*part) % kModulus;
}

// What DIGVERIF_monta_dv_modulo11 makes behind the digits of the value: zeros in front count
// nothing, and a 0 stays where it has nothing to count.
inline char check_character(unsigned value) {
  if (value == 0) return '0';
  unsigned total = 0;
  for (unsigned i = 1; value != 0; ++i, value /= 10) total += value % 10 * kModulo11.weights[i];
  return static_cast<char>('0' + kModulo11.results[total % 11]);
}

inline char *put_unique_text(char *to, const Parts &parts) {
  if (parts[3] != nullptr) {
    digits::put4(to, reduced<10000>(parts[3]));
    to += 4;
  }
  if (parts[1] != nullptr) {
    digits::put2(to, reduced<100>(parts[1]));
    to += 2;
  }
  const unsigned second = reduced<1000>(parts[2]);
  *to++ = static_cast<char>('0' + second / 100);
  digits::put2(to, second % 100);
  to += 2;
  if (parts[3] != nullptr) *to++ = check_character(reduced<10000>(parts[3]));
  if (parts[4] != nullptr) *to++ = check_character(reduced<1000000>(parts[4]));
  if (parts[5] != nullptr) *to++ = check_character(reduced<1000>(parts[5]));
  if (parts[6] != nullptr) *to++ = check_character(reduced<10000>(parts[6]));
  *to++ = '\0';
  return to;
}

inline bool refused(char *out, int size, const Parts &parts) {
  if (out == nullptr || size < 1 || parts[2] == nullptr) return true;
  *out = '\0';
  return false;
}

inline int compose_text(char *out, int size, const Parts &parts) {
  if (refused(out, size, parts)) return 1;
  char text[ZALGORITM_NUMERO_UNICO_TEXT_SIZE];
  const auto needed = static_cast<std::size_t>(put_unique_text(text, parts) - text);
  if (needed > static_cast<std::size_t>(size)) return 1;
  std::memcpy(out, text, needed);
  return 0;
}

// A value's place in the eight bytes of form B.
struct Bits {
  unsigned part;
  unsigned mask;
  int shift;
};

// The top field comes first, and is read back with all that stands above its bits.
inline constexpr Bits kFormB[] = {{3, 2047, 25}, {1, 127, 18}, {5, 255, 10}, {2, 1023, 0}};

inline int compose_form_b(char *out, int size, const Parts &parts) {
  if (refused(out, size, parts)) return 1;
  if (size < ZALGORITM_NUMEROB_UNICO_TEXT_SIZE) return 1;
  unsigned char number[8] = {};
  for (const Bits &bits : kFormB) {
    if (parts[bits.part] == nullptr) continue;
    unsigned char value[8];
    bytes::store(value, std::uint64_t{static_cast<unsigned>(*parts[bits.part]) & bits.mask});
    for (int i = 0; i < bits.shift; ++i) _8byte_mul_byte(value, value, 2);
    _8soma(number, number, value);
  }
  _8btoa(number, out, ZALGORITM_NUMEROB_UNICO_TEXT_SIZE - 1);
  return 0;
}

inline int take_apart(const char *text, int *const (&parts)[6]) {
  if (text == nullptr) return 1;
  unsigned char number[8];
  _ato8(number, text);
  for (const Bits &bits : kFormB) {
    int *part = parts[bits.part - 1];
    if (part == nullptr) continue;
    unsigned char value[8];
    std::memcpy(value, number, sizeof value);
    for (int i = 0; i < bits.shift; ++i) _8byte_div_byte(value, value, 2);
    const auto low = bytes::load<std::uint32_t>(value);
    *part = static_cast<int>(bits.part == 3 ? low : low & bits.mask);
  }
  if (parts[3] != nullptr) *parts[3] = 0;
  if (parts[5] != nullptr) *parts[5] = 0;
  return 0;
}

inline bool is_form_b(const char *text) {
  constexpr unsigned kLength = ZALGORITM_NUMEROB_UNICO_TEXT_SIZE - 1;
  // The greatest number of 36 bits; of texts of one length the order is that of the numbers.
  return consists_of(text, kLength, 0) && std::memcmp(text, "68719476735", kLength) <= 0;
}

}  // namespace campotipo::idnumbers
