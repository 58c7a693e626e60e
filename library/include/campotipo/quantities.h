#ifndef CAMPOTIPO_QUANTITIES_H
#define CAMPOTIPO_QUANTITIES_H

#include <campotipo/export.h>

/*
 * Wide decimal quantities
 * =======================
 *
 * A BINQn, n from 9 to 21, is an unsigned decimal number of 21 to 50 digits in a record field of n
 * bytes. It is kept in limbs of 19 decimal digits, low limb first, each an unsigned binary integer
 * with its least significant byte first:
 *
 *   bytes               limb     digits                       greatest value
 *   0 to 7              low      the 19 rightmost             9999999999999999999
 *   8 to 15, n >= 17    middle   the next 19                  9999999999999999999
 *   the W last          high     the D leftmost               10^D - 1
 *
 * Limbs carry at 10^19 and not at 2^64, so the field is not one binary integer of n bytes, and a
 * comparison byte by byte does not give the order of the numbers. There is no sign, header, point
 * or alignment; a field may stand at any address. All bytes are zero exactly when the number is.
 *
 *   member   BINQn_BYTES   limbs   W   D    BINQn_DIGITS   BINQn_TEXT_SIZE   scan limit
 *   BINQ9    9             2       1   2    21             22                49
 *   BINQ10   10            2       2   4    23             24                49
 *   BINQ11   11            2       3   7    26             27                49
 *   BINQ12   12            2       4   9    28             29                49
 *   BINQ13   13            2       5   12   31             32                49
 *   BINQ14   14            2       6   14   33             34                49
 *   BINQ15   15            2       7   16   35             36                49
 *   BINQ16   16            2       8   19   38             39                49
 *   BINQ17   17            3       1   2    40             41                59
 *   BINQ18   18            3       2   4    42             43                61
 *   BINQ19   19            3       3   7    45             46                64
 *   BINQ20   20            3       4   9    47             48                66
 *   BINQ21   21            3       5   12   50             51                69
 *
 * BINQn_DIGITS is the capacity: every number of that many digits fits. BINQn_TEXT_SIZE has room for
 * its text and the NUL.
 *
 * Decimals are not stored: the field holds the digits without the point, and an operation that
 * needs the number of decimals is told it. The fixo forms do the work: 1234.50 kept with 2 decimals
 * is the field of 123450.
 *
 * Nothing reports a failure. Of a number that is too long the rightmost digits are kept, and nothing
 * tells. A field that this library did not write may hold a limb above its greatest value. It is
 * compared by its limbs and shown as they stand: the limb that the text begins in with all its
 * digits, each limb below with its rightmost 19. Such a text may be one digit longer than the
 * capacity, and its buffer one byte more. The powers of ten then work on the digits of that text.
 *
 * The limbs are converted and compared by the number services (campotipo-support/numbers.h), whose
 * answers for a text that is no number are theirs.
 *
 * Threads: no operation keeps state or depends on the locale; all may run at the same time on
 * different data. No operation allocates. Pointers are never null.
 *
 * Example: a quantity with 2 decimals, moved to a wider field and multiplied there.
 *
 *     unsigned char field[BINQ9_BYTES], wide[BINQ21_BYTES];
 *     char text[BINQ_FIXO_TEXT_SIZE(BINQ21_DIGITS, 2)];
 *     BINQ9_atob_fixo(field, "123456789012.5", 2);      the number 12345678901250
 *     ZBINARIO_move_para_de(wide, 21, field, 9);
 *     BINQ21_mul_por_10(wide, wide);
 *     BINQ21_btoafixo(text, wide, 2);                   "1234567890125.00"
 */

#ifdef __cplusplus
extern "C" {
#endif

#define BINQ9_BYTES 9
#define BINQ9_DIGITS 21
#define BINQ9_TEXT_SIZE 22
#define BINQ10_BYTES 10
#define BINQ10_DIGITS 23
#define BINQ10_TEXT_SIZE 24
#define BINQ11_BYTES 11
#define BINQ11_DIGITS 26
#define BINQ11_TEXT_SIZE 27
#define BINQ12_BYTES 12
#define BINQ12_DIGITS 28
#define BINQ12_TEXT_SIZE 29
#define BINQ13_BYTES 13
#define BINQ13_DIGITS 31
#define BINQ13_TEXT_SIZE 32
#define BINQ14_BYTES 14
#define BINQ14_DIGITS 33
#define BINQ14_TEXT_SIZE 34
#define BINQ15_BYTES 15
#define BINQ15_DIGITS 35
#define BINQ15_TEXT_SIZE 36
#define BINQ16_BYTES 16
#define BINQ16_DIGITS 38
#define BINQ16_TEXT_SIZE 39
#define BINQ17_BYTES 17
#define BINQ17_DIGITS 40
#define BINQ17_TEXT_SIZE 41
#define BINQ18_BYTES 18
#define BINQ18_DIGITS 42
#define BINQ18_TEXT_SIZE 43
#define BINQ19_BYTES 19
#define BINQ19_DIGITS 45
#define BINQ19_TEXT_SIZE 46
#define BINQ20_BYTES 20
#define BINQ20_DIGITS 47
#define BINQ20_TEXT_SIZE 48
#define BINQ21_BYTES 21
#define BINQ21_DIGITS 50
#define BINQ21_TEXT_SIZE 51

/* Bytes of a text with decimals, the point and the NUL counted, of a member of so many digits. */
#define BINQ_FIXO_TEXT_SIZE(digits, decimals) \
  ((decimals) < (digits) ? (digits) + 2 : (decimals) + 3)

/*
 * ------------------------------------------------------------------------------------------------
 * Text
 * ------------------------------------------------------------------------------------------------
 *
 * BINQn_atob: text to number.
 *
 * The text is cut by position, from the right, into limbs of 19 characters; what is left of the
 * capacity is not looked at. It is taken for digits and not checked: a character that is none goes
 * to the limb where it stands, which then ends (or, if it is a blank in front of a limb's digits,
 * begins) there. BINQn_atob_fixo cleans a text.
 *
 * dest   n bytes, all written
 * text   ended by a NUL, of any length; the empty text is 0; it does not overlap dest
 *
 * Result: 1 if the stored number is not zero, else 0. Up to 19 characters this is the result of
 * _ato8, which says the same.
 */
CAMPOTIPO_API int BINQ9_atob(unsigned char *dest, const char *text) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int BINQ10_atob(unsigned char *dest, const char *text) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int BINQ11_atob(unsigned char *dest, const char *text) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int BINQ12_atob(unsigned char *dest, const char *text) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int BINQ13_atob(unsigned char *dest, const char *text) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int BINQ14_atob(unsigned char *dest, const char *text) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int BINQ15_atob(unsigned char *dest, const char *text) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int BINQ16_atob(unsigned char *dest, const char *text) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int BINQ17_atob(unsigned char *dest, const char *text) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int BINQ18_atob(unsigned char *dest, const char *text) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int BINQ19_atob(unsigned char *dest, const char *text) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int BINQ20_atob(unsigned char *dest, const char *text) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int BINQ21_atob(unsigned char *dest, const char *text) CAMPOTIPO_NOEXCEPT;

/*
 * BINQn_atob_fixo: text with a decimal point to number times 10^decimals.
 *
 * Blanks in front (0x20, 0x09 to 0x0D) are skipped; then digits are read, and one "." among them.
 * Of the digits behind the point the first `decimals` count and the next one ends the text; missing
 * ones are zeros. Nothing is rounded. Any other byte ends the text, a sign and a second "." among
 * them, and what stands behind the end is not looked at. "12.345" with 2 decimals is 1234, "12"
 * with 3 is 12000, "-5" is 0.
 *
 * At most as many digits as the scan limit are read; one more behind the point still counts as
 * taken, and so saves a zero. All zeros are appended, and of digits and zeros together the
 * rightmost BINQn_DIGITS are stored.
 *
 * dest       n bytes, all written
 * text       ended by a NUL; it does not overlap dest
 * decimals   0 or more; a negative number acts like 0
 *
 * Result: 1 if the stored number is not zero, else 0.
 */
CAMPOTIPO_API int BINQ9_atob_fixo(unsigned char *dest, const char *text,
                                  int decimals) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int BINQ10_atob_fixo(unsigned char *dest, const char *text,
                                   int decimals) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int BINQ11_atob_fixo(unsigned char *dest, const char *text,
                                   int decimals) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int BINQ12_atob_fixo(unsigned char *dest, const char *text,
                                   int decimals) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int BINQ13_atob_fixo(unsigned char *dest, const char *text,
                                   int decimals) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int BINQ14_atob_fixo(unsigned char *dest, const char *text,
                                   int decimals) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int BINQ15_atob_fixo(unsigned char *dest, const char *text,
                                   int decimals) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int BINQ16_atob_fixo(unsigned char *dest, const char *text,
                                   int decimals) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int BINQ17_atob_fixo(unsigned char *dest, const char *text,
                                   int decimals) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int BINQ18_atob_fixo(unsigned char *dest, const char *text,
                                   int decimals) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int BINQ19_atob_fixo(unsigned char *dest, const char *text,
                                   int decimals) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int BINQ20_atob_fixo(unsigned char *dest, const char *text,
                                   int decimals) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int BINQ21_atob_fixo(unsigned char *dest, const char *text,
                                   int decimals) CAMPOTIPO_NOEXCEPT;

/*
 * BINQn_btoafixo: number to text with a "." before its last `decimals` digits.
 *
 * Zeros fill a number that has fewer digits, and there is always a digit before the point: 5 with 2
 * decimals is "0.05". With 0 decimals, or fewer, the text is that of BINQn_btoa.
 *
 * text       BINQ_FIXO_TEXT_SIZE(BINQn_DIGITS, decimals) bytes; the text and its NUL are written
 * src        n bytes, outside text
 * decimals   0 or more
 *
 * Result: text.
 */
CAMPOTIPO_API char *BINQ9_btoafixo(char *text, const unsigned char *src,
                                   int decimals) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *BINQ10_btoafixo(char *text, const unsigned char *src,
                                    int decimals) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *BINQ11_btoafixo(char *text, const unsigned char *src,
                                    int decimals) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *BINQ12_btoafixo(char *text, const unsigned char *src,
                                    int decimals) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *BINQ13_btoafixo(char *text, const unsigned char *src,
                                    int decimals) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *BINQ14_btoafixo(char *text, const unsigned char *src,
                                    int decimals) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *BINQ15_btoafixo(char *text, const unsigned char *src,
                                    int decimals) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *BINQ16_btoafixo(char *text, const unsigned char *src,
                                    int decimals) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *BINQ17_btoafixo(char *text, const unsigned char *src,
                                    int decimals) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *BINQ18_btoafixo(char *text, const unsigned char *src,
                                    int decimals) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *BINQ19_btoafixo(char *text, const unsigned char *src,
                                    int decimals) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *BINQ20_btoafixo(char *text, const unsigned char *src,
                                    int decimals) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *BINQ21_btoafixo(char *text, const unsigned char *src,
                                    int decimals) CAMPOTIPO_NOEXCEPT;

/*
 * BINQn_btoa: number to text, without leading zeros; zero is "0".
 *
 * text   BINQn_TEXT_SIZE bytes; the digits and the NUL are written
 * src    n bytes, outside text
 *
 * Result: text.
 */
CAMPOTIPO_API char *BINQ9_btoa(char *text, const unsigned char *src) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *BINQ10_btoa(char *text, const unsigned char *src) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *BINQ11_btoa(char *text, const unsigned char *src) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *BINQ12_btoa(char *text, const unsigned char *src) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *BINQ13_btoa(char *text, const unsigned char *src) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *BINQ14_btoa(char *text, const unsigned char *src) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *BINQ15_btoa(char *text, const unsigned char *src) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *BINQ16_btoa(char *text, const unsigned char *src) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *BINQ17_btoa(char *text, const unsigned char *src) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *BINQ18_btoa(char *text, const unsigned char *src) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *BINQ19_btoa(char *text, const unsigned char *src) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *BINQ20_btoa(char *text, const unsigned char *src) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *BINQ21_btoa(char *text, const unsigned char *src) CAMPOTIPO_NOEXCEPT;

/*
 * BINQn_bem_formado: 1 if every limb is within its greatest value, so that the field is one that
 * these operations write; else 0, for a field that is damaged or is none.
 *
 * src   n bytes
 */
CAMPOTIPO_API int BINQ9_bem_formado(const unsigned char *src) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int BINQ10_bem_formado(const unsigned char *src) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int BINQ11_bem_formado(const unsigned char *src) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int BINQ12_bem_formado(const unsigned char *src) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int BINQ13_bem_formado(const unsigned char *src) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int BINQ14_bem_formado(const unsigned char *src) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int BINQ15_bem_formado(const unsigned char *src) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int BINQ16_bem_formado(const unsigned char *src) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int BINQ17_bem_formado(const unsigned char *src) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int BINQ18_bem_formado(const unsigned char *src) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int BINQ19_bem_formado(const unsigned char *src) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int BINQ20_bem_formado(const unsigned char *src) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int BINQ21_bem_formado(const unsigned char *src) CAMPOTIPO_NOEXCEPT;

/*
 * BINQn_compara: -1, 0 or 1 as a is less than, equal to or greater than b. The limbs are held
 * against each other as binary numbers, high limb first; the result is that of the first
 * BINN_compara that finds a difference.
 *
 * a, b   n bytes each
 */
CAMPOTIPO_API int BINQ9_compara(const unsigned char *a, const unsigned char *b) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int BINQ10_compara(const unsigned char *a, const unsigned char *b) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int BINQ11_compara(const unsigned char *a, const unsigned char *b) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int BINQ12_compara(const unsigned char *a, const unsigned char *b) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int BINQ13_compara(const unsigned char *a, const unsigned char *b) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int BINQ14_compara(const unsigned char *a, const unsigned char *b) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int BINQ15_compara(const unsigned char *a, const unsigned char *b) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int BINQ16_compara(const unsigned char *a, const unsigned char *b) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int BINQ17_compara(const unsigned char *a, const unsigned char *b) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int BINQ18_compara(const unsigned char *a, const unsigned char *b) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int BINQ19_compara(const unsigned char *a, const unsigned char *b) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int BINQ20_compara(const unsigned char *a, const unsigned char *b) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int BINQ21_compara(const unsigned char *a, const unsigned char *b) CAMPOTIPO_NOEXCEPT;

/*
 * ------------------------------------------------------------------------------------------------
 * Powers of ten
 * ------------------------------------------------------------------------------------------------
 *
 * BINQ16 to BINQ21 only. Any power costs the same.
 *
 * BINQn_div_por_potencia_de_dez: dest = src / 10^power, the fraction dropped and not rounded.
 *
 * dest    n bytes, all written
 * src     n bytes; may be the same field as dest
 * power   any; from BINQn_DIGITS on the quotient is 0, if no limb is above its greatest value
 *
 * Result: the remainder, if it is at most 2147483647, which it always is up to power 9. Of a
 * greater one the low 32 bits, and -1 from 2^63 on, which no program should use.
 *
 * BINQn_div_por_10, BINQn_div_por_100: the same with power 1 and 2.
 */
CAMPOTIPO_API int BINQ16_div_por_potencia_de_dez(unsigned char *dest, const unsigned char *src,
                                                 unsigned int power) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int BINQ17_div_por_potencia_de_dez(unsigned char *dest, const unsigned char *src,
                                                 unsigned int power) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int BINQ18_div_por_potencia_de_dez(unsigned char *dest, const unsigned char *src,
                                                 unsigned int power) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int BINQ19_div_por_potencia_de_dez(unsigned char *dest, const unsigned char *src,
                                                 unsigned int power) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int BINQ20_div_por_potencia_de_dez(unsigned char *dest, const unsigned char *src,
                                                 unsigned int power) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int BINQ21_div_por_potencia_de_dez(unsigned char *dest, const unsigned char *src,
                                                 unsigned int power) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int BINQ16_div_por_10(unsigned char *dest,
                                    const unsigned char *src) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int BINQ17_div_por_10(unsigned char *dest,
                                    const unsigned char *src) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int BINQ18_div_por_10(unsigned char *dest,
                                    const unsigned char *src) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int BINQ19_div_por_10(unsigned char *dest,
                                    const unsigned char *src) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int BINQ20_div_por_10(unsigned char *dest,
                                    const unsigned char *src) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int BINQ21_div_por_10(unsigned char *dest,
                                    const unsigned char *src) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int BINQ16_div_por_100(unsigned char *dest,
                                     const unsigned char *src) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int BINQ17_div_por_100(unsigned char *dest,
                                     const unsigned char *src) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int BINQ18_div_por_100(unsigned char *dest,
                                     const unsigned char *src) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int BINQ19_div_por_100(unsigned char *dest,
                                     const unsigned char *src) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int BINQ20_div_por_100(unsigned char *dest,
                                     const unsigned char *src) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int BINQ21_div_por_100(unsigned char *dest,
                                     const unsigned char *src) CAMPOTIPO_NOEXCEPT;

/*
 * BINQn_mul_por_potencia_de_dez: dest = src times 10^power, modulo 10^BINQn_DIGITS: digits that
 * pass the capacity are lost on the left, and nothing tells.
 *
 * dest    n bytes, all written
 * src     n bytes; may be the same field as dest
 * power   any; 0 copies the bytes as they are, and from BINQn_DIGITS on the product is 0
 *
 * BINQn_mul_por_10, BINQn_mul_por_100: the same with power 1 and 2.
 */
CAMPOTIPO_API void BINQ16_mul_por_potencia_de_dez(unsigned char *dest, const unsigned char *src,
                                                  unsigned int power) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void BINQ17_mul_por_potencia_de_dez(unsigned char *dest, const unsigned char *src,
                                                  unsigned int power) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void BINQ18_mul_por_potencia_de_dez(unsigned char *dest, const unsigned char *src,
                                                  unsigned int power) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void BINQ19_mul_por_potencia_de_dez(unsigned char *dest, const unsigned char *src,
                                                  unsigned int power) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void BINQ20_mul_por_potencia_de_dez(unsigned char *dest, const unsigned char *src,
                                                  unsigned int power) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void BINQ21_mul_por_potencia_de_dez(unsigned char *dest, const unsigned char *src,
                                                  unsigned int power) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void BINQ16_mul_por_10(unsigned char *dest,
                                     const unsigned char *src) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void BINQ17_mul_por_10(unsigned char *dest,
                                     const unsigned char *src) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void BINQ18_mul_por_10(unsigned char *dest,
                                     const unsigned char *src) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void BINQ19_mul_por_10(unsigned char *dest,
                                     const unsigned char *src) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void BINQ20_mul_por_10(unsigned char *dest,
                                     const unsigned char *src) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void BINQ21_mul_por_10(unsigned char *dest,
                                     const unsigned char *src) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void BINQ16_mul_por_100(unsigned char *dest,
                                      const unsigned char *src) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void BINQ17_mul_por_100(unsigned char *dest,
                                      const unsigned char *src) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void BINQ18_mul_por_100(unsigned char *dest,
                                      const unsigned char *src) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void BINQ19_mul_por_100(unsigned char *dest,
                                      const unsigned char *src) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void BINQ20_mul_por_100(unsigned char *dest,
                                      const unsigned char *src) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void BINQ21_mul_por_100(unsigned char *dest,
                                      const unsigned char *src) CAMPOTIPO_NOEXCEPT;

/*
 * ------------------------------------------------------------------------------------------------
 * Fields of any width
 * ------------------------------------------------------------------------------------------------
 *
 * For a caller that knows a numeric field by its width in bytes: 1 to 8 is a binary number
 * (campotipo-support/numbers.h), 9 to 21 a BINQn. Each operation does what that of the width does.
 * Any other width, a negative one too, is out of range, and each operation says what it does then.
 * No other argument is tested.
 *
 * Note where the width stands among the arguments: it differs.
 *
 * width                   bytes of the field, 1 to 21
 * dest_width, src_width   bytes of the two fields, 1 to 21 each
 * a, b                    width bytes each
 */

/* The widest field. */
#define ZBINARIO_MAX_WIDTH 21

/* Room for the text of a field of any width and any content. */
#define ZBINARIO_TEXT_SIZE 52

/*
 * ZBINARIO_max_digitos_decimais: how many digits any number may have and still fit the width.
 *
 *   width     1   2   3   4   5   6   7   8   9  10  11  12  13  14  15  16  17  18  19  20  21
 *   digits    2   4   7   9  12  14  16  19  21  23  26  28  31  33  35  38  40  42  45  47  50
 *
 * A field of 1 to 8 bytes can hold some numbers with one digit more (255 in one byte), and its text
 * shows it. Out of range: 1.
 */
CAMPOTIPO_API int ZBINARIO_max_digitos_decimais(int width) CAMPOTIPO_NOEXCEPT;

/*
 * ZBINARIO_bem_formado: BINQn_bem_formado; 1 for a width of 1 to 8, where every field is a number.
 *
 * src   width bytes
 *
 * Result: 1 or 0. Out of range: 0, and src is not read.
 */
CAMPOTIPO_API int ZBINARIO_bem_formado(int width, const unsigned char *src) CAMPOTIPO_NOEXCEPT;

/*
 * ZBINARIO_compara: BINN_compara or BINQn_compara of two fields of the same width.
 *
 * Result: -1, 0 or 1. Out of range: -1, whatever the fields hold; they are not read.
 */
CAMPOTIPO_API int ZBINARIO_compara(int width, const unsigned char *a,
                                   const unsigned char *b) CAMPOTIPO_NOEXCEPT;

/*
 * ZBINARIO_converteu_para_binario: _atoN or BINQn_atob.
 *
 * dest   width bytes, all written
 * text   ended by a NUL; it does not overlap dest
 *
 * Result: 1, for every text. Out of range: 0, and dest is not touched.
 */
CAMPOTIPO_API int ZBINARIO_converteu_para_binario(unsigned char *dest, int width,
                                                  const char *text) CAMPOTIPO_NOEXCEPT;

/*
 * ZBINARIO_converteu_de_binario: _Ntoa or BINQn_btoa.
 *
 * text   BINN_TEXT_SIZE or BINQn_TEXT_SIZE bytes; ZBINARIO_TEXT_SIZE serves every width
 * src    width bytes, outside text
 *
 * Result: 1. Out of range: 0, and text is not touched, not even ended.
 */
CAMPOTIPO_API int ZBINARIO_converteu_de_binario(char *text, const unsigned char *src,
                                                int width) CAMPOTIPO_NOEXCEPT;

/*
 * ZBINARIO_converteu_n_de_binario: number to text of exactly n digits.
 *
 * A shorter number has zeros in front; of a longer one the rightmost n digits are shown.
 *
 * text   n + 1 bytes; the digits and the NUL are written; it may overlap src
 * src    width bytes
 * n      0 or more; 0 gives the empty text, and a negative number acts like 0
 *
 * Result: 1. Out of range: 0, and text is not touched.
 */
CAMPOTIPO_API int ZBINARIO_converteu_n_de_binario(char *text, const unsigned char *src, int width,
                                                  int n) CAMPOTIPO_NOEXCEPT;

/*
 * ZBINARIO_move_para_de: move a number to a field of another width, by way of its decimal text.
 *
 * A dest of 9 bytes or more keeps the rightmost digits that fit; one of 1 to 8 bytes receives what
 * _atoN makes of the whole text: the number modulo 2^(8N).
 *
 * dest   dest_width bytes, all written
 * src    src_width bytes; may be the same field as dest, or overlap it
 *
 * Result: 1. Out of range, either width: 0, and dest is not touched.
 */
CAMPOTIPO_API int ZBINARIO_move_para_de(unsigned char *dest, int dest_width,
                                        const unsigned char *src, int src_width) CAMPOTIPO_NOEXCEPT;

/*
 * ZBINARIO_atobfixo: _atoNfixo or BINQn_atob_fixo.
 *
 * dest       width bytes, all written
 * text       ended by a NUL; it does not overlap dest
 * decimals   0 or more; a negative number acts like 0
 *
 * Out of range: width bytes of dest are set to zero, 22 of them with width 22; with 0 or a negative
 * width nothing is written.
 */
CAMPOTIPO_API void ZBINARIO_atobfixo(int width, unsigned char *dest, const char *text,
                                     int decimals) CAMPOTIPO_NOEXCEPT;

/*
 * ZBINARIO_btoafixo: _Ntoafixo or BINQn_btoafixo.
 *
 * text       BINN_TEXT_SIZE + 1 or BINQn_TEXT_SIZE + 1 bytes, or decimals + 3 where that is more
 * src        width bytes, outside text
 * decimals   0 or more
 *
 * Result: text. Out of range: text, which is then empty.
 */
CAMPOTIPO_API char *ZBINARIO_btoafixo(int width, char *text, const unsigned char *src,
                                      int decimals) CAMPOTIPO_NOEXCEPT;

#ifdef __cplusplus
}
#endif

#endif
