#ifndef CAMPOTIPO_EXAMPLES_SHOW_H
#define CAMPOTIPO_EXAMPLES_SHOW_H

#include <stdio.h>

/* Prints the bytes of a field as a record holds them. */
static void show(const unsigned char *field, int size) {
  int i;
  for (i = 0; i < size; i++) printf("%02X%c", field[i], i + 1 < size ? ' ' : '\n');
}

#endif
