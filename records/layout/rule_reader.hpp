#pragma once

#include <string>
#include <vector>

#include "layout/layout.hpp"
#include "layout/record_builder.hpp"

namespace campotipo::records {

// Reads the rules of the fields, of all kinds: sources has those of each kind. file: as messages call
// the layout.
void read_rules(Layout &layout, const std::vector<std::vector<RuleSource>> &sources,
                const std::string &file);

}  // namespace campotipo::records
