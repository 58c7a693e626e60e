#pragma once

#include "kinds/characters.hpp"
#include "kinds/dates.hpp"

// Dates and times of day stored as digits.
namespace campotipo::records::text_dates {

struct Day {
  int day = 0;
  int month = 0;
  int year = 0;
};

// The date of a field; false for bytes that are not in the form told, or a date that the civil
// calendar does not have.
bool read(Day &date, const unsigned char *field, const Params &p);

// A year of two digits in full.
constexpr int full_year(int two_digits, int pivot) {
  return two_digits + (two_digits < pivot ? 2000 : 1900);
}

char *put(char *out, const unsigned char *field, const Params &p);
const char *take(unsigned char *field, PaddedText text, const Params &p);
const char *fault(const unsigned char *field, const Params &p);
int compare(const unsigned char *a, const unsigned char *b, const Params &p);
double measure(const unsigned char *field, const Params &p);

constexpr FieldType date(const char *name) {
  FieldType type = characters::row(name, "date in digits");
  type.unit = "digits";
  type.form = "31/12/2024";
  type.sql = "DATE";
  type.keys |= kStored | kFormat | kPivot;
  type.traits = kNullable | kNoBlank | kShown;
  type.room = [](const Params &p) { return characters::room(p) + DatePattern::kLongest; };
  type.put = put;
  type.take = take;
  type.fault = fault;
  type.compare = compare;
  type.measure = measure;
  type.column = ColumnForm::kTextDate;
  return type;
}

// Seconds since midnight of a field; below 0 for bytes that are no time.
int seconds(const unsigned char *field, const Params &p);

char *put_time(char *out, const unsigned char *field, const Params &p);
const char *take_time(unsigned char *field, PaddedText text, const Params &p);
const char *time_fault(const unsigned char *field, const Params &p);

constexpr FieldType time(const char *name) {
  FieldType type = characters::row(name, "time in digits");
  type.unit = "digits";
  type.form = "14:35:07";
  type.sql = "TIME";
  type.keys |= kStored | kSeparator;
  type.traits = kNullable | kNoBlank | kShown;
  type.put = put_time;
  type.take = take_time;
  type.fault = time_fault;
  type.measure = [](const unsigned char *field, const Params &p) {
    return static_cast<double>(seconds(field, p));
  };
  type.column = ColumnForm::kTextTime;
  return type;
}

}  // namespace campotipo::records::text_dates
