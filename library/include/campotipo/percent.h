#ifndef CAMPOTIPO_PERCENT_H
#define CAMPOTIPO_PERCENT_H

#include <campotipo-support/money.h>
#include <campotipo/export.h>

/*
 * Percents of a record, and the rounding of money
 * ===============================================
 *
 *   kind                          what it is                                        section
 *   PORC0, PORC1, PORC2, PORC4    a percent with 0, 1, 2 or 4 decimals in a field   Percents
 *   QUANTIA, PARCELA              money values (<campotipo-support/money.h>)        Rounding
 *
 * Three rules bring a number with too many decimals back to fewer. Dropping k digits splits it into
 * the kept part and the k dropped digits. One half is a first dropped digit 5 with nothing but
 * zeros behind it.
 *
 *   rule           in names      the kept part goes up by 1 when
 *   truncation     trunc         never
 *   five goes up   5sobe, arred  the first dropped digit is 5 or more
 *   NBR            nbr           the dropped digits are above one half, or are one half and the
 *                                kept part is odd
 *
 * The NBR rule is that of the Brazilian standard ABNT NBR 5891.
 *
 * Money is worked on through the operations of money.h alone. A value below zero is cut toward zero
 * under every rule, and a result outside the range of its kind is the nearest end of the range.
 *
 * No operation allocates or reports a failure, and pointers are never null. Operations on different
 * values may run at the same time. The one thing they share is the cached answer of the marker
 * file (below), which is filled once per process, by whoever needs it first.
 *
 * Example: 12.50 percent of an amount, and back.
 *
 *     unsigned char rate[PORC2_BYTES] = {0xE2, 0x04};       the number 1250
 *     QUANTIA amount, tax, base;
 *     char text[PORC2_TEXT_SIZE];
 *     _QUANTIA_atov(&amount, "1234.60");
 *     PORC2_multiplica(&tax, &amount, rate);                154.325 is cut to 154.32
 *     PORC2_multipl_arred(&tax, &amount, rate);             154.33
 *     PORC2_multipl_arr_nbr(&tax, &amount, rate);           154.32
 *     PORC2_inv_multipl_arr_nbr(&base, &tax, rate);         1234.52, the least that gives 154.32
 *     PORC2_edita(text, rate);                              "12.50%"
 *     PORC2_edita_exato(text, rate);                        "12.5%"
 */

#ifdef __cplusplus
extern "C" {
#endif

/*
 * ------------------------------------------------------------------------------------------------
 * Rounding
 * ------------------------------------------------------------------------------------------------
 *
 * Each operation changes the value in place. Numbers below are in units, the smallest step of the
 * value's kind.
 *
 * The marker file: when a file named "NBR_COM_ERRO.TXT" exists in the working directory, the three
 * long forms (ARRED_div1000_nbr, ARRED_div10000_nbr, ARRED_div100000_nbr) and ARRED_v4_nbr repeat
 * an error of old, for data that was made with it:
 *
 *   dropped digits                          long forms         ARRED_v4_nbr
 *                                           without / with     without / with marker
 *   first two at 51 or more                 up                 up
 *   first two at 49 or less                 stays              stays
 *   first two at 50, others not all zero    up / even rule     up / up
 *   first two at 50, others all zero        even / even rule   even rule / up
 *
 * The even rule lifts an odd kept part and leaves an even one. Only the file's existence counts; if
 * it cannot be looked for, there is none. The first call of a long form, or the first 50 met by
 * ARRED_v4_nbr, looks for the file, and the answer holds until the process ends.
 */

/*
 * ARRED_divX_5sobe, ARRED_divX_nbr: *value divided by X under the rule of the name. X is 10 to the
 * number of digits dropped.
 *
 *   operation            1245 / X...                 marker
 *   ARRED_div10_5sobe    1245 gives 125              no
 *   ARRED_div10_nbr      1245 gives 124              no
 *   ARRED_div100_nbr     12450 gives 124             no
 *   ARRED_div1000_nbr    124501 gives 125            with the marker 124
 *   ARRED_div10000_nbr   1245001 gives 125           with the marker 124
 *   ARRED_div100000_nbr  12450001 gives 125          with the marker 124
 *
 * value   changed in place
 */
CAMPOTIPO_API void ARRED_div10_5sobe(QUANTIA *value) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void ARRED_div10_nbr(QUANTIA *value) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void ARRED_div100_nbr(QUANTIA *value) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void ARRED_div1000_nbr(QUANTIA *value) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void ARRED_div10000_nbr(QUANTIA *value) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void ARRED_div100000_nbr(QUANTIA *value) CAMPOTIPO_NOEXCEPT;

/*
 * ARRED_v4_trunc, ARRED_v4_5sobe, ARRED_v4_nbr: leaves `casas` decimals under the rule of the name.
 *
 * value    on entry with PARCELA_fixo + extras decimals; on return with PARCELA_fixo decimals, the
 *          lowest PARCELA_fixo - casas of which are zero
 * casas    decimals that survive; above PARCELA_fixo it acts as PARCELA_fixo, and below zero digits
 *          left of the point go too
 * extras   decimals that the value carries beyond PARCELA_fixo
 *
 * With n = extras + PARCELA_fixo - casas, n digits are dropped and then n - extras zeros put back;
 * with n below 1 nothing changes. Any int may be given: dropping more digits than a value has
 * leaves 0, and putting back more zeros than fit leaves the nearest end of the range.
 *
 * With PARCELA_fixo 4: 12345000 with casas 2 and extras 2 gives 123400 under nbr and 123500 under
 * 5sobe.
 */
CAMPOTIPO_API void ARRED_v4_trunc(PARCELA *value, int casas, int extras) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void ARRED_v4_5sobe(PARCELA *value, int casas, int extras) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void ARRED_v4_nbr(PARCELA *value, int casas, int extras) CAMPOTIPO_NOEXCEPT;

/*
 * ------------------------------------------------------------------------------------------------
 * Percents
 * ------------------------------------------------------------------------------------------------
 *
 *   member   bytes   decimals   stored number of 100%   greatest        text size (with NUL)
 *   PORC0    1       0          100                     255%            5
 *   PORC1    2       1          1000                    6553.5%         8
 *   PORC2    2       2          10000                   655.35%         8
 *   PORC4    4       4          1000000                 429496.7295%    13
 *
 * Stored form: an unsigned binary integer, least significant byte first, at any address; the
 * percent without its point. Every bit pattern is a percent. A field is made from text and read as
 * a number with _atoNfixo and its kin (<campotipo-support/numbers.h>): _ato2fixo(field, "12.5", 2).
 *
 * What is written overlaps no other operand unless told so.
 */

#define PORC0_BYTES 1
#define PORC1_BYTES 2
#define PORC2_BYTES 2
#define PORC4_BYTES 4

/* Stored number of 100%. */
#define PORC0_CEM 100
#define PORC1_CEM 1000
#define PORC2_CEM 10000
#define PORC4_CEM 1000000

#define PORC0_TEXT_SIZE 5
#define PORC1_TEXT_SIZE 8
#define PORC2_TEXT_SIZE 8
#define PORC4_TEXT_SIZE 13

/*
 * multiplica, multipl_arred, multipl_arr_nbr: *result = percent of *base, in whole units; cut,
 * five goes up, NBR.
 *
 * result    may be the base
 * base      read
 * percent   field of the family, read
 *
 * The rounding forms decide on one decimal (arred) or two (arr_nbr) beyond the unit; what lies
 * below those is cut before. So 3 units at 16.67% are 0.5001, which arr_nbr sees as a tie: 0.
 * The marker file has no part in these.
 *
 * The product has to fit its kind with those decimals, in PORC4 with two more under every rule: one
 * that does not becomes the end of the range first and loses the decimals then. So arr_nbr gives
 * back 100% of no more than 2^63 / 100 units, and in PORC4 of 2^63 / 10000.
 */
CAMPOTIPO_API void PORC0_multiplica(QUANTIA *result, const QUANTIA *base,
                                    const unsigned char *percent) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void PORC1_multiplica(QUANTIA *result, const QUANTIA *base,
                                    const unsigned char *percent) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void PORC2_multiplica(QUANTIA *result, const QUANTIA *base,
                                    const unsigned char *percent) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void PORC4_multiplica(QUANTIA *result, const QUANTIA *base,
                                    const unsigned char *percent) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void PORC0_multipl_arred(QUANTIA *result, const QUANTIA *base,
                                       const unsigned char *percent) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void PORC1_multipl_arred(QUANTIA *result, const QUANTIA *base,
                                       const unsigned char *percent) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void PORC2_multipl_arred(QUANTIA *result, const QUANTIA *base,
                                       const unsigned char *percent) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void PORC4_multipl_arred(QUANTIA *result, const QUANTIA *base,
                                       const unsigned char *percent) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void PORC0_multipl_arr_nbr(QUANTIA *result, const QUANTIA *base,
                                         const unsigned char *percent) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void PORC1_multipl_arr_nbr(QUANTIA *result, const QUANTIA *base,
                                         const unsigned char *percent) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void PORC2_multipl_arr_nbr(QUANTIA *result, const QUANTIA *base,
                                         const unsigned char *percent) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void PORC4_multipl_arr_nbr(QUANTIA *result, const QUANTIA *base,
                                         const unsigned char *percent) CAMPOTIPO_NOEXCEPT;

/*
 * v4_multiplica, v4_multipl_arred, v4_multipl_arr_nbr: like multiplica, multipl_arred and
 * multipl_arr_nbr, but of a PARCELA, and only `casas` decimals survive.
 *
 * casas   as in ARRED_v4_trunc; 0 to PARCELA_fixo in common use
 *
 * The rounding is that of ARRED_v4_trunc, ARRED_v4_5sobe and ARRED_v4_nbr. In PORC4 it sees two
 * decimals more than the plain forms do, and v4_multipl_arr_nbr depends on the marker file.
 */
CAMPOTIPO_API void PORC0_v4_multiplica(PARCELA *result, const PARCELA *base,
                                       const unsigned char *percent, int casas) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void PORC1_v4_multiplica(PARCELA *result, const PARCELA *base,
                                       const unsigned char *percent, int casas) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void PORC2_v4_multiplica(PARCELA *result, const PARCELA *base,
                                       const unsigned char *percent, int casas) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void PORC4_v4_multiplica(PARCELA *result, const PARCELA *base,
                                       const unsigned char *percent, int casas) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void PORC0_v4_multipl_arred(PARCELA *result, const PARCELA *base,
                                          const unsigned char *percent,
                                          int casas) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void PORC1_v4_multipl_arred(PARCELA *result, const PARCELA *base,
                                          const unsigned char *percent,
                                          int casas) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void PORC2_v4_multipl_arred(PARCELA *result, const PARCELA *base,
                                          const unsigned char *percent,
                                          int casas) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void PORC4_v4_multipl_arred(PARCELA *result, const PARCELA *base,
                                          const unsigned char *percent,
                                          int casas) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void PORC0_v4_multipl_arr_nbr(PARCELA *result, const PARCELA *base,
                                            const unsigned char *percent,
                                            int casas) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void PORC1_v4_multipl_arr_nbr(PARCELA *result, const PARCELA *base,
                                            const unsigned char *percent,
                                            int casas) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void PORC2_v4_multipl_arr_nbr(PARCELA *result, const PARCELA *base,
                                            const unsigned char *percent,
                                            int casas) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void PORC4_v4_multipl_arr_nbr(PARCELA *result, const PARCELA *base,
                                            const unsigned char *percent,
                                            int casas) CAMPOTIPO_NOEXCEPT;

/*
 * divide, v4_divide: what percent the numerator is of the denominator, cut to the decimals of the
 * family. Equal values give 100%.
 *
 * result                   field of the family, all bytes written
 * numerator, denominator   read; a denominator of zero gives 0
 *
 * A ratio outside the family's numbers is stored cut to the low bits, without notice. PORC4 takes
 * 100 times the numerator first, which must fit its kind.
 */
CAMPOTIPO_API void PORC0_divide(unsigned char *result, const QUANTIA *numerator,
                                const QUANTIA *denominator) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void PORC1_divide(unsigned char *result, const QUANTIA *numerator,
                                const QUANTIA *denominator) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void PORC2_divide(unsigned char *result, const QUANTIA *numerator,
                                const QUANTIA *denominator) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void PORC4_divide(unsigned char *result, const QUANTIA *numerator,
                                const QUANTIA *denominator) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void PORC0_v4_divide(unsigned char *result, const PARCELA *numerator,
                                   const PARCELA *denominator) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void PORC1_v4_divide(unsigned char *result, const PARCELA *numerator,
                                   const PARCELA *denominator) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void PORC2_v4_divide(unsigned char *result, const PARCELA *numerator,
                                   const PARCELA *denominator) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void PORC4_v4_divide(unsigned char *result, const PARCELA *numerator,
                                   const PARCELA *denominator) CAMPOTIPO_NOEXCEPT;

/*
 * inverte: the percent that undoes another, so that both together come to 100%, cut to the decimals
 * of the family. 50% gives 200%; 0% gives 100%.
 *
 * result   field of the family, all bytes written; may be the source
 * source   field of the family, read
 *
 * An inverse above the family's greatest percent is stored cut to the low bits, without notice.
 * That begins below these stored numbers: PORC0 40, PORC1 16, PORC2 1526, PORC4 233.
 */
CAMPOTIPO_API void PORC0_inverte(unsigned char *result,
                                 const unsigned char *source) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void PORC1_inverte(unsigned char *result,
                                 const unsigned char *source) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void PORC2_inverte(unsigned char *result,
                                 const unsigned char *source) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void PORC4_inverte(unsigned char *result,
                                 const unsigned char *source) CAMPOTIPO_NOEXCEPT;

/*
 * inv_multiplica, inv_multipl_arred, inv_multipl_arr_nbr: a base whose percent, under the
 * multiplication of the name, reaches the target.
 *
 * result    must not be the target; changes while the operation runs
 * target    read
 * percent   field of the family, read
 *
 * A percent of 0% or 100% gives the target. Else an estimate is made first: the multiplication of
 * the name, of the target by the percent that inverte gives. The result is the estimate or, where
 * that does not reach the target, the smallest value above it that does. If not even the top of the
 * range of QUANTIA does, the result is that top.
 *
 * For a target of zero or more inv_multiplica gives target * 100% / percent rounded up, wherever that
 * is in the range of QUANTIA. In the rounding forms an estimate that reaches the target is taken even
 * where a lower value does too. They are bound to the multiplication of their name, which reaches no
 * amount above these, in units: a target above them gives the top of the range.
 *
 *                        PORC0, PORC1, PORC2    PORC4
 *   inv_multipl_arred    922337203685477581     9223372036854776
 *   inv_multipl_arr_nbr  92233720368547758      922337203685478
 *
 * A target below zero is always reached by its estimate. An estimate that leaves the range on the way
 * ends where the multiplication ends.
 *
 * The base is worked out, not searched for: at most 80 multiplications of the money service are made,
 * whatever the target and the percent, and none leaves the range.
 */
CAMPOTIPO_API void PORC0_inv_multiplica(QUANTIA *result, const QUANTIA *target,
                                        const unsigned char *percent) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void PORC1_inv_multiplica(QUANTIA *result, const QUANTIA *target,
                                        const unsigned char *percent) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void PORC2_inv_multiplica(QUANTIA *result, const QUANTIA *target,
                                        const unsigned char *percent) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void PORC4_inv_multiplica(QUANTIA *result, const QUANTIA *target,
                                        const unsigned char *percent) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void PORC0_inv_multipl_arred(QUANTIA *result, const QUANTIA *target,
                                           const unsigned char *percent) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void PORC1_inv_multipl_arred(QUANTIA *result, const QUANTIA *target,
                                           const unsigned char *percent) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void PORC2_inv_multipl_arred(QUANTIA *result, const QUANTIA *target,
                                           const unsigned char *percent) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void PORC4_inv_multipl_arred(QUANTIA *result, const QUANTIA *target,
                                           const unsigned char *percent) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void PORC0_inv_multipl_arr_nbr(QUANTIA *result, const QUANTIA *target,
                                             const unsigned char *percent) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void PORC1_inv_multipl_arr_nbr(QUANTIA *result, const QUANTIA *target,
                                             const unsigned char *percent) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void PORC2_inv_multipl_arr_nbr(QUANTIA *result, const QUANTIA *target,
                                             const unsigned char *percent) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void PORC4_inv_multipl_arr_nbr(QUANTIA *result, const QUANTIA *target,
                                             const unsigned char *percent) CAMPOTIPO_NOEXCEPT;

/*
 * edita: text with all decimals of the family: "0.05%", "100.00%".
 * edita_exato: without the zeros that end the decimals, nor the point if none are left: "0.5%",
 * "100%". PORC0 has no decimals to shed.
 *
 * dest      the family's TEXT_SIZE bytes; only the text and its NUL are written
 * percent   field of the family, read
 *
 * The point is always ".", whatever the locale; no sign, no blanks, no leading zeros. Result: dest.
 */
CAMPOTIPO_API char *PORC0_edita(char *dest, const unsigned char *percent) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *PORC1_edita(char *dest, const unsigned char *percent) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *PORC2_edita(char *dest, const unsigned char *percent) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *PORC4_edita(char *dest, const unsigned char *percent) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *PORC1_edita_exato(char *dest, const unsigned char *percent) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *PORC2_edita_exato(char *dest, const unsigned char *percent) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *PORC4_edita_exato(char *dest, const unsigned char *percent) CAMPOTIPO_NOEXCEPT;

#ifdef __cplusplus
}
#endif

#endif
