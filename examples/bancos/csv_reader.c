#include "csv_reader.h"

/* The next character in ISO 8859-1, EOF, or -2 for one that ISO 8859-1 does not have. */
static int next_character(CsvReader *reader, CsvRow *row) {
  int lead = getc(reader->file);
  int code, more;
  if (lead == EOF) return EOF;
  row->source_bytes++;
  if (lead < 0x80) return lead;
  more = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : lead >= 0xC2 ? 1 : 0;
  code = lead & (0x3F >> more);
  if (more == 0) return -2;
  while (more-- > 0) {
    int next = getc(reader->file);
    if (next == EOF || (next & 0xC0) != 0x80) {
      if (next != EOF) ungetc(next, reader->file);
      return -2;
    }
    row->source_bytes++;
    code = code << 6 | (next & 0x3F);
  }
  return code >= 0x80 && code <= 0xFF ? code : -2;
}

static void put(CsvRow *row, size_t *used, int character) {
  if (*used < CSV_ROW_BYTES)
    row->bytes[(*used)++] = (char)character;
  else
    row->fault = "the row is too long";
}

static void begin_field(CsvRow *row, size_t used) {
  if (row->fields < CSV_FIELDS && used < CSV_ROW_BYTES)
    row->field[row->fields++] = row->bytes + used;
  else
    row->fault = "the row has too many fields";
}

int csv_next_row(CsvReader *reader, CsvRow *row) {
  size_t used = 0;
  int quoted = 0, c;
  row->line = reader->line + 1;
  row->fields = 0;
  row->fault = NULL;
  row->source_bytes = 0;
  begin_field(row, used);
  while ((c = next_character(reader, row)) != EOF) {
    if (c == '\n') reader->line++;
    if (c == '"') {
      int next = quoted ? getc(reader->file) : 0;
      if (next == '"') {
        row->source_bytes++;
        put(row, &used, '"');
        continue;
      }
      if (quoted && next != EOF) ungetc(next, reader->file);
      quoted = !quoted;
    } else if (c == -2) {
      row->fault = "a character is not in ISO 8859-1";
    } else if (c == ',' && !quoted) {
      put(row, &used, '\0');
      begin_field(row, used);
    } else if (c == '\n' && !quoted) {
      break;
    } else if (c != '\r' || quoted) {
      put(row, &used, c);
    }
  }
  if (quoted) row->fault = "a quoted field does not end";
  if (used == CSV_ROW_BYTES) used--;
  put(row, &used, '\0');
  if (c == EOF && row->source_bytes > 0) reader->line++;
  return row->source_bytes > 0;
}
