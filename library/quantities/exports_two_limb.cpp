#include "quantities/wide.hpp"

namespace wide = campotipo::quantities::wide;

extern "C" {
int BINQ9_atob(unsigned char *dest, const char *text) { return wide::from_text<9>(dest, text); }
int BINQ10_atob(unsigned char *dest, const char *text) { return wide::from_text<10>(dest, text); }
int BINQ11_atob(unsigned char *dest, const char *text) { return wide::from_text<11>(dest, text); }
int BINQ12_atob(unsigned char *dest, const char *text) { return wide::from_text<12>(dest, text); }
int BINQ13_atob(unsigned char *dest, const char *text) { return wide::from_text<13>(dest, text); }
int BINQ14_atob(unsigned char *dest, const char *text) { return wide::from_text<14>(dest, text); }
int BINQ15_atob(unsigned char *dest, const char *text) { return wide::from_text<15>(dest, text); }
int BINQ16_atob(unsigned char *dest, const char *text) { return wide::from_text<16>(dest, text); }

int BINQ9_atob_fixo(unsigned char *dest, const char *text, int decimals) {
  return wide::from_text_fixed<9>(dest, text, decimals);
}
int BINQ10_atob_fixo(unsigned char *dest, const char *text, int decimals) {
  return wide::from_text_fixed<10>(dest, text, decimals);
}
int BINQ11_atob_fixo(unsigned char *dest, const char *text, int decimals) {
  return wide::from_text_fixed<11>(dest, text, decimals);
}
int BINQ12_atob_fixo(unsigned char *dest, const char *text, int decimals) {
  return wide::from_text_fixed<12>(dest, text, decimals);
}
int BINQ13_atob_fixo(unsigned char *dest, const char *text, int decimals) {
  return wide::from_text_fixed<13>(dest, text, decimals);
}
int BINQ14_atob_fixo(unsigned char *dest, const char *text, int decimals) {
  return wide::from_text_fixed<14>(dest, text, decimals);
}
int BINQ15_atob_fixo(unsigned char *dest, const char *text, int decimals) {
  return wide::from_text_fixed<15>(dest, text, decimals);
}
int BINQ16_atob_fixo(unsigned char *dest, const char *text, int decimals) {
  return wide::from_text_fixed<16>(dest, text, decimals);
}

char *BINQ9_btoafixo(char *text, const unsigned char *src, int decimals) {
  return wide::to_text_fixed<9>(text, src, decimals);
}
char *BINQ10_btoafixo(char *text, const unsigned char *src, int decimals) {
  return wide::to_text_fixed<10>(text, src, decimals);
}
char *BINQ11_btoafixo(char *text, const unsigned char *src, int decimals) {
  return wide::to_text_fixed<11>(text, src, decimals);
}
char *BINQ12_btoafixo(char *text, const unsigned char *src, int decimals) {
  return wide::to_text_fixed<12>(text, src, decimals);
}
char *BINQ13_btoafixo(char *text, const unsigned char *src, int decimals) {
  return wide::to_text_fixed<13>(text, src, decimals);
}
char *BINQ14_btoafixo(char *text, const unsigned char *src, int decimals) {
  return wide::to_text_fixed<14>(text, src, decimals);
}
char *BINQ15_btoafixo(char *text, const unsigned char *src, int decimals) {
  return wide::to_text_fixed<15>(text, src, decimals);
}
char *BINQ16_btoafixo(char *text, const unsigned char *src, int decimals) {
  return wide::to_text_fixed<16>(text, src, decimals);
}

char *BINQ9_btoa(char *text, const unsigned char *src) {
  return wide::to_text_fixed<9>(text, src, 0);
}
char *BINQ10_btoa(char *text, const unsigned char *src) {
  return wide::to_text_fixed<10>(text, src, 0);
}
char *BINQ11_btoa(char *text, const unsigned char *src) {
  return wide::to_text_fixed<11>(text, src, 0);
}
char *BINQ12_btoa(char *text, const unsigned char *src) {
  return wide::to_text_fixed<12>(text, src, 0);
}
char *BINQ13_btoa(char *text, const unsigned char *src) {
  return wide::to_text_fixed<13>(text, src, 0);
}
char *BINQ14_btoa(char *text, const unsigned char *src) {
  return wide::to_text_fixed<14>(text, src, 0);
}
char *BINQ15_btoa(char *text, const unsigned char *src) {
  return wide::to_text_fixed<15>(text, src, 0);
}
char *BINQ16_btoa(char *text, const unsigned char *src) {
  return wide::to_text_fixed<16>(text, src, 0);
}

int BINQ9_compara(const unsigned char *a, const unsigned char *b) { return wide::compare<9>(a, b); }
int BINQ10_compara(const unsigned char *a, const unsigned char *b) {
  return wide::compare<10>(a, b);
}
int BINQ11_compara(const unsigned char *a, const unsigned char *b) {
  return wide::compare<11>(a, b);
}
int BINQ12_compara(const unsigned char *a, const unsigned char *b) {
  return wide::compare<12>(a, b);
}
int BINQ13_compara(const unsigned char *a, const unsigned char *b) {
  return wide::compare<13>(a, b);
}
int BINQ14_compara(const unsigned char *a, const unsigned char *b) {
  return wide::compare<14>(a, b);
}
int BINQ15_compara(const unsigned char *a, const unsigned char *b) {
  return wide::compare<15>(a, b);
}
int BINQ16_compara(const unsigned char *a, const unsigned char *b) {
  return wide::compare<16>(a, b);
}

int BINQ9_bem_formado(const unsigned char *src) { return wide::is_well_formed<9>(src); }
int BINQ10_bem_formado(const unsigned char *src) { return wide::is_well_formed<10>(src); }
int BINQ11_bem_formado(const unsigned char *src) { return wide::is_well_formed<11>(src); }
int BINQ12_bem_formado(const unsigned char *src) { return wide::is_well_formed<12>(src); }
int BINQ13_bem_formado(const unsigned char *src) { return wide::is_well_formed<13>(src); }
int BINQ14_bem_formado(const unsigned char *src) { return wide::is_well_formed<14>(src); }
int BINQ15_bem_formado(const unsigned char *src) { return wide::is_well_formed<15>(src); }
int BINQ16_bem_formado(const unsigned char *src) { return wide::is_well_formed<16>(src); }
}
