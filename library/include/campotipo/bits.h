#ifndef CAMPOTIPO_BITS_H
#define CAMPOTIPO_BITS_H

#include <campotipo/export.h>
#include <stdint.h>

/*
 * Bits and encodings
 * ==================
 *
 *   kind       what it is                                                     section
 *   TABBOOL    a table of true/false values for a range of indices            Boolean table
 *   ZBTFIELD   the fields of a record as a stream of bits without gaps        Bit fields
 *   ZGUID      identifiers of 16 bytes, their texts, a sequence of them       GUIDs
 *   URLENCOD   percent encoding of a text for use in a URL                    URL text
 *
 * Nothing here reports a failure: each operation tells what a bad input gives. Pointers are never
 * null unless told so. Memory is allocated for a TABBOOL and during a dump, nowhere else.
 *
 * Texts end with a NUL. What lies behind it may be read in whole words, inside the memory page that
 * holds a byte of the text, and is never looked at. Valgrind reports such reads, unless the library
 * was built with -DCAMPOTIPO_PLAIN_READS=ON.
 *
 * Threads: operations on different data may run at the same time. A TABBOOL or ZGUID_ESTADO belongs
 * to one caller at a time.
 */

#ifdef __cplusplus
extern "C" {
#endif

/*
 * ------------------------------------------------------------------------------------------------
 * Boolean table
 * ------------------------------------------------------------------------------------------------
 *
 * One bit for each index from base to base + tamanho - 1. A table in which nothing was ever written
 * has no memory, and each index outside the range reads as the default.
 *
 * Stored form: the bit of index i has the place p = i - base and stands in byte p / 8 of mapa, at
 * the value 2^(p % 8). mapa has (tamanho + 7) / 8 bytes.
 *
 * Every int is allowed as tamanho, base and index. A table with tamanho 0 or less has no index.
 *
 * tabela   set up by TABBOOL_cria
 * index    any
 *
 * Example: days of a year that are no working days.
 *
 *     TABBOOL holidays;
 *     TABBOOL_cria(&holidays, 366, 1, 0);
 *     TABBOOL_seta(&holidays, 359);
 *     TABBOOL_testa(&holidays, 359);         1
 *     TABBOOL_testa(&holidays, 360);         0
 *     TABBOOL_destroi(&holidays);
 */

/* Owned by the caller, set up by TABBOOL_cria, and released by TABBOOL_destroi. */
typedef struct TABBOOL {
  unsigned char *mapa;  /* null until the first write in range */
  int32_t tamanho;      /* number of bits */
  int32_t base;         /* index of the first bit */
  unsigned char padrao; /* default value */
} TABBOOL;

/*
 * TABBOOL_cria: sets up the record and allocates nothing. What the record held before is not looked
 * at, so a table in use is released first.
 *
 * tabela    all four fields are written
 * tamanho   number of bits
 * base      index of the first bit
 * padrao    default; only its low 8 bits are kept, so that 256 acts like 0
 */
CAMPOTIPO_API void TABBOOL_cria(TABBOOL *tabela, int tamanho, int base,
                                int padrao) CAMPOTIPO_NOEXCEPT;

/* TABBOOL_destroi: releases the memory. The table then reads as all default and may be written
 * again. Without effect on a table that has no memory. */
CAMPOTIPO_API void TABBOOL_destroi(TABBOOL *tabela) CAMPOTIPO_NOEXCEPT;

/*
 * TABBOOL_seta, TABBOOL_reseta: set the bit of an index to 1, to 0.
 *
 * An index out of range has no effect. The first write in range allocates the table, also if it
 * writes the default: all bits 1 for a default other than 0, else all 0. When there is no memory
 * the write is lost, the table still reads as all default, and the next write tries again.
 */
CAMPOTIPO_API void TABBOOL_seta(TABBOOL *tabela, int index) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void TABBOOL_reseta(TABBOOL *tabela, int index) CAMPOTIPO_NOEXCEPT;

/*
 * TABBOOL_testa: the bit of an index, 0 or 1; padrao as it is, 0 to 255, for an index out of range
 * or a table without memory. With a default of 5 a bit never written reads 5 at first, and 1 when
 * the table has memory.
 */
CAMPOTIPO_API int TABBOOL_testa(const TABBOOL *tabela, int index) CAMPOTIPO_NOEXCEPT;

/*
 * ------------------------------------------------------------------------------------------------
 * Bit fields
 * ------------------------------------------------------------------------------------------------
 *
 * A table of ZBTFIELD_CAMPO describes the fields of a record in the order of the packed stream. The
 * stream begins at position 0 and has no gaps. There are two bit orders; w is the width of a field
 * and s the position where it starts:
 *
 *                               ZBTFIELD_                       ZBTFIELD_big_
 *   position p is the bit       2^(p % 8) of byte p / 8         2^(7 - p % 8) of byte p / 8
 *   bit i of a field stands at  s + i                           s + w - 1 - i
 *   a field starts with its     least significant bit           most significant bit
 *
 * An unpacked field takes ZBTFIELD_BYTES(w) bytes of the record, least significant byte first, in
 * both orders. Fields may be of any width and start at any position.
 *
 * Bytes are read and written only where they hold a bit of the field that is moved. Bits of such a
 * byte that belong to no field keep what they held: clear the packed area before it is packed, and
 * the record before it is unpacked, where they are to be 0. The packed area, the record and the
 * table must not overlap. Fields may overlap in the record; then the later one in the table is
 * unpacked over the earlier one.
 *
 * Positions and widths are not checked: the caller keeps them inside the packed area.
 *
 * Example: three values in 12 bits.
 *
 *     static const ZBTFIELD_CAMPO table[] = {{3, 0}, {5, 1}, {4, 2}, {0, 0}};
 *     unsigned char record[3] = {5, 19, 9};
 *     unsigned char packed[ZBTFIELD_BYTES(12)] = {0};
 *     char line[ZBTFIELD_DEPURA_CONTEUDO_SIZE(3)];
 *     ZBTFIELD_monta_dados(packed, table, record);                     9D 09
 *     ZBTFIELD_depura_conteudo(line, sizeof line, packed, table);
 *                                                      "[0;3b]=5 [1;5b]=19 [2;4b]=9"
 *     ZBTFIELD_big_monta_dados(packed, table, record);                 B3 99: spare bits were kept
 */

/* An entry of the table: one field. */
typedef struct ZBTFIELD_CAMPO {
  int32_t bits;         /* width of the field, 1 or more; 0 ends the table */
  int32_t deslocamento; /* byte offset of the field in the record; not read in the last entry */
} ZBTFIELD_CAMPO;

/* Bytes that so many bits take, in a packed area or as an unpacked field. */
#define ZBTFIELD_BYTES(bits) (((bits) + 7) / 8)

/*
 * ZBTFIELD_total_de_bits: sum of the widths of a table, at most INT_MAX.
 * ZBTFIELD_total_de_bytes: bytes of the packed area.
 *
 * tabela   ended by an entry with the width 0
 */
CAMPOTIPO_API int ZBTFIELD_total_de_bits(const ZBTFIELD_CAMPO *tabela) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int ZBTFIELD_total_de_bytes(const ZBTFIELD_CAMPO *tabela) CAMPOTIPO_NOEXCEPT;

/*
 * extrai_dados: unpacks all fields, one after the other in the order of the table.
 *
 * registro   every field at its offset
 * packed     ZBTFIELD_total_de_bytes bytes
 * tabela     ended by an entry with the width 0
 */
CAMPOTIPO_API void ZBTFIELD_extrai_dados(unsigned char *registro, const unsigned char *packed,
                                         const ZBTFIELD_CAMPO *tabela) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void ZBTFIELD_big_extrai_dados(unsigned char *registro, const unsigned char *packed,
                                             const ZBTFIELD_CAMPO *tabela) CAMPOTIPO_NOEXCEPT;

/* monta_dados: packs all fields. Like extrai_dados, but the packed area is written and the table
 * stands in the middle. */
CAMPOTIPO_API void ZBTFIELD_monta_dados(unsigned char *packed, const ZBTFIELD_CAMPO *tabela,
                                        const unsigned char *registro) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void ZBTFIELD_big_monta_dados(unsigned char *packed, const ZBTFIELD_CAMPO *tabela,
                                            const unsigned char *registro) CAMPOTIPO_NOEXCEPT;

/*
 * bem_formado: whether the bits behind the last field are 0, as they are in an area that was clear
 * before it was packed. Every content of the fields themselves is well formed.
 *
 * packed   the area
 * bytes    of the area, all of which are looked at behind the last field; with
 *          ZBTFIELD_total_de_bytes or less, the spare bits of the last byte at most
 * tabela   ended by an entry with the width 0
 *
 * Result: 1 if they are 0, else 0.
 */
CAMPOTIPO_API int ZBTFIELD_bem_formado(const unsigned char *packed, int bytes,
                                       const ZBTFIELD_CAMPO *tabela) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int ZBTFIELD_big_bem_formado(const unsigned char *packed, int bytes,
                                           const ZBTFIELD_CAMPO *tabela) CAMPOTIPO_NOEXCEPT;

/*
 * extrai_campo, monta_campo: unpack one field, pack one field. The field comes first in both.
 *
 * campo    ZBTFIELD_BYTES(width) bytes
 * packed   an area with the positions start to start + width - 1
 * start    position of the field, 0 or more
 * width    in bits; 0 or less changes nothing
 */
CAMPOTIPO_API void ZBTFIELD_extrai_campo(unsigned char *campo, const unsigned char *packed,
                                         int start, int width) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void ZBTFIELD_big_extrai_campo(unsigned char *campo, const unsigned char *packed,
                                             int start, int width) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void ZBTFIELD_monta_campo(const unsigned char *campo, unsigned char *packed,
                                        int start, int width) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void ZBTFIELD_big_monta_campo(const unsigned char *campo, unsigned char *packed,
                                            int start, int width) CAMPOTIPO_NOEXCEPT;

/*
 * seta_bit, reseta_bit: set one position to 1, to 0.
 * testa_bit: the bit of one position, 0 or 1.
 *
 * packed     an area with that position
 * position   0 or more
 */
CAMPOTIPO_API void ZBTFIELD_seta_bit(unsigned char *packed, int position) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void ZBTFIELD_big_seta_bit(unsigned char *packed, int position) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void ZBTFIELD_reseta_bit(unsigned char *packed, int position) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void ZBTFIELD_big_reseta_bit(unsigned char *packed, int position) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int ZBTFIELD_testa_bit(const unsigned char *packed, int position) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int ZBTFIELD_big_testa_bit(const unsigned char *packed,
                                         int position) CAMPOTIPO_NOEXCEPT;

/* Room for the whole text of depura_binario and its NUL. */
#define ZBTFIELD_DEPURA_BINARIO_SIZE(bits, fields) ((bits) + (fields) + 1)

/* Room for any text of depura_conteudo and its NUL: blank, index, width and 20 digits a field. */
#define ZBTFIELD_DEPURA_CONTEUDO_SIZE(fields) (46 * (fields) + 1)

/*
 * depura_binario, depura_conteudo: a packed area as one line of text, for finding a fault.
 *
 *   depura_binario    the bits in the order of their positions, a point behind each field:
 *                     "101.11001.1001."
 *   depura_conteudo   index, width and decimal value of each field: "[0;3b]=5 [1;5b]=19"; a field
 *                     of more than 64 bits shows "muitos bits"
 *
 * The text is made in a growable text of campotipo-support. Without memory for it the buffer gets
 * its NUL at byte 0 and nothing else.
 *
 * buffer   at least one byte, also with size 0: a NUL is first written at byte 0; apart from the
 *          packed area and the table
 * size     bytes of the buffer, 0 or more; a negative size acts like 0. Exactly so many are
 *          written: NULs behind a text that is shorter. A text of size characters or more is cut to
 *          size and has no NUL.
 * packed   ZBTFIELD_total_de_bytes bytes
 * tabela   ended by an entry with the width 0
 */
CAMPOTIPO_API void ZBTFIELD_depura_binario(char *buffer, int size, const unsigned char *packed,
                                           const ZBTFIELD_CAMPO *tabela) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void ZBTFIELD_depura_conteudo(char *buffer, int size, const unsigned char *packed,
                                            const ZBTFIELD_CAMPO *tabela) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void ZBTFIELD_big_depura_binario(char *buffer, int size, const unsigned char *packed,
                                               const ZBTFIELD_CAMPO *tabela) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API void ZBTFIELD_big_depura_conteudo(char *buffer, int size, const unsigned char *packed,
                                                const ZBTFIELD_CAMPO *tabela) CAMPOTIPO_NOEXCEPT;

/*
 * ------------------------------------------------------------------------------------------------
 * GUIDs
 * ------------------------------------------------------------------------------------------------
 *
 * A GUID is 16 bytes in the order of its text: byte 0 is the first pair of digits, and no group is
 * swapped. gera, parse and string work on these.
 *
 * A sequence (prepara, proximo, atual) makes texts in the form of a GUID from a counter, the clock
 * and six bytes that name the node. It has nothing to do with the former.
 *
 *   group   digits   sequence text (T0 is the lowest byte of tempo, N0 the first byte of no)
 *   1       8        contador
 *   2       4        T1 T0
 *   3       4        40 T2
 *   4       4        80 T3
 *   5       12       N5 N4 N3 N2 N1 N0
 *
 * estado   a sequence begun by ZGUID_prepara
 *
 * Example: a text and its value.
 *
 *     unsigned char guid[ZGUID_BYTES];
 *     char text[ZGUID_STRING_SIZE(ZGUID_HIFENS)];
 *     ZGUID_parse(guid, "{00112233-4455-6677-8899-AABBCCDDEEFF}");
 *     ZGUID_string(text, guid, ZGUID_HIFENS);      "00112233-4455-6677-8899-aabbccddeeff"
 */

#define ZGUID_BYTES 16

/* Flags of ZGUID_string. Other bits have no effect. */
#define ZGUID_HIFENS 1     /* dashes between groups of 8, 4, 4, 4 and 12 digits */
#define ZGUID_MAIUSCULAS 2 /* A to F, not a to f */
#define ZGUID_CHAVES 4     /* in braces */

/* Bytes of the text that ZGUID_string writes under some flags, and under any flags. */
#define ZGUID_STRING_SIZE(flags) \
  (33 + (((flags)&ZGUID_HIFENS) != 0 ? 4 : 0) + (((flags)&ZGUID_CHAVES) != 0 ? 2 : 0))
#define ZGUID_STRING_MAX_SIZE 39

/*
 * ZGUID_parse: the first 32 hexadecimal digits of a text, of either case. Any other character is
 * passed over, missing digits are 0, and what stands behind the 32nd is not read.
 *
 * dest   16 bytes, all written; may overlap the text
 * text   ended by a NUL or 32 digits
 */
CAMPOTIPO_API void ZGUID_parse(unsigned char *dest, const char *text) CAMPOTIPO_NOEXCEPT;

/*
 * ZGUID_string: text of a GUID.
 *
 * dest    ZGUID_STRING_SIZE(flags) bytes, all written; may overlap the GUID
 * guid    16 bytes
 * flags   ZGUID_HIFENS, ZGUID_MAIUSCULAS and ZGUID_CHAVES, added up, or 0
 */
CAMPOTIPO_API void ZGUID_string(char *dest, const unsigned char *guid,
                                int flags) CAMPOTIPO_NOEXCEPT;

/*
 * ZGUID_gera: a new random GUID from the kernel, out of /proc/sys/kernel/random/uuid. Where that
 * file cannot be opened or read, all 16 bytes are 0.
 *
 * dest   16 bytes, all written
 */
CAMPOTIPO_API void ZGUID_gera(unsigned char *dest) CAMPOTIPO_NOEXCEPT;

/* Bytes of the node. */
#define ZGUID_NO_BYTES 6

/* Characters of a sequence text, its NUL and one byte that is always 0. */
#define ZGUID_TEXTO_SIZE 38

/* State of a sequence: 52 bytes without gaps, at any address, owned by the caller. It needs no
 * release. Take a field's value, not its address: the numbers are not aligned. */
typedef struct __attribute__((packed)) ZGUID_ESTADO {
  uint32_t tempo;                   /* low 32 bits of time() at the last ZGUID_prepara */
  unsigned char no[ZGUID_NO_BYTES]; /* the node */
  uint32_t contador;                /* number of the current value */
  char texto[ZGUID_TEXTO_SIZE];     /* its text */
} ZGUID_ESTADO;

/*
 * ZGUID_prepara: begins a sequence. Clears the record, reads the clock, and writes the text of the
 * counter 0.
 *
 * estado   all 52 bytes are written
 * no       count bytes, not in the record; null is allowed with count 0
 * count    bytes of the node; of more than 6 the first 6 are taken, of less than 0 none; bytes not
 *          given are 0
 */
CAMPOTIPO_API void ZGUID_prepara(ZGUID_ESTADO *estado, const unsigned char *no,
                                 int count) CAMPOTIPO_NOEXCEPT;

/*
 * ZGUID_proximo: goes on to the next value: 1 after ZGUID_prepara. After 4294967295 the sequence
 * begins anew with the same node, the clock of that moment and the counter 0.
 *
 * Result: the sequence's texto, overwritten by the next call.
 */
CAMPOTIPO_API char *ZGUID_proximo(ZGUID_ESTADO *estado) CAMPOTIPO_NOEXCEPT;

/* ZGUID_atual: the sequence's texto, as the last ZGUID_prepara or ZGUID_proximo left it. */
CAMPOTIPO_API char *ZGUID_atual(ZGUID_ESTADO *estado) CAMPOTIPO_NOEXCEPT;

/*
 * ------------------------------------------------------------------------------------------------
 * URL text
 * ------------------------------------------------------------------------------------------------
 *
 * Letters, digits and "-", ".", "_", "~" stay as they are: the unreserved set of RFC 3986. Any
 * other byte becomes "%" and two hexadecimal digits in capitals. "+" has no special meaning.
 *
 * Which bytes above 127 are letters depends on the locale that the process has set (LC_CTYPE); in
 * the C locale none is. Reading escapes does not depend on it.
 *
 * Example:
 *
 *     char text[URLENCOD_CODIFICA_SIZE(4)];
 *     URLENCOD_codifica(text, "a b+");       "a%20b%2B"
 *     URLENCOD_decodifica(text, text);       "a b+"
 */

/* Room for any result, from the length of the source without its NUL. */
#define URLENCOD_CODIFICA_SIZE(length) (3 * (length) + 1)
#define URLENCOD_DECODIFICA_SIZE(length) ((length) + 1)

/*
 * URLENCOD_codifica: percent encoding of a text.
 *
 * dest   at most URLENCOD_CODIFICA_SIZE of the length; the result and its NUL are written and
 *        nothing behind it. Must not overlap the source.
 * src    ended by a NUL
 *
 * Result: dest.
 */
CAMPOTIPO_API char *URLENCOD_codifica(char *dest, const char *src) CAMPOTIPO_NOEXCEPT;

/*
 * URLENCOD_decodifica: the text that a percent encoding stands for.
 *
 * An escape that is not complete gives nothing: its "%" is dropped, with the one digit that may
 * stand behind it, and what follows is read like any other text. "100%" gives "100", "%4z" gives
 * "z", "%%41" gives "A". The escape "%00" gives a NUL in the middle of the result.
 *
 * dest   at most URLENCOD_DECODIFICA_SIZE of the length; the result and its NUL are written and
 *        nothing behind it. May be src; must not overlap it otherwise.
 * src    ended by a NUL; digits of either case
 *
 * Result: dest.
 */
CAMPOTIPO_API char *URLENCOD_decodifica(char *dest, const char *src) CAMPOTIPO_NOEXCEPT;

#ifdef __cplusplus
}
#endif

#endif
