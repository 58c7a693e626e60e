#ifndef CAMPOTIPO_SUPPORT_TEXT_H
#define CAMPOTIPO_SUPPORT_TEXT_H

#include <campotipo-support/export.h>

/*
 * Growable text
 * =============
 *
 * A text that grows as formatted pieces are appended. It is known by a handle of one word, made by
 * LINHAFLEX_cria and released by LINHAFLEX_destroi. A handle belongs to one caller at a time.
 *
 * When memory runs out, the piece that did not fit is left out whole and so is every later one, so
 * that a text never has a gap. The text so far stays, and can be read and released.
 *
 * handle   made by LINHAFLEX_cria and not yet released
 *
 * Pointers are never null.
 *
 * Example:
 *
 *     LINHAFLEX line;
 *     if (LINHAFLEX_cria(&line) == 0) {
 *       LINHAFLEX_printf(line, "%d of ", 3);
 *       LINHAFLEX_printf(line, "%d", 7);
 *       puts(LINHAFLEX_str(line));        "3 of 7"
 *       LINHAFLEX_destroi(line);
 *     }
 */

#ifdef __cplusplus
extern "C" {
#endif

/* Handle of a text. */
typedef void *LINHAFLEX;

/*
 * LINHAFLEX_cria: makes a new empty text.
 *
 * handle   one handle, written
 *
 * Result: 0, or 1 when there is no memory, with *handle untouched.
 */
CAMPOTIPO_API int LINHAFLEX_cria(LINHAFLEX *handle) CAMPOTIPO_NOEXCEPT;

/*
 * LINHAFLEX_printf: appends a piece formatted as by printf.
 *
 * format   of printf, with its arguments behind it, none of which is the text of this handle
 *
 * Result: characters appended, or -1 when nothing was.
 */
CAMPOTIPO_API int LINHAFLEX_printf(LINHAFLEX handle, const char *format, ...) CAMPOTIPO_NOEXCEPT
    __attribute__((format(printf, 2, 3)));

/* LINHAFLEX_str: the text so far, ended by a NUL, owned by the handle and good until the next call
 * with it. */
CAMPOTIPO_API const char *LINHAFLEX_str(LINHAFLEX handle) CAMPOTIPO_NOEXCEPT;

/* LINHAFLEX_destroi: releases the text; the handle is not used again. */
CAMPOTIPO_API void LINHAFLEX_destroi(LINHAFLEX handle) CAMPOTIPO_NOEXCEPT;

#ifdef __cplusplus
}
#endif

#endif
