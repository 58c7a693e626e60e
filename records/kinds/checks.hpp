#pragma once

#include <span>
#include <string>
#include <string_view>

namespace campotipo::records {

// A check of the digits that a text carries, by the name a layout gives it.
struct NamedCheck {
  enum Letters { kNone, kSome, kAtLeastOne };

  const char *name;
  const char *title;                   // as a person says it
  const char *fault;                   // what to say of a text that fails
  int (*holds)(char *text, int make);  // the library's own test, called with make 0
  std::size_t shortest;                // characters of a document, 0: it is none
  std::size_t longest;
  Letters letters;                                   // in a document of this kind
  char *(*punctuate)(char *dest, const char *text);  // its usual form; null: there is none
};

std::span<const NamedCheck> named_checks();
const NamedCheck *named_check(std::string_view name);

// A text without points, dashes, slashes and blanks.
std::string without_punctuation(std::string_view text);

// Whether a text has the length and the characters of a kind of document.
bool can_be(const NamedCheck &check, std::string_view text);

// Such a text in its usual form; the text itself where there is none.
std::string usual_form(const NamedCheck &check, const std::string &text);

// Whether the check holds for a text, of which punctuation does not count. A text without content,
// zeros included, is not checked; a number that lost its leading zeros gets them back, and one with more of
// them than it has loses them.
bool holds(const NamedCheck &check, std::string_view text);

}  // namespace campotipo::records
