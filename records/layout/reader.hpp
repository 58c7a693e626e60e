#pragma once

#include <string>
#include <string_view>

#include "layout/layout.hpp"

namespace campotipo::records {

// Reads a layout file; an Error tells file, line and what was expected.
Layout read_layout(const std::string &path);

// The same from a text, which messages call by the name given.
Layout parse_layout(std::string_view text, const std::string &name);

}  // namespace campotipo::records
