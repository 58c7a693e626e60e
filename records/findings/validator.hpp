#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "files/stream.hpp"
#include "findings/finding_counts.hpp"
#include "layout/layout.hpp"
#include "rules/file_rules.hpp"

namespace campotipo::records {

// Name of a field in a report: with the kind of its record where there are several.
std::string field_label(const Layout &layout, const RecordType &type, const Field &field);

// One value that is not as the layout tells, or one place where the file is not.
struct Finding {
  const RecordType *type = nullptr;  // null: the file itself
  const Field *field = nullptr;      // null: the record
  What what = What::kInvalid;
  std::string text;  // what is wrong, for people
  Location place;

  // The field with its kind where there are several.
  std::string label(const Layout &layout) const;

  // One object of JSON.
  std::string json(const Layout &layout, const std::string &file) const;
};

// Reads every record of a file and counts, field by field, what is not as the layout tells.
class Validator {
 public:
  Validator(const Layout &layout, std::string file);
  Validator(const Validator &) = delete;
  Validator &operator=(const Validator &) = delete;

  // What is told of every finding, in the order of the file; those that only the end of a lot or of
  // the file tells come then.
  void each(std::function<void(const Finding &)> each) { each_ = std::move(each); }

  // What records tell by themselves is not looked at, or not what only the whole file tells: its order
  // of records, sequences, copies and totals.
  void leave_out_values() { looks_at_values_ = false; }
  void leave_out_file() { looks_at_file_ = false; }

  // Records of no kind are counted and no findings.
  void skip_unknown() { skip_unknown_ = true; }

  // What the values of a block alone tell; any thread may ask.
  std::vector<Finding> examine(const RecordBlock &block) const;

  // The blocks of the file in their order, with what was told of each.
  void add(const RecordBlock &block, std::vector<Finding> findings);
  void add(const RecordBlock &block) { add(block, examine(block)); }

  // The file has ended.
  void finish();

  const FindingCounts &findings() const { return findings_; }
  std::uint64_t records() const { return records_; }

  // As lines for a person, or one object of JSON for a program.
  std::string json() const;
  std::string summary() const;

 private:
  void add_faults(const RecordBlock &block);
  void found(const Finding &finding);

  const Layout *layout_;
  std::string file_;
  std::function<void(const Finding &)> each_;
  FindingCounts findings_;
  std::vector<Finding> gathered_;  // of the block that is added
  FileRules rules_;
  std::uint64_t records_ = 0;
  bool looks_at_values_ = true;
  bool looks_at_file_ = true;
  bool skip_unknown_ = false;
  std::uint64_t skipped_ = 0;
};

}  // namespace campotipo::records
