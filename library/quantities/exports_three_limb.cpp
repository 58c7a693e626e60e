#include "quantities/wide.hpp"

namespace wide = campotipo::quantities::wide;

extern "C" {
int BINQ17_atob(unsigned char *dest, const char *text) { return wide::from_text<17>(dest, text); }
int BINQ18_atob(unsigned char *dest, const char *text) { return wide::from_text<18>(dest, text); }
int BINQ19_atob(unsigned char *dest, const char *text) { return wide::from_text<19>(dest, text); }
int BINQ20_atob(unsigned char *dest, const char *text) { return wide::from_text<20>(dest, text); }
int BINQ21_atob(unsigned char *dest, const char *text) { return wide::from_text<21>(dest, text); }

int BINQ17_atob_fixo(unsigned char *dest, const char *text, int decimals) {
  return wide::from_text_fixed<17>(dest, text, decimals);
}
int BINQ18_atob_fixo(unsigned char *dest, const char *text, int decimals) {
  return wide::from_text_fixed<18>(dest, text, decimals);
}
int BINQ19_atob_fixo(unsigned char *dest, const char *text, int decimals) {
  return wide::from_text_fixed<19>(dest, text, decimals);
}
int BINQ20_atob_fixo(unsigned char *dest, const char *text, int decimals) {
  return wide::from_text_fixed<20>(dest, text, decimals);
}
int BINQ21_atob_fixo(unsigned char *dest, const char *text, int decimals) {
  return wide::from_text_fixed<21>(dest, text, decimals);
}

char *BINQ17_btoafixo(char *text, const unsigned char *src, int decimals) {
  return wide::to_text_fixed<17>(text, src, decimals);
}
char *BINQ18_btoafixo(char *text, const unsigned char *src, int decimals) {
  return wide::to_text_fixed<18>(text, src, decimals);
}
char *BINQ19_btoafixo(char *text, const unsigned char *src, int decimals) {
  return wide::to_text_fixed<19>(text, src, decimals);
}
char *BINQ20_btoafixo(char *text, const unsigned char *src, int decimals) {
  return wide::to_text_fixed<20>(text, src, decimals);
}
char *BINQ21_btoafixo(char *text, const unsigned char *src, int decimals) {
  return wide::to_text_fixed<21>(text, src, decimals);
}

char *BINQ17_btoa(char *text, const unsigned char *src) {
  return wide::to_text_fixed<17>(text, src, 0);
}
char *BINQ18_btoa(char *text, const unsigned char *src) {
  return wide::to_text_fixed<18>(text, src, 0);
}
char *BINQ19_btoa(char *text, const unsigned char *src) {
  return wide::to_text_fixed<19>(text, src, 0);
}
char *BINQ20_btoa(char *text, const unsigned char *src) {
  return wide::to_text_fixed<20>(text, src, 0);
}
char *BINQ21_btoa(char *text, const unsigned char *src) {
  return wide::to_text_fixed<21>(text, src, 0);
}

int BINQ17_compara(const unsigned char *a, const unsigned char *b) {
  return wide::compare<17>(a, b);
}
int BINQ18_compara(const unsigned char *a, const unsigned char *b) {
  return wide::compare<18>(a, b);
}
int BINQ19_compara(const unsigned char *a, const unsigned char *b) {
  return wide::compare<19>(a, b);
}
int BINQ20_compara(const unsigned char *a, const unsigned char *b) {
  return wide::compare<20>(a, b);
}
int BINQ21_compara(const unsigned char *a, const unsigned char *b) {
  return wide::compare<21>(a, b);
}

int BINQ17_bem_formado(const unsigned char *src) { return wide::is_well_formed<17>(src); }
int BINQ18_bem_formado(const unsigned char *src) { return wide::is_well_formed<18>(src); }
int BINQ19_bem_formado(const unsigned char *src) { return wide::is_well_formed<19>(src); }
int BINQ20_bem_formado(const unsigned char *src) { return wide::is_well_formed<20>(src); }
int BINQ21_bem_formado(const unsigned char *src) { return wide::is_well_formed<21>(src); }
}
