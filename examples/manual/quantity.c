/* Unsigned decimal numbers of up to 50 digits. */
#include <campotipo/quantities.h>
#include <stdio.h>

/* Prints the bytes of a field as a record holds them. */
static void show(const unsigned char *field, int size) {
  int i;
  for (i = 0; i < size; i++) printf("%02X%c", field[i], i + 1 < size ? ' ' : '\n');
}

int main(void) {
  unsigned char stock[BINQ9_BYTES], wide[BINQ21_BYTES];
  char text[BINQ_FIXO_TEXT_SIZE(BINQ21_DIGITS, 3)];

  BINQ9_atob(stock, "123456789012345678901");
  show(stock, BINQ9_BYTES); /* prints 35 6C 56 B8 4A FB F8 2F 0C */

  /* Three decimals, which the field does not hold: 1250000.5 is kept as 1250000500. */
  BINQ9_atob_fixo(stock, "1250000.5", 3);
  show(stock, BINQ9_BYTES);             /* prints 74 7E 81 4A 00 00 00 00 00 */
  puts(BINQ9_btoafixo(text, stock, 3)); /* prints 1250000.500 */

  /* To a field of 50 digits, and ten to the thirtieth times as much. */
  ZBINARIO_move_para_de(wide, BINQ21_BYTES, stock, BINQ9_BYTES);
  BINQ21_mul_por_potencia_de_dez(wide, wide, 30);
  puts(BINQ21_btoafixo(text, wide, 3)); /* prints 1250000500000000000000000000000000000.000 */

  /* Divided again; the result is the remainder. */
  printf("%d\n", BINQ21_div_por_potencia_de_dez(wide, wide, 32)); /* prints 0 */
  puts(BINQ21_btoa(text, wide));                                  /* prints 12500005 */
  return 0;
}
