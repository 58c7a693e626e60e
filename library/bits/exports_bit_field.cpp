#include "bits/bit_field.hpp"

namespace field = campotipo::bits::field;

extern "C" {

int ZBTFIELD_total_de_bits(const ZBTFIELD_CAMPO *tabela) {
  return static_cast<int>(field::total_bits(tabela));
}
int ZBTFIELD_total_de_bytes(const ZBTFIELD_CAMPO *tabela) {
  return static_cast<int>((field::total_bits(tabela) + 7) / 8);
}

void ZBTFIELD_extrai_dados(unsigned char *registro, const unsigned char *packed,
                           const ZBTFIELD_CAMPO *tabela) {
  field::unpack_all<field::Little>(registro, packed, tabela);
}
void ZBTFIELD_big_extrai_dados(unsigned char *registro, const unsigned char *packed,
                               const ZBTFIELD_CAMPO *tabela) {
  field::unpack_all<field::Big>(registro, packed, tabela);
}

void ZBTFIELD_monta_dados(unsigned char *packed, const ZBTFIELD_CAMPO *tabela,
                          const unsigned char *registro) {
  field::pack_all<field::Little>(packed, tabela, registro);
}
void ZBTFIELD_big_monta_dados(unsigned char *packed, const ZBTFIELD_CAMPO *tabela,
                              const unsigned char *registro) {
  field::pack_all<field::Big>(packed, tabela, registro);
}

int ZBTFIELD_bem_formado(const unsigned char *packed, int bytes, const ZBTFIELD_CAMPO *tabela) {
  return field::is_clear_behind<field::Little>(packed, bytes, tabela);
}
int ZBTFIELD_big_bem_formado(const unsigned char *packed, int bytes, const ZBTFIELD_CAMPO *tabela) {
  return field::is_clear_behind<field::Big>(packed, bytes, tabela);
}

void ZBTFIELD_extrai_campo(unsigned char *campo, const unsigned char *packed, int start,
                           int width) {
  field::unpack<field::Little>(campo, packed, static_cast<std::size_t>(start), width);
}
void ZBTFIELD_big_extrai_campo(unsigned char *campo, const unsigned char *packed, int start,
                               int width) {
  field::unpack<field::Big>(campo, packed, static_cast<std::size_t>(start), width);
}

void ZBTFIELD_monta_campo(const unsigned char *campo, unsigned char *packed, int start, int width) {
  field::pack<field::Little>(campo, packed, static_cast<std::size_t>(start), width);
}
void ZBTFIELD_big_monta_campo(const unsigned char *campo, unsigned char *packed, int start,
                              int width) {
  field::pack<field::Big>(campo, packed, static_cast<std::size_t>(start), width);
}

void ZBTFIELD_seta_bit(unsigned char *packed, int position) {
  field::set_bit<field::Little>(packed, position);
}
void ZBTFIELD_big_seta_bit(unsigned char *packed, int position) {
  field::set_bit<field::Big>(packed, position);
}

void ZBTFIELD_reseta_bit(unsigned char *packed, int position) {
  field::clear_bit<field::Little>(packed, position);
}
void ZBTFIELD_big_reseta_bit(unsigned char *packed, int position) {
  field::clear_bit<field::Big>(packed, position);
}

int ZBTFIELD_testa_bit(const unsigned char *packed, int position) {
  return field::test_bit<field::Little>(packed, position);
}
int ZBTFIELD_big_testa_bit(const unsigned char *packed, int position) {
  return field::test_bit<field::Big>(packed, position);
}
}
