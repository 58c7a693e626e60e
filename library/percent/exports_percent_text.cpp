#include "percent/percent_text.hpp"

namespace text = campotipo::percent::text;

extern "C" {

char *PORC0_edita(char *dest, const unsigned char *percent) {
  return text::edit<0, false>(dest, percent);
}
char *PORC1_edita(char *dest, const unsigned char *percent) {
  return text::edit<1, false>(dest, percent);
}
char *PORC2_edita(char *dest, const unsigned char *percent) {
  return text::edit<2, false>(dest, percent);
}
char *PORC4_edita(char *dest, const unsigned char *percent) {
  return text::edit<4, false>(dest, percent);
}

char *PORC1_edita_exato(char *dest, const unsigned char *percent) {
  return text::edit<1, true>(dest, percent);
}
char *PORC2_edita_exato(char *dest, const unsigned char *percent) {
  return text::edit<2, true>(dest, percent);
}
char *PORC4_edita_exato(char *dest, const unsigned char *percent) {
  return text::edit<4, true>(dest, percent);
}
}
