#pragma once

#include <campotipo/percent.h>

#include <ostream>

#include "tests/reference/rounding.hpp"

// The stored percents: what tests, the fuzzer and the check of threads run over.
namespace campotipo::test {

struct Family {
  const char *name;
  reference::Percent kind;
  void (*multiply[3])(QUANTIA *, const QUANTIA *, const unsigned char *);
  void (*multiply_v4[3])(PARCELA *, const PARCELA *, const unsigned char *, int);
  void (*search[3])(QUANTIA *, const QUANTIA *, const unsigned char *);
  void (*divide)(unsigned char *, const QUANTIA *, const QUANTIA *);
  void (*divide_v4)(unsigned char *, const PARCELA *, const PARCELA *);
  void (*invert)(unsigned char *, const unsigned char *);
  char *(*edit[2])(char *, const unsigned char *);  // all decimals, exact

  friend std::ostream &operator<<(std::ostream &out, const Family &family) {
    return out << family.name;
  }
};

// clang-format off
inline constexpr Family kFamilies[] = {
    {"PORC0", {0, 1, 100},
     {PORC0_multiplica, PORC0_multipl_arred, PORC0_multipl_arr_nbr},
     {PORC0_v4_multiplica, PORC0_v4_multipl_arred, PORC0_v4_multipl_arr_nbr},
     {PORC0_inv_multiplica, PORC0_inv_multipl_arred, PORC0_inv_multipl_arr_nbr},
     PORC0_divide, PORC0_v4_divide, PORC0_inverte, {PORC0_edita, PORC0_edita}},
    {"PORC1", {1, 2, 1000},
     {PORC1_multiplica, PORC1_multipl_arred, PORC1_multipl_arr_nbr},
     {PORC1_v4_multiplica, PORC1_v4_multipl_arred, PORC1_v4_multipl_arr_nbr},
     {PORC1_inv_multiplica, PORC1_inv_multipl_arred, PORC1_inv_multipl_arr_nbr},
     PORC1_divide, PORC1_v4_divide, PORC1_inverte, {PORC1_edita, PORC1_edita_exato}},
    {"PORC2", {2, 2, 10000},
     {PORC2_multiplica, PORC2_multipl_arred, PORC2_multipl_arr_nbr},
     {PORC2_v4_multiplica, PORC2_v4_multipl_arred, PORC2_v4_multipl_arr_nbr},
     {PORC2_inv_multiplica, PORC2_inv_multipl_arred, PORC2_inv_multipl_arr_nbr},
     PORC2_divide, PORC2_v4_divide, PORC2_inverte, {PORC2_edita, PORC2_edita_exato}},
    {"PORC4", {4, 4, 1000000},
     {PORC4_multiplica, PORC4_multipl_arred, PORC4_multipl_arr_nbr},
     {PORC4_v4_multiplica, PORC4_v4_multipl_arred, PORC4_v4_multipl_arr_nbr},
     {PORC4_inv_multiplica, PORC4_inv_multipl_arred, PORC4_inv_multipl_arr_nbr},
     PORC4_divide, PORC4_v4_divide, PORC4_inverte, {PORC4_edita, PORC4_edita_exato}},
};
// clang-format on
static_assert(PORC0_BYTES == 1 && PORC1_BYTES == 2 && PORC2_BYTES == 2 && PORC4_BYTES == 4);
static_assert(PORC0_CEM == 100 && PORC1_CEM == 1000 && PORC2_CEM == 10000 && PORC4_CEM == 1000000);

}  // namespace campotipo::test
