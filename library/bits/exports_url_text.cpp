#include "bits/url_text.hpp"

namespace url = campotipo::bits::url;

extern "C" {

char *URLENCOD_codifica(char *dest, const char *src) { return url::encode(dest, src); }
char *URLENCOD_decodifica(char *dest, const char *src) { return url::decode(dest, src); }
}
