#pragma once

#include <campotipo/codes.h>

#include <cstddef>

// The members of the digit strings.
namespace campotipo::test {

struct DigitString {
  const char *name;
  std::size_t digits, bytes, text_size;
  int (*save)(unsigned char *, const char *);
  char *(*read)(char *, const unsigned char *);
  int (*well_formed)(const unsigned char *);
};

// clang-format off
inline constexpr DigitString kDigitStrings[] = {
    {"BSTR21", 21, BSTR21_BYTES, BSTR21_TEXT_SIZE, BSTR21_atob, BSTR21_btoa, BSTR21_bem_formado},
    {"BSTR23", 23, BSTR23_BYTES, BSTR23_TEXT_SIZE, BSTR23_atob, BSTR23_btoa, BSTR23_bem_formado},
    {"BSTR26", 26, BSTR26_BYTES, BSTR26_TEXT_SIZE, BSTR26_atob, BSTR26_btoa, BSTR26_bem_formado},
    {"BSTR28", 28, BSTR28_BYTES, BSTR28_TEXT_SIZE, BSTR28_atob, BSTR28_btoa, BSTR28_bem_formado},
    {"BSTR31", 31, BSTR31_BYTES, BSTR31_TEXT_SIZE, BSTR31_atob, BSTR31_btoa, BSTR31_bem_formado},
    {"BSTR33", 33, BSTR33_BYTES, BSTR33_TEXT_SIZE, BSTR33_atob, BSTR33_btoa, BSTR33_bem_formado},
    {"BSTR35", 35, BSTR35_BYTES, BSTR35_TEXT_SIZE, BSTR35_atob, BSTR35_btoa, BSTR35_bem_formado},
    {"BSTR38", 38, BSTR38_BYTES, BSTR38_TEXT_SIZE, BSTR38_atob, BSTR38_btoa, BSTR38_bem_formado},
};
// clang-format on

}  // namespace campotipo::test
