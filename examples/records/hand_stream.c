/* Hands the records of a file to a consumer of the Arrow C stream interface, here one that counts
 * rows and nulls. usage: hand_stream LAYOUT FILE */
#include <campotipo-records/records.h>
#include <inttypes.h>
#include <stdio.h>
#include <stdlib.h>

/* A library that takes Arrow streams would stand here. It releases what it took. */
static int consume(struct ArrowArrayStream *stream) {
  struct ArrowSchema schema;
  struct ArrowArray batch;
  int64_t rows = 0, nulls[256] = {0};
  int code = stream->get_schema(stream, &schema);
  while (code == 0 && (code = stream->get_next(stream, &batch)) == 0 && batch.release != NULL) {
    rows += batch.length;
    for (int64_t i = 0; i < batch.n_children && i < 256; ++i) {
      nulls[i] += batch.children[i]->null_count;
    }
    batch.release(&batch);
  }
  if (code != 0) {
    fprintf(stderr, "%s\n", stream->get_last_error(stream));
  } else {
    printf("%" PRId64 " rows\n", rows);
    for (int64_t i = 0; i < schema.n_children && i < 256; ++i) {
      printf("%-16s %-6s %" PRId64 " null\n", schema.children[i]->name, schema.children[i]->format,
             nulls[i]);
    }
    schema.release(&schema);
  }
  stream->release(stream);
  return code == 0 ? 0 : 1;
}

int main(int argc, char **argv) {
  campotipo_error error = {.size = sizeof error};
  campotipo_layout *layout = NULL;
  campotipo_reader *reader = NULL;
  campotipo_input input = {.size = sizeof input};
  struct ArrowArrayStream stream;

  if (argc != 3) return fprintf(stderr, "usage: hand_stream LAYOUT FILE\n"), 2;
  input.path = argv[2];
  if (campotipo_layout_open(argv[1], &layout, &error) != CAMPOTIPO_OK ||
      campotipo_reader_open(layout, &input, NULL, 0, &reader, &error) != CAMPOTIPO_OK ||
      campotipo_stream(reader, NULL, &stream, &error) != CAMPOTIPO_OK) {
    fprintf(stderr, "%s\n", error.text);
    return 2;
  }
  /* The stream has its reader, and that its layout: both handles of ours may go. */
  campotipo_layout_free(layout);
  return consume(&stream);
}
