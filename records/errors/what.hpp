#pragma once

#include <cstdint>

namespace campotipo::records {

// What can be wrong with a value, a record or a file: the words that every host tells.
enum class What : std::uint8_t {
  kInvalid,       // no stored form of its type
  kNotCanonical,  // well formed, but its text gives other bytes back
  kCheckDigit,    // the check of its digits fails
  kRequired,      // absent, and required
  kNotAllowed,    // none of the values that the layout lists
  kOutOfRange,    // below the least or above the greatest value
  kConstant,      // not the one value that it has to be
  kSequence,      // not the next number
  kTotal,         // not the count or the sum that it tells
  kNotSame,       // not what stands in the record that it repeats
  kLineLength,    // a record of another length than its kind
  kLineEnd,       // a line that does not end as the first one does
  kIncomplete,    // the file ends inside a record
  kUnknownKind,   // a record of no kind
  kOrder,         // a record out of its place: first, last, in a lot
  kMargin,        // the header or trailer of the file
};

constexpr const char *word(What what) {
  constexpr const char *kWords[] = {"invalid",     "not_canonical", "check_digit", "required",
                                    "not_allowed", "out_of_range",  "constant",    "sequence",
                                    "total",       "not_same",      "line_length", "line_end",
                                    "incomplete",  "unknown_kind",  "order",       "margin"};
  return kWords[static_cast<int>(what)];
}

}  // namespace campotipo::records
