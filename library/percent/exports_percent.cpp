#include "percent/percent.hpp"

namespace engine = campotipo::percent;
using engine::Rule;

extern "C" {

void PORC0_multiplica(QUANTIA *result, const QUANTIA *base, const unsigned char *percent) {
  engine::multiply<0, Rule::kCut>(result, base, percent);
}
void PORC1_multiplica(QUANTIA *result, const QUANTIA *base, const unsigned char *percent) {
  engine::multiply<1, Rule::kCut>(result, base, percent);
}
void PORC2_multiplica(QUANTIA *result, const QUANTIA *base, const unsigned char *percent) {
  engine::multiply<2, Rule::kCut>(result, base, percent);
}
void PORC4_multiplica(QUANTIA *result, const QUANTIA *base, const unsigned char *percent) {
  engine::multiply<4, Rule::kCut>(result, base, percent);
}

void PORC0_multipl_arred(QUANTIA *result, const QUANTIA *base, const unsigned char *percent) {
  engine::multiply<0, Rule::kFiveUp>(result, base, percent);
}
void PORC1_multipl_arred(QUANTIA *result, const QUANTIA *base, const unsigned char *percent) {
  engine::multiply<1, Rule::kFiveUp>(result, base, percent);
}
void PORC2_multipl_arred(QUANTIA *result, const QUANTIA *base, const unsigned char *percent) {
  engine::multiply<2, Rule::kFiveUp>(result, base, percent);
}
void PORC4_multipl_arred(QUANTIA *result, const QUANTIA *base, const unsigned char *percent) {
  engine::multiply<4, Rule::kFiveUp>(result, base, percent);
}

void PORC0_multipl_arr_nbr(QUANTIA *result, const QUANTIA *base, const unsigned char *percent) {
  engine::multiply<0, Rule::kNbr>(result, base, percent);
}
void PORC1_multipl_arr_nbr(QUANTIA *result, const QUANTIA *base, const unsigned char *percent) {
  engine::multiply<1, Rule::kNbr>(result, base, percent);
}
void PORC2_multipl_arr_nbr(QUANTIA *result, const QUANTIA *base, const unsigned char *percent) {
  engine::multiply<2, Rule::kNbr>(result, base, percent);
}
void PORC4_multipl_arr_nbr(QUANTIA *result, const QUANTIA *base, const unsigned char *percent) {
  engine::multiply<4, Rule::kNbr>(result, base, percent);
}

void PORC0_v4_multiplica(PARCELA *result, const PARCELA *base, const unsigned char *percent,
                         int casas) {
  engine::multiply<0, Rule::kCut>(result, base, percent, casas);
}
void PORC1_v4_multiplica(PARCELA *result, const PARCELA *base, const unsigned char *percent,
                         int casas) {
  engine::multiply<1, Rule::kCut>(result, base, percent, casas);
}
void PORC2_v4_multiplica(PARCELA *result, const PARCELA *base, const unsigned char *percent,
                         int casas) {
  engine::multiply<2, Rule::kCut>(result, base, percent, casas);
}
void PORC4_v4_multiplica(PARCELA *result, const PARCELA *base, const unsigned char *percent,
                         int casas) {
  engine::multiply<4, Rule::kCut>(result, base, percent, casas);
}

void PORC0_v4_multipl_arred(PARCELA *result, const PARCELA *base, const unsigned char *percent,
                            int casas) {
  engine::multiply<0, Rule::kFiveUp>(result, base, percent, casas);
}
void PORC1_v4_multipl_arred(PARCELA *result, const PARCELA *base, const unsigned char *percent,
                            int casas) {
  engine::multiply<1, Rule::kFiveUp>(result, base, percent, casas);
}
void PORC2_v4_multipl_arred(PARCELA *result, const PARCELA *base, const unsigned char *percent,
                            int casas) {
  engine::multiply<2, Rule::kFiveUp>(result, base, percent, casas);
}
void PORC4_v4_multipl_arred(PARCELA *result, const PARCELA *base, const unsigned char *percent,
                            int casas) {
  engine::multiply<4, Rule::kFiveUp>(result, base, percent, casas);
}

void PORC0_v4_multipl_arr_nbr(PARCELA *result, const PARCELA *base, const unsigned char *percent,
                              int casas) {
  engine::multiply<0, Rule::kNbr>(result, base, percent, casas);
}
void PORC1_v4_multipl_arr_nbr(PARCELA *result, const PARCELA *base, const unsigned char *percent,
                              int casas) {
  engine::multiply<1, Rule::kNbr>(result, base, percent, casas);
}
void PORC2_v4_multipl_arr_nbr(PARCELA *result, const PARCELA *base, const unsigned char *percent,
                              int casas) {
  engine::multiply<2, Rule::kNbr>(result, base, percent, casas);
}
void PORC4_v4_multipl_arr_nbr(PARCELA *result, const PARCELA *base, const unsigned char *percent,
                              int casas) {
  engine::multiply<4, Rule::kNbr>(result, base, percent, casas);
}

void PORC0_divide(unsigned char *result, const QUANTIA *numerator, const QUANTIA *denominator) {
  engine::divide<0>(result, numerator, denominator);
}
void PORC1_divide(unsigned char *result, const QUANTIA *numerator, const QUANTIA *denominator) {
  engine::divide<1>(result, numerator, denominator);
}
void PORC2_divide(unsigned char *result, const QUANTIA *numerator, const QUANTIA *denominator) {
  engine::divide<2>(result, numerator, denominator);
}
void PORC4_divide(unsigned char *result, const QUANTIA *numerator, const QUANTIA *denominator) {
  engine::divide<4>(result, numerator, denominator);
}

void PORC0_v4_divide(unsigned char *result, const PARCELA *numerator, const PARCELA *denominator) {
  engine::divide<0>(result, numerator, denominator);
}
void PORC1_v4_divide(unsigned char *result, const PARCELA *numerator, const PARCELA *denominator) {
  engine::divide<1>(result, numerator, denominator);
}
void PORC2_v4_divide(unsigned char *result, const PARCELA *numerator, const PARCELA *denominator) {
  engine::divide<2>(result, numerator, denominator);
}
void PORC4_v4_divide(unsigned char *result, const PARCELA *numerator, const PARCELA *denominator) {
  engine::divide<4>(result, numerator, denominator);
}

void PORC0_inverte(unsigned char *result, const unsigned char *source) {
  engine::invert<0>(result, source);
}
void PORC1_inverte(unsigned char *result, const unsigned char *source) {
  engine::invert<1>(result, source);
}
void PORC2_inverte(unsigned char *result, const unsigned char *source) {
  engine::invert<2>(result, source);
}
void PORC4_inverte(unsigned char *result, const unsigned char *source) {
  engine::invert<4>(result, source);
}
}
