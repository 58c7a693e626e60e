#include "layout/field_reader.hpp"

#include <campotipo/bits.h>
#include <campotipo/codes.h>

#include <span>
#include <stdexcept>

#include "kinds/dates.hpp"
#include "layout/character_keys.hpp"
#include "text/charset.hpp"
#include "text/nearest.hpp"

namespace campotipo::records {

namespace {

constexpr int kMostBytes = 1 << 20;
constexpr int kMostPositions = 100000;
constexpr int kMostDecimals = 50;

struct Option {
  const char *word;
  int flag;
};
constexpr Option kCodeOptions[] = {{"zeros", CODALFA_OPC_ZEROS},
                                   {"cut_left", CODALFA_OPC_CORTA_ESQUERDA},
                                   {"digits_only", CODALFA_OPC_SO_DIGITOS}};
constexpr Option kStringOptions[] = {{"cut_left", CODSTR_OPC_CORTA_ESQUERDA}};
constexpr Option kGuidOptions[] = {
    {"dashes", ZGUID_HIFENS}, {"capitals", ZGUID_MAIUSCULAS}, {"braces", ZGUID_CHAVES}};

std::span<const Option> options_of(const FieldType &type) {
  if ((type.keys & kFold) != 0) return kCodeOptions;
  if ((type.keys & kEncoding) != 0) return kStringOptions;
  return kGuidOptions;
}

int read_options(TomlTable &table, const FieldType &type) {
  const std::span<const Option> known = options_of(type);
  std::string words;
  for (const Option &option : known) {
    words += (words.empty() ? "\"" : ", \"") + std::string(option.word) + "\"";
  }
  if (!table.has("options")) return known.data() == kGuidOptions ? ZGUID_HIFENS : 0;
  int flags = 0;
  for (const std::string &word : table.texts("options", "some of " + words)) {
    int flag = 0;
    for (const Option &option : known) flag |= word == option.word ? option.flag : 0;
    if (flag == 0) table.expected("options", "some of " + words);
    flags |= flag;
  }
  return flags;
}

const FieldType &read_type(TomlTable &table) {
  const std::string name = table.required_text("type", "the name of a field type");
  if (const FieldType *type = field_type(name)) return *type;
  std::vector<std::string> names;
  for (const FieldType &type : field_types()) names.emplace_back(type.name);
  const std::string near = nearest(name, names);
  table.expected("type", near.empty() ? "a field type (campotipo types lists them)"
                                      : "a field type such as \"" + near + "\"");
}

// Bytes told by a number, or by what they hold.
void read_fill(TomlTable &table, Params &p) {
  const auto content = table.bytes("hex");
  const auto value = table.number("value", 0, 255);
  const auto bytes = table.number("bytes", 1, kMostBytes);
  if (!content && !bytes) table.expected("bytes", "how many unused bytes");
  if (content && (content->empty() || value)) table.expected("hex", "bytes, and no value beside");
  const std::string unit = content.value_or(std::string(1, static_cast<char>(value.value_or(0))));
  p.bytes = static_cast<int>(bytes.value_or(static_cast<std::int64_t>(unit.size())));
  while (p.fill.size() < static_cast<std::size_t>(p.bytes)) p.fill += unit;
  p.fill.resize(static_cast<std::size_t>(p.bytes));
}

void read_sizes(TomlTable &table, const FieldType &type, Params &p) {
  p.bytes = type.bytes;
  p.n = type.count;
  if ((type.keys & kPositions) != 0) {
    const auto positions = table.number("positions", 1, kMostPositions);
    if (!positions) table.expected("positions", "how many characters the code has");
    p.n = static_cast<int>(*positions);
    p.bytes = CODALFA_BYTES(p.n);
  } else if (is_fill(type)) {
    read_fill(table, p);
  } else if ((type.keys & kBytes) != 0) {
    const auto bytes = table.number("bytes", 1, kMostBytes);
    if (!bytes) table.expected("bytes", "how many bytes the field has");
    p.n = p.bytes = static_cast<int>(*bytes);
  } else if ((type.keys & kDigits) != 0) {
    read_digits(table, type, p);
  }
}

void read_date(TomlTable &table, const FieldType &type, Params &p) {
  if ((type.keys & kFormat) == 0) return;
  p.pattern = date_pattern(table.text("format").value_or("DD/MM/AAAA"));
  if (!p.pattern) table.expected("format", "DD, MM and AAAA or AA, as in \"AAAA-MM-DD\"");
  if ((type.keys & kDateEncoding) == 0) return;
  const auto encoding = table.choice("encoding", {"both", "packed", "decimal"});
  if (encoding) p.encoding = static_cast<DateEncoding>(*encoding);
}

void read_charset(TomlTable &table, const FieldType &type, Params &p) {
  if ((type.keys & kEncoding) == 0) return;
  const auto name = table.text("encoding");
  if (!name) return;
  try {
    p.charset = charset_named(*name);
  } catch (const std::invalid_argument &error) {
    table.expected("encoding", error.what());
  }
}

char read_separator(TomlTable &table) {
  const std::string text = table.text("separator").value_or(":");
  const bool good = text.size() == 1 && text[0] > ' ' && text[0] <= '~' && text[0] != ',' &&
                    text[0] != '"' && (text[0] < '0' || text[0] > '9');
  if (!good) table.expected("separator", "one character that is no digit, comma or quote");
  return text[0];
}

// Where another field tells which check it is, that is a rule, and read with the others.
const NamedCheck *read_check(TomlTable &table, const FieldType &type, const Params &p) {
  const toml::node *told = table.node("check");
  if (told == nullptr) return nullptr;
  if ((type.traits & kChecked) == 0 || p.decimals != 0) {
    table.fault("check", "a " + std::string(type.name) + (p.decimals != 0 ? " with decimals" : "") +
                             " has no check digits, expected a code, a text or a whole number");
  }
  return told->is_table() ? nullptr : &read_check_name(table, "check");
}

}  // namespace

const NamedCheck &read_check_name(TomlTable &table, std::string_view key) {
  const auto name = table.text(key);
  if (name) {
    if (const NamedCheck *check = named_check(*name)) return *check;
  }
  std::string words;
  for (const NamedCheck &check : named_checks()) {
    words += (words.empty() ? "\"" : ", \"") + std::string(check.name) + "\"";
  }
  table.expected(key, "one of " + words);
}

TypedField read_typed_field(TomlTable &table, const FieldDefaults &defaults) {
  TypedField field;
  const FieldType &type = read_type(table);
  Params &p = field.params;
  field.type = &type;
  p.charset = defaults.charset;
  read_sizes(table, type, p);
  if (std::string_view(type.name) == "PARCELA") p.decimals = defaults.parcela_decimals;
  if (std::string_view(type.name) == "QUANTIA") p.decimals = 2;
  if (type.decimals != 0) p.decimals = type.decimals;
  if ((type.keys & kDecimals) != 0) {
    const int most = (type.keys & kDigits) != 0 ? p.n : kMostDecimals;
    p.decimals = static_cast<int>(table.number("decimals", 0, most).value_or(0));
  }
  if ((type.keys & kOptions) != 0) p.options = read_options(table, type);
  if ((type.keys & kFold) != 0) p.fold = table.flag("fold");
  if ((type.keys & kSeparator) != 0) p.separator = read_separator(table);
  read_date(table, type, p);
  read_charset(table, type, p);
  read_character_keys(table, type, p);
  field.check = read_check(table, type, p);
  return field;
}

}  // namespace campotipo::records
