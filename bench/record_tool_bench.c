/*
 * What the record tool is timed beside: the same records written and read in plain C, with one
 * snprintf for each field on the way out, and with sscanf or strtoull on the way in. Layout as in
 * record_tool.toml.
 *
 *   record_tool_bench make RECORDS       records of generated values to standard output
 *   record_tool_bench dump < records     CSV to standard output
 *   record_tool_bench sscanf < csv       records to standard output, one sscanf a row
 *   record_tool_bench strtoull < csv     the same, one strtoull a number
 */
#include <stdint.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

enum { RECORD = 63, POSITIONS = 12, NAME = 40, NAME_AT = 9, VALUE_AT = 49, DATE_AT = 57 };

static const char alphabet[] = " 0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ-._/+,:#@*$%!";

static void put_code(unsigned char *field, const char *text) {
  uint32_t bits = 0;
  int count = 0;
  for (int i = 0; i < POSITIONS; ++i) {
    const char *found = *text != '\0' ? strchr(alphabet, *text++) : NULL;
    bits = bits << 6 | (found != NULL ? (uint32_t)(found - alphabet) + 1 : 0);
    for (count += 6; count >= 8; count -= 8) *field++ = (unsigned char)(bits >> (count - 8));
  }
}

static void get_code(char *text, const unsigned char *field) {
  uint32_t bits = 0;
  int count = 0;
  for (int i = 0; i < POSITIONS; ++i) {
    if (count < 6) {
      bits = bits << 8 | *field++;
      count += 8;
    }
    count -= 6;
    const uint32_t code = bits >> count & 63;
    if (code == 0 || code > 50) break;
    *text++ = alphabet[code - 1];
  }
  *text = '\0';
}

static void put_value(unsigned char *field, uint64_t value) { memcpy(field, &value, 8); }

static uint64_t get_value(const unsigned char *field) {
  uint64_t value;
  memcpy(&value, field, 8);
  return value;
}

static void put_date(unsigned char *field, unsigned day, unsigned month, unsigned year) {
  const uint32_t number = 0x800000 | year << 9 | month << 5 | day;
  field[0] = (unsigned char)number;
  field[1] = (unsigned char)(number >> 8);
  field[2] = (unsigned char)(number >> 16);
}

static uint32_t get_date(const unsigned char *field) {
  return field[0] | (uint32_t)field[1] << 8 | (uint32_t)field[2] << 16;
}

static uint64_t next_random(uint64_t *state) {
  *state ^= *state << 13;
  *state ^= *state >> 7;
  *state ^= *state << 17;
  return *state;
}

static void make(long records) {
  static const char *const words[] = {"Comercial", "Banco",     "Paulista", "de",   "Alimentos",
                                      "Nova",      "Horizonte", "SA",       "Ltda", "Cooperativa"};
  uint64_t state = 88172645463325252u;
  for (long i = 0; i < records; ++i) {
    unsigned char record[RECORD] = {0};
    char code[POSITIONS + 1];
    char name[NAME + 16];
    const int length = 6 + (int)(next_random(&state) % 7);
    for (int j = 0; j < length; ++j) code[j] = alphabet[1 + next_random(&state) % 36];
    code[length] = '\0';
    put_code(record, code);
    const uint64_t word = next_random(&state);
    snprintf(name, sizeof name, "%s %s %s", words[word % 10], words[word / 10 % 10],
             words[word / 100 % 10]);
    strncpy((char *)record + NAME_AT, name, NAME);
    put_value(record + VALUE_AT, next_random(&state) >> (24 + next_random(&state) % 24));
    for (int j = 0; j < 2; ++j) {
      put_date(record + DATE_AT + 3 * j, 1 + (unsigned)(next_random(&state) % 28),
               1 + (unsigned)(next_random(&state) % 12),
               1990 + (unsigned)(next_random(&state) % 60));
    }
    fwrite(record, RECORD, 1, stdout);
  }
}

static int put_date_text(char *out, size_t room, const unsigned char *field, const char *end) {
  const uint32_t number = get_date(field);
  return snprintf(out, room, "%02u/%02u/%04u%s", number & 31, number >> 5 & 15, number >> 9 & 0xFFF,
                  end);
}

static void dump(void) {
  static unsigned char records[RECORD * 1024];
  static char text[256 * 1024];
  size_t count;
  fputs("conta,nome,valor,vencimento,pagamento\r\n", stdout);
  while ((count = fread(records, RECORD, 1024, stdin)) > 0) {
    char *out = text;
    for (size_t i = 0; i < count; ++i) {
      const unsigned char *record = records + RECORD * i;
      const size_t room = (size_t)(text + sizeof text - out);
      char code[POSITIONS + 1];
      get_code(code, record);
      const uint64_t value = get_value(record + VALUE_AT);
      out += snprintf(out, room, "%s,", code);
      out += snprintf(out, room, "%.40s,", (const char *)record + NAME_AT);
      out += snprintf(out, room, "%llu.%02llu,", (unsigned long long)(value / 100),
                      (unsigned long long)(value % 100));
      out += put_date_text(out, room, record + DATE_AT, ",");
      out += put_date_text(out, room, record + DATE_AT + 3, "\r\n");
    }
    fwrite(text, 1, (size_t)(out - text), stdout);
  }
}

static void read_sscanf(const char *line, unsigned char *record) {
  char code[POSITIONS + 1] = "";
  char name[NAME + 1] = "";
  unsigned long long whole = 0;
  unsigned cents = 0;
  unsigned d[6] = {0};
  sscanf(line, "%12[^,],%40[^,],%llu.%2u,%2u/%2u/%4u,%2u/%2u/%4u", code, name, &whole, &cents,
         &d[0], &d[1], &d[2], &d[3], &d[4], &d[5]);
  put_code(record, code);
  memcpy(record + NAME_AT, name, strlen(name));
  put_value(record + VALUE_AT, whole * 100 + cents);
  put_date(record + DATE_AT, d[0], d[1], d[2]);
  put_date(record + DATE_AT + 3, d[3], d[4], d[5]);
}

static void read_strtoull(char *line, unsigned char *record) {
  char *end = strchr(line, ',');
  *end = '\0';
  put_code(record, line);
  char *name = end + 1;
  end = strchr(name, ',');
  memcpy(record + NAME_AT, name, (size_t)(end - name));
  const uint64_t whole = strtoull(end + 1, &end, 10);
  put_value(record + VALUE_AT, whole * 100 + strtoull(end + 1, &end, 10));
  for (int i = 0; i < 2; ++i) {
    const unsigned day = (unsigned)strtoull(end + 1, &end, 10);
    const unsigned month = (unsigned)strtoull(end + 1, &end, 10);
    put_date(record + DATE_AT + 3 * i, day, month, (unsigned)strtoull(end + 1, &end, 10));
  }
}

static void load(int by_sscanf) {
  char line[256];
  if (fgets(line, sizeof line, stdin) == NULL) return;
  while (fgets(line, sizeof line, stdin) != NULL) {
    unsigned char record[RECORD] = {0};
    if (by_sscanf) {
      read_sscanf(line, record);
    } else {
      read_strtoull(line, record);
    }
    fwrite(record, RECORD, 1, stdout);
  }
}

int main(int argc, char **argv) {
  const char *what = argc > 1 ? argv[1] : "";
  if (strcmp(what, "make") == 0 && argc > 2) {
    make(atol(argv[2]));
  } else if (strcmp(what, "dump") == 0) {
    dump();
  } else if (strcmp(what, "sscanf") == 0) {
    load(1);
  } else if (strcmp(what, "strtoull") == 0) {
    load(0);
  } else {
    fputs("record_tool_bench make RECORDS | dump | sscanf | strtoull\n", stderr);
    return 2;
  }
  return 0;
}
