#pragma once

#include <ctype.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

// What follows the process's locale, which the library reads and never sets. The only place that
// asks it.
namespace campotipo::locale {

// The capitals of the locale of this moment. A char goes in with its sign, as a caller of the C
// function would pass it: the C library's tables reach down to -128.
class Capitals {
 public:
#ifdef __GLIBC__
  // What <ctype.h> itself makes of toupper, where it is let; the table is asked for once a text.
  int of(char c) const { return table_[static_cast<signed char>(c)]; }

  // Whether each of a to z has its own, as in all locales but a few ("i" in Turkish).
  bool are_plain() const { return std::memcmp(table_ + 'a', kPlain.data(), sizeof kPlain) == 0; }

 private:
  static constexpr auto kPlain = [] {
    std::array<std::int32_t, 26> capitals{};
    for (int i = 0; i < 26; ++i) capitals[static_cast<std::size_t>(i)] = 'A' + i;
    return capitals;
  }();
  const std::int32_t *table_ = *__ctype_toupper_loc();
#else
  int of(char c) const { return toupper(static_cast<signed char>(c)); }
  bool are_plain() const {
    bool plain = true;
    for (char c = 'a'; c <= 'z'; ++c) plain &= of(c) == c - 'a' + 'A';
    return plain;
  }
#endif
};

// By the value of the byte without a sign.
inline bool is_alnum(char c) { return isalnum(static_cast<unsigned char>(c)) != 0; }

}  // namespace campotipo::locale
