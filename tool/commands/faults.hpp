#pragma once

#include <string>

#include "files/stream.hpp"
#include "findings/finding_counts.hpp"
#include "terminal/progress.hpp"

namespace campotipo::tool {

using namespace campotipo::records;

// Tells on standard error where a file does not follow its layout, while its records are read: the
// first places of each fault, and at the end how many more there are.
class FaultTeller {
 public:
  FaultTeller(const std::string &file, Progress &progress) : file_(file), progress_(&progress) {}

  void tell_all(const RecordBlock &block);

  // What the command ends with.
  int status();

 private:
  std::string file_;
  Progress *progress_;
  FindingCounts told_;
};

}  // namespace campotipo::tool
