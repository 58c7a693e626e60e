#include "percent/rounding.hpp"

namespace rounding = campotipo::percent::rounding;
using rounding::Rule;

extern "C" {

void ARRED_div10_5sobe(QUANTIA *value) { rounding::five_up(value); }
void ARRED_div10_nbr(QUANTIA *value) { rounding::nbr<1>(value); }
void ARRED_div100_nbr(QUANTIA *value) { rounding::nbr<2>(value); }
void ARRED_div1000_nbr(QUANTIA *value) { rounding::nbr<3>(value); }
void ARRED_div10000_nbr(QUANTIA *value) { rounding::nbr<4>(value); }
void ARRED_div100000_nbr(QUANTIA *value) { rounding::nbr<5>(value); }

void ARRED_v4_trunc(PARCELA *value, int casas, int extras) {
  rounding::keep_places<Rule::kCut>(value, casas, extras);
}
void ARRED_v4_5sobe(PARCELA *value, int casas, int extras) {
  rounding::keep_places<Rule::kFiveUp>(value, casas, extras);
}
void ARRED_v4_nbr(PARCELA *value, int casas, int extras) {
  rounding::keep_places<Rule::kNbr>(value, casas, extras);
}
}
