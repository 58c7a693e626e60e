#pragma once

#include <campotipo/bits.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>

// True/false values of a range of indices, one bit each, with no memory until the first write.
namespace campotipo::bits::table {

// Place of an index, in 64 bits because base and index may stand at both ends of int.
inline std::int64_t place_of(const TABBOOL *table, int index) {
  return std::int64_t{index} - table->base;
}

inline bool has_place(const TABBOOL *table, std::int64_t place) {
  return place >= 0 && place < table->tamanho;
}

inline void create(TABBOOL *table, int count, int base, int fallback) {
  *table = {nullptr, count, base, static_cast<unsigned char>(fallback)};
}

inline void destroy(TABBOOL *table) {
  std::free(table->mapa);
  table->mapa = nullptr;
}

inline bool allocate(TABBOOL *table) {
  if (table->mapa != nullptr) return true;
  const std::size_t size = (static_cast<std::size_t>(table->tamanho) + 7) / 8;
  auto *map = static_cast<unsigned char *>(std::malloc(size));
  if (map == nullptr) return false;
  std::memset(map, table->padrao != 0 ? 0xFF : 0x00, size);
  table->mapa = map;
  return true;
}

template <bool Value>
inline void write(TABBOOL *table, int index) {
  const std::int64_t place = place_of(table, index);
  if (!has_place(table, place) || !allocate(table)) return;
  const auto bit = static_cast<unsigned char>(1u << (place & 7));
  unsigned char &byte = table->mapa[place >> 3];
  byte = static_cast<unsigned char>(Value ? byte | bit : byte & ~bit);
}

inline int test(const TABBOOL *table, int index) {
  const std::int64_t place = place_of(table, index);
  if (!has_place(table, place) || table->mapa == nullptr) return table->padrao;
  return table->mapa[place >> 3] >> (place & 7) & 1;
}

}  // namespace campotipo::bits::table
