#pragma once

#include <campotipo/bits.h>

#include "tests/reference/bit_fields.hpp"

namespace campotipo::test {

// The operations of one bit order, and the obvious way to the same results.
struct BitForm {
  const char *name;
  reference::BitOrder order;
  void (*unpack_all)(unsigned char *, const unsigned char *, const ZBTFIELD_CAMPO *);
  void (*pack_all)(unsigned char *, const ZBTFIELD_CAMPO *, const unsigned char *);
  void (*unpack)(unsigned char *, const unsigned char *, int, int);
  void (*pack)(const unsigned char *, unsigned char *, int, int);
  void (*set)(unsigned char *, int);
  void (*clear)(unsigned char *, int);
  int (*test)(const unsigned char *, int);
  void (*bits_text)(char *, int, const unsigned char *, const ZBTFIELD_CAMPO *);
  void (*values_text)(char *, int, const unsigned char *, const ZBTFIELD_CAMPO *);
  int (*well_formed)(const unsigned char *, int, const ZBTFIELD_CAMPO *);
};

inline constexpr BitForm kBitForms[] = {
    {"little",
     {false},
     ZBTFIELD_extrai_dados,
     ZBTFIELD_monta_dados,
     ZBTFIELD_extrai_campo,
     ZBTFIELD_monta_campo,
     ZBTFIELD_seta_bit,
     ZBTFIELD_reseta_bit,
     ZBTFIELD_testa_bit,
     ZBTFIELD_depura_binario,
     ZBTFIELD_depura_conteudo,
     ZBTFIELD_bem_formado},
    {"big",
     {true},
     ZBTFIELD_big_extrai_dados,
     ZBTFIELD_big_monta_dados,
     ZBTFIELD_big_extrai_campo,
     ZBTFIELD_big_monta_campo,
     ZBTFIELD_big_seta_bit,
     ZBTFIELD_big_reseta_bit,
     ZBTFIELD_big_testa_bit,
     ZBTFIELD_big_depura_binario,
     ZBTFIELD_big_depura_conteudo,
     ZBTFIELD_big_bem_formado},
};

}  // namespace campotipo::test
