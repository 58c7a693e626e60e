#pragma once

#include <campotipo/codes.h>

#include <array>
#include <utility>

// The members of the packed codes: what tests, fuzzers and the check of threads run over.
namespace campotipo::test {

struct PackedCode {
  const char *name;
  int n, bytes, text_size;
  int (*save)(unsigned char *, const char *, int);
  void (*save_only)(unsigned char *, const char *, int);
  char *(*read)(char *, const unsigned char *, int, int);
  char *(*read_whole)(char *, const unsigned char *);
  int (*compare)(const unsigned char *, const unsigned char *);
  int (*equal)(const unsigned char *, const unsigned char *);
  int (*has_content)(const unsigned char *, int);
  int (*well_formed)(const unsigned char *);
};

// clang-format off
inline constexpr PackedCode kPackedCodes[] = {
    {"CODALF05", CODALF05_CHARACTERS, CODALF05_BYTES, CODALF05_TEXT_SIZE,
     CODALF05_opc_salvou, CODALF05_opc_atob, CODALF05_opc_btoa, CODALF05_btoa,
     CODALF05_compara, CODALF05_igual, CODALF05_nao_zero, CODALF05_bem_formado},
    {"CODALF12", CODALF12_CHARACTERS, CODALF12_BYTES, CODALF12_TEXT_SIZE,
     CODALF12_opc_salvou, CODALF12_opc_atob, CODALF12_opc_btoa, CODALF12_btoa,
     CODALF12_compara, CODALF12_igual, CODALF12_nao_zero, CODALF12_bem_formado},
    {"CODALF14", CODALF14_CHARACTERS, CODALF14_BYTES, CODALF14_TEXT_SIZE,
     CODALF14_opc_salvou, CODALF14_opc_atob, CODALF14_opc_btoa, CODALF14_btoa,
     CODALF14_compara, CODALF14_igual, CODALF14_nao_zero, CODALF14_bem_formado},
    {"CODALF17", CODALF17_CHARACTERS, CODALF17_BYTES, CODALF17_TEXT_SIZE,
     CODALF17_opc_salvou, CODALF17_opc_atob, CODALF17_opc_btoa, CODALF17_btoa,
     CODALF17_compara, CODALF17_igual, CODALF17_nao_zero, CODALF17_bem_formado},
    {"CODALF20", CODALF20_CHARACTERS, CODALF20_BYTES, CODALF20_TEXT_SIZE,
     CODALF20_opc_salvou, CODALF20_opc_atob, CODALF20_opc_btoa, CODALF20_btoa,
     CODALF20_compara, CODALF20_igual, CODALF20_nao_zero, CODALF20_bem_formado},
    {"CODALF32", CODALF32_CHARACTERS, CODALF32_BYTES, CODALF32_TEXT_SIZE,
     CODALF32_opc_salvou, CODALF32_opc_atob, CODALF32_opc_btoa, CODALF32_btoa,
     CODALF32_compara, CODALF32_igual, CODALF32_nao_zero, CODALF32_bem_formado},
    {"CODALF36", CODALF36_CHARACTERS, CODALF36_BYTES, CODALF36_TEXT_SIZE,
     CODALF36_opc_salvou, CODALF36_opc_atob, CODALF36_opc_btoa, CODALF36_btoa,
     CODALF36_compara, CODALF36_igual, CODALF36_nao_zero, CODALF36_bem_formado},
    {"CODALF40", CODALF40_CHARACTERS, CODALF40_BYTES, CODALF40_TEXT_SIZE,
     CODALF40_opc_salvou, CODALF40_opc_atob, CODALF40_opc_btoa, CODALF40_btoa,
     CODALF40_compara, CODALF40_igual, CODALF40_nao_zero, CODALF40_bem_formado},
};
// clang-format on

// The same of a width that is told with each call.
template <int width>
inline constexpr PackedCode kCodeOf = {
    "CODALFA",
    width,
    CODALFA_BYTES(width),
    width + 1,
    [](unsigned char *dest, const char *text, int opc) {
      return CODALFA_opc_salvou(dest, text, width, opc);
    },
    [](unsigned char *dest, const char *text, int opc) {
      CODALFA_opc_salva(dest, text, width, opc);
    },
    [](char *dest, const unsigned char *src, int opc, int least) {
      CODALFA_opc_extrai(dest, src, width, opc, least);
      return dest;
    },
    [](char *dest, const unsigned char *src) {
      CODALFA_extrai(dest, src, width);
      return dest;
    },
    [](const unsigned char *a, const unsigned char *b) { return CODALFA_compara(a, b, width); },
    [](const unsigned char *a, const unsigned char *b) {
      return int{CODALFA_compara(a, b, width) == 0};
    },
    [](const unsigned char *src, int opc) { return CODALFA_nao_zero(src, width, opc); },
    [](const unsigned char *src) { return CODALFA_bem_formado(src, width); }};

// The widths from 1 to `most`.
template <int most>
inline constexpr auto kCodesUpTo = []<int... n>(std::integer_sequence<int, n...>) {
  return std::array{kCodeOf<n + 1>...};
}
(std::make_integer_sequence<int, most>());

}  // namespace campotipo::test
