/* Codes packed at six bits a character. */
#include <campotipo/codes.h>
#include <stdio.h>

/* Prints the bytes of a field as a record holds them. */
static void show(const unsigned char *field, int size) {
  int i;
  for (i = 0; i < size; i++) printf("%02X%c", field[i], i + 1 < size ? ' ' : '\n');
}

int main(void) {
  unsigned char code[CODALF05_BYTES], other[CODALF05_BYTES];
  char text[CODALF05_TEXT_SIZE];

  /* Small letters become capitals, blanks at the end are dropped. */
  CODALF05_opc_atob(code, "ab-1  ", 0);
  show(code, CODALF05_BYTES);      /* prints 30 D9 83 00 */
  puts(CODALF05_btoa(text, code)); /* prints AB-1 */

  /* A number that is always shown with five digits. */
  CODALF05_opc_atob(other, "7", CODALFA_OPC_ZEROS);
  puts(CODALF05_btoa(text, other)); /* prints 00007 */

  /* A character outside the alphabet is passed over, and the salvou form tells. */
  printf("%d\n", CODALF05_opc_salvou(other, "A?B", 0)); /* prints 0 */
  puts(CODALF05_btoa(text, other));                     /* prints AB */
  printf("%d\n", CODALF05_compara(other, code));        /* prints -1 */
  return 0;
}
