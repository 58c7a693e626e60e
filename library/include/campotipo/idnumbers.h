#ifndef CAMPOTIPO_IDNUMBERS_H
#define CAMPOTIPO_IDNUMBERS_H

#include <campotipo/export.h>

/*
 * Identification numbers
 * ======================
 *
 *   kind                            what it is                                  section
 *   ZALGORITM_trata, _valida_CPF,   digits that check a number: one engine and  Check digits
 *   _valida_CNPJ, DIGVERIF          the numbers that stand on it
 *   ZALGORITM_..._unico             short numbers composed of given values      Unique numbers
 *   LETRABIN, LETR0BIN,             one letter or digit as a small number       Letter codes
 *   LETRNBIN, LETR0NBIN
 *
 * The numbers of other Brazilian documents, and their punctuation, are in <campotipo/documents.h>.
 *
 * Nothing here allocates, keeps state or depends on the locale. A text is a string of 8-bit
 * characters ended by a NUL. What lies behind the NUL may be read in whole words, inside the memory
 * page that holds a byte of the text, and is never looked at; valgrind reports such reads, unless
 * the library was built with -DCAMPOTIPO_PLAIN_READS=ON. Unless told so, pointers are never null and
 * what is written overlaps no other operand. Threads: operations on different data may run at the
 * same time.
 */

#ifdef __cplusplus
extern "C" {
#endif

/*
 * ------------------------------------------------------------------------------------------------
 * Check digits
 * ------------------------------------------------------------------------------------------------
 *
 * A check table tells where a check digit stands in a text of digits, what each other digit counts
 * and which digit belongs to each remainder of the total. One routine serves to check and to make:
 * with make 0 the text is only read, with any other make the digit is written into it.
 *
 * Example: a company's number, from its twelve digits and any two in the places of the check.
 *
 *     char cnpj[] = "11222333000100";
 *     ZALGORITM_valida_CNPJ(cnpj, 1);       1, and cnpj is "11222333000181"
 *     ZALGORITM_valida_CNPJ(cnpj, 0);       1
 *
 * Example: a table of one's own. The weights 3, 1, 3, 1... and modulo 10 of the article numbers.
 *
 *     ZALGORITM_TABELA ean = {0, 10, 0, {0}, {0, 9, 8, 7, 6, 5, 4, 3, 2, 1}};
 *     char article[] = "7891000315507";
 *     int i;
 *     for (i = 1; i < ZALGORITM_TABELA_PESOS; i++) ean.weights[i] = i % 2 ? 3 : 1;
 *     ZALGORITM_trata(article, &ean, 0);    1
 */

/* Bytes, weights and results of a table. */
#define ZALGORITM_TABELA_BYTES 69
#define ZALGORITM_TABELA_PESOS 50
#define ZALGORITM_TABELA_RESULTADOS 16

/* The table of a check digit, 69 bytes. */
typedef struct ZALGORITM_TABELA {
  /* Place of the check digit, counted from the right end of the text: 0 is the last character. */
  unsigned char position;
  /* Divisor of the total, 1 to 16. Any other refuses every text. */
  unsigned char modulus;
  /* The ZALGORITM flags below, added up. Other bits have no effect. */
  unsigned char flags;
  /* The first belongs to the last character of the text, the next to the one before it, and so on.
   * Give the place of the digit itself, and of digits made after it, a weight of 0. */
  unsigned char weights[ZALGORITM_TABELA_PESOS];
  /* Value of the check digit for each remainder; "0" plus it is the character, as one byte. */
  unsigned char results[ZALGORITM_TABELA_RESULTADOS];
} ZALGORITM_TABELA;

/* What is counted of each product of a digit and its weight. */
#define ZALGORITM_SOMA_ALGARISMOS 1 /* the sum of its decimal digits: 1 and 4 for 14 */
#define ZALGORITM_ACEITA_ZERO 2     /* a total of 0 is taken like any other; without it, refused */
#define ZALGORITM_NOVES_FORA 4      /* nine less if above 9, before the sum of the digits */

/*
 * ZALGORITM_trata: check or make the digit that a table tells.
 *
 * text    2 to 50 digits and no punctuation; longer than the position of the check digit. In make
 *         mode that place holds a digit already, any one.
 * table   not null
 * make    0 to check, anything else to write the digit into the text
 *
 * Result: 1 if the digit stands in the text, as it always does when it was made; else 0. Also 0,
 * and the text unchanged in either mode, for a modulus not 1 to 16, another length or another
 * character, and for a total of 0 unless the table accepts it. The result does not say why.
 */
CAMPOTIPO_API int ZALGORITM_trata(char *text, const ZALGORITM_TABELA *table,
                                  int make) CAMPOTIPO_NOEXCEPT;

/*
 * valida_CPF, valida_CNPJ: check or make both digits of a taxpayer number.
 *
 *   number   digits   checks
 *   CPF      11       persons: weights 2 to 10, then 2 to 11, from the right
 *   CNPJ     14       companies: weights 2 to 9 over and over, from the right
 *
 * With r the remainder of the total by 11, the digit is 0 for r below 2 and 11 - r otherwise; the
 * second digit counts the first. Numbers with letters: DOCUMENTO_valida_CNPJ_alfa.
 *
 * text   2 to 50 digits, the last two the check digits, in make mode any two. A text shorter than
 *        the number counts as if zeros stood in front of it, and more zeros in front do no harm.
 * make   0 to check, anything else to write the digits into the text
 *
 * Result: 1 if both digits stand and no more than 11 or 14 digits are left without the zeros in
 * front, else 0. All zeros are refused; equal digits are not, where they fit. A text refused by
 * ZALGORITM_trata is unchanged; one that is only too long has its digits made first.
 */
CAMPOTIPO_API int ZALGORITM_valida_CPF(char *text, int make) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int ZALGORITM_valida_CNPJ(char *text, int make) CAMPOTIPO_NOEXCEPT;

/*
 * DIGVERIF_monta_dv_modulo11: like ZALGORITM_trata with a table for the last digit of the text:
 * weights 2 to 9 over and over from the right, modulo 11, remainder 0 gives 1, 1 gives 0, and any
 * other gives 11 less itself. A total of 0 is refused.
 */
CAMPOTIPO_API int DIGVERIF_monta_dv_modulo11(char *text, int make) CAMPOTIPO_NOEXCEPT;

/*
 * ------------------------------------------------------------------------------------------------
 * Unique numbers
 * ------------------------------------------------------------------------------------------------
 *
 * Six values, each given by a pointer, make a short number in one of two forms. A number is as
 * unique as its values; no counter is kept and no clock is read.
 *
 *   value    text form                                form B
 *   parte1   2 digits, modulo 100                     7 bits, modulo 128
 *   parte2   3 digits, modulo 1000                    10 bits, modulo 1024
 *   parte3   4 digits, modulo 10000, and their check  11 bits, modulo 2048
 *   parte4   check of 6 digits, modulo 1000000        not read
 *   parte5   check of 3 digits, modulo 1000           8 bits, modulo 256
 *   parte6   check of 4 digits, modulo 10000          not read
 *
 * Text form: parte3, parte1, parte2, then the checks of parte3, parte4, parte5 and parte6. A check
 * is the digit of DIGVERIF_monta_dv_modulo11 behind the value, "0" for a value of zero. It cannot
 * be taken apart again.
 *
 * Form B: 11 digits of a number of 36 bits, with leading zeros: from the top bit parte3, parte1,
 * parte5 and parte2. It gives back what its bit widths keep.
 *
 * parte1, parte2, parte3, parte4, parte5, parte6
 *          the values, not negative; a negative one counts as 2^32 more. All but parte2 may be
 *          null, which leaves that value out.
 *
 * Example: form B and back.
 *
 *     int agency = 12, clerk = 345, serial = 2024, kind = 200, agency2, clerk2, serial2, kind2;
 *     char text[ZALGORITM_NUMEROB_UNICO_TEXT_SIZE];
 *     ZALGORITM_gera_numeroB_unico(text, sizeof text, &agency, &clerk, &serial, 0, &kind, 0);
 *                                           0, and text is "67917521241"
 *     ZALGORITM_extrai_numeroB_unico(text, &agency2, &clerk2, &serial2, 0, &kind2, 0);
 *                                           0, and all four are back
 */

#define ZALGORITM_NUMERO_UNICO_TEXT_SIZE 14
#define ZALGORITM_NUMEROB_UNICO_TEXT_SIZE 12

/*
 * gera_numero_unico: text form, 3 to 13 digits.
 * gera_numeroB_unico: form B, 11 digits.
 *
 * out    size bytes, of which the text and its NUL are written
 * size   bytes of out; the macros above are always enough
 *
 * Result: 0 on success. 1 if out or parte2 is null or size is below 1, and out is not touched; 1
 * if the text and its NUL need more than size, and out is the empty text.
 */
CAMPOTIPO_API int ZALGORITM_gera_numero_unico(char *out, int size, const int *parte1,
                                              const int *parte2, const int *parte3,
                                              const int *parte4, const int *parte5,
                                              const int *parte6) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int ZALGORITM_gera_numeroB_unico(char *out, int size, const int *parte1,
                                               const int *parte2, const int *parte3,
                                               const int *parte4, const int *parte5,
                                               const int *parte6) CAMPOTIPO_NOEXCEPT;

/*
 * extrai_numeroB_unico: the values of a number in form B.
 *
 * The text is read as _ato8 reads it, and nothing about it is checked: a number above the form's 36
 * bits shows in parte3, which takes all that stands above its lowest bit, modulo 2^32.
 *
 * text     ended by a NUL
 * parte1, parte2, parte3, parte4, parte5, parte6
 *          each receives its value where it is not null; parte4 and parte6 receive 0
 *
 * Result: 0, or 1 if text is null, and nothing is written.
 */
CAMPOTIPO_API int ZALGORITM_extrai_numeroB_unico(const char *text, int *parte1, int *parte2,
                                                 int *parte3, int *parte4, int *parte5,
                                                 int *parte6) CAMPOTIPO_NOEXCEPT;

/*
 * numeroB_unico_bem_formado: whether a text is a number in form B, 11 digits of up to 36 bits:
 * "00000000000" to "68719476735". Such a text is what gera_numeroB_unico makes of the values that
 * extrai_numeroB_unico gives.
 *
 * text   ended by a NUL
 *
 * Result: 1 or 0.
 */
CAMPOTIPO_API int ZALGORITM_numeroB_unico_bem_formado(const char *text) CAMPOTIPO_NOEXCEPT;

/*
 * ------------------------------------------------------------------------------------------------
 * Letter codes
 * ------------------------------------------------------------------------------------------------
 *
 *   set         blank   A to Z    0 to 9     other numbers   other characters
 *   LETRABIN    none    0 to 25   none       "A"             0
 *   LETR0BIN    0       1 to 26   none       blank           0
 *   LETRNBIN    none    0 to 25   26 to 35   "A"             0
 *   LETR0NBIN   0       1 to 26   27 to 36   blank           0
 *
 * In a set without a blank, a character outside it cannot be told from "A".
 *
 * Example: one character in five bits.
 *
 *     LETR0BIN_para_binario('c');     3
 *     LETR0BIN_para_letra(3);         'C'
 */

/*
 * para_binario: number of a character; lower case counts as upper case.
 *
 * character   any int; 0 to 255 is a character, and any other is outside every set
 */
CAMPOTIPO_API int LETRABIN_para_binario(int character) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int LETR0BIN_para_binario(int character) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int LETRNBIN_para_binario(int character) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int LETR0NBIN_para_binario(int character) CAMPOTIPO_NOEXCEPT;

/*
 * para_letra: character of a number, always an upper case letter, a digit or the blank (0x20).
 *
 * number   any int; what the table above has no character for gives its "other numbers"
 */
CAMPOTIPO_API int LETRABIN_para_letra(int number) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int LETR0BIN_para_letra(int number) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int LETRNBIN_para_letra(int number) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int LETR0NBIN_para_letra(int number) CAMPOTIPO_NOEXCEPT;

/*
 * bem_formado: whether a number has a character in the set.
 *
 * number   any int
 *
 * Result: 1 if the table above has it, else 0.
 */
CAMPOTIPO_API int LETRABIN_bem_formado(int number) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int LETR0BIN_bem_formado(int number) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int LETRNBIN_bem_formado(int number) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int LETR0NBIN_bem_formado(int number) CAMPOTIPO_NOEXCEPT;

#ifdef __cplusplus
}
#endif

#endif
