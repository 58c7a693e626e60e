#pragma once

#include <campotipo-support/numbers.h>
#include <campotipo/quantities.h>

// What can be done with a numeric field, by its width in bytes.
namespace campotipo::quantities {

struct Operations {
  int (*from_text)(unsigned char *, const char *);
  char *(*to_text)(char *, const unsigned char *);
  int (*from_text_fixed)(unsigned char *, const char *, int);
  char *(*to_text_fixed)(char *, const unsigned char *, int);
  int (*compare)(const unsigned char *, const unsigned char *);
  int (*well_formed)(const unsigned char *);
};

// Of a binary number every pattern of bits is one.
inline int always(const unsigned char *) { return 1; }

// A constant width makes a direct call of it, and nothing is left of the table.
inline constexpr Operations kOperations[ZBINARIO_MAX_WIDTH + 1] = {
    {},
    {_ato1, _1toa, _ato1fixo, _1toafixo, BIN1_compara, always},
    {_ato2, _2toa, _ato2fixo, _2toafixo, BIN2_compara, always},
    {_ato3, _3toa, _ato3fixo, _3toafixo, BIN3_compara, always},
    {_ato4, _4toa, _ato4fixo, _4toafixo, BIN4_compara, always},
    {_ato5, _5toa, _ato5fixo, _5toafixo, BIN5_compara, always},
    {_ato6, _6toa, _ato6fixo, _6toafixo, BIN6_compara, always},
    {_ato7, _7toa, _ato7fixo, _7toafixo, BIN7_compara, always},
    {_ato8, _8toa, _ato8fixo, _8toafixo, BIN8_compara, always},
    {BINQ9_atob, BINQ9_btoa, BINQ9_atob_fixo, BINQ9_btoafixo, BINQ9_compara, BINQ9_bem_formado},
    {BINQ10_atob, BINQ10_btoa, BINQ10_atob_fixo, BINQ10_btoafixo, BINQ10_compara,
     BINQ10_bem_formado},
    {BINQ11_atob, BINQ11_btoa, BINQ11_atob_fixo, BINQ11_btoafixo, BINQ11_compara,
     BINQ11_bem_formado},
    {BINQ12_atob, BINQ12_btoa, BINQ12_atob_fixo, BINQ12_btoafixo, BINQ12_compara,
     BINQ12_bem_formado},
    {BINQ13_atob, BINQ13_btoa, BINQ13_atob_fixo, BINQ13_btoafixo, BINQ13_compara,
     BINQ13_bem_formado},
    {BINQ14_atob, BINQ14_btoa, BINQ14_atob_fixo, BINQ14_btoafixo, BINQ14_compara,
     BINQ14_bem_formado},
    {BINQ15_atob, BINQ15_btoa, BINQ15_atob_fixo, BINQ15_btoafixo, BINQ15_compara,
     BINQ15_bem_formado},
    {BINQ16_atob, BINQ16_btoa, BINQ16_atob_fixo, BINQ16_btoafixo, BINQ16_compara,
     BINQ16_bem_formado},
    {BINQ17_atob, BINQ17_btoa, BINQ17_atob_fixo, BINQ17_btoafixo, BINQ17_compara,
     BINQ17_bem_formado},
    {BINQ18_atob, BINQ18_btoa, BINQ18_atob_fixo, BINQ18_btoafixo, BINQ18_compara,
     BINQ18_bem_formado},
    {BINQ19_atob, BINQ19_btoa, BINQ19_atob_fixo, BINQ19_btoafixo, BINQ19_compara,
     BINQ19_bem_formado},
    {BINQ20_atob, BINQ20_btoa, BINQ20_atob_fixo, BINQ20_btoafixo, BINQ20_compara,
     BINQ20_bem_formado},
    {BINQ21_atob, BINQ21_btoa, BINQ21_atob_fixo, BINQ21_btoafixo, BINQ21_compara,
     BINQ21_bem_formado},
};

}  // namespace campotipo::quantities
