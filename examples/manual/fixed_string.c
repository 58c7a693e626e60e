/* Plain bytes of a fixed length. */
#include <campotipo/codes.h>
#include <stdio.h>

/* Prints the bytes of a field as a record holds them. */
static void show(const unsigned char *field, int size) {
  int i;
  for (i = 0; i < size; i++) printf("%02X%c", field[i], i + 1 < size ? ' ' : '\n');
}

int main(void) {
  unsigned char initials[6] = {0}, name[CODSTR50_BYTES] = {0};
  char text[CODSTR50_TEXT_SIZE];

  /* A field of any size: it is given with each call. */
  CODSTR_opc_salva(initials, "RJ", sizeof initials, 0);
  show(initials, sizeof initials); /* prints 52 4A 00 00 00 00 */

  /* A field of 50 bytes, and the first five characters of it. */
  CODSTR50_atob(name, "Banco da Praca");
  puts(CODSTR50_btoa(text, name));                                   /* prints Banco da Praca */
  puts(CODSTR50_opc_btoa(text, name, 5, 0));                         /* prints Banco */
  puts(CODSTR50_opc_btoa(text, name, 5, CODSTR_OPC_CORTA_ESQUERDA)); /* prints Praca */
  return 0;
}
