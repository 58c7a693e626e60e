#ifndef CAMPOTIPO_SUPPORT_MONEY_H
#define CAMPOTIPO_SUPPORT_MONEY_H

#include <campotipo-support/export.h>

/*
 * Money values
 * ============
 *
 *   kind      bytes  holds                          decimals      range
 *   QUANTIA   8      signed 64-bit count of units   2             -2^63 to 2^63 - 1 units
 *   PARCELA   8      signed 64-bit count of units   PARCELA_fixo  -2^63 to 2^63 - 1 units
 *
 * A unit is the smallest step: one hundredth for a QUANTIA, 10^-PARCELA_fixo for a PARCELA. Both
 * are opaque: values are made and read with the operations below, never through their bytes.
 *
 * A result outside the range becomes the nearest end of it. Products are worked out in 128 bits.
 * Division goes toward zero, and a remainder has the sign of the value.
 *
 * Text: blanks in front (0x20, 0x09 to 0x0D), an optional "+" or "-", digits, an optional "." and
 * decimals. More decimals than the kind has are cut, not rounded. The first other byte ends the
 * text. A text without digits is 0.
 *
 * No operation allocates or reports a failure, and pointers are never null. Operations on different
 * values may run at the same time.
 *
 * A site may put its own services in the place of these (docs/own-services.md tells how). Of them
 * libcampotipo asks this, and nothing else:
 *
 *   all                range, units and results as told here, wherever the result is in the range. What
 *                      the operations of percent.h give for a result outside it is then the service's.
 *   atov               the texts "100" and "10000"
 *   comp, se_zero      the sign of their results; se_zero of values of zero or more
 *   div_byte           by 10 and 100, also in place
 *   mul_byte           by 10 and 100, also in place
 *   som_long           one unit, up or down, in place
 *   porc_mul           factors from 0 to 429496729500
 *   porc_div           ratios that a long holds
 *   copia, trunca      as told
 *
 * dest    the value that is made; it may be a source
 * src     the value that it is made from
 * value   the value that is looked at
 * a, b    the two values that are compared
 *
 * Example: a price and its text.
 *
 *     QUANTIA price;
 *     char text[QUANTIA_TEXT_SIZE];
 *     _QUANTIA_atov(&price, "1234.5");
 *     _QUANTIA_vtoa(text, &price);      "1234.50"
 */

#ifdef __cplusplus
extern "C" {
#endif

/* A money value with two decimals. */
typedef struct QUANTIA {
  unsigned char opaque[8]; /* for the operations alone */
} QUANTIA;

/* A money value with PARCELA_fixo decimals. */
typedef struct PARCELA {
  unsigned char opaque[8]; /* for the operations alone */
} PARCELA;

/* Sign, 17 digits, point, 2 decimals and the NUL. */
#define QUANTIA_TEXT_SIZE 22

/* Room for the text of any PARCELA with up to `decimals` decimals. */
#define PARCELA_TEXT_SIZE(decimals) ((decimals) > 18 ? (decimals) + 4 : 22)

/*
 * Number of decimals of every PARCELA, 4 at load. The application may set it, to 0 or more, before
 * it works with values of that kind; it is read afresh at each use.
 */
CAMPOTIPO_API extern int PARCELA_fixo;

/*
 * _QUANTIA_atov, PARCELA_atov: *dest becomes the value of the text.
 *
 * text   ended by a NUL
 */
CAMPOTIPO_API void _QUANTIA_atov(QUANTIA *dest, const char *text) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void PARCELA_atov(PARCELA *dest, const char *text) CAMPOTIPO_NOEXCEPT;

/*
 * _QUANTIA_vtoa, PARCELA_vtoa: text of the value with all decimals of its kind, at least one digit
 * before the point, "-" in front of a value below zero: "-1234.56". Without decimals no point.
 *
 * text   at least QUANTIA_TEXT_SIZE bytes, or PARCELA_TEXT_SIZE(PARCELA_fixo)
 *
 * Result: text.
 */
CAMPOTIPO_API char *_QUANTIA_vtoa(char *text, const QUANTIA *value) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *PARCELA_vtoa(char *text, const PARCELA *value) CAMPOTIPO_NOEXCEPT;

/* _QUANTIA_comp, PARCELA_comp: -1, 0 or 1 as a is less than, equal to or greater than b. */
CAMPOTIPO_API int _QUANTIA_comp(const QUANTIA *a, const QUANTIA *b) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int PARCELA_comp(const PARCELA *a, const PARCELA *b) CAMPOTIPO_NOEXCEPT;

/* _QUANTIA_copia, PARCELA_copia: *dest becomes *src. */
CAMPOTIPO_API void _QUANTIA_copia(QUANTIA *dest, const QUANTIA *src) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void PARCELA_copia(PARCELA *dest, const PARCELA *src) CAMPOTIPO_NOEXCEPT;

/*
 * _QUANTIA_se_zero, PARCELA_se_zero: sign of the value. 1 above zero, 0 for zero, -1 below: a
 * result above 0 is leave to divide by the value.
 */
CAMPOTIPO_API int _QUANTIA_se_zero(const QUANTIA *value) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int PARCELA_se_zero(const PARCELA *value) CAMPOTIPO_NOEXCEPT;

/*
 * _QUANTIA_div_byte, PARCELA_div_byte: *dest = *src divided by divisor, toward zero.
 *
 * divisor   1 to 255; 0 gives *dest 0 and remainder 0
 *
 * Result: the remainder, with the sign of *src.
 */
CAMPOTIPO_API int _QUANTIA_div_byte(QUANTIA *dest, const QUANTIA *src,
                                    int divisor) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int PARCELA_div_byte(PARCELA *dest, const PARCELA *src,
                                   int divisor) CAMPOTIPO_NOEXCEPT;

/*
 * _QUANTIA_mul_byte, PARCELA_mul_byte: *dest = *src times factor.
 *
 * factor   0 to 255
 */
CAMPOTIPO_API void _QUANTIA_mul_byte(QUANTIA *dest, const QUANTIA *src,
                                     int factor) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void PARCELA_mul_byte(PARCELA *dest, const PARCELA *src,
                                    int factor) CAMPOTIPO_NOEXCEPT;

/*
 * _QUANTIA_som_long, PARCELA_som_long: *dest = *src plus that many units.
 *
 * units   of either sign
 */
CAMPOTIPO_API void _QUANTIA_som_long(QUANTIA *dest, const QUANTIA *src,
                                     long units) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void PARCELA_som_long(PARCELA *dest, const PARCELA *src,
                                    long units) CAMPOTIPO_NOEXCEPT;

/*
 * _QUANTIA_porc_mul, PARCELA_porc_mul: *dest = *src times factor divided by 10000, toward zero.
 *
 * factor   in hundredths of a percent: 10000 is 100%. A factor ten or a hundred times as large
 *          yields the same product with one or two decimals more.
 */
CAMPOTIPO_API void _QUANTIA_porc_mul(QUANTIA *dest, const QUANTIA *src,
                                     long factor) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void PARCELA_porc_mul(PARCELA *dest, const PARCELA *src,
                                    long factor) CAMPOTIPO_NOEXCEPT;

/*
 * _QUANTIA_porc_div, PARCELA_porc_div: *ratio = numerator divided by denominator in hundredths of a
 * percent, toward zero. Equal operands give 10000.
 *
 * ratio         one long, written
 * numerator     read
 * denominator   read; zero gives the ratio 0
 */
CAMPOTIPO_API void _QUANTIA_porc_div(long *ratio, const QUANTIA *numerator,
                                     const QUANTIA *denominator) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void PARCELA_porc_div(long *ratio, const PARCELA *numerator,
                                    const PARCELA *denominator) CAMPOTIPO_NOEXCEPT;

/*
 * _QUANTIA_trunca: brings *value to the scale of its kind. A QUANTIA holds nothing below its unit,
 * so the value stays as it is.
 *
 * value   changed in place
 */
CAMPOTIPO_API void _QUANTIA_trunca(QUANTIA *value) CAMPOTIPO_NOEXCEPT;

#ifdef __cplusplus
}
#endif

#endif
