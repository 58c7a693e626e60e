#include "bits/guid.hpp"

namespace guid = campotipo::bits::guid;

extern "C" {

void ZGUID_prepara(ZGUID_ESTADO *estado, const unsigned char *no, int count) {
  guid::prepare(estado, no, count);
}
char *ZGUID_proximo(ZGUID_ESTADO *estado) { return guid::next(estado); }
char *ZGUID_atual(ZGUID_ESTADO *estado) { return estado->texto; }

void ZGUID_parse(unsigned char *dest, const char *text) { guid::parse(dest, text); }
void ZGUID_string(char *dest, const unsigned char *guid_bytes, int flags) {
  guid::to_text(dest, guid_bytes, flags);
}
void ZGUID_gera(unsigned char *dest) { guid::generate(dest); }
}
