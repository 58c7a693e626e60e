#pragma once

#include <string>

#include "layout/layout.hpp"

namespace campotipo::records {

// A rule that does not hold.
struct Breach {
  What what = What::kInvalid;
  std::string text;      // the same for every value of the field
  std::string expected;  // the value it should be; empty: not one
};

// Whether a well-formed value is one that the layout allows, as far as the record alone tells it.
// False where it is not.
bool obeys(const RecordType &type, const FieldRules &rules, const unsigned char *record,
           Breach &breach);

// The rules of a field of the kind; null where it has none.
const FieldRules *rules_of(const RecordType &type, const Field &field);

// How the field tells the kind; null where it does not.
const Condition *condition_of(const RecordType &type, const Field &field);

// The one stored form that a field of the kind has to have, by its rules or because it tells the kind;
// null where there is none.
const std::string *constant_of(const RecordType &type, const Field &field);

// Whether a field gets a value where none is given.
bool is_filled(const RecordType &type, const Field &field);

// Whether the field holds this stored form.
bool has_form(const Field &field, const unsigned char *record, const std::string &stored);

}  // namespace campotipo::records
