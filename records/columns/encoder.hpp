#pragma once

#include <campotipo-records/arrow.h>

#include <string>
#include <vector>

#include "columns/field_encoder.hpp"
#include "layout/layout.hpp"
#include "rows/made_records.hpp"

namespace campotipo::records {

// Records of some rows of a table, as they stand in a file.
struct EncodedBlock : MadeRecords {
  std::size_t rows = 0;
  std::vector<EncodeLoss> lost;  // by row, then by column
};

// Turns the rows of a table into records of one kind: the columns are matched with the fields by
// name, then each goes into its field block by block. What it is given has to outlive it.
class Encoder {
 public:
  // Columns in `ignored`, and those that tell of a record beside its fields, are passed over. Throws
  // an Error for a column that the kind does not have, twice or of a type that is never stored, and
  // for arrays that do not follow their schema.
  Encoder(const Layout &layout, const RecordType &kind, const ArrowSchema &schema,
          const ArrowArray &array, const std::vector<std::string> &ignored);

  // The next rows; false behind the last. Throws an Error for a record that would not be read as one
  // of the kind; `row` of its message counts from `before` on.
  bool next(EncodedBlock &block, std::uint64_t before);

  const std::string &column(std::size_t number) const { return names_[number]; }

 private:
  void match(const ArrowSchema &schema, const std::vector<std::string> &ignored);
  void make_blank();
  std::string empty_of(const Field &field) const;
  const FieldRules *hole_of(const Field &field) const;
  void look_at(EncodedBlock &block, EncodeNotes &notes, std::uint64_t before) const;
  void look_at_line(std::size_t row, const unsigned char *record, EncodeNotes &notes) const;

  const Layout *layout_;
  const RecordType *kind_;
  const ArrowArray *array_;
  std::vector<std::string> names_;
  std::vector<FieldEncoder> fields_;
  std::vector<bool> stored_;                 // by field of the kind
  std::vector<const FieldRules *> missing_;  // of fields that have no column
  BlankRecord blank_;
  std::int64_t done_ = 0;
};

}  // namespace campotipo::records
