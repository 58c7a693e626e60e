#ifndef CAMPOTIPO_CALENDAR_H
#define CAMPOTIPO_CALENDAR_H

#include <campotipo/export.h>
#include <stdint.h>
#include <time.h>

/*
 * Dates and times of day
 * ======================
 *
 *   kind     bytes  stored form                                             section
 *   DATAC    3      a date, decimal or packed; the field itself says which  Date field
 *   HORAC    2      hour * 100 + minute                                     Time of day
 *   HHMMSS   3      hour, minute, second, one byte each                     Time of day
 *
 * A field is its bytes and nothing else, at any address. Pointers are never null. Nothing reports
 * an error: every bit pattern can be read. In the packed encoding what no date can be made of becomes
 * the zero date; the decimal one stores the digits that it is given.
 *
 * date    a DATAC in either encoding, 3 bytes
 * a, b    two dates, in either encoding each
 * field   a HORAC of 2 bytes or an HHMMSS of 3
 *
 * Threads: operations on different data may run at the same time. DATAC_formato is the one
 * variable; an operation that writes a date in its encoding reads it once.
 */

#ifdef __cplusplus
extern "C" {
#endif

/*
 * ------------------------------------------------------------------------------------------------
 * Date field
 * ------------------------------------------------------------------------------------------------
 *
 * The three bytes, least significant first, are one number N. Its bit 23 tells the encoding.
 *
 *   decimal   bit 23 clear   N = day * 10000 + month * 100 + last two digits of the year. Any
 *                            digits can be stored; nothing is checked.
 *   packed    bit 23 set     day in bits 0 to 4, month in bits 5 to 8, year, 0 to 4095, in bits 9
 *                            to 20. Holds dates that exist, the zero date and the repeated digits.
 *
 *   date                       decimal                packed
 *   31/12/2024                 B8 BF 04 (311224)      9F D1 8F (0x8FD19F)
 *   zero date                  00 00 00               00 00 80
 *   repeated digits 22/22/22   0E 64 03 (222222)      02 00 A0 (bit 21 and the digit, 2 to 9)
 *
 * Reading takes both encodings. The year of a decimal date is the one from 1980 to 2079 with the
 * stored two digits (CRONOBASE_ano_com_quatro), or 0 where the day is 0. Packed repeated digits
 * read as day 22, month 22 and year 2222, and so on up to 99, 99, 9999. Bit 22 is not looked at.
 *
 * Writing takes the encoding from DATAC_formato or from an argument: 1 is packed, any other number
 * decimal. The packed year has 12 bits, so that year 5000 is stored as 904.
 *
 * A year is a leap year when it is a multiple of four (year & 3 is 0), with no exception for
 * centuries: 29/02/1900 and 29/02/2100 exist.
 *
 * Example: a due date, kept packed and shown.
 *
 *     unsigned char due[DATAC_BYTES];
 *     char text[DATAC_EDITA4_TEXT_SIZE];
 *     DATAC_fmt_monta(due, DATAC_FORMATO_COMPACTO, 31, 1, 2024);      3F D0 8F
 *     DATAC_formato = DATAC_FORMATO_COMPACTO;
 *     DATAC_avanca_meses_dentro(due, 1);
 *     DATAC_edita4(text, due);                                        "29/02/2024"
 */

#define DATAC_BYTES 3

/* The two encodings, for DATAC_formato and for every format argument. */
#define DATAC_FORMATO_DECIMAL 0
#define DATAC_FORMATO_COMPACTO 1

/* Encoding that dates are written in, 0 at load. The application may set it at any time; stored
 * dates stay readable. */
CAMPOTIPO_API extern int32_t DATAC_formato;

/*
 * DATAC_fmt_monta: stores a date. DATAC_monta: the same in the encoding of DATAC_formato.
 *
 * out      3 bytes, all written
 * format   1 packed, any other number decimal
 * day, month, year
 *          packed: a date that exists is stored with the low 12 bits of the year, which is taken as
 *          it is (24 is the year 24). Day, month and year all 22, all 33 and so on up to all 99
 *          make the repeated digits; anything else makes the zero date.
 *          decimal: day * 10000 + month * 100 + year % 100 is stored in 24 bits without any check.
 *          Day and month of 0 to 99 and a year of 0 or more keep to the encoding; others may reach
 *          bit 23.
 *
 * Result: out.
 */
CAMPOTIPO_API unsigned char *DATAC_fmt_monta(unsigned char *out, int32_t format, int32_t day,
                                             int32_t month, int32_t year) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API unsigned char *DATAC_monta(unsigned char *out, int32_t day, int32_t month,
                                         int32_t year) CAMPOTIPO_NOEXCEPT;

/*
 * DATAC_dia, DATAC_mes   day and month, 0 to 99
 * DATAC_ano1             year in four digits, 0 to 9999
 * DATAC_ano              DATAC_ano1 modulo 100; 0 for a decimal date with day 0, whatever year it
 *                        stores
 */
CAMPOTIPO_API int32_t DATAC_dia(const unsigned char *date) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int32_t DATAC_mes(const unsigned char *date) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int32_t DATAC_ano1(const unsigned char *date) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int32_t DATAC_ano(const unsigned char *date) CAMPOTIPO_NOEXCEPT;

/*
 * DATAC_nao_zero: 0 for the zero date of either encoding, else 1.
 * DATAC_valida: 1 if the date exists in the calendar, else 0. Zero dates and repeated digits do
 * not exist.
 */
CAMPOTIPO_API int DATAC_nao_zero(const unsigned char *date) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int DATAC_valida(const unsigned char *date) CAMPOTIPO_NOEXCEPT;

/*
 * DATAC_formato_de: encoding that the date is stored in, DATAC_FORMATO_DECIMAL or
 * DATAC_FORMATO_COMPACTO.
 *
 * DATAC_bem_formado: 1 if the stored form is one that its encoding has, else 0. Decimal: six digits,
 * whatever they are, N to 999999. Packed: a date that exists, the zero date or repeated digits, with
 * all other bits clear.
 */
CAMPOTIPO_API int32_t DATAC_formato_de(const unsigned char *date) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int DATAC_bem_formado(const unsigned char *date) CAMPOTIPO_NOEXCEPT;

/*
 * DATAC_compara: -1, 0 or 1 as a is earlier than, the same as or later than b, by the year, month
 * and day that the accessors read, whatever the encodings: the zero dates are equal, and earlier
 * than every date of a year above 0.
 * DATAC_igual: 1 if DATAC_compara gives 0, else 0.
 */
CAMPOTIPO_API int DATAC_compara(const unsigned char *a, const unsigned char *b) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int DATAC_igual(const unsigned char *a, const unsigned char *b) CAMPOTIPO_NOEXCEPT;

/*
 * DATAC_ulong: the number DDMMAA: N itself of a decimal date, 222222 of packed 22/22/22.
 * DATAC_ddmmaa_igual: 1 if DATAC_ulong of the date is ddmmaa, else 0.
 *
 * ddmmaa   the number DDMMAA; any other number is of no date
 */
CAMPOTIPO_API uint32_t DATAC_ulong(const unsigned char *date) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int DATAC_ddmmaa_igual(const unsigned char *date, int64_t ddmmaa) CAMPOTIPO_NOEXCEPT;

/*
 * DATAC_converteu_formato: brings a date, in place, to the other encoding.
 *
 * To decimal the century is dropped. To packed the year is expanded, and what is no date becomes
 * the packed zero date, decimal repeated digits among it.
 *
 * format   0 decimal, 1 packed; any other number leaves the field alone
 *
 * Result: 1 if the field was rewritten; 0 if it had that encoding already or format is another
 * number.
 */
CAMPOTIPO_API int DATAC_converteu_formato(unsigned char *date, int32_t format) CAMPOTIPO_NOEXCEPT;

/*
 * DATAC_dias_no_mes: days of a month, 28 to 31.
 *
 * month   1 to 12; any other gives 0
 * year    in four digits; February has 29 days where year & 3 is 0
 */
CAMPOTIPO_API int32_t DATAC_dias_no_mes(int32_t month, int32_t year) CAMPOTIPO_NOEXCEPT;

/*
 * ------------------------------------------------------------------------------------------------
 * Date text
 * ------------------------------------------------------------------------------------------------
 *
 *   operation                     text          size with NUL
 *   DATAC_edita                   31/12/24      DATAC_EDITA_TEXT_SIZE
 *   DATAC_edita4                  31/12/2024    DATAC_EDITA4_TEXT_SIZE
 *   DATAC_edita_sep               31-12-24      DATAC_EDITA_TEXT_SIZE
 *   DATAC_edita_1sep              either        DATAC_EDITA_TEXT_SIZE or DATAC_EDITA4_TEXT_SIZE
 *   DATAC_dtoa                    311224        DATAC_DDMMAA_TEXT_SIZE
 *   DATAC_dtoa_DDMMAAAA           31122024      DATAC_DDMMAAAA_TEXT_SIZE
 *
 * Every text has that length, for every bit pattern of the field. Exactly that size is written.
 */

#define DATAC_EDITA_TEXT_SIZE 9
#define DATAC_EDITA4_TEXT_SIZE 11
#define DATAC_DDMMAA_TEXT_SIZE 7
#define DATAC_DDMMAAAA_TEXT_SIZE 9

/* Flag of DATAC_edita_1sep: the year in four digits. */
#define DATAC_EDITA_ANO4 1

/*
 * Names of the weekdays in ISO 8859-1, by the result of DATAC_dia_da_semana: Saturday (Sabado, with
 * acute accent) first, Friday last.
 */
CAMPOTIPO_API extern const char *const DATAC_txt_semana[7];

/*
 * DATAC_edita_1sep: day, month and year with a separator. DATAC_edita, DATAC_edita4: the same with
 * "/" and two or four digits of the year. DATAC_edita_sep: with sep and two digits.
 *
 * out     text of the size above; apart from the field
 * sep     the separator, of which the low 8 bits are written; 0 puts a NUL in the text
 * flags   DATAC_EDITA_ANO4 or 0; the other bits have no effect
 *
 * Result: out.
 */
CAMPOTIPO_API char *DATAC_edita(char *out, const unsigned char *date) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *DATAC_edita4(char *out, const unsigned char *date) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *DATAC_edita_sep(char *out, const unsigned char *date,
                                    int32_t sep) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *DATAC_edita_1sep(char *out, const unsigned char *date, int32_t sep,
                                     int32_t flags) CAMPOTIPO_NOEXCEPT;

/*
 * DATAC_dtoa: the six digits DDMMAA; of a decimal date those of its stored number (the rightmost
 * six), so that 00/05/24 gives 000524 though its year reads as 0.
 * DATAC_dtoa_DDMMAAAA: the eight digits of day, month and year as the accessors read them.
 *
 * out   text of the size above; apart from the field
 *
 * Result: out.
 */
CAMPOTIPO_API char *DATAC_dtoa(char *out, const unsigned char *date) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *DATAC_dtoa_DDMMAAAA(char *out, const unsigned char *date) CAMPOTIPO_NOEXCEPT;

/*
 * DATAC_fmt_atod: stores the date of a digit text. DATAC_atod, DATAC_atod_DDMMAAAA: the same in the
 * encoding of DATAC_formato, with six and with eight digits.
 *
 * The text is read as by atol, white space of the process's locale in front: leading zeros may
 * lack, and the first byte that is no digit ends it ("31/12/24" is 31). A text that is no number is
 * 0 and gives the zero date. A number below zero or with more digits than these is none of use: its
 * low 32 bits are taken like any other number.
 *
 * out      3 bytes, all written; apart from the text
 * format   1 packed: what is no date becomes the zero date; any other number decimal, not checked.
 *          With 0 and six digits the low 24 bits of the number are stored, less bit 23.
 * year4    not 0: DDMMAAAA; 0: DDMMAA, the year expanded to 1980 to 2079
 * text     ended by a NUL
 */
CAMPOTIPO_API void DATAC_fmt_atod(unsigned char *out, int32_t format, int32_t year4,
                                  const char *text) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void DATAC_atod(unsigned char *out, const char *text) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void DATAC_atod_DDMMAAAA(unsigned char *out, const char *text) CAMPOTIPO_NOEXCEPT;

/*
 * ------------------------------------------------------------------------------------------------
 * Date arithmetic
 * ------------------------------------------------------------------------------------------------
 *
 * A day count is a number of days from 1 January of a base year, which is day 1. The standing base
 * year is 1980. Counts and weekdays are those of the Gregorian calendar from 01/01/1980 to
 * 28/02/2100; from 01/03/2100 on the weekday runs one day ahead of it, since 29/02/2100 exists.
 *
 * Dates of either encoding go in; what comes out is in the encoding of DATAC_formato, in place too.
 * The decimal encoding keeps two digits of the year, so a result outside 1980 to 2079 reads back as
 * a date of another century. Every operation costs the same however far it goes.
 *
 *   from         step                DATAC_avanca_meses   DATAC_avanca_meses_dentro
 *   31/01/2023   1 month             01/03/2023           28/02/2023
 *   31/12/2023   2 months            01/03/2024           29/02/2024
 *   31/03/2023   -1 month            01/03/2023           28/02/2023
 *   15/01/2023   -1 month            15/12/2022           15/12/2022
 */

/*
 * DATAC_zuliano: day count from 1980, of CRONOBASE_zuliano: 0 before 01/01/1980 and for a month
 * that is not 1 to 12.
 * DATAC_zuliano_desde: day count from 1 January of base_year. 0 where the year of the date is
 * before base_year or its month is not 1 to 12. The years base, base + 4, base + 8 and so on count
 * as leap years: it is a true count where base_year is a multiple of four.
 *
 * base_year   in four digits
 */
CAMPOTIPO_API int32_t DATAC_zuliano(const unsigned char *date) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int64_t DATAC_zuliano_desde(const unsigned char *date,
                                          int32_t base_year) CAMPOTIPO_NOEXCEPT;

/*
 * DATAC_de_zuliano_desde: stores the date of a day count from 1 January of base_year, here with the
 * true leap years. The inverse of DATAC_zuliano_desde where base_year is a multiple of four.
 * DATAC_de_zuliano: the same with base year 1980.
 *
 * out         3 bytes, all written
 * count       1 or more; 0 or less stores what DATAC_monta makes of day `count`, month 1,
 *             base_year: packed the zero date
 * base_year   in four digits
 */
CAMPOTIPO_API void DATAC_de_zuliano(unsigned char *out, int32_t count) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void DATAC_de_zuliano_desde(unsigned char *out, int32_t count,
                                          int32_t base_year) CAMPOTIPO_NOEXCEPT;

/* DATAC_dia_da_semana: index into DATAC_txt_semana, 0 Saturday to 6 Friday; 2 where DATAC_zuliano
 * gives 0. */
CAMPOTIPO_API int32_t DATAC_dia_da_semana(const unsigned char *date) CAMPOTIPO_NOEXCEPT;

/*
 * DATAC_para_time_t: noon of the date in local standard time, as mktime gives it, also -1.
 * DATAC_de_time_t: stores the local date of a moment. A moment that the platform cannot convert
 * gives the zero date, in both encodings.
 *
 * The one undoes the other for every date that exists in the time zone. A zone that has moved over
 * the date line skipped a day (30/12/2011 in Pacific/Apia): its noon is a moment of another day.
 *
 * Both follow TZ in the environment as it is at the call. Without TZ they look at the system's time
 * zone file on every call, and for a zone not seen before the C library reads that zone's file and
 * allocates.
 *
 * out      3 bytes, all written
 * moment   seconds of the epoch
 */
CAMPOTIPO_API time_t DATAC_para_time_t(const unsigned char *date) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void DATAC_de_time_t(unsigned char *out, time_t moment) CAMPOTIPO_NOEXCEPT;

/*
 * DATAC_avanca_dias          steps a date, in place, by days
 * DATAC_avanca_meses         by months; where the month has no such day, to the first of the next
 * DATAC_avanca_meses_dentro  by months; where the month has no such day, to its last
 *
 * date           3 bytes. A date that DATAC_valida refuses stays as it is, encoding included.
 * days, months   any number; 0 rewrites the date in the encoding of DATAC_formato
 *
 * A year below 0 goes into the field as DATAC_monta takes it.
 */
CAMPOTIPO_API void DATAC_avanca_dias(unsigned char *date, int32_t days) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void DATAC_avanca_meses(unsigned char *date, int32_t months) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void DATAC_avanca_meses_dentro(unsigned char *date,
                                             int32_t months) CAMPOTIPO_NOEXCEPT;

/*
 * DATAC_proximo_ddmm: stores the first date with a day and month that is not before a reference.
 * DATAC_ultimo_ddmm: stores the last one that is not after it.
 *
 * The years from that of the reference on (proximo) or back (ultimo) are tried as DATAC_monta
 * writes them, until DATAC_compara with the reference allows one. After 8 years the zero date of
 * DATAC_formato is stored: a day that no year has, or a search that leaves the years of the
 * encoding, ends there.
 *
 * With 29/02 the encodings differ. Packed, a year without the day makes the zero date, which is
 * before every reference: proximo passes over it, and ultimo ends with it. Decimal, the day is
 * stored unchecked in any year.
 *
 * out         3 bytes, all written; not the reference itself
 * reference   a date
 * ddmm        day * 100 + month: 2512 is 25 December
 */
CAMPOTIPO_API void DATAC_proximo_ddmm(unsigned char *out, const unsigned char *reference,
                                      int32_t ddmm) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void DATAC_ultimo_ddmm(unsigned char *out, const unsigned char *reference,
                                     int32_t ddmm) CAMPOTIPO_NOEXCEPT;

/*
 * ------------------------------------------------------------------------------------------------
 * Time of day
 * ------------------------------------------------------------------------------------------------
 *
 *   kind     bytes  stored form                                     14:35:07   text
 *   HORAC    2      hour * 100 + minute, least significant first    9B 05      "14:35"
 *   HHMMSS   3      hour, minute, second, each a binary byte        0E 23 07   "14:35:07"
 *
 * A text shows what the field holds, valid or not. The hour has a blank in front of a single digit,
 * " 9:05"; minutes and seconds have two digits. A valid time fills 5 or 8 characters and the NUL;
 * one that is not valid may take more, up to the sizes here.
 */

#define HORAC_BYTES 2
#define HORAC_TEXT_SIZE 7
#define HHMMSS_BYTES 3
#define HHMMSS_TEXT_SIZE 12

/* Flag of HHMMSS_edita_sep: no seconds. */
#define HHMMSS_EDITA_HHMM 1

/*
 * HORAC_valida, HHMMSS_valida: 1 for a time from 00:00 to 23:59 (23:59:59), else 0.
 * HORAC_bem_formado, HHMMSS_bem_formado: the same, since a time has one stored form.
 */
CAMPOTIPO_API int HORAC_valida(const unsigned char *field) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int HHMMSS_valida(const unsigned char *field) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int HORAC_bem_formado(const unsigned char *field) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int HHMMSS_bem_formado(const unsigned char *field) CAMPOTIPO_NOEXCEPT;

/*
 * HORAC_edita_sep, HHMMSS_edita_sep: text with a separator. HORAC_edita, HHMMSS_edita: with ":".
 * HHMMSS_edita_hhmm: hour and minute with ":".
 *
 * out     HORAC_TEXT_SIZE or HHMMSS_TEXT_SIZE bytes, of which the text and its NUL are written;
 *         apart from the field
 * sep     the separator, of which the low 8 bits are written; 0 puts a NUL in the text
 * flags   HHMMSS_EDITA_HHMM or 0; the other bits have no effect
 *
 * Result: out.
 */
CAMPOTIPO_API char *HORAC_edita(char *out, const unsigned char *field) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *HORAC_edita_sep(char *out, const unsigned char *field,
                                    int32_t sep) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *HHMMSS_edita(char *out, const unsigned char *field) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *HHMMSS_edita_hhmm(char *out, const unsigned char *field) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *HHMMSS_edita_sep(char *out, const unsigned char *field, int32_t sep,
                                     int32_t flags) CAMPOTIPO_NOEXCEPT;

#ifdef __cplusplus
}
#endif

#endif
