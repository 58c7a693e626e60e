/* Dates in both encodings, their texts and steps. */
#include <campotipo/calendar.h>
#include <stdio.h>

/* Prints the bytes of a field as a record holds them. */
static void show(const unsigned char *field, int size) {
  int i;
  for (i = 0; i < size; i++) printf("%02X%c", field[i], i + 1 < size ? ' ' : '\n');
}

int main(void) {
  unsigned char due[DATAC_BYTES], paid[DATAC_BYTES];
  char text[DATAC_EDITA4_TEXT_SIZE];

  DATAC_fmt_monta(due, DATAC_FORMATO_DECIMAL, 31, 12, 2024);
  show(due, DATAC_BYTES); /* prints B8 BF 04 */
  DATAC_converteu_formato(due, DATAC_FORMATO_COMPACTO);
  show(due, DATAC_BYTES);        /* prints 9F D1 8F */
  puts(DATAC_edita4(text, due)); /* prints 31/12/2024 */

  /* Two months on: the last day of February. What is written is packed from here on. */
  DATAC_formato = DATAC_FORMATO_COMPACTO;
  DATAC_avanca_meses_dentro(due, 2);
  puts(DATAC_edita4(text, due)); /* prints 28/02/2025 */

  /* Late by so many days; the text has the day first and two digits of the year. */
  DATAC_atod(paid, "150325");
  printf("%d\n", DATAC_zuliano(paid) - DATAC_zuliano(due)); /* prints 15 */
  printf("%d\n", DATAC_compara(paid, due));                 /* prints 1 */

  /* What no date can be made of is the zero date. */
  DATAC_atod(paid, "310225");
  printf("%d\n", DATAC_nao_zero(paid)); /* prints 0 */
  return 0;
}
