#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "layout/layout.hpp"
#include "layout/toml_table.hpp"

namespace campotipo::records {

// The bytes of a field that holds the text. Ends the reading of the layout at the key where the text
// is no value of the field.
std::string stored_form(const TomlTable &table, std::string_view key, const Field &field,
                        const std::string &text);

// Fields of a kind, each with a value or some of them: `key = { f = "x", g = ["y", "z"] }`. None
// where the key is not there.
std::vector<Condition> read_conditions(TomlTable &table, std::string_view key,
                                       const RecordType &type);

// The place of the field in the kind that has the name; RecordType::kNone where none has it.
std::size_t field_named(const RecordType &type, std::string_view name);

// Ends the reading where a kind has a value that one in front of it takes already: tables are those
// of the kinds.
void refuse_hidden(const Layout &layout, const std::vector<TomlTable> &tables);

}  // namespace campotipo::records
