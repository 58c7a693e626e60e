#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

// Characters by their ASCII codes, whatever locale the process has set.
namespace campotipo::records::ascii {

constexpr bool is_digit(char c) { return c >= '0' && c <= '9'; }

constexpr char capital(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c; }

// Value of a hexadecimal digit, -1 for other characters.
constexpr int hex_value(char c) {
  if (is_digit(c)) return c - '0';
  const char letter = capital(c);
  return letter >= 'A' && letter <= 'F' ? letter - 'A' + 10 : -1;
}

inline bool all_digits(std::string_view text) {
  return std::all_of(text.begin(), text.end(), is_digit);
}

inline std::string capitals(std::string_view text) {
  std::string folded(text);
  std::transform(folded.begin(), folded.end(), folded.begin(), capital);
  return folded;
}

// Bytes in hexadecimal digits.
inline std::string hex(const unsigned char *bytes, std::size_t count) {
  constexpr char kDigits[] = "0123456789ABCDEF";
  std::string digits;
  digits.reserve(2 * count);
  for (std::size_t i = 0; i < count; ++i) {
    digits += kDigits[bytes[i] >> 4];
    digits += kDigits[bytes[i] & 15];
  }
  return digits;
}

// The bytes that pairs of hexadecimal digits tell; false for any other text.
inline bool from_hex(std::string_view digits, std::string &bytes) {
  bytes.clear();
  if (digits.size() % 2 != 0) return false;
  for (std::size_t i = 0; i < digits.size(); i += 2) {
    const int high = hex_value(digits[i]);
    const int low = hex_value(digits[i + 1]);
    if (high < 0 || low < 0) return false;
    bytes += static_cast<char>(high << 4 | low);
  }
  return true;
}

}  // namespace campotipo::records::ascii
