#include "codes/packed_code.hpp"

namespace packed = campotipo::codes::packed;

extern "C" {

int CODALF05_opc_salvou(unsigned char *dest, const char *text, int opc) {
  return packed::save(dest, text, packed::fixed<CODALF05_CHARACTERS>, opc);
}
int CODALF12_opc_salvou(unsigned char *dest, const char *text, int opc) {
  return packed::save(dest, text, packed::fixed<CODALF12_CHARACTERS>, opc);
}
int CODALF14_opc_salvou(unsigned char *dest, const char *text, int opc) {
  return packed::save(dest, text, packed::fixed<CODALF14_CHARACTERS>, opc);
}
int CODALF17_opc_salvou(unsigned char *dest, const char *text, int opc) {
  return packed::save(dest, text, packed::fixed<CODALF17_CHARACTERS>, opc);
}
int CODALF20_opc_salvou(unsigned char *dest, const char *text, int opc) {
  return packed::save(dest, text, packed::fixed<CODALF20_CHARACTERS>, opc);
}
int CODALF32_opc_salvou(unsigned char *dest, const char *text, int opc) {
  return packed::save(dest, text, packed::fixed<CODALF32_CHARACTERS>, opc);
}
int CODALF36_opc_salvou(unsigned char *dest, const char *text, int opc) {
  return packed::save(dest, text, packed::fixed<CODALF36_CHARACTERS>, opc);
}
int CODALF40_opc_salvou(unsigned char *dest, const char *text, int opc) {
  return packed::save(dest, text, packed::fixed<CODALF40_CHARACTERS>, opc);
}

void CODALF05_opc_atob(unsigned char *dest, const char *text, int opc) {
  CODALF05_opc_salvou(dest, text, opc);
}
void CODALF12_opc_atob(unsigned char *dest, const char *text, int opc) {
  CODALF12_opc_salvou(dest, text, opc);
}
void CODALF14_opc_atob(unsigned char *dest, const char *text, int opc) {
  CODALF14_opc_salvou(dest, text, opc);
}
void CODALF17_opc_atob(unsigned char *dest, const char *text, int opc) {
  CODALF17_opc_salvou(dest, text, opc);
}
void CODALF20_opc_atob(unsigned char *dest, const char *text, int opc) {
  CODALF20_opc_salvou(dest, text, opc);
}
void CODALF32_opc_atob(unsigned char *dest, const char *text, int opc) {
  CODALF32_opc_salvou(dest, text, opc);
}
void CODALF36_opc_atob(unsigned char *dest, const char *text, int opc) {
  CODALF36_opc_salvou(dest, text, opc);
}
void CODALF40_opc_atob(unsigned char *dest, const char *text, int opc) {
  CODALF40_opc_salvou(dest, text, opc);
}

char *CODALF05_opc_btoa(char *dest, const unsigned char *src, int opc, int width) {
  return packed::extract(dest, src, packed::fixed<CODALF05_CHARACTERS>, opc, width);
}
char *CODALF12_opc_btoa(char *dest, const unsigned char *src, int opc, int width) {
  return packed::extract(dest, src, packed::fixed<CODALF12_CHARACTERS>, opc, width);
}
char *CODALF14_opc_btoa(char *dest, const unsigned char *src, int opc, int width) {
  return packed::extract(dest, src, packed::fixed<CODALF14_CHARACTERS>, opc, width);
}
char *CODALF17_opc_btoa(char *dest, const unsigned char *src, int opc, int width) {
  return packed::extract(dest, src, packed::fixed<CODALF17_CHARACTERS>, opc, width);
}
char *CODALF20_opc_btoa(char *dest, const unsigned char *src, int opc, int width) {
  return packed::extract(dest, src, packed::fixed<CODALF20_CHARACTERS>, opc, width);
}
char *CODALF32_opc_btoa(char *dest, const unsigned char *src, int opc, int width) {
  return packed::extract(dest, src, packed::fixed<CODALF32_CHARACTERS>, opc, width);
}
char *CODALF36_opc_btoa(char *dest, const unsigned char *src, int opc, int width) {
  return packed::extract(dest, src, packed::fixed<CODALF36_CHARACTERS>, opc, width);
}
char *CODALF40_opc_btoa(char *dest, const unsigned char *src, int opc, int width) {
  return packed::extract(dest, src, packed::fixed<CODALF40_CHARACTERS>, opc, width);
}

char *CODALF05_btoa(char *dest, const unsigned char *src) {
  return packed::extract(dest, src, packed::fixed<CODALF05_CHARACTERS>, 0, 0);
}
char *CODALF12_btoa(char *dest, const unsigned char *src) {
  return packed::extract(dest, src, packed::fixed<CODALF12_CHARACTERS>, 0, 0);
}
char *CODALF14_btoa(char *dest, const unsigned char *src) {
  return packed::extract(dest, src, packed::fixed<CODALF14_CHARACTERS>, 0, 0);
}
char *CODALF17_btoa(char *dest, const unsigned char *src) {
  return packed::extract(dest, src, packed::fixed<CODALF17_CHARACTERS>, 0, 0);
}
char *CODALF20_btoa(char *dest, const unsigned char *src) {
  return packed::extract(dest, src, packed::fixed<CODALF20_CHARACTERS>, 0, 0);
}
char *CODALF32_btoa(char *dest, const unsigned char *src) {
  return packed::extract(dest, src, packed::fixed<CODALF32_CHARACTERS>, 0, 0);
}
char *CODALF36_btoa(char *dest, const unsigned char *src) {
  return packed::extract(dest, src, packed::fixed<CODALF36_CHARACTERS>, 0, 0);
}
char *CODALF40_btoa(char *dest, const unsigned char *src) {
  return packed::extract(dest, src, packed::fixed<CODALF40_CHARACTERS>, 0, 0);
}

int CODALF05_compara(const unsigned char *a, const unsigned char *b) {
  return packed::compare(a, b, CODALF05_CHARACTERS);
}
int CODALF12_compara(const unsigned char *a, const unsigned char *b) {
  return packed::compare(a, b, CODALF12_CHARACTERS);
}
int CODALF14_compara(const unsigned char *a, const unsigned char *b) {
  return packed::compare(a, b, CODALF14_CHARACTERS);
}
int CODALF17_compara(const unsigned char *a, const unsigned char *b) {
  return packed::compare(a, b, CODALF17_CHARACTERS);
}
int CODALF20_compara(const unsigned char *a, const unsigned char *b) {
  return packed::compare(a, b, CODALF20_CHARACTERS);
}
int CODALF32_compara(const unsigned char *a, const unsigned char *b) {
  return packed::compare(a, b, CODALF32_CHARACTERS);
}
int CODALF36_compara(const unsigned char *a, const unsigned char *b) {
  return packed::compare(a, b, CODALF36_CHARACTERS);
}
int CODALF40_compara(const unsigned char *a, const unsigned char *b) {
  return packed::compare(a, b, CODALF40_CHARACTERS);
}

int CODALF05_igual(const unsigned char *a, const unsigned char *b) {
  return packed::compare(a, b, CODALF05_CHARACTERS) == 0;
}
int CODALF12_igual(const unsigned char *a, const unsigned char *b) {
  return packed::compare(a, b, CODALF12_CHARACTERS) == 0;
}
int CODALF14_igual(const unsigned char *a, const unsigned char *b) {
  return packed::compare(a, b, CODALF14_CHARACTERS) == 0;
}
int CODALF17_igual(const unsigned char *a, const unsigned char *b) {
  return packed::compare(a, b, CODALF17_CHARACTERS) == 0;
}
int CODALF20_igual(const unsigned char *a, const unsigned char *b) {
  return packed::compare(a, b, CODALF20_CHARACTERS) == 0;
}
int CODALF32_igual(const unsigned char *a, const unsigned char *b) {
  return packed::compare(a, b, CODALF32_CHARACTERS) == 0;
}
int CODALF36_igual(const unsigned char *a, const unsigned char *b) {
  return packed::compare(a, b, CODALF36_CHARACTERS) == 0;
}
int CODALF40_igual(const unsigned char *a, const unsigned char *b) {
  return packed::compare(a, b, CODALF40_CHARACTERS) == 0;
}

int CODALF05_nao_zero(const unsigned char *src, int opc) {
  return packed::has_content(src, CODALF05_CHARACTERS, opc);
}
int CODALF12_nao_zero(const unsigned char *src, int opc) {
  return packed::has_content(src, CODALF12_CHARACTERS, opc);
}
int CODALF14_nao_zero(const unsigned char *src, int opc) {
  return packed::has_content(src, CODALF14_CHARACTERS, opc);
}
int CODALF17_nao_zero(const unsigned char *src, int opc) {
  return packed::has_content(src, CODALF17_CHARACTERS, opc);
}
int CODALF20_nao_zero(const unsigned char *src, int opc) {
  return packed::has_content(src, CODALF20_CHARACTERS, opc);
}
int CODALF32_nao_zero(const unsigned char *src, int opc) {
  return packed::has_content(src, CODALF32_CHARACTERS, opc);
}
int CODALF36_nao_zero(const unsigned char *src, int opc) {
  return packed::has_content(src, CODALF36_CHARACTERS, opc);
}
int CODALF40_nao_zero(const unsigned char *src, int opc) {
  return packed::has_content(src, CODALF40_CHARACTERS, opc);
}

int CODALF05_bem_formado(const unsigned char *src) {
  return packed::is_well_formed(src, CODALF05_CHARACTERS);
}
int CODALF12_bem_formado(const unsigned char *src) {
  return packed::is_well_formed(src, CODALF12_CHARACTERS);
}
int CODALF14_bem_formado(const unsigned char *src) {
  return packed::is_well_formed(src, CODALF14_CHARACTERS);
}
int CODALF17_bem_formado(const unsigned char *src) {
  return packed::is_well_formed(src, CODALF17_CHARACTERS);
}
int CODALF20_bem_formado(const unsigned char *src) {
  return packed::is_well_formed(src, CODALF20_CHARACTERS);
}
int CODALF32_bem_formado(const unsigned char *src) {
  return packed::is_well_formed(src, CODALF32_CHARACTERS);
}
int CODALF36_bem_formado(const unsigned char *src) {
  return packed::is_well_formed(src, CODALF36_CHARACTERS);
}
int CODALF40_bem_formado(const unsigned char *src) {
  return packed::is_well_formed(src, CODALF40_CHARACTERS);
}
}
