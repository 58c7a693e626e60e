#ifndef CSV_READER_H
#define CSV_READER_H

#include <stdio.h>

/* Rows of a CSV file (RFC 4180) in UTF-8, given as fields in ISO 8859-1. */

#define CSV_FIELDS 16
#define CSV_ROW_BYTES 4096

typedef struct CsvRow {
  long line; /* where the row begins, the first line being 1 */
  int fields;
  char *field[CSV_FIELDS];
  const char *fault; /* null, or why the row cannot be used */
  char bytes[CSV_ROW_BYTES];
  size_t source_bytes; /* length of the row in the file, line end included */
} CsvRow;

typedef struct CsvReader {
  FILE *file;
  long line;
} CsvReader;

/* Reads the next row. Result: 1, or 0 at the end of the file. A row with a fault is read too. */
int csv_next_row(CsvReader *reader, CsvRow *row);

#endif
