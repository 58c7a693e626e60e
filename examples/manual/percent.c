/* A percent of an amount under the three rules, and the way back. */
#include <campotipo-support/numbers.h>
#include <campotipo/percent.h>
#include <stdio.h>

/* Prints the bytes of a field as a record holds them. */
static void show(const unsigned char *field, int size) {
  int i;
  for (i = 0; i < size; i++) printf("%02X%c", field[i], i + 1 < size ? ' ' : '\n');
}

int main(void) {
  unsigned char rate[PORC2_BYTES];
  QUANTIA amount, tax, base;
  char percent[PORC2_TEXT_SIZE], text[QUANTIA_TEXT_SIZE];

  _ato2fixo(rate, "12.50", 2);
  show(rate, PORC2_BYTES);                /* prints E2 04 */
  puts(PORC2_edita(percent, rate));       /* prints 12.50% */
  puts(PORC2_edita_exato(percent, rate)); /* prints 12.5% */

  /* 12.5% of 1234.60 is 154.325: cut, five goes up, NBR. */
  _QUANTIA_atov(&amount, "1234.60");
  PORC2_multiplica(&tax, &amount, rate);
  puts(_QUANTIA_vtoa(text, &tax)); /* prints 154.32 */
  PORC2_multipl_arred(&tax, &amount, rate);
  puts(_QUANTIA_vtoa(text, &tax)); /* prints 154.33 */
  PORC2_multipl_arr_nbr(&tax, &amount, rate);
  puts(_QUANTIA_vtoa(text, &tax)); /* prints 154.32 */

  /* Which amount has 154.32 of tax, and what percent the tax is of it. */
  PORC2_inv_multiplica(&base, &tax, rate);
  puts(_QUANTIA_vtoa(text, &base)); /* prints 1234.56 */
  PORC2_divide(rate, &tax, &base);
  puts(PORC2_edita(percent, rate)); /* prints 12.50% */
  return 0;
}
