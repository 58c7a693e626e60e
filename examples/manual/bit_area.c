/* Fields of any number of bits, in both bit orders, and a table of bits. */
#include <campotipo/bits.h>
#include <stdio.h>

/* Prints the bytes of a field as a record holds them. */
static void show(const unsigned char *field, int size) {
  int i;
  for (i = 0; i < size; i++) printf("%02X%c", field[i], i + 1 < size ? ' ' : '\n');
}

int main(void) {
  /* Widths 3, 5 and 4, at these bytes of the unpacked record. */
  static const ZBTFIELD_CAMPO table[] = {{3, 0}, {5, 1}, {4, 2}, {0, 0}};
  unsigned char record[3] = {5, 19, 9}, back[3] = {0};
  unsigned char packed[ZBTFIELD_BYTES(12)] = {0}, big[ZBTFIELD_BYTES(12)] = {0};
  char line[ZBTFIELD_DEPURA_CONTEUDO_SIZE(3)];
  TABBOOL holidays;

  ZBTFIELD_monta_dados(packed, table, record);
  show(packed, sizeof packed); /* prints 9D 09 */
  ZBTFIELD_big_monta_dados(big, table, record);
  show(big, sizeof big); /* prints B3 90 */
  ZBTFIELD_extrai_dados(back, packed, table);
  show(back, sizeof back); /* prints 05 13 09 */
  ZBTFIELD_depura_conteudo(line, sizeof line, packed, table);
  puts(line); /* prints [0;3b]=5 [1;5b]=19 [2;4b]=9 */

  /* Days 1 to 366 of a year, none of them a holiday at first. */
  TABBOOL_cria(&holidays, 366, 1, 0);
  TABBOOL_seta(&holidays, 359);
  printf("%d %d\n", TABBOOL_testa(&holidays, 359), TABBOOL_testa(&holidays, 360)); /* prints 1 0 */
  TABBOOL_destroi(&holidays);
  return 0;
}
