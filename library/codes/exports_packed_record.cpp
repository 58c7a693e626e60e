#include "codes/packed_record.hpp"

namespace packed = campotipo::codes::packed;

extern "C" {

void CODALFNN_cria(CODALFNN *record, int n, int opc) { packed::create(record, n, opc); }
void CODALFNN_destroi(CODALFNN *record) { packed::destroy(record); }

int CODALFNN_ok(const CODALFNN *record) { return packed::is_valid(record); }
int CODALFNN_numero_de_caracteres(const CODALFNN *record) {
  return packed::is_valid(record) ? record->caracteres : 0;
}

int CODALFNN_opc_salvou(CODALFNN *record, const char *text, int opc) {
  return packed::save(record, text, opc);
}
void CODALFNN_opc_atob(CODALFNN *record, const char *text, int opc) {
  packed::save(record, text, opc);
}
void CODALFNN_atob(CODALFNN *record, const char *text) { packed::save(record, text, record->opc); }

char *CODALFNN_opc_btoa(char *dest, const CODALFNN *record, int opc, int width) {
  return packed::extract(dest, record, opc, width);
}
char *CODALFNN_btoa(char *dest, const CODALFNN *record) {
  return packed::extract(dest, record, record->opc, 0);
}

int CODALFNN_nao_zero(const CODALFNN *record, int opc) { return packed::has_content(record, opc); }
int CODALFNN_compara(const CODALFNN *a, const CODALFNN *b) { return packed::compare(a, b); }
int CODALFNN_bem_formado(const CODALFNN *record) { return packed::is_well_formed(record); }
}
