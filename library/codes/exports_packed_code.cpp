#include "codes/packed_code.hpp"

namespace packed = campotipo::codes::packed;

extern "C" {

int CODALFA_opc_salvou(unsigned char *dest, const char *text, int n, int opc) {
  return packed::save(dest, text, n, opc);
}
void CODALFA_opc_salva(unsigned char *dest, const char *text, int n, int opc) {
  CODALFA_opc_salvou(dest, text, n, opc);
}
void CODALFA_opc_extrai(char *dest, const unsigned char *src, int n, int opc, int width) {
  packed::extract(dest, src, n, opc, width);
}
void CODALFA_extrai(char *dest, const unsigned char *src, int n) {
  packed::extract(dest, src, n, 0, 0);
}
int CODALFA_nao_zero(const unsigned char *src, int n, int opc) {
  return packed::has_content(src, n, opc);
}
int CODALFA_compara(const unsigned char *a, const unsigned char *b, int n) {
  return packed::compare(a, b, n);
}
int CODALFA_bem_formado(const unsigned char *src, int n) { return packed::is_well_formed(src, n); }

int CODALFA_menor_caracter() { return ' '; }
int CODALFA_menor_carac_para_trailler() { return '0'; }
int CODALFA_maior_caracter() { return packed::find_greatest_character(); }
}
