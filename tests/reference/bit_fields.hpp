#pragma once

#include <campotipo/bits.h>

#include <cstdint>
#include <string>

// Bit fields as the manual tells them, one bit after the other.
namespace campotipo::reference {

struct BitOrder {
  bool big;

  bool get(const unsigned char *packed, int position) const {
    return packed[position / 8] >> (big ? 7 - position % 8 : position % 8) & 1;
  }
  void put(unsigned char *packed, int position, bool bit) const {
    const int mask = 1 << (big ? 7 - position % 8 : position % 8);
    unsigned char &byte = packed[position / 8];
    byte = static_cast<unsigned char>(bit ? byte | mask : byte & ~mask);
  }
  int place(int start, int width, int i) const { return big ? start + width - 1 - i : start + i; }

  void unpack(unsigned char *field, const unsigned char *packed, int start, int width) const {
    for (int i = 0; i < width; ++i)
      BitOrder{false}.put(field, i, get(packed, place(start, width, i)));
  }
  void pack(const unsigned char *field, unsigned char *packed, int start, int width) const {
    for (int i = 0; i < width; ++i)
      put(packed, place(start, width, i), BitOrder{false}.get(field, i));
  }

  void unpack_all(unsigned char *record, const unsigned char *packed,
                  const ZBTFIELD_CAMPO *table) const {
    for (int start = 0; table->bits != 0; start += table++->bits)
      unpack(record + table->deslocamento, packed, start, table->bits);
  }
  void pack_all(unsigned char *packed, const ZBTFIELD_CAMPO *table,
                const unsigned char *record) const {
    for (int start = 0; table->bits != 0; start += table++->bits)
      pack(record + table->deslocamento, packed, start, table->bits);
  }

  std::string bits_text(const unsigned char *packed, const ZBTFIELD_CAMPO *table) const {
    std::string text;
    for (int start = 0; table->bits != 0; start += table++->bits) {
      for (int i = 0; i < table->bits; ++i) text += get(packed, start + i) ? '1' : '0';
      text += '.';
    }
    return text;
  }

  std::string values_text(const unsigned char *packed, const ZBTFIELD_CAMPO *table) const {
    std::string text;
    int start = 0;
    for (int index = 0; table[index].bits != 0; ++index) {
      const int width = table[index].bits;
      std::uint64_t value = 0;
      for (int i = width; i-- > 0;)
        value = value << 1 | (get(packed, place(start, width, i)) ? 1u : 0u);
      text += (start > 0 ? " [" : "[") + std::to_string(index) + ';' + std::to_string(width) +
              "b]=" + (width > 64 ? "muitos bits" : std::to_string(value));
      start += width;
    }
    return text;
  }
};

inline int total_bits(const ZBTFIELD_CAMPO *table) {
  int total = 0;
  for (; table->bits != 0; ++table) total += table->bits;
  return total;
}

}  // namespace campotipo::reference
