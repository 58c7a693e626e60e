#pragma once

#include <string>

#include "files/stream.hpp"
#include "findings/losses.hpp"
#include "terminal/progress.hpp"

namespace campotipo::tool {

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
  Tally told_;
};

}  // namespace campotipo::tool
