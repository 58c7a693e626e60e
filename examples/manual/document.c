/* Taxpayer numbers, and check digits of a table of one's own. */
#include <campotipo/idnumbers.h>
#include <stdio.h>

/* [example] */
int main(void) {
  char cpf[] = "52998224725", cnpj[] = "11222333000100", article[] = "7891000315507";
  ZALGORITM_TABELA ean = {0, 10, 0, {0}, {0, 9, 8, 7, 6, 5, 4, 3, 2, 1}};
  int i;

  printf("%d\n", ZALGORITM_valida_CPF(cpf, 0)); /* prints 1 */
  cpf[10] = '4';
  printf("%d\n", ZALGORITM_valida_CPF(cpf, 0)); /* prints 0 */

  /* Make mode writes the two digits in place. */
  ZALGORITM_valida_CNPJ(cnpj, 1);
  puts(cnpj); /* prints 11222333000181 */

  /* Weights 3, 1, 3, 1... from the right, modulo 10. */
  for (i = 1; i < ZALGORITM_TABELA_PESOS; i++) ean.weights[i] = i % 2 ? 3 : 1;
  printf("%d\n", ZALGORITM_trata(article, &ean, 0)); /* prints 1 */
  return 0;
}
/* [example] */
