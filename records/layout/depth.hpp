#pragma once

#include <string>
#include <string_view>

namespace campotipo::records {

// Refuses a text of TOML whose keys make tables too deep: the parser takes them down recursively.
void check_depth(std::string_view text, const std::string &name);

}  // namespace campotipo::records
