#include "percent/inverse.hpp"

namespace inverse = campotipo::percent::inverse;
using campotipo::percent::Rule;

extern "C" {

void PORC0_inv_multiplica(QUANTIA *result, const QUANTIA *target, const unsigned char *percent) {
  inverse::search<0, Rule::kCut>(result, target, percent);
}
void PORC1_inv_multiplica(QUANTIA *result, const QUANTIA *target, const unsigned char *percent) {
  inverse::search<1, Rule::kCut>(result, target, percent);
}
void PORC2_inv_multiplica(QUANTIA *result, const QUANTIA *target, const unsigned char *percent) {
  inverse::search<2, Rule::kCut>(result, target, percent);
}
void PORC4_inv_multiplica(QUANTIA *result, const QUANTIA *target, const unsigned char *percent) {
  inverse::search<4, Rule::kCut>(result, target, percent);
}

void PORC0_inv_multipl_arred(QUANTIA *result, const QUANTIA *target, const unsigned char *percent) {
  inverse::search<0, Rule::kFiveUp>(result, target, percent);
}
void PORC1_inv_multipl_arred(QUANTIA *result, const QUANTIA *target, const unsigned char *percent) {
  inverse::search<1, Rule::kFiveUp>(result, target, percent);
}
void PORC2_inv_multipl_arred(QUANTIA *result, const QUANTIA *target, const unsigned char *percent) {
  inverse::search<2, Rule::kFiveUp>(result, target, percent);
}
void PORC4_inv_multipl_arred(QUANTIA *result, const QUANTIA *target, const unsigned char *percent) {
  inverse::search<4, Rule::kFiveUp>(result, target, percent);
}

void PORC0_inv_multipl_arr_nbr(QUANTIA *result, const QUANTIA *target,
                               const unsigned char *percent) {
  inverse::search<0, Rule::kNbr>(result, target, percent);
}
void PORC1_inv_multipl_arr_nbr(QUANTIA *result, const QUANTIA *target,
                               const unsigned char *percent) {
  inverse::search<1, Rule::kNbr>(result, target, percent);
}
void PORC2_inv_multipl_arr_nbr(QUANTIA *result, const QUANTIA *target,
                               const unsigned char *percent) {
  inverse::search<2, Rule::kNbr>(result, target, percent);
}
void PORC4_inv_multipl_arr_nbr(QUANTIA *result, const QUANTIA *target,
                               const unsigned char *percent) {
  inverse::search<4, Rule::kNbr>(result, target, percent);
}
}
