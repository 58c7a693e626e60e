#pragma once

#include <ctype.h>

// What follows the process's locale, which the library reads and never sets. The only place that
// asks it.
namespace campotipo::locale {

// The char goes in with its sign, as a caller of the C function would pass it: the C library's
// tables reach down to -128.
inline int to_upper(char c) { return toupper(static_cast<signed char>(c)); }

// By the value of the byte without a sign.
inline bool is_alnum(char c) { return isalnum(static_cast<unsigned char>(c)) != 0; }

}  // namespace campotipo::locale
