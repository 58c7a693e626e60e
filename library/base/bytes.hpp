#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

// Loads and stores at any address, in exactly the bytes that are named. Everything in the libraries
// that touches a field as words goes through here.
#if __BYTE_ORDER__ != __ORDER_LITTLE_ENDIAN__
#error "stored forms are moved as words, which needs a processor with the low byte first"
#endif

namespace campotipo::bytes {

__extension__ using uint128 = unsigned __int128;
__extension__ using int128 = __int128;

template <class T>
inline T load(const void *from) {
  T value;
  std::memcpy(&value, from, sizeof value);
  return value;
}

template <class T>
inline void store(void *to, T value) {
  std::memcpy(to, &value, sizeof value);
}

// Little-endian number of N bytes, 1 to 8. Odd widths are taken in the same pieces by load and store,
// side by side: overlapping ones would keep a load from being served by the store before it.
template <int N>
inline std::uint64_t load_le(const unsigned char *from) {
  static_assert(N >= 1 && N <= 8);
  if constexpr (N == 1) return from[0];
  if constexpr (N == 2) return load<std::uint16_t>(from);
  if constexpr (N == 3) return load<std::uint16_t>(from) | std::uint64_t{from[2]} << 16;
  if constexpr (N == 4) return load<std::uint32_t>(from);
  if constexpr (N > 4 && N < 8) return load<std::uint32_t>(from) | load_le<N - 4>(from + 4) << 32;
  return load<std::uint64_t>(from);
}

template <int N>
inline void store_le(unsigned char *to, std::uint64_t value) {
  static_assert(N >= 1 && N <= 8);
  if constexpr (N == 1) {
    to[0] = static_cast<unsigned char>(value);
  } else if constexpr (N == 2) {
    store(to, static_cast<std::uint16_t>(value));
  } else if constexpr (N == 3) {
    store(to, static_cast<std::uint16_t>(value));
    to[2] = static_cast<unsigned char>(value >> 16);
  } else if constexpr (N < 8) {
    store(to, static_cast<std::uint32_t>(value));
    if constexpr (N > 4) store_le<N - 4>(to + 4, value >> 32);
  } else {
    store(to, value);
  }
}

// Copies the low `count` bytes (0 to 8) of a word, and no other byte.
inline void store_low_bytes(void *destination, std::uint64_t word, unsigned count) {
  auto *to = static_cast<unsigned char *>(destination);
  if (count >= 4) {
    store(to, static_cast<std::uint32_t>(word));
    // A shift by 64 is undefined; with count 4 both stores are the same four bytes.
    store(to + count - 4, static_cast<std::uint32_t>(word >> (8 * (count - 4))));
  } else if (count >= 2) {
    store(to, static_cast<std::uint16_t>(word));
    store(to + count - 2, static_cast<std::uint16_t>(word >> (8 * (count - 2))));
  } else if (count == 1) {
    to[0] = static_cast<unsigned char>(word);
  }
}

// A word whose low `count` bytes (0 to 8) are those of memory and whose others are 0. Reads no
// other byte.
inline std::uint64_t load_low_bytes(const void *source, unsigned count) {
  const auto *from = static_cast<const unsigned char *>(source);
  if (count == 8) return load<std::uint64_t>(from);
  if (count >= 4) {
    const std::uint64_t high = load<std::uint32_t>(from + count - 4);
    return load<std::uint32_t>(from) | high << (8 * (count - 4));
  }
  if (count >= 2) {
    const std::uint64_t high = load<std::uint16_t>(from + count - 2);
    return load<std::uint16_t>(from) | high << (8 * (count - 2));
  }
  return count == 1 ? from[0] : 0;
}

// Reading past the end of a text in one vector is allowed only where it can neither fault nor be
// seen: inside the memory page of a byte that belongs to the text. Instrumented builds never do it.
#if defined(CAMPOTIPO_PLAIN_READS) || defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
inline constexpr bool kWideReads = false;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(memory_sanitizer) || \
    __has_feature(thread_sanitizer)
inline constexpr bool kWideReads = false;
#else
inline constexpr bool kWideReads = true;
#endif
#else
inline constexpr bool kWideReads = true;
#endif

// The least page of any Linux; larger ones are multiples of it.
inline constexpr std::uintptr_t kPage = 4096;

// `count` is at most a page.
inline bool same_page(const void *from, std::size_t count) {
  return kWideReads && reinterpret_cast<std::uintptr_t>(from) % kPage <= kPage - count;
}

}  // namespace campotipo::bytes
