#pragma once

#include <string_view>

// Check digits and punctuation of documents, of texts that need no NUL.
namespace campotipo::python {

// Room for any document in either form, and for a text that is worth looking at.
inline constexpr std::size_t kDocumentRoom = 128;

struct Document {
  const char *name;
  int (*valida)(char *text, int make);
  int (*limpa)(char *dest, const char *text);    // null: the characters are digits alone
  char *(*edita)(char *dest, const char *text);  // null: no punctuation in use
  std::size_t shortest;
  std::size_t longest;
  std::size_t longest_form;  // with its punctuation
  int bit;                   // of DOCUMENTO_identifica
};

inline constexpr int kDocuments = 15;
extern const Document kDocument[kDocuments];

// By its name, in letters of either case; null: there is none.
const Document *document_of(std::string_view name);

// The text without its punctuation at `dest`, of kDocumentRoom bytes, ended by a NUL; its length, or
// 0 where what is left is not of the document's length and characters.
std::size_t clean(const Document &document, std::string_view text, char *dest);

// Whether the check digits hold, whatever punctuation the text has.
bool holds(const Document &document, std::string_view text);

// The usual form at `dest`; its length, or 0 as in clean.
std::size_t usual_form(const Document &document, std::string_view text, char *dest);

// A bit for each document of the table that the text can be, the first the lowest.
unsigned identify(std::string_view text);

}  // namespace campotipo::python
