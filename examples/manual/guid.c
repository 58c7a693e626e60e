/* GUIDs, and a sequence of texts in their form. */
#include <campotipo/bits.h>
#include <stdio.h>
#include <string.h>

/* Prints the bytes of a field as a record holds them. */
static void show(const unsigned char *field, int size) {
  int i;
  for (i = 0; i < size; i++) printf("%02X%c", field[i], i + 1 < size ? ' ' : '\n');
}

int main(void) {
  static const unsigned char node[ZGUID_NO_BYTES] = {1, 2, 3, 4, 5, 6};
  unsigned char guid[ZGUID_BYTES];
  char text[ZGUID_STRING_MAX_SIZE];
  ZGUID_ESTADO sequence;

  ZGUID_parse(guid, "{00112233-4455-6677-8899-AABBCCDDEEFF}");
  show(guid, ZGUID_BYTES); /* prints 00 11 22 33 44 55 66 77 88 99 AA BB CC DD EE FF */
  ZGUID_string(text, guid, ZGUID_HIFENS);
  puts(text); /* prints 00112233-4455-6677-8899-aabbccddeeff */

  /* The counter is the first group, the node the last. */
  ZGUID_prepara(&sequence, node, sizeof node);
  printf("%.8s\n", ZGUID_proximo(&sequence)); /* prints 00000001 */
  puts(strrchr(ZGUID_atual(&sequence), '-')); /* prints -060504030201 */
  return 0;
}
