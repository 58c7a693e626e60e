#pragma once

#include <cstring>
#include <string_view>

// What is lost where a text becomes a field, told by the text that the field gives back. Each gives
// null where nothing is.
namespace campotipo::records::conversion {

// The one loss that leaves a number of use: it is stored without those decimals.
inline constexpr char kDecimalsCut[] = "more decimals than the field keeps";

// Of a decimal text; `decimals` is how many the field keeps.
const char *decimal(std::string_view text, std::string_view back, int decimals);

// Of a text in a packed code. known: every character is in the alphabet.
const char *code(std::string_view text, std::string_view back, bool known, bool zeros, bool fold);

// Of a GUID: 32 hexadecimal digits, dashes and braces.
const char *guid(std::string_view text, std::string_view back);

// Of a string of digits.
const char *digits(std::string_view text, std::size_t room);

inline bool same(std::string_view text, const char *back) {
  return std::strlen(back) == text.size() && std::memcmp(back, text.data(), text.size()) == 0;
}

}  // namespace campotipo::records::conversion
