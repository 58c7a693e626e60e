#pragma once

#include <cctype>
#include <string>
#include <string_view>

// Percent encoding, one character after the other.
namespace campotipo::reference {

inline std::string url_encode(std::string_view text) {
  std::string result;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (std::isalnum(byte) ||
        (c != '\0' && std::string_view("-._~").find(c) != std::string::npos)) {
      result += c;
    } else {
      result += '%';
      result += "0123456789ABCDEF"[byte / 16];
      result += "0123456789ABCDEF"[byte % 16];
    }
  }
  return result;
}

inline int hex_value(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

// The text has no NUL inside, but its result may have some.
inline std::string url_decode(const std::string &text) {
  std::string result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '%') {
      result += text[i];
      continue;
    }
    const int high = hex_value(text.c_str()[i + 1]);
    if (high < 0) continue;
    ++i;
    const int low = hex_value(text.c_str()[i + 1]);
    if (low < 0) continue;
    ++i;
    result += static_cast<char>(high * 16 + low);
  }
  return result;
}

}  // namespace campotipo::reference
