#pragma once

#include "kinds/characters.hpp"
#include "kinds/numbers.hpp"

// Numbers stored as digits.
namespace campotipo::records::text_numbers {

constexpr int kMostDigits = 50;

// The digits of a field that is a number, zeros where blanks stand in front.
struct Digits {
  unsigned char digit[kMostDigits + 16];  // characters, p.n of them
  bool negative = false;
};

// False for bytes that are no number.
bool read(Digits &number, const unsigned char *field, const Params &p);

// Puts the sign of a number beside its digits, which are in the field, or into the last one.
void store_sign(unsigned char *field, bool negative, const Params &p);

char *put(char *out, const unsigned char *field, const Params &p);
const char *take(unsigned char *field, PaddedText text, const Params &p);
const char *fault(const unsigned char *field, const Params &p);
int compare(const unsigned char *a, const unsigned char *b, const Params &p);

constexpr bool has_sign_byte(Sign sign) {
  return sign == Sign::kLeading || sign == Sign::kTrailing;
}

constexpr FieldType number(const char *name) {
  FieldType type = characters::row(name, "number in digits");
  type.unit = "digits";
  type.form = "-123 or -1.23";
  type.sql = "NUMERIC(%d, %s)";
  type.keys |= kDigits | kDecimals | kSign | kPad;
  type.traits = kRight | kNoBlank | kJsonNumber | kNullable | kChecked | kShown;
  // A point, a sign and a zero in front.
  type.room = [](const Params &p) { return characters::room(p) + 3; };
  type.put = put;
  type.take = take;
  type.fault = fault;
  type.compare = compare;
  type.measure = [](const unsigned char *field, const Params &p) {
    Digits number;
    if (!read(number, field, p)) return 0.0;
    char text[kMostDigits + 48];
    return numbers::near({text, put(text, field, p)});
  };
  type.column = ColumnForm::kNumber;
  return type;
}

}  // namespace campotipo::records::text_numbers
