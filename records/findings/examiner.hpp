#pragma once

#include <cstdint>
#include <string>

#include "files/stream.hpp"
#include "findings/losses.hpp"
#include "layout/layout.hpp"

namespace campotipo::tool {

// Name of a field in a report: with the kind of its record where there are several.
std::string field_label(const Layout &layout, const RecordType &type, const Field &field);

// Reads every record and counts, field by field, the values that are not well formed.
class Examiner {
 public:
  Examiner(const Layout &layout, std::string file) : layout_(&layout), file_(std::move(file)) {}

  void add(const RecordBlock &block);

  const Tally &findings() const { return findings_; }
  std::uint64_t records() const { return records_; }

  // As lines for a person, or one object of JSON for a program.
  std::string json() const;
  std::string summary() const;

 private:
  void examine(const RecordBlock &block, const RecordBlock::Record &record, const Field &field);

  const Layout *layout_;
  std::string file_;
  Tally findings_;
  std::uint64_t records_ = 0;
};

}  // namespace campotipo::tool
