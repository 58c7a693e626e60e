#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "files/stream.hpp"
#include "rules/field_rules.hpp"
#include "rules/file_state.hpp"

namespace campotipo::records {

// A value or a record that does not follow from the others.
struct RuleFinding {
  const RecordType *type = nullptr;
  const Field *field = nullptr;  // null: the record as a whole
  Breach breach;
  std::uint64_t record = 0;
  std::uint64_t offset = 0;  // in the file
  std::string bytes;         // of the field
};

// Holds the records of a file to what a layout tells of their order, sequences, copies and totals.
// Memory grows with the totals that only the end of the file tells.
class FileRules {
 public:
  using Found = std::function<void(const RuleFinding &)>;

  FileRules(const Layout &layout, Found found);

  // The blocks of a whole file, in order.
  void add(const RecordBlock &block);
  void finish();

 private:
  struct Pending {
    const RecordType *type;
    const FieldRules *rules;
    std::string by;
    RuleFinding finding;  // if the total is another
  };

  void add(const RecordBlock &block, const RecordBlock::Record &record);
  void pass(std::uint64_t number, std::uint64_t place);
  void look_at_order(const RecordType &type, std::uint64_t number, std::uint64_t place);
  void look_at_lots(const RecordType &type, std::uint64_t number, std::uint64_t place);
  void look_at_sequence(const FieldRules &rules, RuleFinding &finding, const unsigned char *record);
  void look_at_same(const FieldRules &rules, RuleFinding &finding, const unsigned char *record);
  void look_at_total(const FieldRules &rules, RuleFinding &finding, const unsigned char *record);
  void hold_total(const Pending &pending);
  void disorder(const RecordType &type, std::uint64_t number, std::uint64_t place,
                const std::string &text);
  void tell(RuleFinding finding, What what, const std::string &text, const std::string &expected);

  const Layout *layout_;
  Found found_;
  FileState state_;
  const RecordType *first_ = nullptr;  // the kinds that stand there
  const RecordType *last_ = nullptr;
  bool active_ = false;
  const RecordType *before_ = nullptr;  // kind of the record before; null: none
  std::uint64_t before_place_ = 0;
  std::vector<Pending> pending_;
};

}  // namespace campotipo::records
