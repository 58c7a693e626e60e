#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "errors/what.hpp"
#include "kinds/checks.hpp"
#include "kinds/type.hpp"
#include "layout/rules.hpp"

namespace campotipo::records {

// The column and the member of JSON that tell the kind of a record, where there are several.
constexpr const char *kKindColumn = "record";

// Ends the name of the column or member that holds the bytes of another.
constexpr std::string_view kHexEnd = "_hex";

// A step on the way from a record to a field, as JSON nests them: a member of an object, or a place
// in an array.
struct PathStep {
  std::string key;
  int index = -1;  // below 0: a member
  bool operator==(const PathStep &) const = default;
};

// A path in one word: with the places in arrays, counted from 1, or without them.
std::string path_name(const std::vector<PathStep> &path, bool with_places);

// One value of a record: a repeated field is as many of them, a bit area one for each part.
struct Field {
  std::string name;  // the path in one word: "itens_2_codigo"
  std::string base;  // the same without places in arrays: "itens_codigo"
  std::vector<PathStep> path;
  const FieldType *type = nullptr;
  std::size_t offset = 0;
  std::size_t bytes = 0;
  Params params;
  const NamedCheck *check = nullptr;
  std::string flat;    // the name in a flat table, where fields that share a column stay apart
  std::string column;  // of a CSV file
  std::string join;    // text between this field and the one before it, in a shared column
  std::string empty;   // its text if it has no value, in a shared column
};

// A column of a CSV file: one field, or some that stand behind one another in it.
struct Column {
  std::string name;
  std::vector<std::size_t> fields;  // in order; places in RecordType::fields
};

// One kind of record.
struct RecordType {
  static constexpr std::size_t kNone = SIZE_MAX;

  std::string name;
  std::vector<Field> fields;   // those that have a text
  std::vector<Field> fillers;  // unused bytes
  std::vector<Column> columns;
  std::size_t bytes = 0;
  std::vector<Condition> when;        // all hold in its records; none: any other record
  std::size_t told_bytes = 0;         // of a record that have to be there to look at `when`
  bool main = false;                  // the kind that is meant where none is told
  bool first = false;                 // of the first record and no other
  bool last = false;                  // of the last record and no other
  std::size_t closes = kNone;         // place of the kind that begins the lot which this one ends
  std::vector<FieldRules> rules;      // of the fields that have any
  std::vector<std::size_t> counters;  // of its fields, each once

  bool holds(const Condition &condition, const unsigned char *record) const;
};

// Bytes of a file in front of or behind its records.
struct Margin {
  std::size_t bytes = 0;
  std::string content;  // `bytes` of them where the layout tells, else none
};

// What ends each record of a file of text.
enum class LineEnd { kNone, kLf, kCrLf };

// How long each record is, told in front of it.
struct LengthPrefix {
  int bytes = 0;     // 0: none
  bool big = false;  // most significant byte first
  bool counts_itself = false;
};

struct Layout {
  std::string name;
  std::string file;
  Margin header;
  Margin trailer;
  LengthPrefix prefix;
  LineEnd line_end = LineEnd::kNone;  // as it is written; either is read
  int parcela_decimals = 4;
  std::vector<RecordType> types;     // at least one
  std::vector<std::string> columns;  // of all kinds, in order; each name once
  std::vector<Measure> measures;     // what the rules of fields speak of
  std::vector<Counter> counters;
  std::vector<Memory> memories;

  bool several() const { return types.size() > 1; }
  bool lines() const { return line_end != LineEnd::kNone; }
  bool plain() const {
    return !several() && types[0].when.empty() && prefix.bytes == 0 && !lines();
  }
  std::size_t least_bytes() const;
  std::size_t most_bytes() const;
  bool one_length() const { return least_bytes() == most_bytes(); }

  // Whether the place of a record follows from its number.
  bool fixed_size() const { return prefix.bytes == 0 && !lines() && one_length(); }

  // Bytes of a record that have to be there to tell whether it is of any kind.
  std::size_t told_bytes() const;

  // The kind of a record of which so many bytes are there: the first whose conditions hold. Null if
  // it is none.
  const RecordType *type_of(const unsigned char *record, std::size_t bytes) const;

  const RecordType *type_named(std::string_view name) const;
};

// What is wrong with a value, null if it is well formed: by its type, by its check, or because its
// text does not give its bytes back. The word for it is set where one is asked for.
const char *field_fault(const Field &field, const unsigned char *record, What *what = nullptr);

// Where a record of a line holds what ends lines; its length where it does not.
std::size_t line_end_in(const RecordType &type, const unsigned char *record);

// The text of a value, for messages and pages.
std::string field_text(const Field &field, const unsigned char *record);

// Whether the field has no value: its text is none.
bool field_absent(const Field &field, const unsigned char *record);

bool field_empty(const Field &field, const unsigned char *record);

}  // namespace campotipo::records
