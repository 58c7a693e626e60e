/* Succeeds over the money of tests/site, which wraps at the end of its range, and nowhere else. */
#include <campotipo/campotipo.h>
#include <string.h>

int main(void) {
  const unsigned char twice[PORC0_BYTES] = {200};
  unsigned char date[DATAC_BYTES];
  char text[DATAC_EDITA4_TEXT_SIZE], amount[QUANTIA_TEXT_SIZE];
  QUANTIA top, product;

  _QUANTIA_atov(&top, "92233720368547758.07");
  PORC0_multiplica(&product, &top, twice);
  /* The services that were kept. */
  DATAC_edita4(text, DATAC_fmt_monta(date, DATAC_FORMATO_COMPACTO, 29, 2, 2024));
  return strcmp(_QUANTIA_vtoa(amount, &product), "-0.02") != 0 || strcmp(text, "29/02/2024") != 0 ||
         DATAC_zuliano(date) != 16131;
}
