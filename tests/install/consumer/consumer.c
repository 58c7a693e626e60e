/* Compiled as C99, C++11 and C++20: one call into each library, and the version of the headers. */
#include <campotipo-support/money.h>
#include <campotipo/campotipo.h>
#include <stdio.h>
#include <string.h>

int main(void) {
  unsigned char date[DATAC_BYTES];
  char text[DATAC_EDITA4_TEXT_SIZE], amount[QUANTIA_TEXT_SIZE];
  QUANTIA value;

  DATAC_formato = DATAC_FORMATO_COMPACTO;
  DATAC_monta(date, 31, 1, 2024);
  DATAC_avanca_meses_dentro(date, 1);
  _QUANTIA_atov(&value, "1234.5");
  printf("%s %s %s\n", CAMPOTIPO_VERSION, DATAC_edita4(text, date), _QUANTIA_vtoa(amount, &value));
  return strcmp(text, "29/02/2024") != 0 || strcmp(amount, "1234.50") != 0;
}
