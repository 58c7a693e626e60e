#pragma once

#include <cstddef>
#include <string>

#include "layout/layout.hpp"

// Layouts of public formats whose texts are compiled in.
namespace campotipo::records {

// The text of the layout of this name; null where there is none.
const char *ready_layout(const std::string &name);

// Names in their order; null behind the last.
const char *ready_layout_name(std::size_t at);

// The layout that a word stands for: a text of its own (with a line feed in it), the path of a file,
// or the name of a ready one.
Layout layout_at_place(const std::string &place);

}  // namespace campotipo::records
