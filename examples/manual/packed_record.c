/* A packed code whose size is known at run time only. */
#include <campotipo/codes.h>
#include <stdio.h>

/* Prints the bytes of a field as a record holds them. */
static void show(const unsigned char *field, int size) {
  int i;
  for (i = 0; i < size; i++) printf("%02X%c", field[i], i + 1 < size ? ' ' : '\n');
}

int main(void) {
  CODALFNN plate;
  char text[8];

  CODALFNN_cria(&plate, 7, 0);
  if (!CODALFNN_ok(&plate)) return 1; /* no memory */
  CODALFNN_atob(&plate, "abc1d23");
  puts(CODALFNN_btoa(text, &plate));   /* prints ABC1D23 */
  show(plate.dados, CODALFA_BYTES(7)); /* prints 30 D3 83 3C 41 40 */
  CODALFNN_destroi(&plate);
  return 0;
}
