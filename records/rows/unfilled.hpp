#pragma once

#include <cstddef>
#include <vector>

#include "layout/layout.hpp"

namespace campotipo::records {

// Where the layout has rules over the whole file: the records that a block made, and their fields for
// which there was no value, in the order of the records.
struct Unfilled {
  struct Made {
    std::size_t at;  // in the bytes of the block
    const RecordType *type;
  };
  struct Hole {
    std::size_t record;  // place in `made`
    const FieldRules *rules;
  };
  std::vector<Made> made;
  std::vector<Hole> holes;

  void clear() {
    made.clear();
    holes.clear();
  }
};

}  // namespace campotipo::records
