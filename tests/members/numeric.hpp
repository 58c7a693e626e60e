#pragma once

#include <campotipo-support/numbers.h>
#include <campotipo/quantities.h>

// The numeric fields by their width: what tests, fuzzers, benchmarks and the check of threads run over.
namespace campotipo::test {

// Powers of ten, of the members that have them.
struct Scaling {
  int (*divide)(unsigned char *, const unsigned char *, unsigned int);
  int (*divide_by_10)(unsigned char *, const unsigned char *);
  int (*divide_by_100)(unsigned char *, const unsigned char *);
  void (*multiply)(unsigned char *, const unsigned char *, unsigned int);
  void (*multiply_by_10)(unsigned char *, const unsigned char *);
  void (*multiply_by_100)(unsigned char *, const unsigned char *);
};

struct Numeric {
  int bytes, digits, text_size;
  int (*from_text)(unsigned char *, const char *);
  int (*from_text_fixed)(unsigned char *, const char *, int);
  char *(*to_text)(char *, const unsigned char *);
  char *(*to_text_fixed)(char *, const unsigned char *, int);
  int (*compare)(const unsigned char *, const unsigned char *);
  int (*well_formed)(const unsigned char *);
  Scaling scaling;
};

// clang-format off
inline constexpr Numeric kBinaries[] = {
    {1, 2, BIN1_TEXT_SIZE, _ato1, _ato1fixo, _1toa, _1toafixo, BIN1_compara, nullptr, {}},
    {2, 4, BIN2_TEXT_SIZE, _ato2, _ato2fixo, _2toa, _2toafixo, BIN2_compara, nullptr, {}},
    {3, 7, BIN3_TEXT_SIZE, _ato3, _ato3fixo, _3toa, _3toafixo, BIN3_compara, nullptr, {}},
    {4, 9, BIN4_TEXT_SIZE, _ato4, _ato4fixo, _4toa, _4toafixo, BIN4_compara, nullptr, {}},
    {5, 12, BIN5_TEXT_SIZE, _ato5, _ato5fixo, _5toa, _5toafixo, BIN5_compara, nullptr, {}},
    {6, 14, BIN6_TEXT_SIZE, _ato6, _ato6fixo, _6toa, _6toafixo, BIN6_compara, nullptr, {}},
    {7, 16, BIN7_TEXT_SIZE, _ato7, _ato7fixo, _7toa, _7toafixo, BIN7_compara, nullptr, {}},
    {8, 19, BIN8_TEXT_SIZE, _ato8, _ato8fixo, _8toa, _8toafixo, BIN8_compara, nullptr, {}},
};

inline constexpr Numeric kQuantities[] = {
    {BINQ9_BYTES, BINQ9_DIGITS, BINQ9_TEXT_SIZE, BINQ9_atob, BINQ9_atob_fixo, BINQ9_btoa, BINQ9_btoafixo,
     BINQ9_compara, BINQ9_bem_formado, {}},
    {BINQ10_BYTES, BINQ10_DIGITS, BINQ10_TEXT_SIZE, BINQ10_atob, BINQ10_atob_fixo, BINQ10_btoa, BINQ10_btoafixo,
     BINQ10_compara, BINQ10_bem_formado, {}},
    {BINQ11_BYTES, BINQ11_DIGITS, BINQ11_TEXT_SIZE, BINQ11_atob, BINQ11_atob_fixo, BINQ11_btoa, BINQ11_btoafixo,
     BINQ11_compara, BINQ11_bem_formado, {}},
    {BINQ12_BYTES, BINQ12_DIGITS, BINQ12_TEXT_SIZE, BINQ12_atob, BINQ12_atob_fixo, BINQ12_btoa, BINQ12_btoafixo,
     BINQ12_compara, BINQ12_bem_formado, {}},
    {BINQ13_BYTES, BINQ13_DIGITS, BINQ13_TEXT_SIZE, BINQ13_atob, BINQ13_atob_fixo, BINQ13_btoa, BINQ13_btoafixo,
     BINQ13_compara, BINQ13_bem_formado, {}},
    {BINQ14_BYTES, BINQ14_DIGITS, BINQ14_TEXT_SIZE, BINQ14_atob, BINQ14_atob_fixo, BINQ14_btoa, BINQ14_btoafixo,
     BINQ14_compara, BINQ14_bem_formado, {}},
    {BINQ15_BYTES, BINQ15_DIGITS, BINQ15_TEXT_SIZE, BINQ15_atob, BINQ15_atob_fixo, BINQ15_btoa, BINQ15_btoafixo,
     BINQ15_compara, BINQ15_bem_formado, {}},
    {BINQ16_BYTES, BINQ16_DIGITS, BINQ16_TEXT_SIZE, BINQ16_atob, BINQ16_atob_fixo, BINQ16_btoa, BINQ16_btoafixo,
     BINQ16_compara, BINQ16_bem_formado,
     {BINQ16_div_por_potencia_de_dez, BINQ16_div_por_10, BINQ16_div_por_100,
      BINQ16_mul_por_potencia_de_dez, BINQ16_mul_por_10, BINQ16_mul_por_100}},
    {BINQ17_BYTES, BINQ17_DIGITS, BINQ17_TEXT_SIZE, BINQ17_atob, BINQ17_atob_fixo, BINQ17_btoa, BINQ17_btoafixo,
     BINQ17_compara, BINQ17_bem_formado,
     {BINQ17_div_por_potencia_de_dez, BINQ17_div_por_10, BINQ17_div_por_100,
      BINQ17_mul_por_potencia_de_dez, BINQ17_mul_por_10, BINQ17_mul_por_100}},
    {BINQ18_BYTES, BINQ18_DIGITS, BINQ18_TEXT_SIZE, BINQ18_atob, BINQ18_atob_fixo, BINQ18_btoa, BINQ18_btoafixo,
     BINQ18_compara, BINQ18_bem_formado,
     {BINQ18_div_por_potencia_de_dez, BINQ18_div_por_10, BINQ18_div_por_100,
      BINQ18_mul_por_potencia_de_dez, BINQ18_mul_por_10, BINQ18_mul_por_100}},
    {BINQ19_BYTES, BINQ19_DIGITS, BINQ19_TEXT_SIZE, BINQ19_atob, BINQ19_atob_fixo, BINQ19_btoa, BINQ19_btoafixo,
     BINQ19_compara, BINQ19_bem_formado,
     {BINQ19_div_por_potencia_de_dez, BINQ19_div_por_10, BINQ19_div_por_100,
      BINQ19_mul_por_potencia_de_dez, BINQ19_mul_por_10, BINQ19_mul_por_100}},
    {BINQ20_BYTES, BINQ20_DIGITS, BINQ20_TEXT_SIZE, BINQ20_atob, BINQ20_atob_fixo, BINQ20_btoa, BINQ20_btoafixo,
     BINQ20_compara, BINQ20_bem_formado,
     {BINQ20_div_por_potencia_de_dez, BINQ20_div_por_10, BINQ20_div_por_100,
      BINQ20_mul_por_potencia_de_dez, BINQ20_mul_por_10, BINQ20_mul_por_100}},
    {BINQ21_BYTES, BINQ21_DIGITS, BINQ21_TEXT_SIZE, BINQ21_atob, BINQ21_atob_fixo, BINQ21_btoa, BINQ21_btoafixo,
     BINQ21_compara, BINQ21_bem_formado,
     {BINQ21_div_por_potencia_de_dez, BINQ21_div_por_10, BINQ21_div_por_100,
      BINQ21_mul_por_potencia_de_dez, BINQ21_mul_por_10, BINQ21_mul_por_100}},
};
// clang-format on

inline constexpr int kFirstScaled = 16;

}  // namespace campotipo::test
