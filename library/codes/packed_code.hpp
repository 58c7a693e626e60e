#pragma once

#include <campotipo/codes.h>

#include <atomic>
#include <type_traits>

#include "codes/alphabet.hpp"
#include "codes/packed_block.hpp"
#include "codes/packed_read.hpp"
#include "codes/packed_save.hpp"

// Packed codes of n positions at six bits each.
namespace campotipo::codes::packed {

static_assert(CODALFA_BYTES(kBlock) == kBlockBytes);

// The sizes that the header promises.
consteval bool header_agrees() {
  constexpr int sizes[][3] = {
      {CODALF05_CHARACTERS, CODALF05_BYTES, CODALF05_TEXT_SIZE},
      {CODALF12_CHARACTERS, CODALF12_BYTES, CODALF12_TEXT_SIZE},
      {CODALF14_CHARACTERS, CODALF14_BYTES, CODALF14_TEXT_SIZE},
      {CODALF17_CHARACTERS, CODALF17_BYTES, CODALF17_TEXT_SIZE},
      {CODALF20_CHARACTERS, CODALF20_BYTES, CODALF20_TEXT_SIZE},
      {CODALF32_CHARACTERS, CODALF32_BYTES, CODALF32_TEXT_SIZE},
      {CODALF36_CHARACTERS, CODALF36_BYTES, CODALF36_TEXT_SIZE},
      {CODALF40_CHARACTERS, CODALF40_BYTES, CODALF40_TEXT_SIZE},
  };
  for (const auto &[characters, bytes, text_size] : sizes)
    if (bytes != CODALFA_BYTES(characters) || text_size != characters + 1) return false;
  return true;
}
static_assert(header_agrees());

// A number of positions that is part of the type, so that all sizes are known to the compiler.
template <int n>
inline constexpr std::integral_constant<int, n> fixed{};

inline constinit std::atomic<int> greatest_character{0};

// Concurrent first calls store the same answer.
inline int find_greatest_character() {
  int greatest = greatest_character.load(std::memory_order_relaxed);
  if (greatest != 0) return greatest;
  for (const unsigned char c : kAlphabet)
    if (c > greatest) greatest = c;
  greatest_character.store(greatest, std::memory_order_relaxed);
  return greatest;
}

}  // namespace campotipo::codes::packed
