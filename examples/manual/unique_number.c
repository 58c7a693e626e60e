/* Short numbers made of given values, and letters as numbers. */
#include <campotipo/idnumbers.h>
#include <stdio.h>

int main(void) {
  int agency = 12, clerk = 345, serial = 2024, kind = 200;
  int agency2, clerk2, serial2, kind2;
  char number[ZALGORITM_NUMEROB_UNICO_TEXT_SIZE];

  ZALGORITM_gera_numeroB_unico(number, sizeof number, &agency, &clerk, &serial, 0, &kind, 0);
  puts(number); /* prints 67917521241 */
  ZALGORITM_extrai_numeroB_unico(number, &agency2, &clerk2, &serial2, 0, &kind2, 0);
  printf("%d %d %d %d\n", agency2, clerk2, serial2, kind2); /* prints 12 345 2024 200 */

  printf("%d\n", LETR0BIN_para_binario('c')); /* prints 3 */
  printf("%c\n", LETR0BIN_para_letra(3));     /* prints C */
  return 0;
}
