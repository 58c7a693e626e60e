#include "idnumbers/unique_number.hpp"

namespace idnumbers = campotipo::idnumbers;

extern "C" {

int ZALGORITM_gera_numero_unico(char *out, int size, const int *parte1, const int *parte2,
                                const int *parte3, const int *parte4, const int *parte5,
                                const int *parte6) {
  return idnumbers::compose_text(out, size, {{parte1, parte2, parte3, parte4, parte5, parte6}});
}
int ZALGORITM_gera_numeroB_unico(char *out, int size, const int *parte1, const int *parte2,
                                 const int *parte3, const int *parte4, const int *parte5,
                                 const int *parte6) {
  return idnumbers::compose_form_b(out, size, {{parte1, parte2, parte3, parte4, parte5, parte6}});
}
int ZALGORITM_extrai_numeroB_unico(const char *text, int *parte1, int *parte2, int *parte3,
                                   int *parte4, int *parte5, int *parte6) {
  return idnumbers::take_apart(text, {parte1, parte2, parte3, parte4, parte5, parte6});
}
int ZALGORITM_numeroB_unico_bem_formado(const char *text) { return idnumbers::is_form_b(text); }
}
