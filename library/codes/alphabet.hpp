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

// An entry is the code of a byte in every locale. Small letters and the bytes from 128 on have those
// of their capitals, which are for the process's locale to say; no locale changes the others.
inline constexpr unsigned char kAskLocale = 0x40;
inline constexpr unsigned char kNoCode = 0x80;

inline constexpr auto kEntries = [] {
  std::array<unsigned char, 256> entries{};
  for (unsigned byte = 0; byte < 256; ++byte)
    entries[byte] = byte >= 128 || (byte >= 'a' && byte <= 'z') ? kAskLocale : kNoCode;
  for (int place = 0; place < kCharacters; ++place)
    entries[static_cast<unsigned char>(kAlphabet[place])] = static_cast<unsigned char>(place + 1);
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

// The codes of a text, character by character.
class Codes {
 public:
  explicit Codes(const char *text) : text_(text) {}

  // The code of the next character that has one; 0 at the end of the text.
  unsigned next() {
    for (;; ++text_) {
      const unsigned entry = entry_of(*text_);
      if (entry < kAskLocale) {
        ++text_;
        return entry;
      }
      if (*text_ == '\0') return 0;
      if (strange_ == nullptr) strange_ = text_;
    }
  }

  // The usual case of four calls of next: four characters that have codes, the last no blank.
  bool take_four(unsigned &codes) {
    unsigned four = 0;
    for (int i = 0; i < 4; ++i) {
      const unsigned entry = entry_of(text_[i]);
      if (entry >= kAskLocale) return false;
      four = four << 6 | entry;
    }
    if (four % 64 == kBlankCode) return false;
    codes = four;
    text_ += 4;
    return true;
  }

  // Behind the last character that was taken.
  const char *place() const { return text_; }
  // Whether a character without a code stands in front of a place.
  bool strange_before(const char *place) const { return strange_ != nullptr && strange_ < place; }

 private:
  unsigned entry_of(char c) const {
    const unsigned entry = kEntries[static_cast<unsigned char>(c)];
    if (entry < kAskLocale) [[likely]]
      return entry;
    if (entry == kNoCode) return kNoCode;
    const auto capital = static_cast<unsigned>(capitals_.of(c));
    return capital < 128 ? kEntries[capital] : kNoCode;
  }

  const char *text_;
  const char *strange_ = nullptr;
  locale::Capitals capitals_;
};

}  // namespace campotipo::codes::packed
