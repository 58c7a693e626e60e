#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "files/stream.hpp"
#include "findings/finding_counts.hpp"
#include "layout/layout.hpp"

namespace campotipo::records {

// Name of a field in a report: with the kind of its record where there are several.
std::string field_label(const Layout &layout, const RecordType &type, const Field &field);

// One invalid value, or one place where the file does not follow its layout.
struct Finding {
  const RecordType *type = nullptr;  // null: the file itself
  std::string field;                 // its label
  std::string what;
  Location place;

  // One object of JSON.
  std::string json(const std::string &file) const;
};

// Reads every record and counts, field by field, the invalid values.
class Validator {
 public:
  Validator(const Layout &layout, std::string file) : layout_(&layout), file_(std::move(file)) {}

  // What is told of every finding, in the order of the file.
  void each(std::function<void(const Finding &)> each) { each_ = std::move(each); }

  void add(const RecordBlock &block);

  const FindingCounts &findings() const { return findings_; }
  std::uint64_t records() const { return records_; }

  // As lines for a person, or one object of JSON for a program.
  std::string json() const;
  std::string summary() const;

 private:
  void examine(const RecordBlock &block, const RecordBlock::Record &record, const Field &field);
  void found(const Finding &finding);

  const Layout *layout_;
  std::string file_;
  std::function<void(const Finding &)> each_;
  FindingCounts findings_;
  std::uint64_t records_ = 0;
};

}  // namespace campotipo::records
