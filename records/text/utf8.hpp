#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace campotipo::records::utf8 {

constexpr char32_t kBad = 0xFFFFFFFF;

// The character at `at`, which moves behind it; kBad, and one byte on, where none stands.
inline char32_t next(std::string_view text, std::size_t &at) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const unsigned lead = byte(at++);
  if (lead < 0x80) return lead;
  const std::size_t more = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : 1;
  if (lead < 0xC2 || lead > 0xF4 || text.size() - at < more) return kBad;
  char32_t point = lead & (0x3FU >> more);
  for (std::size_t i = 0; i < more; ++i) {
    if ((byte(at + i) & 0xC0) != 0x80) return kBad;
    point = point << 6 | (byte(at + i) & 0x3FU);
  }
  constexpr char32_t kLeast[] = {0, 0x80, 0x800, 0x10000};
  if (point < kLeast[more] || point > 0x10FFFF || (point >= 0xD800 && point < 0xE000)) return kBad;
  at += more;
  return point;
}

inline char *put(char *out, char32_t point) {
  const auto tail = [&](int shift) { return static_cast<char>(0x80 | (point >> shift & 0x3F)); };
  if (point < 0x80) {
    *out++ = static_cast<char>(point);
  } else if (point < 0x800) {
    *out++ = static_cast<char>(0xC0 | point >> 6);
    *out++ = tail(0);
  } else if (point < 0x10000) {
    *out++ = static_cast<char>(0xE0 | point >> 12);
    *out++ = tail(6);
    *out++ = tail(0);
  } else {
    *out++ = static_cast<char>(0xF0 | point >> 18);
    *out++ = tail(12);
    *out++ = tail(6);
    *out++ = tail(0);
  }
  return out;
}

inline bool valid(std::string_view text) {
  for (std::size_t at = 0; at < text.size();) {
    if (next(text, at) == kBad) return false;
  }
  return true;
}

// The first characters of a text, at most `count` of them.
inline std::string first(std::string_view text, std::size_t count) {
  std::size_t at = 0;
  while (count-- > 0 && at < text.size()) next(text, at);
  return std::string(text.substr(0, at));
}

// Characters, which is also the width of a text of Latin letters on a terminal.
inline std::size_t length(std::string_view text) {
  std::size_t count = 0;
  for (const char c : text) count += (static_cast<unsigned char>(c) & 0xC0) != 0x80;
  return count;
}

}  // namespace campotipo::records::utf8
