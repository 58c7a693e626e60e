#pragma once

#include <campotipo/bits.h>

#include <array>
#include <cstdint>
#include <cstdio>
#include <string>

#include "tests/reference/url_text.hpp"

// GUID texts, one digit after the other.
namespace campotipo::reference {

using Guid = std::array<unsigned char, ZGUID_BYTES>;

inline Guid guid_parse(const std::string &text) {
  std::string digits;
  for (const char c : text)
    if (hex_value(c) >= 0) digits += c;
  digits.resize(32, '0');
  Guid guid;
  for (std::size_t i = 0; i < guid.size(); ++i)
    guid[i] =
        static_cast<unsigned char>(hex_value(digits[2 * i]) * 16 + hex_value(digits[2 * i + 1]));
  return guid;
}

inline std::string guid_text(const unsigned char *guid, int flags) {
  std::string text;
  for (int i = 0; i < ZGUID_BYTES; ++i) {
    if ((flags & ZGUID_HIFENS) != 0 && (i == 4 || i == 6 || i == 8 || i == 10)) text += '-';
    char pair[3];
    std::snprintf(pair, sizeof pair, (flags & ZGUID_MAIUSCULAS) != 0 ? "%02X" : "%02x", guid[i]);
    text += pair;
  }
  return (flags & ZGUID_CHAVES) != 0 ? "{" + text + "}" : text;
}

inline std::string sequence_text(std::uint32_t counter, std::uint32_t clock,
                                 const unsigned char *node) {
  char text[64];
  std::snprintf(text, sizeof text, "%08lx-%04x-40%02x-80%02x-%02x%02x%02x%02x%02x%02x",
                static_cast<unsigned long>(counter), clock & 0xFFFF, clock >> 16 & 0xFF,
                clock >> 24, node[5], node[4], node[3], node[2], node[1], node[0]);
  return text;
}

}  // namespace campotipo::reference
