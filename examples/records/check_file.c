/* Checks a file and prints what is not as its layout tells. usage: check_file LAYOUT FILE
 * Ends with 0 for a file in order, 1 for one with findings, 2 where it cannot be read. */
#include <campotipo-records/records.h>
#include <inttypes.h>
#include <stdio.h>

/* The columns of the stream, in their order. */
enum { RECORD = 1, BYTE = 3, KIND, FIELD, WHAT, VALUE };

static int is_null(const struct ArrowArray *column, int64_t row) {
  const uint8_t *bits = column->buffers[0];
  row += column->offset;
  return bits != NULL && !(bits[row / 8] >> row % 8 & 1);
}

static int64_t number(const struct ArrowArray *column, int64_t row) {
  return ((const int64_t *)column->buffers[1])[row + column->offset];
}

static void print(const struct ArrowArray *column, int64_t row) {
  const int32_t *ends = column->buffers[1];
  const char *text = column->buffers[2];
  row += column->offset;
  printf("%.*s", (int)(ends[row + 1] - ends[row]), text + ends[row]);
}

static void print_finding(const struct ArrowArray *batch, int64_t row) {
  struct ArrowArray *const *columns = batch->children;
  if (!is_null(columns[RECORD], row)) printf("record %" PRId64 ", ", number(columns[RECORD], row));
  printf("byte %" PRId64 ": ", number(columns[BYTE], row));
  if (!is_null(columns[FIELD], row)) {
    print(columns[KIND], row);
    putchar('.');
    print(columns[FIELD], row);
    printf(": ");
  }
  print(columns[WHAT], row);
  printf(": ");
  print(columns[VALUE], row);
  putchar('\n');
}

int main(int argc, char **argv) {
  campotipo_error error = {.size = sizeof error};
  campotipo_layout *layout = NULL;
  campotipo_reader *reader = NULL;
  campotipo_input input = {.size = sizeof input};
  struct ArrowArrayStream stream;
  struct ArrowArray batch;
  int64_t findings = 0;
  int code;

  if (argc != 3) return fprintf(stderr, "usage: check_file LAYOUT FILE\n"), 2;
  input.path = argv[2];
  if (campotipo_layout_open(argv[1], &layout, &error) != CAMPOTIPO_OK ||
      campotipo_reader_open(layout, &input, NULL, 0, &reader, &error) != CAMPOTIPO_OK ||
      campotipo_check(reader, NULL, &stream, &error) != CAMPOTIPO_OK) {
    fprintf(stderr, "%s\n", error.text);
    campotipo_reader_free(reader);
    campotipo_layout_free(layout);
    return 2;
  }
  while ((code = stream.get_next(&stream, &batch)) == 0 && batch.release != NULL) {
    for (int64_t row = 0; row < batch.length; ++row) print_finding(&batch, row);
    findings += batch.length;
    batch.release(&batch);
  }
  if (code != 0) fprintf(stderr, "%s\n", stream.get_last_error(&stream));
  stream.release(&stream);
  campotipo_layout_free(layout);
  return code != 0 ? 2 : findings != 0;
}
