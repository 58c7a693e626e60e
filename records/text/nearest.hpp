#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace campotipo::records {

// The word of a list nearest to a misspelt one, empty where none is near.
std::string nearest(std::string_view word, const std::vector<std::string> &list);

}  // namespace campotipo::records
