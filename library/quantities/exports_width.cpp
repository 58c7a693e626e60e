#include "quantities/width.hpp"

namespace width_of = campotipo::quantities::width;

extern "C" {

int ZBINARIO_max_digitos_decimais(int width) { return campotipo::quantities::max_digits(width); }

int ZBINARIO_bem_formado(int width, const unsigned char *src) {
  return width_of::well_formed(width, src);
}

int ZBINARIO_compara(int width, const unsigned char *a, const unsigned char *b) {
  return width_of::compare(width, a, b);
}

int ZBINARIO_converteu_para_binario(unsigned char *dest, int width, const char *text) {
  return width_of::from_text(dest, width, text);
}

int ZBINARIO_converteu_de_binario(char *text, const unsigned char *src, int width) {
  return width_of::to_text(text, src, width);
}

int ZBINARIO_converteu_n_de_binario(char *text, const unsigned char *src, int width, int n) {
  return width_of::to_text_exact(text, src, width, n);
}

int ZBINARIO_move_para_de(unsigned char *dest, int dest_width, const unsigned char *src,
                          int src_width) {
  return width_of::move(dest, dest_width, src, src_width);
}

void ZBINARIO_atobfixo(int width, unsigned char *dest, const char *text, int decimals) {
  width_of::from_text_fixed(width, dest, text, decimals);
}

char *ZBINARIO_btoafixo(int width, char *text, const unsigned char *src, int decimals) {
  return width_of::to_text_fixed(width, text, src, decimals);
}
}
