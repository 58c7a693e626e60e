#pragma once

#include <memory>
#include <string>

#include "layout/layout.hpp"
#include "layout/toml_table.hpp"

namespace campotipo::records {

// What a layout tells for all its fields.
struct FieldDefaults {
  std::shared_ptr<const Charset> charset;
  int parcela_decimals = 4;
};

// A type and what the layout tells of it, without name or place. `bits` tells how many bits the
// parts of an area have.
struct TypedField {
  const FieldType *type = nullptr;
  Params params;
  const NamedCheck *check = nullptr;
};

// Reads the keys of a type from a table that has a `type`.
TypedField read_typed_field(TomlTable &table, const FieldDefaults &defaults);

// The check that a key names.
const NamedCheck &read_check_name(TomlTable &table, std::string_view key);

}  // namespace campotipo::records
