#include "terminal/tell.hpp"

#include <iostream>

#include "text/quote.hpp"

namespace campotipo::tool {

using namespace campotipo::records;

void tell(std::string_view message) { std::cerr << "campotipo: " + printable(message) + "\n"; }

}  // namespace campotipo::tool
