#pragma once

#include "layout/field_reader.hpp"
#include "layout/layout.hpp"
#include "layout/toml_table.hpp"

namespace campotipo::records {

// Reads the kinds of record: the fields at the top of the layout, or [[record]]s with theirs.
void read_kinds(TomlTable &top, Layout &layout, const FieldDefaults &defaults);

}  // namespace campotipo::records
