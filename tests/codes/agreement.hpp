#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>

#include "tests/members/digit_string.hpp"
#include "tests/members/packed_code.hpp"
#include "tests/reference/packed_code.hpp"

// The operations held against what is told plainly, for the tests and the fuzzer: each check is true
// when they agree on one input. Buffers are the caller's, as large as the operation may use.
namespace campotipo::test {

using reference::packed::Field;

inline int sign(int order) { return (order > 0) - (order < 0); }

inline bool save_agrees(const PackedCode &code, const char *text, int opc, unsigned char *field) {
  const auto [expected, result] = reference::packed::save(text, code.n, opc);
  const bool told =
      code.save(field, text, opc) == result && std::equal(expected.begin(), expected.end(), field);
  std::memset(field, 0x5A, expected.size());
  code.save_only(field, text, opc);
  return told && std::equal(expected.begin(), expected.end(), field);
}

// `dest` ends with the text of the greatest length: the field's or `width`, and a NUL.
inline bool read_agrees(const PackedCode &code, const unsigned char *src, int opc, int width,
                        char *dest) {
  const std::string text =
      reference::packed::text_of({src, static_cast<std::size_t>(code.bytes)}, code.n);
  if (code.read(dest, src, opc, width) != dest) return false;
  if (reference::packed::extract(text, opc, width) != dest) return false;
  const std::size_t room = static_cast<std::size_t>(std::max(code.n, width));
  char *whole = dest + (room - text.size());
  return code.read_whole(whole, src) == whole && text == whole &&
         code.has_content(src, opc) == reference::packed::has_content(text, opc);
}

// An end sorts before every character, so fields have the order of their texts.
inline bool order_agrees(const PackedCode &code, const unsigned char *a, const unsigned char *b) {
  const auto size = static_cast<std::size_t>(code.bytes);
  const int expected = sign(reference::packed::text_of({a, size}, code.n)
                                .compare(reference::packed::text_of({b, size}, code.n)));
  return code.compare(a, b) == expected && code.compare(b, a) == -expected &&
         code.equal(a, b) == (expected == 0);
}

// Well formed is what a text makes: the field's own, and where it is full one that goes on, since a
// blank may stand in the last position.
inline bool form_agrees(const PackedCode &code, const unsigned char *src) {
  const Field field(src, src + code.bytes);
  std::string text = reference::packed::text_of(field, code.n);
  if (text.size() == static_cast<std::size_t>(code.n)) text += 'X';
  return code.well_formed(src) == (reference::packed::save(text, code.n, 0).field == field);
}

// ---- Digit strings -----------------------------------------------------------------------------

__extension__ using uint128 = unsigned __int128;

// The stored form of a count and two limbs.
inline std::string digit_field(const DigitString &member, std::size_t count, std::uint64_t low,
                               std::uint64_t high) {
  std::string field(1, static_cast<char>(count));
  for (std::size_t i = 0; i + 1 < member.bytes; ++i)
    field += static_cast<char>((i < 8 ? low : high) >> (8 * (i % 8)));
  return field;
}

inline std::string digit_field(const DigitString &member, const std::string &digits) {
  uint128 number = 0;
  for (const char digit : digits) number = 10 * number + static_cast<unsigned>(digit - '0');
  constexpr std::uint64_t limb = 10000000000000000000u;
  return digit_field(member, digits.size(), static_cast<std::uint64_t>(number % limb),
                     static_cast<std::uint64_t>(number / limb));
}

inline std::string digits_of(const DigitString &member, const std::string &text) {
  return text.substr(0, std::min(text.find_first_not_of("0123456789"), member.digits));
}

inline bool store_agrees(const DigitString &member, const char *text, const std::string &digits,
                         unsigned char *dest) {
  return member.save(dest, text) == !digits.empty() &&
         std::memcmp(dest, digit_field(member, digits).data(), member.bytes) == 0;
}

// A field is well formed if its own text makes it.
inline bool form_agrees(const DigitString &member, const unsigned char *src) {
  char text[64];
  const std::string again = digit_field(member, member.read(text, src));
  return member.well_formed(src) == (std::memcmp(again.data(), src, member.bytes) == 0);
}

}  // namespace campotipo::test
