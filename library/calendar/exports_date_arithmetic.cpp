#include "calendar/date_arithmetic.hpp"

namespace calendar = campotipo::calendar;

extern "C" {

int32_t DATAC_zuliano(const unsigned char *date) {
  return calendar::day_count(calendar::load(date));
}
int64_t DATAC_zuliano_desde(const unsigned char *date, int32_t base_year) {
  return calendar::day_count_since(calendar::load(date), base_year);
}

void DATAC_de_zuliano(unsigned char *out, int32_t count) {
  calendar::store(out, calendar::number_of_day_count(count, calendar::kStandingBase));
}
void DATAC_de_zuliano_desde(unsigned char *out, int32_t count, int32_t base_year) {
  calendar::store(out, calendar::number_of_day_count(count, base_year));
}

int32_t DATAC_dia_da_semana(const unsigned char *date) {
  return calendar::weekday(calendar::load(date));
}

time_t DATAC_para_time_t(const unsigned char *date) { return calendar::noon(calendar::load(date)); }
void DATAC_de_time_t(unsigned char *out, time_t moment) {
  calendar::store(out, calendar::number_of_moment(moment));
}

void DATAC_avanca_dias(unsigned char *date, int32_t days) { calendar::advance_days(date, days); }
void DATAC_avanca_meses(unsigned char *date, int32_t months) {
  calendar::advance_months<calendar::Missing::kFirstOfNext>(date, months);
}
void DATAC_avanca_meses_dentro(unsigned char *date, int32_t months) {
  calendar::advance_months<calendar::Missing::kLastOfMonth>(date, months);
}

void DATAC_proximo_ddmm(unsigned char *out, const unsigned char *reference, int32_t ddmm) {
  calendar::store(out, calendar::nearest(calendar::load(reference), ddmm, 1));
}
void DATAC_ultimo_ddmm(unsigned char *out, const unsigned char *reference, int32_t ddmm) {
  calendar::store(out, calendar::nearest(calendar::load(reference), ddmm, -1));
}
}
