#include "calendar/date_text.hpp"

namespace calendar = campotipo::calendar;

extern "C" {

// ISO 8859-1. A letter that is a hexadecimal digit would lengthen the escape in front of it.
const char *const DATAC_txt_semana[7] = {
    "S\xE1"
    "bado",
    "Domingo",
    "Segunda-feira",
    "Ter\xE7"
    "a-feira",
    "Quarta-feira",
    "Quinta-feira",
    "Sexta-feira",
};

char *DATAC_edita(char *out, const unsigned char *date) {
  return calendar::edit_two_digit_year(out, calendar::load(date), '/');
}
char *DATAC_edita4(char *out, const unsigned char *date) {
  return calendar::edit_four_digit_year(out, calendar::load(date), '/');
}
char *DATAC_edita_sep(char *out, const unsigned char *date, int32_t sep) {
  return calendar::edit_two_digit_year(out, calendar::load(date), sep);
}
char *DATAC_edita_1sep(char *out, const unsigned char *date, int32_t sep, int32_t flags) {
  return calendar::edit(out, calendar::load(date), sep, flags);
}

char *DATAC_dtoa(char *out, const unsigned char *date) { return calendar::digits6(out, date); }
char *DATAC_dtoa_DDMMAAAA(char *out, const unsigned char *date) {
  return calendar::digits8(out, calendar::load(date));
}

void DATAC_fmt_atod(unsigned char *out, int32_t format, int32_t year4, const char *text) {
  calendar::from_text(out, format, year4 != 0, text);
}
void DATAC_atod(unsigned char *out, const char *text) {
  calendar::from_text(out, calendar::format_in_force(), false, text);
}
void DATAC_atod_DDMMAAAA(unsigned char *out, const char *text) {
  calendar::from_text(out, calendar::format_in_force(), true, text);
}
}
