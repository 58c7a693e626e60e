#pragma once

#include <campotipo/codes.h>

// The members of the fixed strings.
namespace campotipo::test {

struct FixedString {
  const char *name;
  int n, text_size;
  void (*save)(unsigned char *, const char *, int);
  void (*save_plain)(unsigned char *, const char *);
  char *(*read)(char *, const unsigned char *, int, int);
  char *(*read_whole)(char *, const unsigned char *);
  int (*compare)(const unsigned char *, const unsigned char *);
  int (*equal)(const unsigned char *, const unsigned char *);
  int (*has_content)(const unsigned char *, int);
  int (*well_formed)(const unsigned char *);
};

// Of a width that is told with each call.
template <int width>
inline constexpr FixedString kStringOf = {
    "CODSTR",
    width,
    width + 1,
    [](unsigned char *dest, const char *text, int opc) {
      CODSTR_opc_salva(dest, text, width, opc);
    },
    [](unsigned char *dest, const char *text) { CODSTR_opc_salva(dest, text, width, 0); },
    [](char *dest, const unsigned char *src, int most, int opc) {
      CODSTR_opc_extrai(dest, src, width, most, opc);
      return dest;
    },
    [](char *dest, const unsigned char *src) {
      CODSTR_extrai(dest, src, width);
      return dest;
    },
    [](const unsigned char *a, const unsigned char *b) { return CODSTR_compara(a, b, width); },
    [](const unsigned char *a, const unsigned char *b) {
      return int{CODSTR_compara(a, b, width) == 0};
    },
    [](const unsigned char *src, int opc) { return CODSTR_nao_zero(src, width, opc); },
    [](const unsigned char *src) { return CODSTR_bem_formado(src, width); }};

inline constexpr FixedString kFixedStrings[] = {
    kStringOf<1>,
    kStringOf<5>,
    {"CODSTR50", CODSTR50_BYTES, CODSTR50_TEXT_SIZE, CODSTR50_opc_atob, CODSTR50_atob,
     CODSTR50_opc_btoa, CODSTR50_btoa, CODSTR50_compara, CODSTR50_igual, CODSTR50_nao_zero,
     CODSTR50_bem_formado},
    {"CODSTR52", CODSTR52_BYTES, CODSTR52_TEXT_SIZE, CODSTR52_opc_atob, CODSTR52_atob,
     CODSTR52_opc_btoa, CODSTR52_btoa, CODSTR52_compara, CODSTR52_igual, CODSTR52_nao_zero,
     CODSTR52_bem_formado},
};

}  // namespace campotipo::test
