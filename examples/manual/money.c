/* Money values: texts, arithmetic and rounding. */
#include <campotipo-support/money.h>
#include <campotipo/percent.h>
#include <stdio.h>

int main(void) {
  QUANTIA price, share, sum;
  PARCELA unit;
  char text[QUANTIA_TEXT_SIZE];

  _QUANTIA_atov(&price, "-1234.5");
  puts(_QUANTIA_vtoa(text, &price)); /* prints -1234.50 */

  /* A seventh of it toward zero; the result is what is left over, in hundredths. */
  printf("%d\n", _QUANTIA_div_byte(&share, &price, 7)); /* prints -5 */
  puts(_QUANTIA_vtoa(text, &share));                    /* prints -176.35 */
  _QUANTIA_mul_byte(&sum, &share, 7);
  _QUANTIA_som_long(&sum, &sum, -5);
  printf("%d\n", _QUANTIA_comp(&sum, &price)); /* prints 0 */

  /* A PARCELA has PARCELA_fixo decimals, 4 at load; two of them survive. */
  PARCELA_atov(&unit, "0.3750");
  ARRED_v4_nbr(&unit, 2, 0);
  puts(PARCELA_vtoa(text, &unit)); /* prints 0.3800 */
  return 0;
}
