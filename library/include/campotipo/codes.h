#ifndef CAMPOTIPO_CODES_H
#define CAMPOTIPO_CODES_H

#include <campotipo/export.h>
#include <stdint.h>

/*
 * Text fields of a record
 * =======================
 *
 *   kind                        stored form                                     section
 *   CODALFA, CODALF05 to 40     capitals, digits and marks at six bits each     Packed codes
 *   CODALFNN                    the same, its size chosen at run time           Packed code records
 *   CODSTR, CODSTR50, CODSTR52  plain bytes, a NUL behind a text that is short  Fixed strings
 *   BSTR21 to BSTR38            a count of digits and their number              Digit strings
 *
 * Fields are read and written in exactly their bytes and may stand at any address. Texts are 8-bit
 * characters ended by a NUL; a text buffer has the size that its operation states. A text and a
 * field may not overlap, except where a BSTR is converted. Pointers are never null, but for the text
 * of a BSTR. Nothing here fails: what a text cannot give a field is left out, and what a field
 * cannot mean ends its text.
 *
 * Threads: operations on different data may run at the same time. A CODALFNN belongs to one caller
 * at a time.
 */

#ifdef __cplusplus
extern "C" {
#endif

/*
 * ------------------------------------------------------------------------------------------------
 * Packed codes
 * ------------------------------------------------------------------------------------------------
 *
 *   member     positions n   bytes   spare bits   text size (with NUL)
 *   CODALF05   5             4       2            6
 *   CODALF12   12            9       0            13
 *   CODALF14   14            11      4            15
 *   CODALF17   17            13      2            18
 *   CODALF20   20            15      0            21
 *   CODALF32   32            24      0            33
 *   CODALF36   36            27      0            37
 *   CODALF40   40            30      0            41
 *   CODALFA    by argument   CODALFA_BYTES(n)     n + 1
 *
 * The alphabet has 50 characters: the blank, digits, capitals and -._/+,:#@*$%! in the order of
 * CODALFA_ALFABETO. The code of a character is its place there, counted from 1. Code 0 is an empty
 * position, and the codes 51 to 63 are read like it: the first of them ends the data of a field,
 * whatever stands behind.
 *
 * Stored form: one stream of bits, the most significant bit of each byte first. Position i, counted
 * from 0, has bits 6i to 6i + 5, the most significant bit of its code first. Positions behind the
 * last character hold code 0. Up to six spare bits fill the last byte: written as 0, never read.
 *
 * What a text keeps: small letters become capitals, by `toupper` under the process's locale. In
 * Turkish "i" has no capital in the alphabet, and a byte above 127 has one: the "i" without a dot,
 * 0xFD in ISO 8859-9, is stored as "I". Blanks in front and inside stay, those at the end
 * are dropped. A character outside the alphabet is passed over and the later ones move up. A text
 * too long is cut on the right.
 *
 * Example: "AB-1" in five positions.
 *
 *     unsigned char field[CODALF05_BYTES];
 *     char text[CODALF05_TEXT_SIZE];
 *     CODALF05_opc_atob(field, "ab-1  ", 0);             30 D9 83 00
 *     CODALF05_btoa(text, field);                        "AB-1"
 *     CODALF05_opc_atob(field, "7", CODALFA_OPC_ZEROS);  08 20 82 24, which is "00007"
 */

/* The alphabet in the order of the codes. */
#define CODALFA_ALFABETO " 0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ-._/+,:#@*$%!"

/*
 * Bytes of a field of n positions, n from 0 to the greatest int: six bits a position, so a byte less
 * for every four. The argument is evaluated twice.
 */
#define CODALFA_BYTES(n) ((n) - (n) / 4)

#define CODALF05_CHARACTERS 5
#define CODALF05_BYTES 4
#define CODALF05_TEXT_SIZE 6
#define CODALF12_CHARACTERS 12
#define CODALF12_BYTES 9
#define CODALF12_TEXT_SIZE 13
#define CODALF14_CHARACTERS 14
#define CODALF14_BYTES 11
#define CODALF14_TEXT_SIZE 15
#define CODALF17_CHARACTERS 17
#define CODALF17_BYTES 13
#define CODALF17_TEXT_SIZE 18
#define CODALF20_CHARACTERS 20
#define CODALF20_BYTES 15
#define CODALF20_TEXT_SIZE 21
#define CODALF32_CHARACTERS 32
#define CODALF32_BYTES 24
#define CODALF32_TEXT_SIZE 33
#define CODALF36_CHARACTERS 36
#define CODALF36_BYTES 27
#define CODALF36_TEXT_SIZE 37
#define CODALF40_CHARACTERS 40
#define CODALF40_BYTES 30
#define CODALF40_TEXT_SIZE 41

/*
 * Flags of opc. Other bits have no effect. "Length" is the number of characters that a text has in
 * the alphabet, less the blanks that end it, or that a field holds.
 *
 *   flag                        saving                          reading
 *   CODALFA_OPC_ZERO_VAZIO      none                            nao_zero: "0" is no content
 *   CODALFA_OPC_ZEROS           a length below n is filled on   the same up to width; with a width
 *                               the left with "0"               of 0 or less all leading "0" go
 *   CODALFA_OPC_CORTA_ESQUERDA  a length above n loses its      the same above a width that is
 *                               first characters, not its last  above 0
 *   CODALFA_OPC_SO_DIGITOS      CODALFA_OPC_ZEROS fills only    the same, and no leading "0" go
 *                               what has digits and nothing
 *                               else, and at least one
 */
#define CODALFA_OPC_ZERO_VAZIO 1
#define CODALFA_OPC_ZEROS 2
#define CODALFA_OPC_CORTA_ESQUERDA 4
#define CODALFA_OPC_SO_DIGITOS 8

/*
 * opc_salvou, opc_salva, opc_atob: store a text in a field.
 *
 * dest   CODALFA_BYTES(n) bytes, all written
 * text   any bytes
 * n      positions, 1 or more; 0 or less writes nothing
 * opc    flags
 *
 * Result of the opc_salvou forms: 1, or 0 if a character outside the alphabet was passed over. The
 * field is stored in full either way. The text is looked at until the field is full or only blanks
 * and strange characters are left, so one behind that point leaves the result 1.
 */
CAMPOTIPO_API int CODALFA_opc_salvou(unsigned char *dest, const char *text, int n,
                                     int opc) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int CODALF05_opc_salvou(unsigned char *dest, const char *text,
                                      int opc) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int CODALF12_opc_salvou(unsigned char *dest, const char *text,
                                      int opc) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int CODALF14_opc_salvou(unsigned char *dest, const char *text,
                                      int opc) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int CODALF17_opc_salvou(unsigned char *dest, const char *text,
                                      int opc) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int CODALF20_opc_salvou(unsigned char *dest, const char *text,
                                      int opc) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int CODALF32_opc_salvou(unsigned char *dest, const char *text,
                                      int opc) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int CODALF36_opc_salvou(unsigned char *dest, const char *text,
                                      int opc) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int CODALF40_opc_salvou(unsigned char *dest, const char *text,
                                      int opc) CAMPOTIPO_NOEXCEPT;

CAMPOTIPO_API void CODALFA_opc_salva(unsigned char *dest, const char *text, int n,
                                     int opc) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void CODALF05_opc_atob(unsigned char *dest, const char *text,
                                     int opc) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void CODALF12_opc_atob(unsigned char *dest, const char *text,
                                     int opc) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void CODALF14_opc_atob(unsigned char *dest, const char *text,
                                     int opc) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void CODALF17_opc_atob(unsigned char *dest, const char *text,
                                     int opc) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void CODALF20_opc_atob(unsigned char *dest, const char *text,
                                     int opc) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void CODALF32_opc_atob(unsigned char *dest, const char *text,
                                     int opc) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void CODALF36_opc_atob(unsigned char *dest, const char *text,
                                     int opc) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void CODALF40_opc_atob(unsigned char *dest, const char *text,
                                     int opc) CAMPOTIPO_NOEXCEPT;

/*
 * opc_extrai, extrai, opc_btoa, btoa: text of a field.
 *
 * dest    n + 1 bytes, or width + 1 where that is more; none behind them is written
 * src     CODALFA_BYTES(n) bytes
 * n       positions; 0 or less gives the text of an empty field
 * opc     flags
 * width   least length of the text: blanks follow a shorter one, unless CODALFA_OPC_ZEROS fills it.
 *         A longer text is cut only with CODALFA_OPC_CORTA_ESQUERDA. 0 or less: no width
 *
 * extrai and btoa give the text as it is: opc 0 and width 0. Result of the btoa forms: dest.
 *
 *     stored     opc                                          width   text
 *     "AB"       0                                            8       "AB      "
 *     "AB"       CODALFA_OPC_ZEROS                            8       "000000AB"
 *     "12"       CODALFA_OPC_ZEROS | CODALFA_OPC_SO_DIGITOS   6       "000012"
 *     "007"      CODALFA_OPC_ZEROS                            0       "7"
 *     "ABCDE"    0                                            2       "ABCDE"
 *     "ABCDE"    CODALFA_OPC_CORTA_ESQUERDA                   2       "DE"
 */
CAMPOTIPO_API void CODALFA_opc_extrai(char *dest, const unsigned char *src, int n, int opc,
                                      int width) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *CODALF05_opc_btoa(char *dest, const unsigned char *src, int opc,
                                      int width) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *CODALF12_opc_btoa(char *dest, const unsigned char *src, int opc,
                                      int width) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *CODALF14_opc_btoa(char *dest, const unsigned char *src, int opc,
                                      int width) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *CODALF17_opc_btoa(char *dest, const unsigned char *src, int opc,
                                      int width) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *CODALF20_opc_btoa(char *dest, const unsigned char *src, int opc,
                                      int width) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *CODALF32_opc_btoa(char *dest, const unsigned char *src, int opc,
                                      int width) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *CODALF36_opc_btoa(char *dest, const unsigned char *src, int opc,
                                      int width) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *CODALF40_opc_btoa(char *dest, const unsigned char *src, int opc,
                                      int width) CAMPOTIPO_NOEXCEPT;

CAMPOTIPO_API void CODALFA_extrai(char *dest, const unsigned char *src, int n) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *CODALF05_btoa(char *dest, const unsigned char *src) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *CODALF12_btoa(char *dest, const unsigned char *src) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *CODALF14_btoa(char *dest, const unsigned char *src) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *CODALF17_btoa(char *dest, const unsigned char *src) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *CODALF20_btoa(char *dest, const unsigned char *src) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *CODALF32_btoa(char *dest, const unsigned char *src) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *CODALF36_btoa(char *dest, const unsigned char *src) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *CODALF40_btoa(char *dest, const unsigned char *src) CAMPOTIPO_NOEXCEPT;

/*
 * nao_zero: 1 if the field holds a character, else 0. With CODALFA_OPC_ZERO_VAZIO 1 only if it
 * holds one other than "0" ahead of the end of its data; a stored blank is one.
 *
 * src   CODALFA_BYTES(n) bytes
 * n     positions; 0 or less gives 0
 * opc   flags, of which the others have no effect
 */
CAMPOTIPO_API int CODALFA_nao_zero(const unsigned char *src, int n, int opc) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int CODALF05_nao_zero(const unsigned char *src, int opc) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int CODALF12_nao_zero(const unsigned char *src, int opc) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int CODALF14_nao_zero(const unsigned char *src, int opc) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int CODALF17_nao_zero(const unsigned char *src, int opc) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int CODALF20_nao_zero(const unsigned char *src, int opc) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int CODALF32_nao_zero(const unsigned char *src, int opc) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int CODALF36_nao_zero(const unsigned char *src, int opc) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int CODALF40_nao_zero(const unsigned char *src, int opc) CAMPOTIPO_NOEXCEPT;

/*
 * compara: -1, 0 or 1 as the text of a is less than, equal to or greater than that of b, character
 * by character in the order of the character set, which is not that of the codes: "-" comes before
 * "0", and a text before all those that it begins. What stands behind the end of the data has no
 * say. igual: 1 if compara gives 0, else 0.
 *
 * a, b   CODALFA_BYTES(n) bytes each
 * n      positions; 0 or less gives 0
 */
CAMPOTIPO_API int CODALFA_compara(const unsigned char *a, const unsigned char *b,
                                  int n) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int CODALF05_compara(const unsigned char *a,
                                   const unsigned char *b) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int CODALF12_compara(const unsigned char *a,
                                   const unsigned char *b) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int CODALF14_compara(const unsigned char *a,
                                   const unsigned char *b) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int CODALF17_compara(const unsigned char *a,
                                   const unsigned char *b) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int CODALF20_compara(const unsigned char *a,
                                   const unsigned char *b) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int CODALF32_compara(const unsigned char *a,
                                   const unsigned char *b) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int CODALF36_compara(const unsigned char *a,
                                   const unsigned char *b) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int CODALF40_compara(const unsigned char *a,
                                   const unsigned char *b) CAMPOTIPO_NOEXCEPT;

CAMPOTIPO_API int CODALF05_igual(const unsigned char *a, const unsigned char *b) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int CODALF12_igual(const unsigned char *a, const unsigned char *b) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int CODALF14_igual(const unsigned char *a, const unsigned char *b) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int CODALF17_igual(const unsigned char *a, const unsigned char *b) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int CODALF20_igual(const unsigned char *a, const unsigned char *b) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int CODALF32_igual(const unsigned char *a, const unsigned char *b) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int CODALF36_igual(const unsigned char *a, const unsigned char *b) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int CODALF40_igual(const unsigned char *a, const unsigned char *b) CAMPOTIPO_NOEXCEPT;

/*
 * bem_formado: 1 if the stored form is one that this library writes, else 0: codes 1 to 50 alone,
 * code 0 in all positions behind them, no blank in front of an empty position, spare bits 0. Other
 * fields can be read all the same, but a text read from them gives other bytes when it is stored.
 *
 * src   CODALFA_BYTES(n) bytes
 * n     positions; 0 or less reads nothing and gives 1
 */
CAMPOTIPO_API int CODALFA_bem_formado(const unsigned char *src, int n) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int CODALF05_bem_formado(const unsigned char *src) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int CODALF12_bem_formado(const unsigned char *src) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int CODALF14_bem_formado(const unsigned char *src) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int CODALF17_bem_formado(const unsigned char *src) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int CODALF20_bem_formado(const unsigned char *src) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int CODALF32_bem_formado(const unsigned char *src) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int CODALF36_bem_formado(const unsigned char *src) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int CODALF40_bem_formado(const unsigned char *src) CAMPOTIPO_NOEXCEPT;

/*
 * CODALFA_menor_caracter: the least character of the alphabet by value, 32 (blank).
 * CODALFA_menor_carac_para_trailler: the least that a trailer may begin with, 48 ("0").
 * CODALFA_maior_caracter: the greatest, 95 ("_"). It is looked for at the first call.
 */
CAMPOTIPO_API int CODALFA_menor_caracter(void) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int CODALFA_menor_carac_para_trailler(void) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int CODALFA_maior_caracter(void) CAMPOTIPO_NOEXCEPT;

/*
 * ------------------------------------------------------------------------------------------------
 * Packed code records
 * ------------------------------------------------------------------------------------------------
 *
 * A packed code with its own buffer. The caller owns the record and hands over its address; the
 * record owns the buffer, from CODALFNN_cria to CODALFNN_destroi.
 *
 * A record is valid when `caracteres` is above 0 and `dados` is not null. One that is not valid
 * holds nothing: it is safe to hand to every operation, and each says below what it then gives. A
 * valid record has no defined content before its first save.
 *
 * record   set up by CODALFNN_cria; it may be one that is not valid
 *
 * Example: a code of five positions, filled with zeros.
 *
 *     CODALFNN code;
 *     char text[6];
 *     CODALFNN_cria(&code, 5, CODALFA_OPC_ZEROS);
 *     CODALFNN_atob(&code, "7");                "00007" is stored
 *     CODALFNN_btoa(text, &code);               "7"
 *     CODALFNN_destroi(&code);
 */

/* A code with its own buffer. */
typedef struct CODALFNN {
  int32_t caracteres;   /* positions n */
  int opc;              /* flags of CODALFNN_atob and CODALFNN_btoa */
  unsigned char *dados; /* CODALFA_BYTES(n) bytes from malloc */
} CODALFNN;

/* The most positions that a record can have. */
#define CODALFNN_MAX_CARACTERES 357913940

/*
 * CODALFNN_cria: sets a record up, without looking at what it held: destroy a valid one first.
 *
 * record   all three fields are written
 * n        positions; below 1 or above CODALFNN_MAX_CARACTERES gives a record that is not valid.
 *          With 0, -1 and -2 `dados` is what malloc(0) gives, with the others it is null
 * opc      flags that the record keeps
 *
 * Nothing is reported: without memory the record is not valid, which CODALFNN_ok tells.
 *
 * CODALFNN_destroi: frees the buffer and leaves a record that is not valid; `opc` stays. Safe on a
 * record that was destroyed before.
 */
CAMPOTIPO_API void CODALFNN_cria(CODALFNN *record, int n, int opc) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void CODALFNN_destroi(CODALFNN *record) CAMPOTIPO_NOEXCEPT;

/*
 * CODALFNN_ok: 1 if the record is valid, else 0.
 * CODALFNN_numero_de_caracteres: its positions, 0 if it is not valid.
 */
CAMPOTIPO_API int CODALFNN_ok(const CODALFNN *record) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int CODALFNN_numero_de_caracteres(const CODALFNN *record) CAMPOTIPO_NOEXCEPT;

/*
 * opc_salvou, opc_atob, atob: like CODALFA_opc_salvou and CODALFA_opc_salva, but in the record's
 * buffer; atob takes the record's flags. A record that is not valid stays as it is, and opc_salvou
 * gives 0.
 */
CAMPOTIPO_API int CODALFNN_opc_salvou(CODALFNN *record, const char *text,
                                      int opc) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void CODALFNN_opc_atob(CODALFNN *record, const char *text,
                                     int opc) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void CODALFNN_atob(CODALFNN *record, const char *text) CAMPOTIPO_NOEXCEPT;

/*
 * opc_btoa, btoa: like CODALFA_opc_extrai, but from the record's buffer; btoa takes the record's
 * flags and width 0. A record that is not valid gives the empty text. Result: dest.
 */
CAMPOTIPO_API char *CODALFNN_opc_btoa(char *dest, const CODALFNN *record, int opc,
                                      int width) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *CODALFNN_btoa(char *dest, const CODALFNN *record) CAMPOTIPO_NOEXCEPT;

/*
 * CODALFNN_nao_zero, CODALFNN_bem_formado: like CODALFA_nao_zero and CODALFA_bem_formado; 0 if the
 * record is not valid.
 *
 * CODALFNN_compara: like CODALFA_compara. Two valid records of different sizes have no order and
 * give 0, whatever they hold. A valid record comes before one that is not valid (-1, or 1 the other
 * way round), and two that are not valid give 0.
 */
CAMPOTIPO_API int CODALFNN_nao_zero(const CODALFNN *record, int opc) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int CODALFNN_bem_formado(const CODALFNN *record) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int CODALFNN_compara(const CODALFNN *a, const CODALFNN *b) CAMPOTIPO_NOEXCEPT;

/*
 * ------------------------------------------------------------------------------------------------
 * Fixed strings
 * ------------------------------------------------------------------------------------------------
 *
 *   member     bytes n            text size (with NUL)
 *   CODSTR     told by argument   n + 1
 *   CODSTR50   50                 51
 *   CODSTR52   52                 53
 *
 * Stored form: a text shorter than n at byte 0, a NUL behind it, and then whatever the field held
 * before; a text of exactly n bytes fills the field and has no NUL. Any byte but NUL may stand in a
 * text: nothing is folded, trimmed or checked.
 *
 * A comparison looks at all n bytes, those behind a NUL among them. Clear a field before its first
 * save if it is to be compared.
 *
 * Example: a name in 50 bytes.
 *
 *     unsigned char field[CODSTR50_BYTES] = {0};
 *     char text[CODSTR50_TEXT_SIZE];
 *     CODSTR50_atob(field, "Banco da Praca");
 *     CODSTR50_opc_btoa(text, field, 5, 0);      "Banco"
 */

#define CODSTR50_BYTES 50
#define CODSTR50_TEXT_SIZE 51
#define CODSTR52_BYTES 52
#define CODSTR52_TEXT_SIZE 53

/* Flag of opc: a text too long loses its first bytes, not its last. Other bits have no effect. */
#define CODSTR_OPC_CORTA_ESQUERDA 1

/*
 * opc_salva, opc_atob, atob: store a text in a field.
 *
 * A text longer than the field is cut to n bytes without notice. At most n bytes are written, and
 * none behind the NUL of a shorter text.
 *
 * dest   n bytes
 * text   ended by a NUL
 * n      bytes of the field; 0 or less writes nothing
 * opc    CODSTR_OPC_CORTA_ESQUERDA or 0; atob is opc_atob with 0
 */
CAMPOTIPO_API void CODSTR_opc_salva(unsigned char *dest, const char *text, int n,
                                    int opc) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void CODSTR50_opc_atob(unsigned char *dest, const char *text,
                                     int opc) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void CODSTR52_opc_atob(unsigned char *dest, const char *text,
                                     int opc) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void CODSTR50_atob(unsigned char *dest, const char *text) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void CODSTR52_atob(unsigned char *dest, const char *text) CAMPOTIPO_NOEXCEPT;

/*
 * opc_extrai, extrai, opc_btoa, btoa: text of a field.
 *
 * dest    the smaller of n and width, plus 1 bytes; the text and its NUL are written
 * src     n bytes
 * n       bytes of the field; 0 or less gives the empty text
 * width   greatest length of the text, 0 or more; nothing is filled up to it
 * opc     CODSTR_OPC_CORTA_ESQUERDA or 0
 *
 * extrai and btoa give the whole text: width n and opc 0. Result of the btoa forms: dest.
 */
CAMPOTIPO_API void CODSTR_opc_extrai(char *dest, const unsigned char *src, int n, int width,
                                     int opc) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void CODSTR_extrai(char *dest, const unsigned char *src, int n) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *CODSTR50_opc_btoa(char *dest, const unsigned char *src, int width,
                                      int opc) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *CODSTR52_opc_btoa(char *dest, const unsigned char *src, int width,
                                      int opc) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *CODSTR50_btoa(char *dest, const unsigned char *src) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *CODSTR52_btoa(char *dest, const unsigned char *src) CAMPOTIPO_NOEXCEPT;

/*
 * nao_zero: 1 if byte 0 is not NUL, else 0; a text of blanks has content.
 *
 * src   n bytes, of which only the first is read
 * n     bytes of the field; with 0 or less nothing is read and the result is 0
 * opc   not looked at
 */
CAMPOTIPO_API int CODSTR_nao_zero(const unsigned char *src, int n, int opc) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int CODSTR50_nao_zero(const unsigned char *src, int opc) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int CODSTR52_nao_zero(const unsigned char *src, int opc) CAMPOTIPO_NOEXCEPT;

/*
 * compara: -1, 0 or 1 by the first byte that differs, unsigned, over all n bytes.
 * igual: 1 if compara gives 0, else 0.
 *
 * a, b   n bytes each
 * n      bytes of the fields; 0 or less gives 0
 */
CAMPOTIPO_API int CODSTR_compara(const unsigned char *a, const unsigned char *b,
                                 int n) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int CODSTR50_compara(const unsigned char *a,
                                   const unsigned char *b) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int CODSTR52_compara(const unsigned char *a,
                                   const unsigned char *b) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int CODSTR50_igual(const unsigned char *a, const unsigned char *b) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int CODSTR52_igual(const unsigned char *a, const unsigned char *b) CAMPOTIPO_NOEXCEPT;

/*
 * bem_formado: 1 if every byte behind the first NUL is NUL too, as this library leaves them in a
 * field that was cleared before its first save, else 0. Any byte may stand in front of it.
 *
 * src   n bytes
 * n     bytes of the field; 0 or less reads nothing and gives 1
 */
CAMPOTIPO_API int CODSTR_bem_formado(const unsigned char *src, int n) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int CODSTR50_bem_formado(const unsigned char *src) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int CODSTR52_bem_formado(const unsigned char *src) CAMPOTIPO_NOEXCEPT;

/*
 * ------------------------------------------------------------------------------------------------
 * Digit strings
 * ------------------------------------------------------------------------------------------------
 *
 *   member   bytes   greatest count nn   number field   text size (with NUL)
 *   BSTR21   10      21                  BINQ9            22
 *   BSTR23   11      23                  BINQ10           24
 *   BSTR26   12      26                  BINQ11           27
 *   BSTR28   13      28                  BINQ12           29
 *   BSTR31   14      31                  BINQ13           32
 *   BSTR33   15      33                  BINQ14           34
 *   BSTR35   16      35                  BINQ15           36
 *   BSTR38   17      38                  BINQ16           39
 *
 * Digits whose leading zeros matter.
 *
 * Stored form: byte 0 is the number of digits, leading zeros among them; the digits as a number
 * follow, in the stored form of the member's number field (campotipo/quantities.h). A field of zero
 * bytes is the empty string.
 *
 * Example: "000123" in BSTR21.
 *
 *     unsigned char field[BSTR21_BYTES];
 *     char text[BSTR21_TEXT_SIZE];
 *     BSTR21_atob(field, "000123");      06 7B 00 00 00 00 00 00 00 00
 *     BSTR21_btoa(text, field);          "000123"
 */

#define BSTR21_BYTES 10
#define BSTR21_TEXT_SIZE 22
#define BSTR23_BYTES 11
#define BSTR23_TEXT_SIZE 24
#define BSTR26_BYTES 12
#define BSTR26_TEXT_SIZE 27
#define BSTR28_BYTES 13
#define BSTR28_TEXT_SIZE 29
#define BSTR31_BYTES 14
#define BSTR31_TEXT_SIZE 32
#define BSTR33_BYTES 15
#define BSTR33_TEXT_SIZE 34
#define BSTR35_BYTES 16
#define BSTR35_TEXT_SIZE 36
#define BSTR38_BYTES 17
#define BSTR38_TEXT_SIZE 39

/*
 * BSTRnn_atob: store the digits that a text begins with.
 *
 * At most nn digits are taken, from the left; the first other byte ends them, a blank too. The rest
 * of the text is not looked at, so nn digits need no NUL behind them.
 *
 * dest   the member's bytes, all written; may overlap the text
 * text   may be null, which stores the empty string
 *
 * Result: 1 if at least one digit was taken, else 0.
 */
CAMPOTIPO_API int BSTR21_atob(unsigned char *dest, const char *text) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int BSTR23_atob(unsigned char *dest, const char *text) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int BSTR26_atob(unsigned char *dest, const char *text) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int BSTR28_atob(unsigned char *dest, const char *text) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int BSTR31_atob(unsigned char *dest, const char *text) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int BSTR33_atob(unsigned char *dest, const char *text) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int BSTR35_atob(unsigned char *dest, const char *text) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int BSTR38_atob(unsigned char *dest, const char *text) CAMPOTIPO_NOEXCEPT;

/*
 * BSTRnn_btoa: the digits of a field.
 *
 * As many digits as byte 0 counts: zeros stand in front of a number that has fewer, and a number
 * that has more keeps its first ones. A count of 0 or above nn gives the empty text.
 *
 * text   nn + 1 bytes; the digits and the NUL are written, nothing behind them; may overlap the
 *        field
 * src    the member's bytes
 *
 * Result: text.
 */
CAMPOTIPO_API char *BSTR21_btoa(char *text, const unsigned char *src) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *BSTR23_btoa(char *text, const unsigned char *src) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *BSTR26_btoa(char *text, const unsigned char *src) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *BSTR28_btoa(char *text, const unsigned char *src) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *BSTR31_btoa(char *text, const unsigned char *src) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *BSTR33_btoa(char *text, const unsigned char *src) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *BSTR35_btoa(char *text, const unsigned char *src) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *BSTR38_btoa(char *text, const unsigned char *src) CAMPOTIPO_NOEXCEPT;

/*
 * BSTRnn_bem_formado: 1 if the stored form is one that this library writes, else 0: a count of 0 to
 * nn, a number that has no more digits than it counts, and 19 digits at most in the low limb.
 *
 * src   the member's bytes
 */
CAMPOTIPO_API int BSTR21_bem_formado(const unsigned char *src) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int BSTR23_bem_formado(const unsigned char *src) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int BSTR26_bem_formado(const unsigned char *src) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int BSTR28_bem_formado(const unsigned char *src) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int BSTR31_bem_formado(const unsigned char *src) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int BSTR33_bem_formado(const unsigned char *src) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int BSTR35_bem_formado(const unsigned char *src) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int BSTR38_bem_formado(const unsigned char *src) CAMPOTIPO_NOEXCEPT;

#ifdef __cplusplus
}
#endif

#endif
