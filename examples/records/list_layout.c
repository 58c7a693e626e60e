/* Lists the kinds and fields of a layout. usage: list_layout LAYOUT */
#include <campotipo-records/records.h>
#include <stdio.h>

static const char *physical_name(int physical) {
  static const char *const names[] = {"",           "bool", "int32",  "int64",  "decimal128",
                                      "decimal256", "utf8", "date32", "time32", "time64"};
  return names[physical];
}

int main(int argc, char **argv) {
  campotipo_error error = {.size = sizeof error};
  campotipo_layout *layout = NULL;
  if (argc != 2) return fprintf(stderr, "usage: list_layout LAYOUT\n"), 2;
  if (campotipo_layout_open(argv[1], &layout, &error) != CAMPOTIPO_OK) {
    fprintf(stderr, "%s\n", error.text);
    return 2;
  }
  for (size_t k = 0; k < campotipo_layout_kinds(layout); ++k) {
    campotipo_kind kind = {.size = sizeof kind};
    campotipo_layout_kind(layout, k, &kind);
    printf("%s: %zu bytes\n", kind.name, kind.bytes);
    for (size_t f = 0; f < kind.fields; ++f) {
      campotipo_field field = {.size = sizeof field};
      campotipo_layout_field(layout, k, f, CAMPOTIPO_WIDE_STRING, &field);
      printf("%6zu  %-16s %-10s %s", field.offset, field.name, field.type,
             physical_name(field.physical));
      if (field.precision != 0) printf("(%d, %d)", field.precision, field.scale);
      putchar('\n');
    }
  }
  campotipo_layout_free(layout);
  return 0;
}
