#pragma once

#include <campotipo/bits.h>
#include <fcntl.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <ctime>

#include "base/bytes.hpp"
#include "base/hex.hpp"
#include "bits/x86/guid_digits.hpp"

// GUIDs as 16 bytes in text order, their texts, and a sequence of them.
namespace campotipo::bits::guid {

static_assert(sizeof(ZGUID_ESTADO) == 52 && alignof(ZGUID_ESTADO) == 1);
static_assert(offsetof(ZGUID_ESTADO, no) == 4 && offsetof(ZGUID_ESTADO, contador) == 10);
static_assert(offsetof(ZGUID_ESTADO, texto) == 14);
static_assert(sizeof(ZGUID_ESTADO::texto) == ZGUID_TEXTO_SIZE);

// What is no digit is skipped, missing digits are 0.
[[gnu::noinline]] inline void parse_any(unsigned char *dest, const char *text) {
  std::uint64_t halves[2] = {0, 0};
  for (unsigned count = 0; count < 32 && *text != '\0'; ++text) {
    const int value = hex::value(*text);
    if (value < 0) continue;
    halves[count / 16] |= static_cast<std::uint64_t>(value) << (60 - 4 * (count % 16));
    ++count;
  }
  bytes::store(dest, __builtin_bswap64(halves[0]));
  bytes::store(dest + 8, __builtin_bswap64(halves[1]));
}

inline void parse(unsigned char *dest, const char *text) {
  if (!x86::parse_usual(dest, text)) parse_any(dest, text);
}

// Groups of 8, 4, 4, 4 and 12 digits with dashes between, or all digits in a row.
inline char *put_digits(char *to, const unsigned char *guid, int flags) {
  const bool capitals = (flags & ZGUID_MAIUSCULAS) != 0;
  std::uint64_t eights[4];
  for (unsigned i = 0; i < 4; ++i)
    eights[i] = hex::split8(bytes::load<std::uint32_t>(guid + 4 * i), capitals);
  if ((flags & ZGUID_HIFENS) == 0) {
    std::memcpy(to, eights, 32);
    return to + 32;
  }
  bytes::store(to, eights[0]);
  for (unsigned i = 0; i < 4; ++i) {
    to[8 + 5 * i] = '-';
    bytes::store(to + 9 + 5 * i, static_cast<std::uint32_t>(eights[1 + i / 2] >> 32 * (i % 2)));
  }
  bytes::store(to + 28, eights[3]);
  return to + 36;
}

// The GUID is read whole before the first character is written.
inline void to_text(char *to, const unsigned char *guid, int flags) {
  unsigned char copy[ZGUID_BYTES];
  std::memcpy(copy, guid, sizeof copy);
  const bool braces = (flags & ZGUID_CHAVES) != 0;
  if (braces) *to++ = '{';
  to = put_digits(to, copy, flags);
  if (braces) *to++ = '}';
  *to = '\0';
}

// The kernel makes a new value for each reading of its file and gives it whole. A stream of the C
// library would allocate.
inline void generate(unsigned char *dest) {
  char line[64] = "";
  const int file = open("/proc/sys/kernel/random/uuid", O_RDONLY | O_CLOEXEC);
  if (file >= 0) {
    if (read(file, line, sizeof line - 1) < 0) line[0] = '\0';
    close(file);
  }
  parse(dest, line);
}

// The counter, then the clock and the node with their last bytes first; "40" and "80" stand where a
// GUID has its version and its variant.
inline void write_text(ZGUID_ESTADO *state) {
  const std::uint32_t clock = state->tempo;
  const std::uint64_t node = bytes::load_le<6>(state->no);
  const std::uint64_t head =
      std::uint64_t{state->contador} << 32 | (clock & 0xFFFF) << 16 | 0x4000 | (clock >> 16 & 0xFF);
  const std::uint64_t rest = std::uint64_t{0x8000 | clock >> 24} << 48 | node;
  unsigned char guid[ZGUID_BYTES];
  bytes::store(guid, __builtin_bswap64(head));
  bytes::store(guid + 8, __builtin_bswap64(rest));
  to_text(state->texto, guid, ZGUID_HIFENS);
}

inline void prepare(ZGUID_ESTADO *state, const unsigned char *node, int count) {
  std::memset(state, 0, sizeof *state);
  if (count > 0)
    std::memcpy(state->no, node,
                count < ZGUID_NO_BYTES ? static_cast<std::size_t>(count) : ZGUID_NO_BYTES);
  state->tempo = static_cast<std::uint32_t>(std::time(nullptr));
  write_text(state);
}

inline char *next(ZGUID_ESTADO *state) {
  if (++state->contador == 0) {
    unsigned char node[ZGUID_NO_BYTES];
    std::memcpy(node, state->no, sizeof node);
    prepare(state, node, ZGUID_NO_BYTES);
  } else {
    write_text(state);
  }
  return state->texto;
}

}  // namespace campotipo::bits::guid
