#include "bank_record.h"

#include <campotipo-support/numbers.h>
#include <stddef.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

enum { COMPE, ISPB, CNPJ, NOME, NOME_REDUZIDO, TIPO, INICIO_OPERACAO, INICIO_PIX, COLUMNS };

const ZBTFIELD_CAMPO bank_status_table[] = {
    {1, offsetof(BankStatus, commercial)},
    {1, offsetof(BankStatus, has_start)},
    {1, offsetof(BankStatus, has_pix)},
    {7, offsetof(BankStatus, years)},
    {0, 0},
};

static int only_digits(const char *text, size_t length) {
  return strlen(text) == length && strspn(text, "0123456789") == length;
}

/* "2002-04-22" or nothing. Result: 0 for any other text. */
static int date_from_text(unsigned char *field, const char *text) {
  int day, month, year;
  if (*text == '\0') {
    DATAC_monta(field, 0, 0, 0);
    return 1;
  }
  if (sscanf(text, "%4d-%2d-%2d", &year, &month, &day) != 3) return 0;
  DATAC_monta(field, day, month, year);
  return DATAC_valida(field);
}

static int moment_from_text(unsigned char *date, unsigned char *time, const char *text) {
  int hour = 0, minute = 0, second = 0;
  if (!date_from_text(date, text)) return 0;
  if (*text != '\0' && sscanf(text + 10, " %2d:%2d:%2d", &hour, &minute, &second) != 3) return 0;
  time[0] = (unsigned char)hour;
  time[1] = (unsigned char)minute;
  time[2] = (unsigned char)second;
  return HHMMSS_valida(time);
}

/*
 * How many characters a packed code passes over: each tried in front of a good one, since those
 * behind the last good character of a text are not looked at.
 */
static int count_lost(const char *text) {
  int lost = 0;
  for (; *text != '\0'; text++) {
    unsigned char field[CODALF05_BYTES];
    const char pair[3] = {*text, 'A', '\0'};
    lost += !CODALF05_opc_salvou(field, pair, 0);
  }
  return lost;
}

/* A balance, a rate and a volume that depend on nothing but the row. */
static void invent_amounts(BankRecord *record, const CsvRow *row) {
  char text[64];
  const long code = atol(row->field[ISPB]);
  snprintf(text, sizeof text, "%ld.%02ld", code / 7 + 1000, code % 100);
  _QUANTIA_atov(&record->balance, text);
  snprintf(text, sizeof text, "%ld.%ld0", 1 + code % 29, code / 100 % 2 * 5);
  _ato2fixo(record->rate, text, 2);
  snprintf(text, sizeof text, "%s%s%s.75", row->field[CNPJ], row->field[ISPB], row->field[COMPE]);
  BINQ16_atob_fixo(record->volume, text, VOLUME_DECIMALS);
}

static void pack_status(BankRecord *record, const CsvRow *row) {
  BankStatus status;
  const int year = DATAC_ano1(record->start);
  memset(&status, 0, sizeof status);
  status.commercial = strncmp(row->field[TIPO], "Banco Comercial", 15) == 0;
  status.has_start = (unsigned char)DATAC_nao_zero(record->start);
  status.has_pix = (unsigned char)DATAC_nao_zero(record->pix_start);
  status.years = (unsigned char)(year >= 1980 ? year - 1980 : 0);
  ZBTFIELD_monta_dados(record->status, bank_status_table, (const unsigned char *)&status);
}

BankOutcome bank_from_row(BankRecord *record, const CsvRow *row) {
  BankOutcome outcome = {row->fault, 0};
  if (outcome.fault != NULL) return outcome;
  memset(record, 0, sizeof *record);
  if (row->fields != COLUMNS) {
    outcome.fault = "the number of fields is not 8";
  } else if (!only_digits(row->field[COMPE], 3)) {
    outcome.fault = "the clearing code is not 3 digits";
  } else if (!only_digits(row->field[ISPB], 8)) {
    outcome.fault = "the settlement code is not 8 digits";
  } else if (!only_digits(row->field[CNPJ], 14) || !ZALGORITM_valida_CNPJ(row->field[CNPJ], 0)) {
    outcome.fault = "the taxpayer number does not pass its check digits";
  } else if (strlen(row->field[NOME]) > NAME_BYTES) {
    outcome.fault = "the name does not fit";
  } else if (!date_from_text(record->start, row->field[INICIO_OPERACAO])) {
    outcome.fault = "the start date is no date";
  } else if (!moment_from_text(record->pix_start, record->pix_time, row->field[INICIO_PIX])) {
    outcome.fault = "the start of instant payments is no moment";
  }
  if (outcome.fault != NULL) return outcome;

  BSTR21_atob(record->clearing_code, row->field[COMPE]);
  BSTR21_atob(record->settlement_code, row->field[ISPB]);
  CODALF14_opc_atob(record->taxpayer, row->field[CNPJ], 0);
  CODSTR_opc_salva(record->name, row->field[NOME], NAME_BYTES, 0);
  if (!CODALFA_opc_salvou(record->short_name, row->field[NOME_REDUZIDO], SHORT_NAME_POSITIONS, 0))
    outcome.lost_characters = count_lost(row->field[NOME_REDUZIDO]);
  invent_amounts(record, row);
  pack_status(record, row);
  return outcome;
}
