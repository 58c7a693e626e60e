/* Digits that keep their leading zeros. */
#include <campotipo/codes.h>
#include <stdio.h>

/* Prints the bytes of a field as a record holds them. */
static void show(const unsigned char *field, int size) {
  int i;
  for (i = 0; i < size; i++) printf("%02X%c", field[i], i + 1 < size ? ' ' : '\n');
}

int main(void) {
  unsigned char account[BSTR21_BYTES];
  char text[BSTR21_TEXT_SIZE];

  BSTR21_atob(account, "000123-4"); /* the first other byte ends the digits */
  show(account, BSTR21_BYTES);      /* prints 06 7B 00 00 00 00 00 00 00 00 */
  puts(BSTR21_btoa(text, account)); /* prints 000123 */
  return 0;
}
