#include "commands/faults.hpp"

#include "terminal/failure.hpp"
#include "terminal/tell.hpp"

namespace campotipo::tool {

std::string passed_over(std::uint64_t records) {
  return std::to_string(records) + (records == 1 ? " record" : " records") +
         " of no kind passed over";
}

void FaultTeller::tell_all(const RecordBlock &block) {
  for (const StreamFault &fault : block.faults) {
    if (skip_unknown_ && fault.word == What::kUnknownKind && !fault.fatal) {
      ++skipped_;
      continue;
    }
    if (!told_.add("", fault.what, {fault.record, fault.offset, ""})) continue;
    progress_->clear();
    tell(file_ + ": " + fault.text());
  }
}

int FaultTeller::status() {
  progress_->clear();
  for (const FindingCounts::Line &line : told_.lines()) {
    const std::uint64_t more = line.entry.count - line.entry.places.size();
    if (more == 0) continue;
    tell(file_ + ": " + std::to_string(more) + " more of these: " + line.what +
         " (campotipo check --all tells each)");
  }
  if (skipped_ != 0) tell(file_ + ": " + passed_over(skipped_));
  return told_.empty() ? kGood : kFound;
}

}  // namespace campotipo::tool
