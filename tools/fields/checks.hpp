#pragma once

#include <span>
#include <string_view>

namespace campotipo::tool {

// A check of the digits that a text carries, by the name a layout gives it.
struct NamedCheck {
  const char *name;
  const char *title;                   // as a person says it
  const char *fault;                   // what to say of a text that fails
  int (*holds)(char *text, int make);  // the library's own test, called with make 0
};

std::span<const NamedCheck> named_checks();
const NamedCheck *named_check(std::string_view name);

// Whether the check holds for a text, of which points, dashes, slashes and blanks do not count. A
// text without content, zeros included, is not checked.
bool holds(const NamedCheck &check, std::string_view text);

}  // namespace campotipo::tool
