/* Writes a file of records from columns in memory, three of the layout's fields.
 * usage: write_columns LAYOUT FILE ROWS */
#include <campotipo-records/records.h>
#include <stdio.h>
#include <stdlib.h>

enum { COLUMNS = 3, BATCH = 1000 };

static int64_t numbers[BATCH];
static int32_t days[BATCH];
static uint8_t days_known[(BATCH + 7) / 8];
static int64_t balances[BATCH][2]; /* 128 bits each, lowest word first */

/* The memory is ours before and after: to release a structure is to mark it. */
static void release_schema(struct ArrowSchema *schema) { schema->release = NULL; }
static void release_array(struct ArrowArray *array) { array->release = NULL; }

static int write_to_file(void *file, const void *bytes, size_t count) {
  return fwrite(bytes, 1, count, file) != count;
}

/* Account numbers from `first` on, the day of every third one unknown, balances with two decimals. */
static int64_t fill(int64_t first, int64_t rows) {
  int64_t unknown = 0;
  for (int64_t i = 0; i < rows; ++i) {
    numbers[i] = first + i;
    days[i] = 19782; /* 29/02/2024, counted from 01/01/1970 */
    balances[i][0] = numbers[i] * 100 + 25;
    days_known[i / 8] = (uint8_t)(i % 8 == 0 ? 0 : days_known[i / 8]);
    if (numbers[i] % 3 != 0) days_known[i / 8] |= (uint8_t)(1 << i % 8);
    if (numbers[i] % 3 == 0) ++unknown;
  }
  return unknown;
}

static int encode(campotipo_loader *loader, int64_t first, int64_t rows, campotipo_error *error) {
  static const char *const names[COLUMNS] = {"numero", "aberta", "saldo"};
  static const char *const formats[COLUMNS] = {"l", "tdD", "d:38,2"};
  const int64_t unknown = fill(first, rows);
  const void *buffers[COLUMNS][2] = {{NULL, numbers}, {days_known, days}, {NULL, balances}};
  const void *no_buffer[1] = {NULL};
  struct ArrowSchema fields[COLUMNS] = {{0}}, *field_places[COLUMNS];
  struct ArrowArray columns[COLUMNS] = {{0}}, *column_places[COLUMNS];
  struct ArrowSchema schema = {.format = "+s", .n_children = COLUMNS, .children = field_places};
  struct ArrowArray table = {.length = rows, .n_buffers = 1, .n_children = COLUMNS};

  for (int i = 0; i < COLUMNS; ++i) {
    fields[i].format = formats[i];
    fields[i].name = names[i];
    fields[i].flags = ARROW_FLAG_NULLABLE;
    fields[i].release = release_schema;
    columns[i].length = rows;
    columns[i].null_count = i == 1 ? unknown : 0;
    columns[i].n_buffers = 2;
    columns[i].buffers = buffers[i];
    columns[i].release = release_array;
    field_places[i] = &fields[i];
    column_places[i] = &columns[i];
  }
  schema.release = release_schema;
  table.buffers = no_buffer;
  table.children = column_places;
  table.release = release_array;
  return campotipo_encode(loader, NULL, &schema, &table, error);
}

int main(int argc, char **argv) {
  campotipo_error error = {.size = sizeof error};
  campotipo_sink sink = {.size = sizeof sink, .write = write_to_file};
  campotipo_layout *layout = NULL;
  campotipo_loader *loader = NULL;
  FILE *file;
  int64_t rows;
  int status;

  if (argc != 4) return fprintf(stderr, "usage: write_columns LAYOUT FILE ROWS\n"), 2;
  rows = strtoll(argv[3], NULL, 10);
  file = fopen(argv[2], "wb");
  if (file == NULL) return perror(argv[2]), 2;
  sink.context = file;
  status = campotipo_layout_open(argv[1], &layout, &error);
  if (status == CAMPOTIPO_OK) status = campotipo_loader_open(layout, &sink, NULL, &loader, &error);
  for (int64_t at = 0; status == CAMPOTIPO_OK && at < rows; at += BATCH) {
    status = encode(loader, at + 1, rows - at < BATCH ? rows - at : BATCH, &error);
  }
  if (status == CAMPOTIPO_OK) status = campotipo_loader_finish(loader, &error);
  if (status == CAMPOTIPO_OK)
    printf("%lu records\n", (unsigned long)campotipo_loader_records(loader));
  campotipo_loader_free(loader);
  campotipo_layout_free(layout);
  if (status != CAMPOTIPO_OK) fprintf(stderr, "%s\n", error.text);
  /* A file that is not whole is not kept. */
  if (fclose(file) != 0 || status != CAMPOTIPO_OK) return remove(argv[2]), 1;
  return 0;
}
