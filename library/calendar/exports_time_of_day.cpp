#include "calendar/time_of_day.hpp"

namespace time_of_day = campotipo::calendar::time_of_day;

extern "C" {

int HORAC_valida(const unsigned char *field) { return time_of_day::is_valid_hhmm(field); }
int HORAC_bem_formado(const unsigned char *field) { return time_of_day::is_valid_hhmm(field); }
char *HORAC_edita(char *out, const unsigned char *field) {
  return time_of_day::edit_hhmm(out, field, ':');
}
char *HORAC_edita_sep(char *out, const unsigned char *field, int32_t sep) {
  return time_of_day::edit_hhmm(out, field, sep);
}

int HHMMSS_valida(const unsigned char *field) { return time_of_day::is_valid_hhmmss(field); }
int HHMMSS_bem_formado(const unsigned char *field) { return time_of_day::is_valid_hhmmss(field); }
char *HHMMSS_edita(char *out, const unsigned char *field) {
  return time_of_day::edit_hhmmss(out, field, ':', 0);
}
char *HHMMSS_edita_hhmm(char *out, const unsigned char *field) {
  return time_of_day::edit_hhmmss(out, field, ':', HHMMSS_EDITA_HHMM);
}
char *HHMMSS_edita_sep(char *out, const unsigned char *field, int32_t sep, int32_t flags) {
  return time_of_day::edit_hhmmss(out, field, sep, flags);
}
}
