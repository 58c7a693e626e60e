#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "layout/layout.hpp"
#include "rows/buffer.hpp"

namespace campotipo::records {

// Records of a file that is made, of rows or of columns.
struct MadeRecords {
  Buffer records;

  // Where the layout has rules over the whole file: the records that were made, and the fields for
  // which there was no value, in their order.
  struct Made {
    std::size_t at;  // in `records`
    const RecordType *type;
  };
  struct Hole {
    std::size_t record;  // place in `made`
    const FieldRules *rules;
  };
  std::vector<Made> made;
  std::vector<Hole> holes;
};

// A record without values: what stands around it, its unused bytes, zeros.
struct BlankRecord {
  BlankRecord() = default;
  BlankRecord(const Layout &layout, const RecordType &type);

  std::string bytes;
  std::size_t before = 0;  // bytes in front of the record
};

// The bytes that stand in front of a record of the kind, and those that stand behind it.
std::string length_prefix(const Layout &layout, const RecordType &type);
std::string line_end(const Layout &layout);

// Whether values of the kind follow from other records.
bool has_followers(const RecordType &type);

// Stores the value of a field that is a constant; parts of a bit area share their bytes with others.
void put_stored(unsigned char *field, const std::string &stored);

// What to say of a record that would not be read as the kind that it was made as, or of a constant
// that is another; given: the text that was to be stored in a field. Empty where all is well.
std::string contradiction(const Layout &layout, const RecordType &type, const unsigned char *record,
                          const std::function<std::string(const Field &)> &given);

// The field of a line that holds what ends lines, and would make two of one; null where none does.
const Field *field_with_line_end(const Layout &layout, const RecordType &type,
                                 const unsigned char *record);

}  // namespace campotipo::records
