#pragma once

#include <cstdint>

#include "kinds/type.hpp"

// Values as the library reads them, for the kernels: called, so that what is compiled for newer
// processors holds no code that others share.
namespace campotipo::records {

// The number in a part of a bit area.
std::uint64_t bit_part(const unsigned char *area, const Params &p);

enum class DayState : std::uint8_t { kDay, kAbsent, kNoDay };

// Days since 1970-01-01 of a date, by the civil calendar. kNoDay: a date that this calendar does not
// have, though the library's own may.
DayState civil_day(const unsigned char *field, const FieldType &type, const Params &p,
                   std::int32_t &day);

// Whether a field that is stored as characters stands for no value.
bool is_none(const unsigned char *field, const Params &p);

// Whether one of the forms that stand for no value could be read as a number.
bool has_empties_of_digits(const Params &p);

// Whether a text only ends in blanks, and nothing but blanks stands for no value.
bool is_plain_text(const Params &p);

// Where the digits DDMMAAAA of a stored date lie, for forms of digits alone.
struct DigitDate {
  bool is_plain = false;   // digits alone, at most eight
  std::uint8_t places[8];  // of a year of two digits the last four
  int pivot = 0;
  bool has_century = false;
};
DigitDate digit_date(const Params &p);

// As civil_day(), of a date that is stored as text.
DayState text_day(const unsigned char *field, const Params &p, std::int32_t &day);

// The digits of a number that is stored as text, none of them a blank; false for no number.
bool text_digits(const unsigned char *field, const Params &p, unsigned char *digits,
                 bool &negative);

std::int32_t second_of_day(const unsigned char *field, ColumnForm form, const Params &p);

}  // namespace campotipo::records
