#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "text/padded.hpp"

namespace campotipo::records {

class Charset;
struct DatePattern;
struct NamedCheck;

// How the date fields of a column are encoded.
enum class DateEncoding {
  kBoth,    // each field says it itself: a year of four digits is packed, one of two decimal
  kPacked,  // the others are findings
  kDecimal,
};

// Where the sign of a number in digits stands.
enum class Sign {
  kNone,
  kLeading,  // a byte of its own, '+', '-' or a blank
  kTrailing,
  kOverpunch,  // in the last digit: { A to I, below zero } J to R
};

// What a layout tells of one field beside its type; each type reads what it needs.
struct Params {
  int n = 0;      // positions of a code, bytes of a string, bits of a part of a bit area
  int bytes = 0;  // of the field, or of the whole bit area
  int decimals = 0;
  int options = 0;    // flags of the library's own operations
  bool fold = false;  // small letters and blanks at the end of a code may go without notice
  int start = 0;      // first bit of a part of a bit area
  int area_bits = 0;  // bits of all parts, told with the last one, which looks at the spare bits
  bool big = false;   // most significant bit first
  char separator = ':';
  DateEncoding encoding = DateEncoding::kBoth;
  std::shared_ptr<const DatePattern> pattern;
  std::shared_ptr<const DatePattern> stored;  // the same of a date that is stored as text
  int pivot = 80;                             // years of two digits below it are of 2000, not 1900
  char pad = '\0';                            // what fills a text or number in front
  Sign sign = Sign::kNone;
  std::vector<std::string> empties;  // stored forms of no value; the first one is written
  std::shared_ptr<const Charset> charset;
  std::string fill;  // the unused bytes, `bytes` of them
};

// The keys of a layout that a type reads, beside name, type, count, column and check.
enum Keys : unsigned {
  kNoKeys = 0,
  kPositions = 1,
  kBytes = 2,
  kDecimals = 4,
  kOptions = 8,
  kEncoding = 16,
  kFormat = 32,
  kSeparator = 64,
  kBits = 128,
  kValue = 256,
  kFold = 512,
  kDateEncoding = 1024,
  kDigits = 2048,
  kSign = 4096,
  kPad = 8192,
  kStored = 16384,
  kPivot = 32768,
  kEmpty = 65536,
};

enum Traits : unsigned {
  kPlain = 0,
  kText = 1,        // may hold what CSV quotes
  kRight = 2,       // aligned by its last digit
  kJsonNumber = 4,  // small enough to be exact as a number of JSON, up to kJsonDigits digits
  kNullable = 8,    // no text is no value
  kNoBlank = 16,    // its text holds no blank, so it may come first in a column shared by two
  kChecked = 32,    // its text may be a number with check digits
  kShown = 64,      // bytes that are not well formed are shown as they are, so CSV may quote them
};

constexpr int kJsonDigits = 15;

// What a value is in a table of typed columns.
enum class ColumnForm {
  kText,
  kUnsigned,  // a number in 1 to 8 bytes
  kSigned,    // the same in 8, with a sign
  kLimbs,     // a number in limbs of 19 digits
  kDate,
  kMinutes,  // of the day
  kSeconds,
  kBits,
  kCharacters,   // stored as text, as the next ones are
  kDigitString,  // null where there is none
  kNumber,
  kTextDate,
  kTextTime,
};

// A kind of field: everything the tool knows of it.
struct FieldType {
  const char *name;
  const char *family;
  int bytes;         // of the field, 0 where the layout tells
  int count;         // positions, digits or bits, 0 where the layout tells
  const char *unit;  // what `count` counts
  const char *form;  // what its text looks like
  const char *sql;   // column type; %d stands for the count, %s for the decimals
  unsigned keys;
  unsigned traits;

  // Bytes that `put` may write: the UTF-8 text and what the library writes behind it.
  std::size_t (*room)(const Params &);

  // Writes the text of a field and gives its end.
  char *(*put)(char *out, const unsigned char *field, const Params &);

  // Stores a text in a field of zeros. Gives null if the field says all of it, else what was lost:
  // then the field holds what is left of a text that is too long or has characters that the field
  // does not, a number without some of its decimals, and of anything else the value of no text.
  const char *(*take)(unsigned char *field, PaddedText text, const Params &);

  // Null if the field is well formed, else what is wrong.
  const char *(*fault)(const unsigned char *field, const Params &);

  // The library's own order.
  int (*compare)(const unsigned char *a, const unsigned char *b, const Params &);

  // Whether the field has content, by the library's own test; null: any byte that is not zero.
  int (*content)(const unsigned char *field, const Params &);

  // Place on a scale, for a histogram; null where there is none.
  double (*measure)(const unsigned char *field, const Params &);

  int decimals;       // of a number whose decimals no layout tells
  ColumnForm column;  // what it is in a table of typed columns
};

// All kinds, in the order in which they are listed.
std::span<const FieldType> field_types();

// Null where no kind has the name.
const FieldType *field_type(std::string_view name);

// Parts of a bit area and unused bytes are told apart from the rest of the kinds.
bool is_bit_area(const FieldType &type);
bool is_fill(const FieldType &type);

}  // namespace campotipo::records
