/* A record of four fields: a taxpayer number, a due date, an amount and a rate of interest. */
#include <campotipo-support/numbers.h>
#include <campotipo/campotipo.h>
#include <stdio.h>

int main(void) {
  unsigned char cnpj[CODALF14_BYTES], due[DATAC_BYTES], rate[PORC2_BYTES];
  QUANTIA amount, interest;
  char number[] = "00000000000191", date[DATAC_EDITA4_TEXT_SIZE], text[QUANTIA_TEXT_SIZE];

  DATAC_formato = DATAC_FORMATO_COMPACTO; /* every date written holds its year in full */
  if (!ZALGORITM_valida_CNPJ(number, 0)) return 1;
  CODALF14_opc_atob(cnpj, number, 0); /* 14 digits in 11 bytes */
  DATAC_monta(due, 31, 1, 2024);      /* a date in 3 bytes */
  DATAC_avanca_meses_dentro(due, 1);
  _QUANTIA_atov(&amount, "1234.60");
  _ato2fixo(rate, "12.50", 2);
  PORC2_multipl_arr_nbr(&interest, &amount, rate); /* 154.325 by ABNT NBR 5891 */
  printf("%s: %s\n", DATAC_edita4(date, due), _QUANTIA_vtoa(text, &interest));
  /* prints 29/02/2024: 154.32 */
  return 0;
}
