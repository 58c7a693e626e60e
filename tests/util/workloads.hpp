#pragma once

#include <campotipo-support/calendar.h>
#include <campotipo-support/money.h>
#include <campotipo-support/numbers.h>
#include <campotipo/campotipo.h>

#include <cstring>
#include <ctime>

#include "tests/members/numeric.hpp"
#include "tests/percent/agreement.hpp"
#include "tests/util/random.hpp"

// Every family put to work on samples made from a seed, without a container of the C++ library, so
// that programs can use it that instrument all their code.
namespace campotipo::test {

// What one operation or several are given, all from one seed, and room for what they make.
struct Sample {
  explicit Sample(unsigned seed) {
    Random random(seed);
    constexpr char kCharacters[] = "00112233445566778899.-%+ AbZ{}/";
    for (std::size_t i = 0; i < 60; ++i)
      text[i] = i < 12 ? static_cast<char>(random.between<int>('0', '9'))
                       : kCharacters[random.between<std::size_t>(0, sizeof kCharacters - 2)];
    text[random.between(8, 60)] = '\0';
    for (unsigned char *bytes : {a, b})
      for (int i = 0; i < 64; ++i) bytes[i] = static_cast<unsigned char>(random.word());
    number = random.between(-40000, 40000);
  }

  void keep(const void *bytes, std::size_t size) {
    const auto *first = static_cast<const unsigned char *>(bytes);
    if (size > sizeof results - count) __builtin_trap();
    std::memcpy(results + count, first, size);
    count += size;
  }
  void keep(std::int64_t value) { keep(&value, sizeof value); }
  void keep(const char *made) { keep(made, std::strlen(made) + 1); }
  unsigned char *dest() {
    return static_cast<unsigned char *>(std::memset(field, 0, sizeof field));
  }
  void keep_field() { keep(field, sizeof field); }

  char text[64] = {};
  unsigned char a[64], b[64];
  int number;
  unsigned char field[64];
  char out[512];
  std::size_t count = 0;
  unsigned char results[32768];
};

using ToField = int (*)(unsigned char *, const char *);
using ToText = char *(*)(char *, const unsigned char *);
using Compare = int (*)(const unsigned char *, const unsigned char *);

inline void numbers(Sample *s) {
  for (const Numeric &member : kBinaries) {
    s->keep(member.from_text(s->dest(), s->text));
    s->keep(member.to_text(s->out, s->field));
    s->keep(member.compare(s->field, s->a));
  }
  s->keep(_ato8fixo(s->dest(), s->text, 3));
  s->keep(_8toafixo(s->out, s->field, 2));
  _8soma(s->dest(), s->a, s->b);
  _8byte_div_byte(s->field, s->field, 7);
  s->keep_field();
}

inline void quantities(Sample *s) {
  for (const Numeric &member : kQuantities) {
    s->keep(member.from_text(s->dest(), s->text));
    s->keep(member.to_text(s->out, s->field));
    s->keep(member.compare(s->field, s->a));
    if (member.bytes >= kFirstScaled) member.scaling.multiply(s->field, s->field, s->a[0] % 20u);
    s->keep(member.well_formed(s->field));
    s->keep_field();
  }
  for (int width = 0; width < 23; ++width) {
    s->keep(ZBINARIO_converteu_para_binario(s->dest(), width, s->text));
    s->out[0] = '\0';
    s->keep(ZBINARIO_converteu_de_binario(s->out, s->field, width));
    s->keep(s->out);
  }
}

inline void digit_strings(Sample *s) {
  constexpr struct {
    ToField to_field;
    ToText to_text;
  } kMembers[] = {{BSTR21_atob, BSTR21_btoa}, {BSTR23_atob, BSTR23_btoa},
                  {BSTR26_atob, BSTR26_btoa}, {BSTR28_atob, BSTR28_btoa},
                  {BSTR31_atob, BSTR31_btoa}, {BSTR33_atob, BSTR33_btoa},
                  {BSTR35_atob, BSTR35_btoa}, {BSTR38_atob, BSTR38_btoa}};
  for (const auto &member : kMembers) {
    s->keep(member.to_field(s->dest(), s->text));
    s->keep(member.to_text(s->out, s->field));
  }
}

inline void codes(Sample *s) {
  constexpr struct {
    int (*save)(unsigned char *, const char *, int);
    char *(*read)(char *, const unsigned char *, int, int);
    Compare compare;
  } kMembers[] = {{CODALF05_opc_salvou, CODALF05_opc_btoa, CODALF05_compara},
                  {CODALF12_opc_salvou, CODALF12_opc_btoa, CODALF12_compara},
                  {CODALF14_opc_salvou, CODALF14_opc_btoa, CODALF14_compara},
                  {CODALF17_opc_salvou, CODALF17_opc_btoa, CODALF17_compara},
                  {CODALF20_opc_salvou, CODALF20_opc_btoa, CODALF20_compara},
                  {CODALF32_opc_salvou, CODALF32_opc_btoa, CODALF32_compara},
                  {CODALF36_opc_salvou, CODALF36_opc_btoa, CODALF36_compara},
                  {CODALF40_opc_salvou, CODALF40_opc_btoa, CODALF40_compara}};
  const int opc = s->number & 15;
  for (const auto &member : kMembers) {
    s->keep(member.save(s->dest(), s->text, opc));
    s->keep(member.read(s->out, s->field, opc, 8));
    s->keep(member.compare(s->field, s->a));
  }
  CODALFNN record;
  CODALFNN_cria(&record, 55, opc);
  CODALFNN_atob(&record, s->text);
  s->keep(CODALFNN_btoa(s->out, &record));
  CODALFNN_destroi(&record);
  CODSTR52_opc_atob(s->dest(), s->text, opc);
  s->keep(CODSTR52_btoa(s->out, s->field));
  CODSTR50_atob(s->dest(), s->text);
  s->keep(CODSTR50_compara(s->field, s->a));
  s->keep(CODALFA_maior_caracter());
}

inline void percents(Sample *s) {
  QUANTIA value = test::quantia(s->number), made;
  PARCELA value4 = test::parcela(s->number), made4;
  for (const auto &family : test::kFamilies) {
    for (int rule = 0; rule < 3; ++rule) {
      family.multiply[rule](&made, &value, s->a);
      s->keep(&made, sizeof made);
      family.multiply_v4[rule](&made4, &value4, s->a, 2);
      s->keep(&made4, sizeof made4);
      family.search[rule](&made, &value, s->b);
      s->keep(&made, sizeof made);
    }
    for (const auto edit : family.edit) s->keep(edit(s->out, s->a));
    family.invert(s->dest(), s->a);
    family.divide(s->field + 8, &made, &value);
    s->keep_field();
  }
  for (auto *divide : {ARRED_div10_5sobe, ARRED_div100_nbr, ARRED_div100000_nbr}) {
    made = value;
    divide(&made);
    s->keep(_QUANTIA_vtoa(s->out, &made));
  }
}

inline void calendar(Sample *s) {
  DATAC_fmt_monta(s->dest(), s->number & 1, s->a[0] % 32, s->a[1] % 13, s->a[2]);
  DATAC_avanca_dias(s->field, s->number);
  s->keep(DATAC_edita_1sep(s->out, s->field, '/', s->number & 7));
  s->keep(DATAC_zuliano_desde(s->field, 1900));
  s->keep(DATAC_para_time_t(s->field));
  DATAC_de_time_t(s->field + 3, std::time_t{s->number} * 86400);
  DATAC_avanca_meses(s->field + 3, s->number % 500);
  DATAC_atod(s->field + 6, s->text);
  DATAC_proximo_ddmm(s->field + 9, s->field, 2902);
  s->keep(DATAC_dia_da_semana(s->field + 9));
  s->keep(HORAC_edita(s->out, s->a));
  s->keep(HHMMSS_edita_sep(s->out, s->b, ':', s->number & 3));
  s->keep(CRONOBASE_zuliano(1, 2, 1980 + (s->number & 63)));
  s->keep_field();
}

inline void idnumbers(Sample *s) {
  using Treat = int (*)(char *, int);
  for (const Treat treat : {ZALGORITM_valida_CPF, ZALGORITM_valida_CNPJ, DIGVERIF_monta_dv_modulo11,
                            DOCUMENTO_valida_PIS, DOCUMENTO_valida_titulo, DOCUMENTO_valida_cartao})
    for (const std::size_t length : {11, 12, 14}) {
      char number[15] = "77777777777777";
      const std::size_t given = std::strlen(s->text);
      std::memcpy(number, s->text, given < length ? given : length);
      number[length] = '\0';
      s->keep(treat(number, 1));
      s->keep(number);
    }
  const int parts[] = {s->number & 1023, s->a[0], s->number & 8191, 0, s->a[1] & 7, 0};
  int back[6] = {};
  s->keep(ZALGORITM_gera_numeroB_unico(s->out, 14, &parts[0], &parts[1], &parts[2], &parts[3],
                                       &parts[4], &parts[5]));
  s->keep(ZALGORITM_extrai_numeroB_unico(s->out, &back[0], &back[1], &back[2], &back[3], &back[4],
                                         &back[5]));
  s->keep(back, sizeof back);
  s->keep(DOCUMENTO_identifica(s->text));
  s->keep(LETRABIN_para_binario(s->text[9]) + LETR0NBIN_para_letra(s->number & 63));
}

inline void bits(Sample *s) {
  constexpr ZBTFIELD_CAMPO kTable[] = {{3, 0}, {13, 1}, {40, 3}, {64, 8}, {0, 0}};
  ZBTFIELD_extrai_dados(s->dest(), s->a, kTable);
  ZBTFIELD_big_monta_dados(s->field + 24, kTable, s->field);
  ZBTFIELD_big_depura_conteudo(s->out, sizeof s->out, s->field + 24, kTable);
  s->keep(s->out);
  ZBTFIELD_depura_binario(s->out, sizeof s->out, s->a, kTable);
  s->keep(s->out);
  TABBOOL table;
  TABBOOL_cria(&table, 100, 5, 1);
  TABBOOL_reseta(&table, s->a[0]);
  s->keep(TABBOOL_testa(&table, s->a[0]));
  TABBOOL_destroi(&table);
  ZGUID_ESTADO state;
  ZGUID_prepara(&state, s->a, ZGUID_NO_BYTES);
  s->keep(ZGUID_proximo(&state) + 28);  // the clock stands before it
  ZGUID_gera(s->field + 40);
  s->keep(s->field[46] >> 4);
  ZGUID_parse(s->field + 40, s->text);
  ZGUID_string(s->out, s->field + 40, s->number & 7);
  s->keep(s->out);
  s->keep(URLENCOD_codifica(s->out, s->text));
  s->keep(URLENCOD_decodifica(s->out, s->text));
  s->keep_field();
}

inline constexpr struct Workload {
  const char *name;
  void (*work)(Sample *);
} kWorkloads[] = {{"numbers", numbers},
                  {"quantities", quantities},
                  {"digit strings", digit_strings},
                  {"codes", codes},
                  {"percents", percents},
                  {"calendar", calendar},
                  {"idnumbers", idnumbers},
                  {"bits", bits}};

}  // namespace campotipo::test
