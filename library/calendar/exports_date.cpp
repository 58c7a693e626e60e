#include "calendar/date.hpp"

namespace calendar = campotipo::calendar;

extern "C" {

int32_t DATAC_formato = DATAC_FORMATO_DECIMAL;

unsigned char *DATAC_fmt_monta(unsigned char *out, int32_t format, int32_t day, int32_t month,
                               int32_t year) {
  return calendar::store(out, calendar::number_of(format, {day, month, year}));
}
unsigned char *DATAC_monta(unsigned char *out, int32_t day, int32_t month, int32_t year) {
  return calendar::store(out, calendar::number_of(calendar::format_in_force(), {day, month, year}));
}

int32_t DATAC_dia(const unsigned char *date) {
  return calendar::read_short(calendar::load(date)).day;
}
int32_t DATAC_mes(const unsigned char *date) {
  return calendar::read_short(calendar::load(date)).month;
}
int32_t DATAC_ano1(const unsigned char *date) { return calendar::read(calendar::load(date)).year; }
int32_t DATAC_ano(const unsigned char *date) {
  return calendar::read_short(calendar::load(date)).year % 100;
}

int DATAC_nao_zero(const unsigned char *date) {
  return (calendar::load(date) & ~calendar::kPacked) != 0;
}
int DATAC_valida(const unsigned char *date) { return calendar::is_valid(calendar::load(date)); }

int32_t DATAC_formato_de(const unsigned char *date) {
  return calendar::is_packed(calendar::load(date)) ? DATAC_FORMATO_COMPACTO : DATAC_FORMATO_DECIMAL;
}
int DATAC_bem_formado(const unsigned char *date) {
  return calendar::is_well_formed(calendar::load(date));
}

int DATAC_compara(const unsigned char *a, const unsigned char *b) {
  return calendar::compare(calendar::load(a), calendar::load(b));
}
int DATAC_igual(const unsigned char *a, const unsigned char *b) {
  return calendar::compare(calendar::load(a), calendar::load(b)) == 0;
}

uint32_t DATAC_ulong(const unsigned char *date) { return calendar::ddmmaa(calendar::load(date)); }
int DATAC_ddmmaa_igual(const unsigned char *date, int64_t ddmmaa) {
  return calendar::ddmmaa(calendar::load(date)) == ddmmaa;
}

int DATAC_converteu_formato(unsigned char *date, int32_t format) {
  return calendar::convert(date, format);
}

int32_t DATAC_dias_no_mes(int32_t month, int32_t year) {
  return calendar::days_in_month(month, year);
}
}
