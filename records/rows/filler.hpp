#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "rows/made_records.hpp"
#include "rules/file_state.hpp"

namespace campotipo::records {

// Puts into the records of a file what follows from the others, where the rows had no value for it:
// sequences, copies, counts and sums. Blocks are given in their order.
class Filler {
 public:
  explicit Filler(const Layout &layout) : layout_(&layout), state_(layout) {}

  // Whether records have to be changed that were given away already.
  static bool patches(const Layout &layout);

  // place: of the first byte of the block in the file. Throws an Error for a value that does not fit.
  void fill(MadeRecords &block, std::uint64_t place);

  // What only the end of the file tells, to be put over what was given away.
  struct Patch {
    std::uint64_t place;
    std::string bytes;
  };
  std::vector<Patch> finish();

 private:
  struct Pending {
    const RecordType *type;
    const FieldRules *rules;
    std::string by;
    std::uint64_t record;
    std::uint64_t place;
  };

  std::string stored(const Field &field, const std::string &text, std::uint64_t record) const;
  void put(const RecordType &type, const FieldRules &rules, const std::string &text,
           unsigned char *record);
  void fill_sequence(const RecordType &type, const FieldRules &rules, unsigned char *record);
  void fill_same(const RecordType &type, const FieldRules &rules, unsigned char *record);
  void fill_total(const RecordType &type, const FieldRules &rules, unsigned char *record,
                  std::uint64_t place);

  const Layout *layout_;
  FileState state_;
  std::uint64_t records_ = 0;
  std::vector<Pending> pending_;
  std::vector<FileState::Lot> unclosed_;  // of no use here
};

}  // namespace campotipo::records
