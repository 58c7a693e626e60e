#include "layout/character_keys.hpp"

#include <algorithm>

#include "kinds/dates.hpp"
#include "kinds/text_numbers.hpp"
#include "text/ascii.hpp"
#include "text/charset.hpp"

namespace campotipo::records {

namespace {

constexpr int kMostDigitString = 100000;
constexpr int kMostPivot = 100;

void read_sign(TomlTable &table, Params &p) {
  const auto sign = table.choice("sign", {"leading", "trailing", "overpunch"});
  if (sign) p.sign = static_cast<Sign>(*sign + 1);
}

void read_pad(TomlTable &table, const FieldType &type, Params &p) {
  if ((type.keys & kDigits) != 0) {
    const auto pad = table.choice("pad", {" ", "0"});
    if (pad && *pad == 0) p.pad = ' ';
    return;
  }
  const auto pad = table.text("pad");
  if (!pad) return;
  if (pad->size() != 1 || pad->at(0) < ' ' || pad->at(0) > '~') {
    table.expected("pad", "the character that fills the text in front, as in \"0\"");
  }
  p.pad = pad->at(0);
}

void read_stored(TomlTable &table, const FieldType &type, Params &p) {
  if ((type.keys & kFormat) == 0) {
    const auto stored = table.choice("stored", {"HHMM", "HHMMSS"});
    if (!stored) table.expected("stored", "\"HHMM\" or \"HHMMSS\"");
    p.n = p.bytes = *stored == 0 ? 4 : 6;
    return;
  }
  const std::string expected = "DD, MM and AAAA or AA, as in \"DDMMAAAA\"";
  p.stored = date_pattern(table.required_text("stored", expected));
  if (!p.stored) table.expected("stored", expected);
  p.n = p.bytes = static_cast<int>(p.stored->full.length);
  p.pivot = static_cast<int>(table.number("pivot", 0, kMostPivot).value_or(p.pivot));
}

// A digit fills a date's digits, and what stands between them stays.
std::string filled(char character, const Params &p) {
  std::string form(static_cast<std::size_t>(p.bytes), character);
  if (!p.stored || !ascii::is_digit(character)) return form;
  for (std::size_t at = 0; at < form.size(); ++at) {
    if (p.stored->full.above[at] == 0) form[at] = p.stored->full.character[at];
  }
  return form;
}

void read_empties(TomlTable &table, const FieldType &type, Params &p) {
  const std::string expected =
      "one character that fills the field, or all " + std::to_string(p.bytes) + " bytes of it";
  std::vector<std::string> texts = table.texts("empty", expected + ", or a list of such texts");
  if (table.has("empty") && texts.empty()) table.expected("empty", expected);
  const bool number = (type.keys & kDigits) != 0;
  if (texts.empty() && !number) texts.emplace_back(p.pattern ? "0" : " ");
  for (const std::string &text : texts) {
    bool whole = true;
    const std::string bytes = p.charset->from_utf8(text, whole);
    const bool fits = whole && (bytes.size() == 1 || bytes.size() == std::size_t(p.bytes));
    if (!fits) table.expected("empty", expected);
    p.empties.push_back(bytes.size() == 1 ? filled(bytes[0], p) : bytes);
  }
}

void check_charset(TomlTable &table, const FieldType &type, const Params &p) {
  if (p.charset->keeps_ascii()) return;
  const std::string what = "a " + std::string(type.name) +
                           " has the digits and blanks of ASCII, \"" + p.charset->name() +
                           "\" has others";
  table.fault(table.has("encoding") ? "encoding" : "type", what);
}

}  // namespace

void read_digits(TomlTable &table, const FieldType &type, Params &p) {
  const bool number = (type.keys & kDecimals) != 0;
  const auto digits =
      table.number("digits", 1, number ? text_numbers::kMostDigits : kMostDigitString);
  if (!digits) table.expected("digits", "how many digits the field has");
  p.n = p.bytes = static_cast<int>(*digits);
  if ((type.keys & kSign) != 0) read_sign(table, p);
  if (text_numbers::has_sign_byte(p.sign)) ++p.bytes;
}

void read_character_keys(TomlTable &table, const FieldType &type, Params &p) {
  if ((type.keys & kEmpty) == 0) return;
  check_charset(table, type, p);
  if ((type.keys & kPad) != 0) read_pad(table, type, p);
  if ((type.keys & kStored) != 0) read_stored(table, type, p);
  read_empties(table, type, p);
}

}  // namespace campotipo::records
