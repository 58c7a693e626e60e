#include "columns/parts.hpp"

#include "kinds/bits.hpp"
#include "kinds/dates.hpp"

namespace campotipo::records {

namespace {

constexpr int kMostText = 64;

bool is_leap(int year) { return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0); }

int days_in_month(int month, int year) {
  constexpr int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  return kDays[month - 1] + (month == 2 && is_leap(year) ? 1 : 0);
}

// Howard Hinnant, "chrono-Compatible Low-Level Date Algorithms": years that begin in March, in eras
// of 400.
std::int32_t days_from_civil(int day, int month, int year) {
  const int from_march = month > 2 ? year : year - 1;
  const int era = from_march / 400;
  const int of_era = from_march - era * 400;
  const int of_year = (153 * (month > 2 ? month - 3 : month + 9) + 2) / 5 + day - 1;
  return era * 146097 + of_era * 365 + of_era / 4 - of_era / 100 + of_year - 719468;
}

}  // namespace

std::uint64_t bit_part(const unsigned char *area, const Params &p) {
  unsigned char value[8];
  bits::extract(value, area, p);
  return numbers::limb(value, 8);
}

DayState civil_day(const unsigned char *field, const FieldType &type, const Params &p,
                   std::int32_t &day) {
  char text[kMostText];
  if (type.put(text, field, p) == text) return DayState::kAbsent;
  const int month = DATAC_mes(field);
  const int year = DATAC_ano1(field);
  const int of_month = DATAC_dia(field);
  if (year < 1 || month < 1 || month > 12 || of_month < 1 ||
      of_month > days_in_month(month, year)) {
    return DayState::kNoDay;
  }
  day = days_from_civil(of_month, month, year);
  return DayState::kDay;
}

std::int32_t second_of_day(const unsigned char *field, ColumnForm form) {
  return form == ColumnForm::kMinutes ? times::minutes(field) * 60 : times::seconds(field);
}

}  // namespace campotipo::records
