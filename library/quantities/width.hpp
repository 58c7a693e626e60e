#pragma once

#include <cstddef>
#include <cstring>

#include "quantities/member.hpp"
#include "quantities/operations.hpp"

// A numeric field of any width, by the operations of that width.
namespace campotipo::quantities::width {

inline int compare(int width, const unsigned char *a, const unsigned char *b) {
  return is_valid(width) ? kOperations[width].compare(a, b) : -1;
}

inline int well_formed(int width, const unsigned char *src) {
  return is_valid(width) ? kOperations[width].well_formed(src) : 0;
}

inline int from_text(unsigned char *dest, int width, const char *text) {
  if (!is_valid(width)) return 0;
  kOperations[width].from_text(dest, text);
  return 1;
}

inline int to_text(char *text, const unsigned char *src, int width) {
  if (!is_valid(width)) return 0;
  kOperations[width].to_text(text, src);
  return 1;
}

inline int to_text_exact(char *text, const unsigned char *src, int width, int n) {
  char number[ZBINARIO_TEXT_SIZE];
  if (!to_text(number, src, width)) return 0;
  const std::size_t wanted = n > 0 ? static_cast<std::size_t>(n) : 0;
  const std::size_t length = std::strlen(number);
  const std::size_t shown = length < wanted ? length : wanted;
  std::memset(text, '0', wanted - shown);
  std::memcpy(text + (wanted - shown), number + (length - shown), shown + 1);
  return 1;
}

inline int move(unsigned char *dest, int dest_width, const unsigned char *src, int src_width) {
  char number[ZBINARIO_TEXT_SIZE];
  return to_text(number, src, src_width) && from_text(dest, dest_width, number);
}

inline void from_text_fixed(int width, unsigned char *dest, const char *text, int decimals) {
  if (is_valid(width)) {
    kOperations[width].from_text_fixed(dest, text, decimals);
  } else if (width > 0) {
    std::memset(dest, 0, static_cast<std::size_t>(width));
  }
}

inline char *to_text_fixed(int width, char *text, const unsigned char *src, int decimals) {
  if (is_valid(width)) {
    kOperations[width].to_text_fixed(text, src, decimals);
  } else {
    *text = '\0';
  }
  return text;
}

}  // namespace campotipo::quantities::width
