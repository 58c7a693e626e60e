/* Numbers of documents: checking, making, punctuation; and a table of one's own. */
#include <campotipo/codes.h>
#include <campotipo/documents.h>
#include <stdio.h>

/* Prints the bytes of a field as a record holds them. */
static void show(const unsigned char *field, int size) {
  int i;
  for (i = 0; i < size; i++) printf("%02X%c", field[i], i + 1 < size ? ' ' : '\n');
}

int main(void) {
  char cpf[] = "52998224725", cnpj[] = "11222333000100", article[] = "7891000315507";
  char number[DOCUMENTO_CNPJ_TEXT_SIZE], shown[DOCUMENTO_CNPJ_EDITADO_SIZE];
  unsigned char field[CODALF14_BYTES];
  ZALGORITM_TABELA ean = {0, 10, 0, {0}, {0, 9, 8, 7, 6, 5, 4, 3, 2, 1}};
  int i;

  printf("%d\n", ZALGORITM_valida_CPF(cpf, 0)); /* prints 1 */
  cpf[10] = '4';
  printf("%d\n", ZALGORITM_valida_CPF(cpf, 0)); /* prints 0 */

  /* Make mode writes the two digits in place. */
  ZALGORITM_valida_CNPJ(cnpj, 1);
  puts(cnpj); /* prints 11222333000181 */

  /* A company's number with letters, as it is typed, and in 11 bytes. */
  printf("%d\n", DOCUMENTO_limpa_CNPJ(number, "12.ABC.345/01DE-35")); /* prints 1 */
  printf("%d\n", DOCUMENTO_valida_CNPJ_alfa(number, 0));              /* prints 1 */
  CODALF14_opc_atob(field, number, 0);
  show(field, CODALF14_BYTES); /* prints 0C 43 0D 38 51 87 08 33 D0 14 70 */
  puts(DOCUMENTO_edita_CNPJ(shown, CODALF14_btoa(number, field))); /* prints 12.ABC.345/01DE-35 */

  /* Weights 3, 1, 3, 1... from the right, modulo 10. */
  for (i = 1; i < ZALGORITM_TABELA_PESOS; i++) ean.weights[i] = i % 2 ? 3 : 1;
  printf("%d\n", ZALGORITM_trata(article, &ean, 0)); /* prints 1 */
  return 0;
}
