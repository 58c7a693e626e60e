#pragma once

#include <string>

#include "files/stream.hpp"
#include "findings/finding_counts.hpp"
#include "terminal/progress.hpp"

namespace campotipo::tool {

using namespace campotipo::records;

// What is told of records that were passed over because they are of no kind.
std::string passed_over(std::uint64_t records);

// Tells on standard error where a file does not follow its layout, while its records are read: the
// first places of each fault, and at the end how many more there are.
class FaultTeller {
 public:
  // skip_unknown: records of no kind are only counted.
  FaultTeller(const std::string &file, Progress &progress, bool skip_unknown)
      : file_(file), progress_(&progress), skip_unknown_(skip_unknown) {}

  void tell_all(const RecordBlock &block);

  // What the command ends with.
  int status();

 private:
  std::string file_;
  Progress *progress_;
  bool skip_unknown_;
  std::uint64_t skipped_ = 0;
  FindingCounts told_;
};

}  // namespace campotipo::tool
