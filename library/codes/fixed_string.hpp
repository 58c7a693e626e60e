#pragma once

#include <campotipo/codes.h>

#include <cstddef>
#include <cstring>

// Plain strings of a fixed number of bytes: a NUL ends a text only if it is shorter than the field.
namespace campotipo::codes::fixed_string {

// What a text too long for its place loses: its first bytes with the flag, else its last.
inline const char *cut_to(const char *text, std::size_t length, std::size_t room, int opc) {
  return (opc & CODSTR_OPC_CORTA_ESQUERDA) != 0 ? text + (length - room) : text;
}

inline void from_text(unsigned char *dest, const char *text, int n, int opc) {
  if (n <= 0) return;
  const auto size = static_cast<std::size_t>(n);
  const std::size_t length = std::strlen(text);
  if (length < size) {
    std::memcpy(dest, text, length + 1);
  } else {
    std::memcpy(dest, cut_to(text, length, size, opc), size);
  }
}

inline char *to_text(char *dest, const unsigned char *src, int n, int width, int opc) {
  const auto *text = reinterpret_cast<const char *>(src);
  std::size_t length = n > 0 ? strnlen(text, static_cast<std::size_t>(n)) : 0;
  const std::size_t room = width > 0 ? static_cast<std::size_t>(width) : 0;
  if (length > room) {
    text = cut_to(text, length, room, opc);
    length = room;
  }
  std::memcpy(dest, text, length);
  dest[length] = '\0';
  return dest;
}

inline int has_content(const unsigned char *src, int n) { return n >= 1 && src[0] != '\0'; }

inline int compare(const unsigned char *a, const unsigned char *b, int n) {
  const int order = n > 0 ? std::memcmp(a, b, static_cast<std::size_t>(n)) : 0;
  return (order > 0) - (order < 0);
}

// What stands behind the NUL is what a cleared field held before.
inline int is_well_formed(const unsigned char *src, int n) {
  int at = 0;
  while (at < n && src[at] != '\0') ++at;
  while (at < n && src[at] == '\0') ++at;
  return at >= n;
}

}  // namespace campotipo::codes::fixed_string
