#pragma once

#include <cstring>
#include <string_view>

// Whether a stored field says what its text said, told by reading it back.
namespace campotipo::tool::judge {

// What was lost of a decimal text, `back` being the text of the number that was stored; null where
// both say the same number. `decimals` is how many the field keeps.
const char *decimal(std::string_view text, std::string_view back, int decimals);

// What was lost of a text in a packed code.
const char *code(std::string_view text, std::string_view back, bool known, bool zeros, bool fold);

// What was lost of a GUID: 32 hexadecimal digits, dashes and braces.
const char *guid(std::string_view text, std::string_view back);

// What was lost of a string of digits.
const char *digits(std::string_view text, std::size_t room);

inline bool same(std::string_view text, const char *back) {
  return std::strlen(back) == text.size() && std::memcmp(back, text.data(), text.size()) == 0;
}

}  // namespace campotipo::tool::judge
