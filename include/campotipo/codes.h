#ifndef CAMPOTIPO_CODES_H
#define CAMPOTIPO_CODES_H

#include <campotipo/export.h>

/*
 * Text fields of a record
 * =======================
 *
 *   kind                        stored form                                       section
 *   CODSTR, CODSTR50, CODSTR52  plain bytes, a NUL behind a text that is shorter  Fixed strings
 *
 * Threads: operations on different data may run at the same time.
 */

#ifdef __cplusplus
extern "C" {
#endif

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
 * src   n bytes, of which only the first is read; with n of 0 or less none, and the result is 0
 * opc   not looked at
 */
CAMPOTIPO_API int CODSTR_nao_zero(const unsigned char *src, int n, int opc) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int CODSTR50_nao_zero(const unsigned char *src, int opc) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int CODSTR52_nao_zero(const unsigned char *src, int opc) CAMPOTIPO_NOEXCEPT;

/*
 * compara: -1, 0 or 1 by the first byte that differs, unsigned, over all n bytes (0 or less: 0).
 * igual: 1 if compara gives 0, else 0.
 */
CAMPOTIPO_API int CODSTR_compara(const unsigned char *a, const unsigned char *b,
                                 int n) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int CODSTR50_compara(const unsigned char *a,
                                   const unsigned char *b) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int CODSTR52_compara(const unsigned char *a,
                                   const unsigned char *b) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int CODSTR50_igual(const unsigned char *a, const unsigned char *b) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int CODSTR52_igual(const unsigned char *a, const unsigned char *b) CAMPOTIPO_NOEXCEPT;

#ifdef __cplusplus
}
#endif

#endif
