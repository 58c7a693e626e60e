/* Counts the values of a field and adds up those that are numbers, without Arrow.
 * usage: sum_column LAYOUT FILE FIELD */
#include <campotipo-records/records.h>
#include <inttypes.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

enum { ROWS = 1024 };

/* The field of this name in the kind that is meant where none is told. */
static int find_field(const campotipo_layout *layout, size_t kind, const char *name, size_t *number,
                      campotipo_field *field) {
  for (*number = 0;; ++*number) {
    field->size = sizeof *field;
    if (campotipo_layout_field(layout, kind, *number, CAMPOTIPO_WIDE_STRING, field)) return 0;
    if (strcmp(field->name, name) == 0) return 1;
  }
}

int main(int argc, char **argv) {
  campotipo_error error = {.size = sizeof error};
  campotipo_layout *layout = NULL;
  campotipo_reader *reader = NULL;
  campotipo_input input = {.size = sizeof input};
  campotipo_block block = {.size = sizeof block};
  campotipo_field field;
  size_t kind, number, values = 0, nulls = 0;
  int64_t sum = 0;
  int status;
  static int64_t wide[ROWS];
  static int32_t narrow[ROWS];
  static uint8_t validity[(ROWS + 7) / 8];

  if (argc != 4) return fprintf(stderr, "usage: sum_column LAYOUT FILE FIELD\n"), 2;
  input.path = argv[2];
  if (campotipo_layout_open(argv[1], &layout, &error) != CAMPOTIPO_OK ||
      campotipo_layout_find_kind(layout, NULL, &kind, &error) != CAMPOTIPO_OK ||
      campotipo_reader_open(layout, &input, NULL, 0, &reader, &error) != CAMPOTIPO_OK) {
    fprintf(stderr, "%s\n", error.text);
    return 2;
  }
  if (!find_field(layout, kind, argv[3], &number, &field) ||
      (field.physical != CAMPOTIPO_INT32 && field.physical != CAMPOTIPO_INT64)) {
    fprintf(stderr, "%s: no field of whole numbers is called so\n", argv[3]);
    return 2;
  }
  while ((status = campotipo_reader_next(reader, &block, &error)) == CAMPOTIPO_OK) {
    const unsigned char *records[ROWS];
    size_t at = 0;
    while (at < block.count) {
      campotipo_column column = {.size = sizeof column};
      size_t count = 0;
      for (; at < block.count && count < ROWS; ++at) {
        if (block.kinds[at] == kind) records[count++] = block.records[at];
      }
      column.values = field.physical == CAMPOTIPO_INT32 ? (void *)narrow : (void *)wide;
      column.validity = validity;
      if (campotipo_decode(layout, kind, number, CAMPOTIPO_WIDE_STRING, records, count, &column,
                           &error) != CAMPOTIPO_OK) {
        fprintf(stderr, "%s\n", error.text);
        return 2;
      }
      for (size_t i = 0; i < count; ++i) {
        sum += field.physical == CAMPOTIPO_INT32 ? narrow[i] : wide[i];
      }
      values += count;
      nulls += column.nulls;
    }
  }
  if (status != CAMPOTIPO_END) return fprintf(stderr, "%s\n", error.text), 2;
  printf("%zu values, %zu of them null, sum %" PRId64 "\n", values, nulls, sum);
  campotipo_reader_free(reader);
  campotipo_layout_free(layout);
  return 0;
}
