/*
 * Keeps the banks of a CSV file as a file of fixed-layout records, reads it back and works with it.
 *
 *     bancos CSV RECORDS
 */

#include <campotipo-support/money.h>
#include <errno.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "bank_record.h"

#define MOST_BANKS 4096
#define SHOWN 10

static const unsigned char kToday[DATAC_BYTES] = {0x21, 0xD4, 0x8F}; /* 01/01/2026 */

typedef struct Totals {
  long rows, refused, lossy_names, lost_characters;
  size_t csv_bytes;
} Totals;

static int fail(const char *what, const char *file) {
  fprintf(stderr, "bancos: %s: %s: %s\n", what, file, strerror(errno));
  return 2;
}

/* ISO 8859-1 to UTF-8, for the terminal. */
static const char *utf8(const char *text) {
  static char out[2 * NAME_BYTES + 1];
  char *to = out;
  for (; *text != '\0'; text++) {
    const unsigned char c = (unsigned char)*text;
    if (c < 0x80) {
      *to++ = (char)c;
    } else {
      *to++ = (char)(0xC0 | c >> 6);
      *to++ = (char)(0x80 | (c & 0x3F));
    }
  }
  *to = '\0';
  return out;
}

static int write_records(const char *csv, const char *records, Totals *totals) {
  CsvReader reader = {fopen(csv, "rb"), 0};
  static CsvRow row;
  unsigned char guid[ZGUID_BYTES];
  FILE *out;
  if (reader.file == NULL) return fail("cannot open", csv);
  out = fopen(records, "wb");
  if (out == NULL) {
    const int status = fail("cannot create", records);
    fclose(reader.file);
    return status;
  }
  ZGUID_gera(guid);
  fwrite(guid, 1, sizeof guid, out);
  csv_next_row(&reader, &row); /* the header row */
  while (csv_next_row(&reader, &row)) {
    BankRecord record;
    const BankOutcome outcome = bank_from_row(&record, &row);
    totals->rows++;
    if (outcome.fault != NULL) {
      fprintf(stderr, "bancos: %s: line %ld: %s; row left out\n", csv, row.line, outcome.fault);
      totals->refused++;
      continue;
    }
    totals->csv_bytes += row.source_bytes;
    totals->lossy_names += outcome.lost_characters > 0;
    totals->lost_characters += outcome.lost_characters;
    fwrite(&record, sizeof record, 1, out);
  }
  if (ferror(reader.file)) {
    fclose(out);
    fclose(reader.file);
    return fail("cannot read", csv);
  }
  fclose(reader.file);
  if (fclose(out) != 0) return fail("cannot write", records);
  return 0;
}

static int read_records(const char *records, unsigned char *guid, BankRecord *banks,
                        size_t *count) {
  FILE *in = fopen(records, "rb");
  if (in == NULL) return fail("cannot open", records);
  if (fread(guid, 1, ZGUID_BYTES, in) != ZGUID_BYTES) {
    fclose(in);
    return fail("is no file of records", records);
  }
  *count = fread(banks, sizeof *banks, MOST_BANKS, in);
  fclose(in);
  return 0;
}

static int by_start(const void *a, const void *b) {
  const BankRecord *left = a, *right = b;
  const int order = DATAC_compara(left->start, right->start);
  return order != 0 ? order : BINQ16_compara(left->volume, right->volume);
}

static void show_table(const BankRecord *banks, size_t count) {
  static const struct {
    const char *rule;
    void (*apply)(QUANTIA *, const QUANTIA *, const unsigned char *);
  } rules[] = {
      {"cut", PORC2_multiplica}, {"5 up", PORC2_multipl_arred}, {"NBR", PORC2_multipl_arr_nbr}};
  size_t i, r, step = count > SHOWN ? count / SHOWN : 1;
  printf("%-5s %-8s %-16s %-19s %15s %8s %13s %13s %13s\n", "code", "ISPB", "short name", "started",
         "balance", "rate", rules[0].rule, rules[1].rule, rules[2].rule);
  for (i = 0; i < count; i += step) {
    const BankRecord *bank = &banks[i];
    char code[BSTR21_TEXT_SIZE], ispb[BSTR21_TEXT_SIZE], name[SHORT_NAME_POSITIONS + 1];
    char date[DATAC_EDITA4_TEXT_SIZE], money[QUANTIA_TEXT_SIZE], rate[PORC2_TEXT_SIZE];
    char weekday[8];
    CODALFA_extrai(name, bank->short_name, SHORT_NAME_POSITIONS);
    snprintf(weekday, sizeof weekday, "%.3s", DATAC_txt_semana[DATAC_dia_da_semana(bank->start)]);
    if (DATAC_nao_zero(bank->start))
      printf("%-5s %-8s %-16.16s %s %-*s", BSTR21_btoa(code, bank->clearing_code),
             BSTR21_btoa(ispb, bank->settlement_code), name, DATAC_edita4(date, bank->start),
             strchr(weekday, '\xE1') != NULL ? 9 : 8, utf8(weekday));
    else
      printf("%-5s %-8s %-16.16s %-19s", BSTR21_btoa(code, bank->clearing_code),
             BSTR21_btoa(ispb, bank->settlement_code), name, "-");
    printf(" %15s %8s", _QUANTIA_vtoa(money, &bank->balance), PORC2_edita(rate, bank->rate));
    for (r = 0; r < 3; r++) {
      QUANTIA interest;
      rules[r].apply(&interest, &bank->balance, bank->rate);
      printf(" %13s", _QUANTIA_vtoa(money, &interest));
    }
    putchar('\n');
  }
}

/* One bank in full: dates, the way back from an amount, bits and texts. */
static void show_one(const BankRecord *bank) {
  static const struct {
    const char *rule;
    void (*find)(QUANTIA *, const QUANTIA *, const unsigned char *);
  } searches[] = {{"cut", PORC2_inv_multiplica},
                  {"5 up", PORC2_inv_multipl_arred},
                  {"NBR", PORC2_inv_multipl_arr_nbr}};
  char name[NAME_BYTES + 1], text[64], money[QUANTIA_TEXT_SIZE],
      volume[BINQ_FIXO_TEXT_SIZE(BINQ16_DIGITS, VOLUME_DECIMALS)];
  char link[URLENCOD_CODIFICA_SIZE(NAME_BYTES)];
  unsigned char next[DATAC_BYTES];
  QUANTIA interest, base;
  size_t i;

  CODSTR_extrai(name, bank->name, NAME_BYTES);
  printf("%s\n", utf8(name));
  printf("  started          %s, %s", DATAC_edita4(text, bank->start),
         utf8(DATAC_txt_semana[DATAC_dia_da_semana(bank->start)]));
  printf(", %ld days before %s\n", (long)DATAC_zuliano(kToday) - DATAC_zuliano(bank->start),
         DATAC_edita4(text, kToday));
  DATAC_proximo_ddmm(next, kToday, DATAC_dia(bank->start) * 100 + DATAC_mes(bank->start));
  printf("  next anniversary %s, %s\n", DATAC_edita4(text, next),
         utf8(DATAC_txt_semana[DATAC_dia_da_semana(next)]));
  if (DATAC_nao_zero(bank->pix_start)) {
    printf("  instant payments %s", DATAC_edita4(text, bank->pix_start));
    printf(" at %s\n", HHMMSS_edita(text, bank->pix_time));
  }
  PORC2_multiplica(&interest, &bank->balance, bank->rate);
  printf("  %s of %s", PORC2_edita_exato(text, bank->rate), _QUANTIA_vtoa(money, &bank->balance));
  printf(" is %s; base found back:", _QUANTIA_vtoa(money, &interest));
  for (i = 0; i < 3; i++) {
    searches[i].find(&base, &interest, bank->rate);
    printf(" %s (%s)", _QUANTIA_vtoa(money, &base), searches[i].rule);
  }
  printf("\n  volume           %s\n", BINQ16_btoafixo(volume, bank->volume, VOLUME_DECIMALS));
  ZBTFIELD_depura_binario(text, sizeof text, bank->status, bank_status_table);
  printf("  status           %02X %02X: %s", bank->status[0], bank->status[1], text);
  ZBTFIELD_big_depura_binario(text, sizeof text, bank->status, bank_status_table);
  printf("  read the other way round %s\n", text);
  ZBTFIELD_depura_conteudo(text, sizeof text, bank->status, bank_status_table);
  printf("                   %s\n", text);
  printf("  link             https://example.com/bancos?nome=%s\n", URLENCOD_codifica(link, name));
}

static void show_checks(const BankRecord *banks, size_t count, const Totals *totals) {
  size_t i, valid = 0, empty = 0, zero_codes = 0, differ = 0, full_names = 0, wide = 0;
  for (i = 0; i < count; i++) {
    char text[CODALF14_TEXT_SIZE], code[BSTR21_TEXT_SIZE], name[NAME_BYTES + 1];
    char volume[BINQ16_TEXT_SIZE];
    QUANTIA up, nbr;
    valid += ZALGORITM_valida_CNPJ(CODALF14_btoa(text, banks[i].taxpayer), 0);
    empty += !DATAC_nao_zero(banks[i].start);
    zero_codes += strspn(BSTR21_btoa(code, banks[i].settlement_code), "0") > 0;
    CODSTR_extrai(name, banks[i].name, NAME_BYTES);
    full_names += CODSTR_nao_zero(banks[i].name, NAME_BYTES, 0) && strlen(name) > 0;
    wide += strlen(BINQ16_btoa(volume, banks[i].volume)) > 19;
    PORC2_multipl_arred(&up, &banks[i].balance, banks[i].rate);
    PORC2_multipl_arr_nbr(&nbr, &banks[i].balance, banks[i].rate);
    differ += _QUANTIA_comp(&up, &nbr) != 0;
  }
  printf("records written and read back        %zu of %ld rows, %ld refused\n", count, totals->rows,
         totals->refused);
  printf(
      "bytes a record                       %zu, against %.1f of a row as CSV (%d of them name)\n",
      sizeof(BankRecord), count > 0 ? (double)totals->csv_bytes / (double)count : 0.0, NAME_BYTES);
  printf("taxpayer numbers with good digits    %zu\n", valid);
  printf("settlement codes with leading zeros  %zu kept\n", zero_codes);
  printf("full names read back                 %zu\n", full_names);
  printf("volumes above 19 digits              %zu\n", wide);
  printf("short names that lost characters     %ld, %ld characters outside the alphabet\n",
         totals->lossy_names, totals->lost_characters);
  printf("rows without a start date            %zu\n", empty);
  printf("amounts on which 5 up and NBR differ %zu\n", differ);
}

int main(int argc, char **argv) {
  static BankRecord banks[MOST_BANKS];
  unsigned char guid[ZGUID_BYTES];
  char text[ZGUID_STRING_MAX_SIZE];
  Totals totals = {0, 0, 0, 0, 0};
  size_t count = 0, chosen = 0;
  int status;
  if (argc != 3) {
    fprintf(stderr, "usage: bancos CSV RECORDS\n");
    return 2;
  }
  DATAC_formato = DATAC_FORMATO_COMPACTO;
  status = write_records(argv[1], argv[2], &totals);
  if (status == 0) status = read_records(argv[2], guid, banks, &count);
  if (status != 0) return status;

  qsort(banks, count, sizeof *banks, by_start);
  ZGUID_string(text, guid, ZGUID_HIFENS | ZGUID_CHAVES);
  printf("file %s, %zu banks by date of start, one in %d shown\n\n", text, count,
         count > SHOWN ? (int)(count / SHOWN) : 1);
  show_table(banks, count);
  putchar('\n');
  while (chosen + 1 < count &&
         !(DATAC_nao_zero(banks[chosen].start) && DATAC_nao_zero(banks[chosen].pix_start)))
    chosen++;
  if (count > 0) show_one(&banks[chosen]);
  putchar('\n');
  show_checks(banks, count, &totals);
  return count + (size_t)totals.refused == (size_t)totals.rows ? 0 : 1;
}
