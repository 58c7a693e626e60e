#ifndef CAMPOTIPO_DOCUMENTS_H
#define CAMPOTIPO_DOCUMENTS_H

#include <campotipo/idnumbers.h>

/*
 * Numbers of Brazilian documents
 * ==============================
 *
 *   document             characters  with its punctuation
 *   CPF                  11          123.456.789-09
 *   CNPJ, CNPJ_alfa      14          12.ABC.345/01DE-35
 *   PIS                  11          120.56874.10-7
 *   RENAVAM              11          none in use
 *   chave_acesso         44          eleven groups of four, a blank between them
 *   boleto_barras        44          none: a bar code
 *   boleto_linha         47          34191.79001 01043.510047 91020.150008 5 70880000002000
 *   arrecadacao_barras   44          none: a bar code
 *   arrecadacao_linha    48          83640000001-1 33120138000-2 81288462711-6 08013618155-1
 *   titulo               12          1023 8501 0671
 *   cartao               12 to 19    4111 1111 1111 1111
 *   CNS                  15          898 0000 0004 3208
 *   CNH                  11          none in use
 *   processo             20          0058967-77.2016.8.19.0000
 *
 * A number is good when its check digits fit. That says nothing of whether it was ever given out.
 *
 * The characters are digits; a CNPJ_alfa and the number of the issuer within an access key have
 * capital letters too. Small letters are refused everywhere. Unlike ZALGORITM_valida_CPF and
 * ZALGORITM_valida_CNPJ, the operations here take a number in its full length only.
 *
 * Texts end with a NUL and are read as <campotipo/idnumbers.h> tells. Pointers are never null.
 * Nothing allocates, keeps state or depends on the locale. Threads: operations on different data may
 * run at the same time.
 *
 * Example: a company's number with letters as a person types it, and in the eleven bytes of a
 * packed code of 14 positions (CODALF14, in <campotipo/codes.h>), whose alphabet has all of its
 * characters.
 *
 *     char number[DOCUMENTO_CNPJ_TEXT_SIZE], shown[DOCUMENTO_CNPJ_EDITADO_SIZE];
 *     unsigned char field[CODALF14_BYTES];
 *     DOCUMENTO_limpa_CNPJ(number, "12.ABC.345/01DE-35");      1, and "12ABC34501DE35"
 *     DOCUMENTO_valida_CNPJ_alfa(number, 0);                   1
 *     CODALF14_opc_atob(field, number, 0);
 *     CODALF14_btoa(number, field);                            "12ABC34501DE35" again
 *     DOCUMENTO_edita_CNPJ(shown, number);                     "12.ABC.345/01DE-35"
 */

#ifdef __cplusplus
extern "C" {
#endif

/* Bytes of a text with its NUL. */
#define DOCUMENTO_CPF_TEXT_SIZE 12
#define DOCUMENTO_CNPJ_TEXT_SIZE 15
#define DOCUMENTO_PIS_TEXT_SIZE 12
#define DOCUMENTO_RENAVAM_TEXT_SIZE 12
#define DOCUMENTO_CHAVE_ACESSO_TEXT_SIZE 45
#define DOCUMENTO_BOLETO_BARRAS_TEXT_SIZE 45
#define DOCUMENTO_BOLETO_LINHA_TEXT_SIZE 48
#define DOCUMENTO_ARRECADACAO_BARRAS_TEXT_SIZE 45
#define DOCUMENTO_ARRECADACAO_LINHA_TEXT_SIZE 49
#define DOCUMENTO_TITULO_TEXT_SIZE 13
#define DOCUMENTO_CARTAO_TEXT_SIZE 20
#define DOCUMENTO_CNS_TEXT_SIZE 16
#define DOCUMENTO_CNH_TEXT_SIZE 12
#define DOCUMENTO_PROCESSO_TEXT_SIZE 21

/* Digits of the shortest card number. */
#define DOCUMENTO_CARTAO_MENOR 12

/* Bytes of a text with its punctuation and its NUL. */
#define DOCUMENTO_CPF_EDITADO_SIZE 15
#define DOCUMENTO_CNPJ_EDITADO_SIZE 19
#define DOCUMENTO_PIS_EDITADO_SIZE 15
#define DOCUMENTO_CHAVE_ACESSO_EDITADO_SIZE 55
#define DOCUMENTO_BOLETO_LINHA_EDITADO_SIZE 55
#define DOCUMENTO_ARRECADACAO_LINHA_EDITADO_SIZE 56
#define DOCUMENTO_TITULO_EDITADO_SIZE 15
#define DOCUMENTO_CARTAO_EDITADO_SIZE 24
#define DOCUMENTO_CNS_EDITADO_SIZE 19
#define DOCUMENTO_PROCESSO_EDITADO_SIZE 26

/*
 * ------------------------------------------------------------------------------------------------
 * Check digits
 * ------------------------------------------------------------------------------------------------
 *
 * valida: check or make the check digits of a number.
 *
 * text   the characters of the document and no punctuation; in make mode the places of the check
 *        digits hold any digits
 * make   0 to check, anything else to write the check digits into the text
 *
 * Result: 1 if the check digits stand in the text, as they always do when they were made; else 0,
 * and the text is unchanged. Also 0 for another length, for another character, for zeros alone, and
 * for what a document's own comment refuses.
 */

/*
 * valida_CNPJ_alfa: company, 12 of "0" to "9" and "A" to "Z", then two digits. A character counts
 * its ASCII code less 48: "A" is 17, "Z" is 42. Weights 2 to 9 over and over from the right, the
 * second digit counts the first, remainder modulo 11, 0 for a remainder below 2, else 11 less the
 * remainder. A number of digits alone has the result of ZALGORITM_valida_CNPJ.
 *
 * Source: Instrucao Normativa RFB 2.229/2024 and Nota Tecnica COCAD/SUARA/RFB 49/2024.
 */
CAMPOTIPO_API int DOCUMENTO_valida_CNPJ_alfa(char *text, int make) CAMPOTIPO_NOEXCEPT;

/*
 * valida_PIS: worker's number (PIS, PASEP, NIS, NIT). Weights 3, 2, 9, 8, 7, 6, 5, 4, 3, 2 from the
 * left, 0 for a remainder below 2, else 11 less the remainder.
 * valida_RENAVAM: vehicle, the same rule. Numbers of nine digits from before April 2013 are written
 * with two zeros in front.
 *
 * Source: the rules as the public routines for both give them; Denatran's notice of 2012 on the
 * eleven digits, which keeps the rule.
 */
CAMPOTIPO_API int DOCUMENTO_valida_PIS(char *text, int make) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int DOCUMENTO_valida_RENAVAM(char *text, int make) CAMPOTIPO_NOEXCEPT;

/*
 * valida_chave_acesso: access key of an electronic invoice (NF-e, NFC-e, CT-e, MDF-e and kin).
 * Weights 2 to 9 over and over from the right, the digit as above. Characters 7 to 18, which belong
 * to the issuer's number, may be capitals and count as in a CNPJ_alfa. The digits of the issuer's
 * own number are not checked: a person's CPF may stand there.
 *
 * Source: Manual de Orientacao do Contribuinte (NF-e), access key; Nota Tecnica Conjunta 2025.001
 * for the letters.
 */
CAMPOTIPO_API int DOCUMENTO_valida_chave_acesso(char *text, int make) CAMPOTIPO_NOEXCEPT;

/*
 * valida_boleto_barras: bank slip, the bar code. The general digit is the fifth: weights 2 to 9
 * over and over from the right, the digit's place stepped over, 11 less the remainder, and 1 where
 * that gives 0, 10 or 11. A first digit of 8 is a utility slip's and refused.
 * valida_boleto_linha: the line typed from it. Its first three fields have a digit of their own by
 * modulo 10 (weights 2 and 1 from the right, the digits of each product summed); the fourth is the
 * general digit. Both kinds of digit are checked, or made.
 *
 * Source: Carta-Circular 2.926/2000 of the Banco Central do Brasil, as the banks' manuals spell it
 * out ("Especificacoes Tecnicas para Confeccao de Boleto", Banco do Brasil).
 */
CAMPOTIPO_API int DOCUMENTO_valida_boleto_barras(char *text, int make) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int DOCUMENTO_valida_boleto_linha(char *text, int make) CAMPOTIPO_NOEXCEPT;

/*
 * valida_arrecadacao_barras: utility or tax slip, the bar code. The first digit is 8. The third
 * tells the method: 6 or 7 modulo 10 as above, 8 or 9 modulo 11 (weights 2 to 9, 0 for a remainder
 * below 2); any other is refused. The general digit is the fourth.
 * valida_arrecadacao_linha: the line, four blocks of eleven digits, each with a digit of its own by
 * the same method.
 *
 * Source: FEBRABAN, Layout Padrao de Arrecadacao/Recebimento com Utilizacao do Codigo de Barras.
 * Some public routines take 8 and 9 for modulo 10; FEBRABAN's table is followed.
 */
CAMPOTIPO_API int DOCUMENTO_valida_arrecadacao_barras(char *text, int make) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int DOCUMENTO_valida_arrecadacao_linha(char *text, int make) CAMPOTIPO_NOEXCEPT;

/*
 * valida_titulo: voter, a serial number of eight digits, the state, 01 to 28, and two check digits.
 * The first is the remainder modulo 11 of the serial number with the weights 2 to 9 from the left,
 * the second that of the state and the first digit with 7, 8 and 9; 10 gives 0. In SP and MG,
 * states 01 and 02, a remainder of 0 gives 1 for both. A serial number of eight zeros is refused.
 *
 * Source: Resolucao TSE 23.659/2021, article 36, for the form, of twelve digits at most; weights as
 * OBMEP tells them ("A matematica nos documentos"). Public routines agree on SP and MG for the first
 * digit; some leave the second at 0. Followed are those that give both a 1 (brazilian-utils).
 */
CAMPOTIPO_API int DOCUMENTO_valida_titulo(char *text, int make) CAMPOTIPO_NOEXCEPT;

/*
 * valida_cartao: payment card, 12 to 19 digits, the last one by Luhn's rule: from the right every
 * second digit doubled, the digits of each product summed, the total filled up to a multiple of 10.
 *
 * Source: ISO/IEC 7812-1, annex B. The standard allows shorter numbers too, which cards in use do
 * not have.
 */
CAMPOTIPO_API int DOCUMENTO_valida_cartao(char *text, int make) CAMPOTIPO_NOEXCEPT;

/*
 * valida_CNS: health card. The digits with the weights 15 to 1 from the left add up to a multiple of
 * 11. The first digit is 7, 8 or 9, and no number is made where the last would have to be 10; or it
 * is 1 or 2, and then eleven digits are followed by "000" and the check digit, or by "0018" where
 * that digit would be 10. Make writes all four behind the eleven.
 *
 * Source: the routine of the Ministerio da Saude, as Anvisa publishes it (Registro Nacional de
 * Implantes, Validacao CNS). Sources that test the sum alone accept other digits behind the eleven.
 */
CAMPOTIPO_API int DOCUMENTO_valida_CNS(char *text, int make) CAMPOTIPO_NOEXCEPT;

/*
 * valida_CNH: driver's licence, nine digits and two check digits. The first is the remainder modulo
 * 11 with the weights 9 to 1, the second with 1 to 9. A first digit of 10 becomes 0 and takes 2 off
 * the second; a second one below 0 has 11 added to it; a second one of 10 becomes 0.
 *
 * Source: Resolucao CONTRAN 192/2006 for the form; the method is not in it, and the public routines
 * disagree on the second digit when 2 is taken off it. Followed is the one that holders of such
 * licences found to fit theirs (devmedia.com.br, forum, topic 354889): the others cut a remainder
 * of 10 first, or let the digit stay below 0.
 */
CAMPOTIPO_API int DOCUMENTO_valida_CNH(char *text, int make) CAMPOTIPO_NOEXCEPT;

/*
 * valida_processo: court case, NNNNNNN-DD.AAAA.J.TR.OOOO. DD is 98 less the remainder modulo 97 of
 * the other digits in their order and "00".
 *
 * Source: Resolucao CNJ 65/2008, annex VIII; ISO 7064, MOD 97-10.
 */
CAMPOTIPO_API int DOCUMENTO_valida_processo(char *text, int make) CAMPOTIPO_NOEXCEPT;

/*
 * para_barras: bar code of a typed line. para_linha: typed line of a bar code.
 *
 * dest   DOCUMENTO_..._BARRAS_TEXT_SIZE or DOCUMENTO_..._LINHA_TEXT_SIZE bytes; may be text itself
 * text   the line or the bar code, digits alone
 *
 * Result: 1. If a check digit of the text does not fit, 0, and dest is the empty text.
 */
CAMPOTIPO_API int DOCUMENTO_boleto_para_barras(char *dest, const char *text) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int DOCUMENTO_boleto_para_linha(char *dest, const char *text) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int DOCUMENTO_arrecadacao_para_barras(char *dest,
                                                    const char *text) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int DOCUMENTO_arrecadacao_para_linha(char *dest, const char *text) CAMPOTIPO_NOEXCEPT;

/*
 * The tables behind these numbers, for ZALGORITM_trata. It takes any length and knows no letters.
 *
 *   tabela_PIS               PIS and RENAVAM
 *   tabela_chave_acesso      access key
 *   tabela_modulo10          field of a bank slip's line, block of a utility slip's (6, 7)
 *   tabela_modulo11          block of a utility slip's line (8, 9)
 *   tabela_boleto            general digit in the bar code of a bank slip
 *   tabela_arrecadacao10     general digit in the bar code of a utility slip (6, 7)
 *   tabela_arrecadacao11     the same (8, 9)
 *   tabela_titulo_1, _2      first and second digit of a voter's number
 *   ..._SP_MG                the same for the states 01 and 02
 *   tabela_cartao            card
 *   tabela_CNS               health card; remainder 1 makes ":", which no number holds
 */
CAMPOTIPO_API extern const ZALGORITM_TABELA DOCUMENTO_tabela_PIS;
CAMPOTIPO_API extern const ZALGORITM_TABELA DOCUMENTO_tabela_chave_acesso;
CAMPOTIPO_API extern const ZALGORITM_TABELA DOCUMENTO_tabela_modulo10;
CAMPOTIPO_API extern const ZALGORITM_TABELA DOCUMENTO_tabela_modulo11;
CAMPOTIPO_API extern const ZALGORITM_TABELA DOCUMENTO_tabela_boleto;
CAMPOTIPO_API extern const ZALGORITM_TABELA DOCUMENTO_tabela_arrecadacao10;
CAMPOTIPO_API extern const ZALGORITM_TABELA DOCUMENTO_tabela_arrecadacao11;
CAMPOTIPO_API extern const ZALGORITM_TABELA DOCUMENTO_tabela_titulo_1;
CAMPOTIPO_API extern const ZALGORITM_TABELA DOCUMENTO_tabela_titulo_2;
CAMPOTIPO_API extern const ZALGORITM_TABELA DOCUMENTO_tabela_titulo_1_SP_MG;
CAMPOTIPO_API extern const ZALGORITM_TABELA DOCUMENTO_tabela_titulo_2_SP_MG;
CAMPOTIPO_API extern const ZALGORITM_TABELA DOCUMENTO_tabela_cartao;
CAMPOTIPO_API extern const ZALGORITM_TABELA DOCUMENTO_tabela_CNS;

/*
 * ------------------------------------------------------------------------------------------------
 * Punctuation
 * ------------------------------------------------------------------------------------------------
 *
 * edita: the text with the punctuation of the first table.
 *
 * dest   DOCUMENTO_..._EDITADO_SIZE bytes, not within the text
 * text   the characters of the document and no punctuation; the check digits are not looked at
 *
 * Result: dest. Another length or another character gives the empty text. A card is shown in groups
 * of four whatever its length. CNPJ takes letters.
 */
CAMPOTIPO_API char *DOCUMENTO_edita_CPF(char *dest, const char *text) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *DOCUMENTO_edita_CNPJ(char *dest, const char *text) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *DOCUMENTO_edita_PIS(char *dest, const char *text) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *DOCUMENTO_edita_chave_acesso(char *dest, const char *text) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *DOCUMENTO_edita_boleto_linha(char *dest, const char *text) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *DOCUMENTO_edita_arrecadacao_linha(char *dest,
                                                      const char *text) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *DOCUMENTO_edita_titulo(char *dest, const char *text) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *DOCUMENTO_edita_cartao(char *dest, const char *text) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *DOCUMENTO_edita_CNS(char *dest, const char *text) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API char *DOCUMENTO_edita_processo(char *dest, const char *text) CAMPOTIPO_NOEXCEPT;

/*
 * limpa: the text without punctuation.
 *
 * "." "-" "/" and blanks (0x20, 0x09 to 0x0D) are taken out wherever they stand, so that a text
 * punctuated in another way, or in part, is understood too.
 *
 * dest   DOCUMENTO_..._TEXT_SIZE bytes, no more of which are written; may be text itself
 * text   any
 *
 * Result: 1. If what is left is not of the document's length and characters, 0, and dest is the
 * empty text. The check digits are not looked at. CNPJ and chave_acesso keep capitals where such a
 * number may have them.
 */
CAMPOTIPO_API int DOCUMENTO_limpa_CPF(char *dest, const char *text) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int DOCUMENTO_limpa_CNPJ(char *dest, const char *text) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int DOCUMENTO_limpa_PIS(char *dest, const char *text) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int DOCUMENTO_limpa_chave_acesso(char *dest, const char *text) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int DOCUMENTO_limpa_boleto_linha(char *dest, const char *text) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int DOCUMENTO_limpa_arrecadacao_linha(char *dest,
                                                    const char *text) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int DOCUMENTO_limpa_titulo(char *dest, const char *text) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int DOCUMENTO_limpa_cartao(char *dest, const char *text) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int DOCUMENTO_limpa_CNS(char *dest, const char *text) CAMPOTIPO_NOEXCEPT;
CAMPOTIPO_API int DOCUMENTO_limpa_processo(char *dest, const char *text) CAMPOTIPO_NOEXCEPT;

/* Bits of DOCUMENTO_identifica. */
#define DOCUMENTO_BIT_CPF 0x0001
#define DOCUMENTO_BIT_CNPJ 0x0002
#define DOCUMENTO_BIT_CNPJ_ALFA 0x0004
#define DOCUMENTO_BIT_PIS 0x0008
#define DOCUMENTO_BIT_RENAVAM 0x0010
#define DOCUMENTO_BIT_CHAVE_ACESSO 0x0020
#define DOCUMENTO_BIT_BOLETO_BARRAS 0x0040
#define DOCUMENTO_BIT_BOLETO_LINHA 0x0080
#define DOCUMENTO_BIT_ARRECADACAO_BARRAS 0x0100
#define DOCUMENTO_BIT_ARRECADACAO_LINHA 0x0200
#define DOCUMENTO_BIT_TITULO 0x0400
#define DOCUMENTO_BIT_CARTAO 0x0800
#define DOCUMENTO_BIT_CNS 0x1000
#define DOCUMENTO_BIT_CNH 0x2000
#define DOCUMENTO_BIT_PROCESSO 0x4000

/*
 * identifica: which documents a text can be, clean or with any punctuation that limpa takes out.
 *
 * text   any, ended by a NUL
 *
 * Result: a bit for each document that has the text's length and whose valida gives 1 for it; 0 if
 * there is none. A number of eleven digits is often good as more than one; a CNPJ of digits alone
 * has both bits of a CNPJ, a PIS that of a RENAVAM too.
 */
CAMPOTIPO_API int DOCUMENTO_identifica(const char *text) CAMPOTIPO_NOEXCEPT;

#ifdef __cplusplus
}
#endif

#endif
