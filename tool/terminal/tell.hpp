#pragma once

#include <string_view>

namespace campotipo::tool {

// A line on standard error, without what would steer a terminal.
void tell(std::string_view message);

}  // namespace campotipo::tool
