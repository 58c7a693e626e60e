#pragma once

#include <campotipo/codes.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "codes/packed_code.hpp"

// A packed code that owns its buffer.
namespace campotipo::codes::packed {

static_assert(offsetof(CODALFNN, caracteres) == 0 && offsetof(CODALFNN, opc) == 4 &&
              offsetof(CODALFNN, dados) == 8 && sizeof(CODALFNN) == 16);

inline bool is_valid(const CODALFNN *record) {
  return record->caracteres > 0 && record->dados != nullptr;
}

// Sizes are counted as in an int, so n below 1 asks for no bytes or for less than none.
inline void create(CODALFNN *record, int n, int opc) {
  const std::int64_t size = (6 * std::int64_t{n} + 7) / 8;
  const bool countable = size >= 0 && n <= CODALFNN_MAX_CARACTERES;
  record->caracteres = n;
  record->opc = opc;
  record->dados = countable
                      ? static_cast<unsigned char *>(std::malloc(static_cast<std::size_t>(size)))
                      : nullptr;
}

inline void destroy(CODALFNN *record) {
  std::free(record->dados);
  record->dados = nullptr;
  record->caracteres = 0;
}

inline int save(CODALFNN *record, const char *text, int opc) {
  return is_valid(record) ? save(record->dados, text, record->caracteres, opc) : 0;
}

inline char *extract(char *dest, const CODALFNN *record, int opc, int width) {
  if (is_valid(record)) return extract(dest, record->dados, record->caracteres, opc, width);
  *dest = '\0';
  return dest;
}

inline int has_content(const CODALFNN *record, int opc) {
  return is_valid(record) ? has_content(record->dados, record->caracteres, opc) : 0;
}

inline int is_well_formed(const CODALFNN *record) {
  return is_valid(record) && is_well_formed(record->dados, record->caracteres);
}

inline int compare(const CODALFNN *a, const CODALFNN *b) {
  const bool valid = is_valid(a);
  if (valid != is_valid(b)) return valid ? -1 : 1;
  if (!valid || a->caracteres != b->caracteres) return 0;
  return compare(a->dados, b->dados, a->caracteres);
}

}  // namespace campotipo::codes::packed
