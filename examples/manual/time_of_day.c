/* Times of day in two and three bytes. */
#include <campotipo-support/numbers.h>
#include <campotipo/calendar.h>
#include <stdio.h>

/* Prints the bytes of a field as a record holds them. */
static void show(const unsigned char *field, int size) {
  int i;
  for (i = 0; i < size; i++) printf("%02X%c", field[i], i + 1 < size ? ' ' : '\n');
}

int main(void) {
  unsigned char opens[HORAC_BYTES], stamp[HHMMSS_BYTES] = {14, 35, 7};
  char text[HHMMSS_TEXT_SIZE];

  _ato2(opens, "905");                                         /* hour * 100 + minute */
  show(opens, HORAC_BYTES);                                    /* prints 89 03 */
  puts(HORAC_edita(text, opens));                              /* prints  9:05 */
  puts(HHMMSS_edita(text, stamp));                             /* prints 14:35:07 */
  puts(HHMMSS_edita_sep(text, stamp, 'h', HHMMSS_EDITA_HHMM)); /* prints 14h35 */

  _ato2(opens, "2460");
  printf("%d\n", HORAC_valida(opens)); /* prints 0 */
  return 0;
}
