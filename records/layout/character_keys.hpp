#pragma once

#include "kinds/type.hpp"
#include "layout/toml_table.hpp"

namespace campotipo::records {

// How long a field of digits is: `digits`, and `sign` where it has a byte of its own.
void read_digits(TomlTable &table, const FieldType &type, Params &p);

// The other keys of a field that is stored as characters, behind all that tells its size and its
// character set.
void read_character_keys(TomlTable &table, const FieldType &type, Params &p);

}  // namespace campotipo::records
