#ifndef CAMPOTIPO_RECORDS_RECORDS_H
#define CAMPOTIPO_RECORDS_RECORDS_H

/*
 * Layouts and files of records: libcampotipo-records.
 *
 * A layout tells what the bytes of a file are: kinds of record, fields, what stands in front of and
 * behind them. With it a file is read as rows of text, as typed columns, or as records in memory.
 *
 *   object               made by                      freed by                      lives until
 *   campotipo_layout     campotipo_layout_open,       campotipo_layout_free         freed, and every
 *                        campotipo_layout_parse                                     reader of it too
 *   campotipo_reader     campotipo_reader_open        campotipo_reader_free         freed
 *   campotipo_block      campotipo_reader_next        the reader                    the next call on
 *                                                                                   that reader
 *   ArrowArrayStream     campotipo_stream,            its release callback          released; it owns
 *                        campotipo_check                                            its reader
 *   campotipo_rows       campotipo_rows_open          campotipo_rows_free           freed
 *   campotipo_loader     campotipo_loader_open        campotipo_loader_free         freed
 *   texts and structures of a layout                  the layout                    the layout
 *
 * Objects may be freed in any order: a reader keeps its layout. Every *_free takes null.
 *
 * Threads: a layout never changes and is shared freely. A reader, stream, row writer or loader
 * belongs to one thread at a time; different ones run at the same time. The library makes no threads, keeps no
 * state of its own, and hangs on no locale. The one thing it reads from the environment, once, is
 * CAMPOTIPO_KERNELS: "plain" asks for the inner loops that every x86-64 runs, with the same results.
 *
 * Results: a function gives CAMPOTIPO_OK, CAMPOTIPO_END where nothing is left, or an error below
 * zero, told in the caller's struct campotipo_error where that is not null. After an error the
 * results are not set, unless told. Structures that the caller fills begin with `size`, which is
 * sizeof the structure; members that are zero mean what is told as "0".
 *
 * Texts are UTF-8. Byte places in a file count from 0; records, lines and columns of a layout from 1.
 */

#include <campotipo-records/arrow.h>
#include <campotipo-records/export.h>
#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* ------------------------------------------------------------------------------------ results */

typedef int campotipo_status;

#define CAMPOTIPO_OK 0
#define CAMPOTIPO_END 1         /* nothing is left */
#define CAMPOTIPO_ARGUMENT (-1) /* what was asked for cannot be done */
#define CAMPOTIPO_MEMORY (-2)   /* none is left */
#define CAMPOTIPO_LAYOUT (-3)   /* a layout that cannot be used */
#define CAMPOTIPO_INPUT (-4)    /* a file that cannot be opened or read */
#define CAMPOTIPO_OUTPUT (-5)   /* one that cannot be written */
#define CAMPOTIPO_RECORD (-6)   /* bytes that do not follow the layout */
#define CAMPOTIPO_VALUE (-7)    /* a value that is invalid, or does not fit its column */

#define CAMPOTIPO_ERROR_TEXT_SIZE 1024
#define CAMPOTIPO_ERROR_NAME_SIZE 256

/* What went wrong and where. The caller's; what does not fit is cut at a character. */
typedef struct campotipo_error {
  size_t size; /* sizeof(struct campotipo_error) */
  campotipo_status status;
  uint32_t line;                         /* of a layout or a text, from 1; 0: none */
  uint32_t column;                       /* of a layout, from 1; 0: none */
  uint64_t record;                       /* from 1; 0: none */
  uint64_t byte;                         /* in the file, where record is not 0 */
  char kind[CAMPOTIPO_ERROR_NAME_SIZE];  /* of record; "": none */
  char field[CAMPOTIPO_ERROR_NAME_SIZE]; /* "": none */
  char text[CAMPOTIPO_ERROR_TEXT_SIZE];  /* the whole message, the place in it */
} campotipo_error;

/* ------------------------------------------------------------------------------------ layouts */

typedef struct campotipo_layout campotipo_layout;

/*
 * Reads a layout. `place` is a text of a layout (it has a line feed in it), the path of an existing
 * file or one that ends in ".toml", or the name of a ready layout, in this order.
 * CAMPOTIPO_LAYOUT with line and column for a layout that cannot be used; CAMPOTIPO_INPUT for a file
 * that cannot be read; CAMPOTIPO_ARGUMENT for an unknown name, with near ones in the text.
 */
CAMPOTIPO_RECORDS_API campotipo_status campotipo_layout_open(const char *place,
                                                             campotipo_layout **layout,
                                                             campotipo_error *error);

/*
 * The same for `bytes` bytes of text, which need no NUL; `name` is what messages call it, and may be
 * null.
 */
CAMPOTIPO_RECORDS_API campotipo_status campotipo_layout_parse(const char *text, size_t bytes,
                                                              const char *name,
                                                              campotipo_layout **layout,
                                                              campotipo_error *error);

CAMPOTIPO_RECORDS_API void campotipo_layout_free(campotipo_layout *layout);

/* The text of a ready layout, null where none has the name. It lives as long as the program. */
CAMPOTIPO_RECORDS_API const char *campotipo_layout_ready(const char *name);

/* The name of the ready layout `at`, from 0, in the order of the names; null behind the last. */
CAMPOTIPO_RECORDS_API const char *campotipo_layout_ready_name(size_t at);

/* The name that the layout gives itself, and the number of its kinds of record, 1 at least. */
CAMPOTIPO_RECORDS_API const char *campotipo_layout_name(const campotipo_layout *layout);
CAMPOTIPO_RECORDS_API size_t campotipo_layout_kinds(const campotipo_layout *layout);

typedef struct campotipo_kind {
  size_t size; /* sizeof(struct campotipo_kind), set by the caller */
  const char *name;
  size_t bytes;  /* of a record, without what tells its length and without its line end */
  size_t fields; /* those with a value */
  int main;      /* not 0: the kind that is meant where none is asked for */
} campotipo_kind;

/* The kind `kind`, from 0 in the order of the layout. CAMPOTIPO_ARGUMENT where there is none. */
CAMPOTIPO_RECORDS_API campotipo_status campotipo_layout_kind(const campotipo_layout *layout,
                                                             size_t kind, campotipo_kind *out);

/*
 * The number of the kind of this name; of the one that is meant where the name is null or "": the
 * only one, or the main one. CAMPOTIPO_ARGUMENT, with the kinds in the text, where there is none.
 */
CAMPOTIPO_RECORDS_API campotipo_status campotipo_layout_find_kind(const campotipo_layout *layout,
                                                                  const char *name, size_t *kind,
                                                                  campotipo_error *error);

/* How the values of a column lie in memory, each in the order of bytes of the machine. */
#define CAMPOTIPO_BOOL 1       /* bits, the lowest of a byte first */
#define CAMPOTIPO_INT32 2      /* 4 bytes */
#define CAMPOTIPO_INT64 3      /* 8 bytes */
#define CAMPOTIPO_DECIMAL128 4 /* 16 bytes, the number without its point */
#define CAMPOTIPO_DECIMAL256 5 /* 32 bytes, the same */
#define CAMPOTIPO_UTF8 6       /* offsets of 4 bytes, one more than values, and bytes */
#define CAMPOTIPO_DATE32 7     /* 4 bytes: days since 1970-01-01 in the civil calendar */
#define CAMPOTIPO_TIME32 8     /* 4 bytes: seconds of the day */
#define CAMPOTIPO_TIME64 9     /* 8 bytes: nanoseconds of the day */

/* What a number of more than 38 digits becomes. */
#define CAMPOTIPO_WIDE_STRING 0     /* its text */
#define CAMPOTIPO_WIDE_DECIMAL128 1 /* a decimal of 38 digits, an error for a value that has more */
#define CAMPOTIPO_WIDE_DECIMAL256 2

typedef struct campotipo_field {
  size_t size;        /* sizeof(struct campotipo_field), set by the caller */
  const char *name;   /* in a flat table: "itens_2_codigo" */
  const char *type;   /* of the layout: "BINQ16" */
  const char *family; /* in words: "wide quantity" */
  size_t offset;      /* in the record */
  size_t bytes;
  int physical;  /* CAMPOTIPO_INT32 ..., for the `wide` asked for */
  int precision; /* of a decimal: its digits */
  int scale;     /* of a decimal: those behind the point */
  size_t room;   /* of a text: bytes that campotipo_decode may write for one value */
} campotipo_field;

/*
 * The field `field`, from 0, of the kind `kind`, as it is with the `wide` told (CAMPOTIPO_WIDE_...).
 * CAMPOTIPO_ARGUMENT where there is none.
 */
CAMPOTIPO_RECORDS_API campotipo_status campotipo_layout_field(const campotipo_layout *layout,
                                                              size_t kind, size_t field, int wide,
                                                              campotipo_field *out);

/* ------------------------------------------------------------------------------------ reading */

/*
 * Where a file of records comes from: one of path, memory and read.
 * Memory has to stay as it is until every reader of it is freed. A path is opened by the library and
 * read, never mapped: a file that shrinks meanwhile gives an error.
 */
typedef struct campotipo_input {
  size_t size;      /* sizeof(struct campotipo_input) */
  const char *name; /* as messages say it; null: the path, or "input" */
  const char *path; /* "-" is standard input */
  const void *memory;
  size_t memory_bytes;
  /*
   * Callbacks, each called with `context`, from the thread that reads. `read` puts up to `room`
   * bytes at `dest` and gives how many, 0 at the end, below 0 for an error. `skip` moves forward
   * without reading and gives 0, or something else where that cannot be done; may be null.
   * `file_bytes` is how long the whole is, 0: not known.
   */
  int64_t (*read)(void *context, void *dest, size_t room);
  int (*skip)(void *context, uint64_t bytes);
  void *context;
  uint64_t file_bytes;
} campotipo_input;

/* Which records: numbers count all kinds. Zeros mean all. */
typedef struct campotipo_range {
  size_t size;    /* sizeof(struct campotipo_range) */
  uint64_t first; /* number of the first, from 1; 0: 1 */
  uint64_t count; /* how many; 0: to the end */
  uint64_t
      byte; /* as campotipo_splits tells it: where the first stands, and for a part of a file of
                     lines a mark of its beginning; 0: not told */
} campotipo_range;

typedef struct campotipo_reader campotipo_reader;

/* A record that does not follow the layout is passed over and counted; but not one behind which nothing
   can be read. */
#define CAMPOTIPO_SKIP 1

/*
 * Opens records for reading. range may be null: all. flags: 0 or CAMPOTIPO_SKIP.
 * CAMPOTIPO_ARGUMENT for an input that names no source or two; CAMPOTIPO_INPUT for a file that
 * cannot be opened.
 */
CAMPOTIPO_RECORDS_API campotipo_status campotipo_reader_open(
    const campotipo_layout *layout, const campotipo_input *input, const campotipo_range *range,
    unsigned flags, campotipo_reader **reader, campotipo_error *error);

CAMPOTIPO_RECORDS_API void campotipo_reader_free(campotipo_reader *reader);

/* Records of a file, in its order. The pointers live until the next call on the reader. */
typedef struct campotipo_block {
  size_t size; /* sizeof(struct campotipo_block), set by the caller */
  size_t count;
  const unsigned char *const *records;
  const uint64_t *numbers;   /* of each record in the file, from 1 */
  const uint32_t *kinds;     /* of each record */
  const unsigned char *base; /* the byte of the file at `offset`; a record's place is
                                offset + (record - base) */
  uint64_t offset;
} campotipo_block;

/*
 * The next records, at least one. CAMPOTIPO_END behind the last. Without CAMPOTIPO_SKIP,
 * CAMPOTIPO_RECORD with the place for bytes that do not follow the layout, once the records in front
 * of them are handed out; the reader is at its end then.
 */
CAMPOTIPO_RECORDS_API campotipo_status campotipo_reader_next(campotipo_reader *reader,
                                                             campotipo_block *block,
                                                             campotipo_error *error);

/* How many records were passed over so far. */
CAMPOTIPO_RECORDS_API uint64_t campotipo_reader_skipped(const campotipo_reader *reader);

/*
 * Cuts a file into at most `wanted` ranges of about the same size, which together hold every record
 * once, in order; `wanted` ranges have room at `out`. The number made stands at `made`: 0 for a file
 * without records. Arithmetic where all records have one length and the size of the file is known;
 * else the file is read through once, without decoding. Lines of one length are cut by arithmetic
 * where every range begins behind the end of a line, else not at all; a range whose lines end
 * elsewhere than the next one begins ends with CAMPOTIPO_RECORD, also under CAMPOTIPO_SKIP, so that
 * no record is numbered wrongly, read twice or left out in silence.
 */
CAMPOTIPO_RECORDS_API campotipo_status campotipo_splits(const campotipo_layout *layout,
                                                        const campotipo_input *input, size_t wanted,
                                                        campotipo_range *out, size_t *made,
                                                        campotipo_error *error);

/* ------------------------------------------------------------------------------------ columns */

/* Values of a field, in memory of the caller. */
typedef struct campotipo_column {
  size_t size;      /* sizeof(struct campotipo_column) */
  void *values;     /* `count` values of the physical type; bits of a bool fill whole bytes. Not for
                    texts */
  int32_t *offsets; /* of texts: count + 1 */
  char *text;       /* of texts: `room` bytes */
  size_t room;      /* at least count times the field's room */
  uint8_t *validity; /* bits, 1 where there is a value; (count + 7) / 8 bytes; may be null where
                        nothing can be absent or at fault */
  uint8_t *faults;   /* bits, 1 where the stored form is invalid or too large for the column; may be
                      null: then that is an error */
  size_t nulls;      /* set: values that are absent or at fault */
} campotipo_column;

/*
 * Decodes one field of `count` records of the kind, as campotipo_reader_next hands them out, into
 * the caller's memory: wide as for campotipo_layout_field.
 * A value that is null or at fault is zero or a text of no length. CAMPOTIPO_ARGUMENT for too little
 * room or, where a value is null, no validity; CAMPOTIPO_VALUE, with the place of the record in
 * `records` from 1, for a fault where `faults` is null. Nothing is written outside what was told.
 */
CAMPOTIPO_RECORDS_API campotipo_status campotipo_decode(const campotipo_layout *layout, size_t kind,
                                                        size_t field, int wide,
                                                        const unsigned char *const *records,
                                                        size_t count, campotipo_column *column,
                                                        campotipo_error *error);

#define CAMPOTIPO_FAULTS_ERROR 0 /* a value at fault ends the reading, with the place */
#define CAMPOTIPO_FAULTS_NULL 1  /* it is null, and the column "_fault" names its field */

#define CAMPOTIPO_TIMES_S 0  /* time32 in seconds */
#define CAMPOTIPO_TIMES_NS 1 /* time64 in nanoseconds */

typedef struct campotipo_stream_options {
  size_t size;               /* sizeof(struct campotipo_stream_options) */
  const char *kind;          /* null: the only one or the main one */
  const char *const *fields; /* names; null: "_record", "_file" where it is told, all fields, and
                                "_fault" where faults become null */
  size_t n_fields;
  int wide;          /* CAMPOTIPO_WIDE_... */
  int times;         /* CAMPOTIPO_TIMES_... */
  int faults;        /* CAMPOTIPO_FAULTS_... */
  const char *file;  /* value of the column "_file"; null: there is none */
  size_t batch_rows; /* rows of a batch at most; 0: 65536 */
} campotipo_stream_options;

/*
 * Hands the records of one kind over as a stream of Arrow struct arrays, a child a column, every
 * column nullable. options may be null. With CAMPOTIPO_OK the stream owns the reader, which the
 * caller no longer uses nor frees; after an error it is still the caller's.
 * The stream's own errors are EINVAL for values and records, EIO for the file, ENOMEM; its
 * get_last_error tells the place.
 */
CAMPOTIPO_RECORDS_API campotipo_status campotipo_stream(campotipo_reader *reader,
                                                        const campotipo_stream_options *options,
                                                        struct ArrowArrayStream *out,
                                                        campotipo_error *error);

/*
 * What the last call on such a stream said was wrong, with the place; status CAMPOTIPO_OK where
 * nothing was. CAMPOTIPO_ARGUMENT for a stream of someone else.
 */
CAMPOTIPO_RECORDS_API campotipo_status campotipo_stream_error(const struct ArrowArrayStream *stream,
                                                              campotipo_error *error);

/* The schema of such a stream, without a file. */
CAMPOTIPO_RECORDS_API campotipo_status
campotipo_stream_schema(const campotipo_layout *layout, const campotipo_stream_options *options,
                        struct ArrowSchema *out, campotipo_error *error);

/* --------------------------------------------------------------------------------------- rows */

#define CAMPOTIPO_ROWS_CSV 0    /* RFC 4180 with a row of names */
#define CAMPOTIPO_ROWS_NDJSON 1 /* an object a line */

typedef struct campotipo_rows_options {
  size_t size;               /* sizeof(struct campotipo_rows_options) */
  int format;                /* CAMPOTIPO_ROWS_... */
  const char *kind;          /* null: all kinds, with the column "record" where there are several */
  const char *const *fields; /* null: all */
  size_t n_fields;
  int hex;        /* not 0: the bytes beside each value */
  int line_feeds; /* not 0: CSV rows end in a line feed alone */
  int no_header;  /* not 0: no row of names */
} campotipo_rows_options;

typedef struct campotipo_rows campotipo_rows;

/* Turns the records of a reader into text. The reader is taken as by campotipo_stream. */
CAMPOTIPO_RECORDS_API campotipo_status campotipo_rows_open(campotipo_reader *reader,
                                                           const campotipo_rows_options *options,
                                                           campotipo_rows **rows,
                                                           campotipo_error *error);

CAMPOTIPO_RECORDS_API void campotipo_rows_free(campotipo_rows *rows);

/*
 * The next whole rows, `*bytes` bytes at `*text`, which live until the next call; CAMPOTIPO_END
 * behind the last.
 */
CAMPOTIPO_RECORDS_API campotipo_status campotipo_rows_next(campotipo_rows *rows, const char **text,
                                                           size_t *bytes, campotipo_error *error);

/* ----------------------------------------------------------------------------------- checking */

#define CAMPOTIPO_CHECK_ALL 0    /* everything that the layout tells */
#define CAMPOTIPO_CHECK_VALUES 1 /* what a record tells by itself, and where records are */
#define CAMPOTIPO_CHECK_FILE 2   /* order of records, sequences, copies and totals */

typedef struct campotipo_check_options {
  size_t size;       /* sizeof(struct campotipo_check_options) */
  const char *file;  /* value of the column "_file"; null: the name of the input */
  int part;          /* CAMPOTIPO_CHECK_... */
  size_t batch_rows; /* rows of a batch at most; 0: 65536 */
} campotipo_check_options;

/*
 * What in a file is not as its layout tells, as a stream of Arrow struct arrays, a row a finding, in
 * about the order of the file; a file in order gives no rows. The columns:
 *
 *   _file    utf8
 *   _record  int64  number of the record; null: in front of or behind the records
 *   line     int64  of a file of lines, else null
 *   byte     int64  place in the file
 *   kind     utf8   of the record, null where it has none
 *   field    utf8   name in a flat table; null: the record as a whole
 *   what     utf8   one of the words below
 *   value    utf8   the value and its bytes; what it should be, where one value would do
 *
 *   invalid        no stored form of its type       sequence      not the next number
 *   not_canonical  its text gives other bytes       total         not the count or sum it tells
 *   check_digit    check digits that fail           not_same      not what it repeats
 *   required       absent, and required             line_length   a record of another length
 *   not_allowed    none of the values listed        line_end      ends other than the first line
 *   out_of_range   below min or above max           incomplete    the file ends in a record
 *   constant       not the one value                unknown_kind  a record of no kind
 *   order          a record out of its place        margin        header or trailer
 *
 * A reader of a range gives the values alone. The values of ranges that hold a file whole, as
 * campotipo_splits makes them, and CAMPOTIPO_CHECK_FILE of the file are together what
 * CAMPOTIPO_CHECK_ALL of the file is, so that threads or machines share the work.
 * With CAMPOTIPO_SKIP records of no kind are no findings. The reader is taken as by campotipo_stream,
 * and the errors of the stream are those of its streams. CAMPOTIPO_ARGUMENT for a part that a range
 * does not tell.
 */
CAMPOTIPO_RECORDS_API campotipo_status campotipo_check(campotipo_reader *reader,
                                                       const campotipo_check_options *options,
                                                       struct ArrowArrayStream *out,
                                                       campotipo_error *error);

/* ------------------------------------------------------------------------------------ writing */

/*
 * Where a file of records goes. `write` is called with `context`, from the thread that calls, with
 * the bytes of the file in their order, which live until it returns. It gives 0, or something else
 * where it cannot take them: CAMPOTIPO_OUTPUT then.
 */
typedef struct campotipo_sink {
  size_t size; /* sizeof(struct campotipo_sink) */
  int (*write)(void *context, const void *bytes, size_t count);
  void *context;
} campotipo_sink;

typedef struct campotipo_loader_options {
  size_t size; /* sizeof(struct campotipo_loader_options) */
  /*
   * A value that a field does not hold whole is refused: a text that is too long, a number with more
   * decimals, a day that does not exist. `lossy` not 0: it is stored as far as it goes, and counted;
   * of a number, date or time that cannot be stored at all, nothing is.
   * `lost`, if not null, is told of each such value with `context`: record, field, the line of a CSV
   * file, and the message. With it, a loader that is not lossy goes on behind the first one, so that
   * all are told, writes nothing more, and refuses when the file is finished.
   */
  int lossy;
  void (*lost)(void *context, const campotipo_error *loss);
  void *context;
  const char *const *ignored; /* names of columns that are passed over, whatever they hold */
  size_t n_ignored;
  /*
   * The bytes in front of and behind the records, as many as the layout says. Null: what the layout
   * tells, else zeros. `bare` not 0: the records alone, as a part of a file, which has to have the values
   * that follow from other records: CAMPOTIPO_VALUE where one of them is missing.
   */
  const void *header;
  size_t header_bytes;
  const void *trailer;
  size_t trailer_bytes;
  int bare;
} campotipo_loader_options;

typedef struct campotipo_loader campotipo_loader;

/*
 * Begins a file of records, which rows and columns are added to in any order and mixture. The sink
 * is copied; options may be null. Nothing is written before the first records are there or the file
 * is finished.
 * Where a field has no value, what its layout tells is filled in: constants, sequences, what it
 * repeats, counts and sums of the records added so far. A file whose first records hold totals of the
 * others is kept in memory until it is finished.
 * CAMPOTIPO_ARGUMENT for a sink without `write`, and for a header or trailer of another length.
 */
CAMPOTIPO_RECORDS_API campotipo_status campotipo_loader_open(
    const campotipo_layout *layout, const campotipo_sink *sink,
    const campotipo_loader_options *options, campotipo_loader **loader, campotipo_error *error);

/*
 * Adds the rows of a CSV file, as `campotipo load` reads it: RFC 4180 with either line end, and a
 * first row with the names of the columns in any order. kind: that of all rows; null: the column
 * "record" tells it, where there are several. A column that is missing, and an empty cell, stands for
 * no value.
 * CAMPOTIPO_INPUT for a file that cannot be read or whose columns the layout does not have;
 * CAMPOTIPO_RECORD, with line and record, for a row that is none; CAMPOTIPO_VALUE, with the field
 * too, for a value that is refused. After these three the file cannot be finished.
 */
CAMPOTIPO_RECORDS_API campotipo_status campotipo_load(campotipo_loader *loader, const char *kind,
                                                      const campotipo_input *csv,
                                                      campotipo_error *error);

/*
 * Adds the rows of a table, a struct array with a child a column, as records of one kind; the table
 * stays the caller's. kind null or "": as for campotipo_layout_find_kind. Columns are found by the
 * names of fields in a flat table, in any order; a null, an empty text and a column that is missing
 * stand for no value, and a null or a missing column is filled as for campotipo_load. "_record", "_file" and "_fault" are passed over.
 *
 *   field                 columns that are taken
 *   numbers, bits, texts  bool (0 and 1), integers of any width, decimals of 32 to 256 bits, texts
 *   dates                 date32, date64, timestamp without a zone, texts
 *   times of day          time32, time64, texts
 *
 * Texts are utf8, large_utf8 and utf8_view, and say what a cell of CSV says. Each may stand in a
 * dictionary; the type null has no value. A number is stored where the field holds it with all of
 * its decimals, whatever their count in the column; a timestamp where it is the beginning of a day.
 *
 * CAMPOTIPO_ARGUMENT for a table that does not follow its schema, and for a column that the kind
 * does not have or of a type that its field never holds: the file goes on where no rows were added.
 * CAMPOTIPO_VALUE, with record (counted from the beginning of the file), kind and field, for a value
 * that is refused; CAMPOTIPO_RECORD for a record that would be read as another kind.
 */
CAMPOTIPO_RECORDS_API campotipo_status campotipo_encode(campotipo_loader *loader, const char *kind,
                                                        const struct ArrowSchema *schema,
                                                        const struct ArrowArray *array,
                                                        campotipo_error *error);

/*
 * Ends the file. CAMPOTIPO_VALUE, with how many in the text, where values were refused and told to
 * `lost`; CAMPOTIPO_ARGUMENT after an error, and the second time.
 */
CAMPOTIPO_RECORDS_API campotipo_status campotipo_loader_finish(campotipo_loader *loader,
                                                               campotipo_error *error);

/* How many records were added, and how many values of theirs are not stored whole. */
CAMPOTIPO_RECORDS_API uint64_t campotipo_loader_records(const campotipo_loader *loader);
CAMPOTIPO_RECORDS_API uint64_t campotipo_loader_losses(const campotipo_loader *loader);

CAMPOTIPO_RECORDS_API void campotipo_loader_free(campotipo_loader *loader);

#ifdef __cplusplus
}
#endif
#endif
