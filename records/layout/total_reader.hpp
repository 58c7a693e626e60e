#pragma once

#include "layout/layout.hpp"
#include "layout/toml_table.hpp"

namespace campotipo::records {

// The count or sum that a field of the kind tells: the keys `counts`, `sums` and `where`. What it
// speaks of joins the measures of the layout.
Total read_total(TomlTable &table, Layout &layout, const RecordType &type, const Field &field);

}  // namespace campotipo::records
