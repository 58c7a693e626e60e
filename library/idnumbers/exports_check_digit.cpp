#include "idnumbers/taxpayer.hpp"

namespace idnumbers = campotipo::idnumbers;

extern "C" {

int ZALGORITM_trata(char *text, const ZALGORITM_TABELA *table, int make) {
  return idnumbers::treat(text, *table, make);
}
int ZALGORITM_valida_CPF(char *text, int make) {
  return idnumbers::validate<idnumbers::Cpf>(text, make);
}
int ZALGORITM_valida_CNPJ(char *text, int make) {
  return idnumbers::validate<idnumbers::Cnpj>(text, make);
}
int DIGVERIF_monta_dv_modulo11(char *text, int make) {
  return idnumbers::treat(text, idnumbers::kModulo11, make);
}
}
