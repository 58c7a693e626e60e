#ifndef BANK_RECORD_H
#define BANK_RECORD_H

#include <campotipo/campotipo.h>

#include "csv_reader.h"

/*
 * A bank as a record of fixed layout. Every member is an array of bytes, so the struct has no gaps
 * and its bytes are the record.
 */

#define NAME_BYTES 150          /* plain ISO 8859-1 text */
#define SHORT_NAME_POSITIONS 60 /* packed code */
#define SHORT_NAME_BYTES CODALFA_BYTES(SHORT_NAME_POSITIONS)
#define VOLUME_DECIMALS 2
#define STATUS_BYTES 2

typedef struct BankRecord {
  unsigned char clearing_code[BSTR21_BYTES];   /* "001": leading zeros are kept */
  unsigned char settlement_code[BSTR21_BYTES]; /* "00000000" is a real one */
  unsigned char taxpayer[CODALF14_BYTES];
  unsigned char name[NAME_BYTES];
  unsigned char short_name[SHORT_NAME_BYTES];
  unsigned char start[DATAC_BYTES];
  unsigned char pix_start[DATAC_BYTES];
  unsigned char pix_time[HHMMSS_BYTES];
  QUANTIA balance;
  unsigned char rate[PORC2_BYTES];
  unsigned char volume[BINQ16_BYTES];
  unsigned char status[STATUS_BYTES];
} BankRecord;

/* The fields of the status area, unpacked: one byte each. */
typedef struct BankStatus {
  unsigned char commercial, has_start, has_pix, years; /* whole years since 1980 */
} BankStatus;

extern const ZBTFIELD_CAMPO bank_status_table[];

/* What became of one row. */
typedef struct BankOutcome {
  const char *fault;   /* null, or why there is no record */
  int lost_characters; /* characters of the short name outside the alphabet of packed codes */
} BankOutcome;

/* Fills the record from the row's fields, in the order of the columns of bancos.csv. */
BankOutcome bank_from_row(BankRecord *record, const CsvRow *row);

#endif
