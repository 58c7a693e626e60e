#ifndef CAMPOTIPO_SUPPORT_NUMBERS_H
#define CAMPOTIPO_SUPPORT_NUMBERS_H

#include <campotipo-support/export.h>
#include <stdint.h>

/*
 * Binary numbers of 1 to 8 bytes
 * ==============================
 *
 * Stored form of width N: an unsigned binary integer of exactly N bytes, least significant byte
 * first, at any address. No sign, no header, no alignment.
 *
 *   N   greatest value          BINN_TEXT_SIZE (digits of that value and the NUL)
 *   1   255                      4
 *   2   65535                    6
 *   3   16777215                 9
 *   4   4294967295              11
 *   5   1099511627775           14
 *   6   281474976710655         16
 *   7   72057594037927935       18
 *   8   18446744073709551615    21
 *
 * No operation reports a failure: a text that is no number is stored as the value that its digits
 * make. No operation allocates, keeps state or depends on the locale, so all may run at the same
 * time on different data. Pointers are never null. Fields are read and written in exactly N bytes.
 * A text and a field do not overlap.
 *
 * Example: two decimals kept as an integer.
 *
 *     unsigned char field[2];
 *     char text[BIN2_TEXT_SIZE + 1];
 *     _ato2fixo(field, "12.5", 2);      field holds 1250: E2 04
 *     _2toafixo(text, field, 2);        "12.50"
 */

#ifdef __cplusplus
extern "C" {
#endif

#define BIN1_TEXT_SIZE 4
#define BIN2_TEXT_SIZE 6
#define BIN3_TEXT_SIZE 9
#define BIN4_TEXT_SIZE 11
#define BIN5_TEXT_SIZE 14
#define BIN6_TEXT_SIZE 16
#define BIN7_TEXT_SIZE 18
#define BIN8_TEXT_SIZE 21

/*
 * _atoN: text to number.
 *
 * Blanks in front (0x20, 0x09 to 0x0D) are skipped; then digits are read up to the first other
 * byte, and the rest of the text is not looked at. A text without digits is 0. A value above the
 * width is stored modulo 2^(8N).
 *
 * dest   N bytes, all written
 * text   ended by a NUL
 *
 * Result: 1 if the stored number is not zero, else 0.
 */
CAMPOTIPO_API int _ato1(unsigned char *dest, const char *text) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int _ato2(unsigned char *dest, const char *text) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int _ato3(unsigned char *dest, const char *text) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int _ato4(unsigned char *dest, const char *text) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int _ato5(unsigned char *dest, const char *text) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int _ato6(unsigned char *dest, const char *text) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int _ato7(unsigned char *dest, const char *text) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int _ato8(unsigned char *dest, const char *text) CAMPOTIPO_NOEXCEPT;

/*
 * _atoNfixo: text with a decimal point to number times 10^decimals.
 *
 * Blanks in front are skipped; then digits are read, and one "." among them. Of the digits behind
 * the point the first `decimals` count and the next one ends the text; missing ones are zeros.
 * Nothing is rounded. Any other byte ends the text, a sign and a second "." among them.
 * "12.5" with 2 decimals is 1250, "12.345" is 1234, "-5" is 0.
 *
 * dest       N bytes, all written; the value modulo 2^(8N)
 * text       ended by a NUL
 * decimals   0 or more; a negative number acts like 0
 *
 * Result: 1 if the stored number is not zero, else 0.
 */
CAMPOTIPO_API int _ato1fixo(unsigned char *dest, const char *text, int decimals) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int _ato2fixo(unsigned char *dest, const char *text, int decimals) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int _ato3fixo(unsigned char *dest, const char *text, int decimals) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int _ato4fixo(unsigned char *dest, const char *text, int decimals) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int _ato5fixo(unsigned char *dest, const char *text, int decimals) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int _ato6fixo(unsigned char *dest, const char *text, int decimals) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int _ato7fixo(unsigned char *dest, const char *text, int decimals) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int _ato8fixo(unsigned char *dest, const char *text, int decimals) CAMPOTIPO_NOEXCEPT;

/*
 * _Ntoa: number to text, without leading zeros; zero is "0".
 *
 * text   at least BINN_TEXT_SIZE bytes; the digits and the NUL are written, nothing behind them
 * src    N bytes
 *
 * Result: text.
 */
CAMPOTIPO_API char *_1toa(char *text, const unsigned char *src) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *_2toa(char *text, const unsigned char *src) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *_3toa(char *text, const unsigned char *src) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *_4toa(char *text, const unsigned char *src) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *_5toa(char *text, const unsigned char *src) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *_6toa(char *text, const unsigned char *src) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *_7toa(char *text, const unsigned char *src) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *_8toa(char *text, const unsigned char *src) CAMPOTIPO_NOEXCEPT;

/*
 * _Ntoafixo: number to text with a "." before its last `decimals` digits.
 *
 * Zeros fill a number that has fewer digits, and there is always a digit before the point: 5 with
 * 2 decimals is "0.05". With 0 decimals, or fewer, the text is that of _Ntoa, without a point.
 *
 * text       at least BINN_TEXT_SIZE + 1 bytes, or decimals + 3 where that is more; the text and
 *            its NUL are written, nothing behind them
 * src        N bytes
 * decimals   0 or more
 *
 * Result: text.
 */
CAMPOTIPO_API char *_1toafixo(char *text, const unsigned char *src,
                              int decimals) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *_2toafixo(char *text, const unsigned char *src,
                              int decimals) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *_3toafixo(char *text, const unsigned char *src,
                              int decimals) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *_4toafixo(char *text, const unsigned char *src,
                              int decimals) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *_5toafixo(char *text, const unsigned char *src,
                              int decimals) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *_6toafixo(char *text, const unsigned char *src,
                              int decimals) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *_7toafixo(char *text, const unsigned char *src,
                              int decimals) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *_8toafixo(char *text, const unsigned char *src,
                              int decimals) CAMPOTIPO_NOEXCEPT;

/*
 * _8btoa: number to text of exactly `digits` digits, with leading zeros.
 *
 * The source comes first here. A value with more digits shows the rightmost ones.
 *
 * src      8 bytes
 * text     digits + 1 bytes, all written
 * digits   0 or more; fewer gives the empty text
 *
 * Result: text.
 */
CAMPOTIPO_API char *_8btoa(const unsigned char *src, char *text, int digits) CAMPOTIPO_NOEXCEPT;

/*
 * BINN_compara: -1, 0 or 1 as a is less than, equal to or greater than b.
 *
 * a, b   N bytes each
 */
CAMPOTIPO_API int BIN1_compara(const unsigned char *a, const unsigned char *b) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int BIN2_compara(const unsigned char *a, const unsigned char *b) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int BIN3_compara(const unsigned char *a, const unsigned char *b) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int BIN4_compara(const unsigned char *a, const unsigned char *b) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int BIN5_compara(const unsigned char *a, const unsigned char *b) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int BIN6_compara(const unsigned char *a, const unsigned char *b) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int BIN7_compara(const unsigned char *a, const unsigned char *b) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int BIN8_compara(const unsigned char *a, const unsigned char *b) CAMPOTIPO_NOEXCEPT;

/*
 * Arithmetic on 8-byte numbers, modulo 2^64.
 *
 * _8soma            dest = a + b
 * _8byte_mul_byte   dest = src times factor
 * _8byte_div_byte   dest = src divided by divisor, the remainder dropped
 *
 * dest        8 bytes, all written; may be the same field as a source
 * src, a, b   8 bytes
 * factor      0 to 255; any int is taken modulo 2^64
 * divisor     1 to 255; 0 gives 0, and a negative one is taken modulo 2^64
 */
CAMPOTIPO_API void _8soma(unsigned char *dest, const unsigned char *a,
                          const unsigned char *b) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void _8byte_mul_byte(unsigned char *dest, const unsigned char *src,
                                   int factor) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void _8byte_div_byte(unsigned char *dest, const unsigned char *src,
                                   int divisor) CAMPOTIPO_NOEXCEPT;

/*
 * The three-byte number of the date fields, least significant byte first.
 *
 * _3ulong   its value, 0 to 16777215
 * _3to8     widens it
 *
 * dest   8 bytes, all written; may overlap src
 * src    3 bytes
 */
CAMPOTIPO_API uint32_t _3ulong(const unsigned char *src) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void _3to8(unsigned char *dest, const unsigned char *src) CAMPOTIPO_NOEXCEPT;

#ifdef __cplusplus
}
#endif

#endif
