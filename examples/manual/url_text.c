/* A text for a query, and back. */
#include <campotipo/bits.h>
#include <stdio.h>

int main(void) {
  static const char name[] = "Casa & Cia. 50%";
  char text[URLENCOD_CODIFICA_SIZE(sizeof name - 1)];

  puts(URLENCOD_codifica(text, name));    /* prints Casa%20%26%20Cia.%2050%25 */
  puts(URLENCOD_decodifica(text, text));  /* prints Casa & Cia. 50% */
  puts(URLENCOD_decodifica(text, "50%")); /* prints 50 */
  return 0;
}
