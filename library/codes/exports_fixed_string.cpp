#include "codes/fixed_string.hpp"

namespace fixed_string = campotipo::codes::fixed_string;

extern "C" {

void CODSTR_opc_salva(unsigned char *dest, const char *text, int n, int opc) {
  fixed_string::from_text(dest, text, n, opc);
}
void CODSTR_opc_extrai(char *dest, const unsigned char *src, int n, int width, int opc) {
  fixed_string::to_text(dest, src, n, width, opc);
}
void CODSTR_extrai(char *dest, const unsigned char *src, int n) {
  fixed_string::to_text(dest, src, n, n, 0);
}
int CODSTR_nao_zero(const unsigned char *src, int n, int) {
  return fixed_string::has_content(src, n);
}
int CODSTR_compara(const unsigned char *a, const unsigned char *b, int n) {
  return fixed_string::compare(a, b, n);
}

void CODSTR50_opc_atob(unsigned char *dest, const char *text, int opc) {
  fixed_string::from_text(dest, text, CODSTR50_BYTES, opc);
}
void CODSTR52_opc_atob(unsigned char *dest, const char *text, int opc) {
  fixed_string::from_text(dest, text, CODSTR52_BYTES, opc);
}

void CODSTR50_atob(unsigned char *dest, const char *text) {
  fixed_string::from_text(dest, text, CODSTR50_BYTES, 0);
}
void CODSTR52_atob(unsigned char *dest, const char *text) {
  fixed_string::from_text(dest, text, CODSTR52_BYTES, 0);
}

char *CODSTR50_opc_btoa(char *dest, const unsigned char *src, int width, int opc) {
  return fixed_string::to_text(dest, src, CODSTR50_BYTES, width, opc);
}
char *CODSTR52_opc_btoa(char *dest, const unsigned char *src, int width, int opc) {
  return fixed_string::to_text(dest, src, CODSTR52_BYTES, width, opc);
}

char *CODSTR50_btoa(char *dest, const unsigned char *src) {
  return fixed_string::to_text(dest, src, CODSTR50_BYTES, CODSTR50_BYTES, 0);
}
char *CODSTR52_btoa(char *dest, const unsigned char *src) {
  return fixed_string::to_text(dest, src, CODSTR52_BYTES, CODSTR52_BYTES, 0);
}

int CODSTR50_compara(const unsigned char *a, const unsigned char *b) {
  return fixed_string::compare(a, b, CODSTR50_BYTES);
}
int CODSTR52_compara(const unsigned char *a, const unsigned char *b) {
  return fixed_string::compare(a, b, CODSTR52_BYTES);
}

int CODSTR50_igual(const unsigned char *a, const unsigned char *b) {
  return fixed_string::compare(a, b, CODSTR50_BYTES) == 0;
}
int CODSTR52_igual(const unsigned char *a, const unsigned char *b) {
  return fixed_string::compare(a, b, CODSTR52_BYTES) == 0;
}

int CODSTR50_nao_zero(const unsigned char *src, int) {
  return fixed_string::has_content(src, CODSTR50_BYTES);
}
int CODSTR52_nao_zero(const unsigned char *src, int) {
  return fixed_string::has_content(src, CODSTR52_BYTES);
}

int CODSTR_bem_formado(const unsigned char *src, int n) {
  return fixed_string::is_well_formed(src, n);
}
int CODSTR50_bem_formado(const unsigned char *src) {
  return fixed_string::is_well_formed(src, CODSTR50_BYTES);
}
int CODSTR52_bem_formado(const unsigned char *src) {
  return fixed_string::is_well_formed(src, CODSTR52_BYTES);
}
}
