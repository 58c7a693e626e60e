#pragma once

#include <campotipo-support/numbers.h>
#include <campotipo-support/text.h>
#include <campotipo/bits.h>

#include <cstring>

#include "bits/bit_field.hpp"

// A packed area as one line for a person who looks for a fault.
namespace campotipo::bits::dump {

// strncpy cuts and fills as the dumps do: exactly `size` bytes, perhaps without a NUL.
template <class Build>
inline void in_buffer(char *buffer, int size, Build build) {
  buffer[0] = '\0';
  LINHAFLEX line;
  if (LINHAFLEX_cria(&line) != 0) return;
  build(line);
  if (size > 0) std::strncpy(buffer, LINHAFLEX_str(line), static_cast<std::size_t>(size));
  LINHAFLEX_destroi(line);
}

template <class Order>
inline void bits(char *buffer, int size, const unsigned char *packed, const ZBTFIELD_CAMPO *entry) {
  in_buffer(buffer, size, [=](LINHAFLEX line) {
    std::int64_t position = 0;
    for (const ZBTFIELD_CAMPO *at = entry; at->bits != 0; ++at) {
      for (int i = 0; i < at->bits; ++i)
        LINHAFLEX_printf(line, "%c", field::test_bit<Order>(packed, position + i) ? '1' : '0');
      LINHAFLEX_printf(line, ".");
      position += at->bits;
    }
  });
}

template <class Order>
inline void values(char *buffer, int size, const unsigned char *packed,
                   const ZBTFIELD_CAMPO *entry) {
  in_buffer(buffer, size, [=](LINHAFLEX line) {
    std::int64_t position = 0;
    for (int i = 0; entry[i].bits != 0; ++i) {
      const int width = entry[i].bits;
      char text[BIN8_TEXT_SIZE] = "muitos bits";
      if (width <= 64) {
        unsigned char value[8] = {};
        field::unpack<Order>(value, packed, static_cast<std::size_t>(position), width);
        _8toa(text, value);
      }
      LINHAFLEX_printf(line, "%s[%d;%db]=%s", position > 0 ? " " : "", i, width, text);
      position += width;
    }
  });
}

}  // namespace campotipo::bits::dump
