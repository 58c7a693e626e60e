#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "kinds/checks.hpp"
#include "kinds/type.hpp"

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

// One value of a record: a repeated field is as many of them, a bit area one for each part.
struct Field {
  std::string name;  // the path in one word: "itens_2.codigo"
  std::string base;  // the name in the layout, without places in arrays: "itens.codigo"
  std::vector<PathStep> path;
  const FieldType *type = nullptr;
  std::size_t offset = 0;
  std::size_t bytes = 0;
  Params params;
  const NamedCheck *check = nullptr;
  std::string flat;    // the name in a flat table: "itens_2_codigo"
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
  std::string name;
  std::vector<Field> fields;   // those that have a text
  std::vector<Field> fillers;  // unused bytes
  std::vector<Column> columns;
  std::size_t bytes = 0;
  bool main = false;              // the kind that is meant where none is told
  std::size_t select = 0;         // place in `fields` of the one that tells several kinds apart
  std::vector<std::string> when;  // its stored forms; none: any other record
};

// Bytes of a file in front of or behind its records.
struct Margin {
  std::size_t bytes = 0;
  std::string content;  // `bytes` of them where the layout tells, else none
};

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
  int parcela_decimals = 4;
  std::vector<RecordType> types;     // at least one
  std::size_t select_offset = 0;     // of the field that tells the kinds apart
  std::size_t select_bytes = 0;      // 0: there is one kind
  std::vector<std::string> columns;  // of all kinds, in order; each name once

  bool several() const { return types.size() > 1; }
  bool plain() const { return !several() && prefix.bytes == 0; }
  std::size_t least_bytes() const;
  std::size_t most_bytes() const;
  bool fixed_size() const { return prefix.bytes == 0 && least_bytes() == most_bytes(); }

  // The kind of a record of which select_offset + select_bytes are there; null if it is none.
  const RecordType *type_of(const unsigned char *record) const {
    return several() ? kind_of(record) : types.data();
  }

  const RecordType *kind_of(const unsigned char *record) const;
  const RecordType *type_named(std::string_view name) const;
};

// What is wrong with a value, null if it is well formed: by its type, by its check, or because its
// text does not give its bytes back.
const char *field_fault(const Field &field, const unsigned char *record);

// The text of a value, for messages and pages.
std::string field_text(const Field &field, const unsigned char *record);

bool field_empty(const Field &field, const unsigned char *record);

}  // namespace campotipo::records
