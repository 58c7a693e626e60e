#include "columns/parts.hpp"

#include <algorithm>

#include "kinds/bits.hpp"
#include "kinds/civil.hpp"
#include "kinds/dates.hpp"
#include "kinds/text_dates.hpp"
#include "kinds/text_numbers.hpp"

namespace campotipo::records {

namespace {

constexpr int kMostText = 64;

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
  if (!civil::exists(of_month, month, year)) return DayState::kNoDay;
  day = civil::days(of_month, month, year);
  return DayState::kDay;
}

bool is_none(const unsigned char *field, const Params &p) {
  return characters::is_absent(field, p);
}

bool has_empties_of_digits(const Params &p) {
  if (p.n > text_numbers::kMostDigits) {  // a digit string, which may be longer than any number
    return std::any_of(p.empties.begin(), p.empties.end(), [](const std::string &form) {
      return form.find_first_not_of("0123456789") == std::string::npos;
    });
  }
  unsigned char digits[text_numbers::kMostDigits];
  bool negative = false;
  for (const std::string &form : p.empties) {
    const auto *field = reinterpret_cast<const unsigned char *>(form.data());
    if (text_digits(field, p, digits, negative)) return true;
  }
  return false;
}

bool is_plain_text(const Params &p) {
  return p.pad == '\0' && p.empties.size() == 1 &&
         p.empties[0].find_first_not_of(' ') == std::string::npos;
}

DigitDate digit_date(const Params &p) {
  const DatePattern::Form &form = p.stored->full;
  DigitDate date;
  const bool digits = std::all_of(form.above.begin(), form.above.begin() + form.length,
                                  [](unsigned char above) { return above != 0; });
  date.is_plain = digits && form.length <= sizeof date.places;
  std::copy(form.place.begin(), form.place.end(), date.places);
  date.pivot = p.pivot;
  date.has_century = p.stored->has_century;
  return date;
}

DayState text_day(const unsigned char *field, const Params &p, std::int32_t &day) {
  if (characters::is_absent(field, p)) return DayState::kAbsent;
  text_dates::Day date;
  if (!text_dates::read(date, field, p)) return DayState::kNoDay;
  day = civil::days(date.day, date.month, date.year);
  return DayState::kDay;
}

bool text_digits(const unsigned char *field, const Params &p, unsigned char *digits,
                 bool &negative) {
  text_numbers::Digits number;
  if (!text_numbers::read(number, field, p)) return false;
  negative = number.negative;
  std::memcpy(digits, number.digit, static_cast<std::size_t>(p.n));
  return true;
}

std::int32_t second_of_day(const unsigned char *field, ColumnForm form, const Params &p) {
  if (form == ColumnForm::kTextTime) return text_dates::seconds(field, p);
  return form == ColumnForm::kMinutes ? times::minutes(field) * 60 : times::seconds(field);
}

}  // namespace campotipo::records
