#include <campotipo-support/numbers.h>
#include <string.h>

int main(void) {
  unsigned char field[2];
  char text[BIN2_TEXT_SIZE];

  _ato2(field, "1250");
  return strcmp(_2toa(text, field), "1250") != 0;
}
