#pragma once

#include <campotipo/codes.h>

#include <array>
#include <cstddef>

#include "base/locale.hpp"

// The characters that a packed code can hold, and their codes.
namespace campotipo::codes::packed {

inline constexpr char kAlphabet[] = CODALFA_ALFABETO;
inline constexpr int kCharacters = sizeof kAlphabet - 1;
static_assert(kCharacters == 50);

inline constexpr int kBlankCode = 1;
inline constexpr int kZeroCode = 2;
inline constexpr int kNineCode = 11;
inline constexpr int kFirstLetterCode = 12;
inline constexpr int kLastLetterCode = 37;

// An entry is the code of a byte in the C locale; a small letter's is marked, since its capital is
// for the process's locale to say.
inline constexpr unsigned char kSmallLetter = 0x40;
inline constexpr unsigned char kNoCode = 0x80;

inline constexpr auto kEntries = [] {
  std::array<unsigned char, 256> entries{};
  entries.fill(kNoCode);
  for (int place = 0; place < kCharacters; ++place) {
    const auto code = static_cast<unsigned char>(place + 1);
    const char c = kAlphabet[place];
    entries[static_cast<unsigned char>(c)] = code;
    if (c >= 'A' && c <= 'Z')
      entries[static_cast<unsigned char>(c - 'A' + 'a')] = code | kSmallLetter;
  }
  return entries;
}();

// The character of a code, and NUL where the code is none and so ends the data.
inline constexpr auto kCharacterOfCode = [] {
  std::array<char, 64> characters{};
  std::size_t code = 0;
  for (const char c : kAlphabet) characters[++code] = c;
  return characters;
}();

constexpr bool has_flag(int opc, int flag) { return (opc & flag) != 0; }

// The code of a char, -1 if it has none. The locale is asked only where it has a say: no locale
// changes the class of the other bytes below 128.
[[gnu::noinline]] inline int code_in_locale(char c) {
  const auto capital = static_cast<unsigned>(locale::to_upper(c));
  return capital < 128 && kEntries[capital] < kSmallLetter ? kEntries[capital] : -1;
}

inline int code_of(char c) {
  const auto byte = static_cast<unsigned char>(c);
  const unsigned char entry = kEntries[byte];
  if (entry < kSmallLetter) [[likely]]
    return entry;
  return byte < 128 && entry == kNoCode ? -1 : code_in_locale(c);
}

}  // namespace campotipo::codes::packed
