#include "bits/bit_dump.hpp"

namespace dump = campotipo::bits::dump;
namespace field = campotipo::bits::field;

extern "C" {

void ZBTFIELD_depura_binario(char *buffer, int size, const unsigned char *packed,
                             const ZBTFIELD_CAMPO *tabela) {
  dump::bits<field::Little>(buffer, size, packed, tabela);
}
void ZBTFIELD_big_depura_binario(char *buffer, int size, const unsigned char *packed,
                                 const ZBTFIELD_CAMPO *tabela) {
  dump::bits<field::Big>(buffer, size, packed, tabela);
}
void ZBTFIELD_depura_conteudo(char *buffer, int size, const unsigned char *packed,
                              const ZBTFIELD_CAMPO *tabela) {
  dump::values<field::Little>(buffer, size, packed, tabela);
}
void ZBTFIELD_big_depura_conteudo(char *buffer, int size, const unsigned char *packed,
                                  const ZBTFIELD_CAMPO *tabela) {
  dump::values<field::Big>(buffer, size, packed, tabela);
}
}
