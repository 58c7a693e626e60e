#include "layout/reader.hpp"

#include <algorithm>
#include <set>
#include <stdexcept>

#include "errors/error.hpp"
#include "files/input.hpp"
#include "layout/depth.hpp"
#include "layout/record_builder.hpp"
#include "layout/toml_table.hpp"
#include "text/charset.hpp"

namespace campotipo::records {

namespace {

constexpr std::size_t kMostText = 8U << 20;
constexpr std::int64_t kMostMargin = 1 << 24;

Margin read_margin(TomlTable &top, const std::string &key) {
  const std::string expected = "a number of bytes, or { hex = \"...\" }";
  Margin margin;
  const toml::node *node = top.node(key);
  if (node == nullptr) return margin;
  if (node->is_integer()) {
    margin.bytes = static_cast<std::size_t>(*top.number(key, 0, kMostMargin));
    return margin;
  }
  const toml::table *inner = top.table(key, expected);
  TomlTable table(*inner, top.file(), key);
  const auto content = table.bytes("hex");
  if (!content) table.expected("hex", expected);
  margin.content = *content;
  margin.bytes = content->size();
  table.finish();
  return margin;
}

LengthPrefix read_prefix(TomlTable &top) {
  LengthPrefix prefix;
  const toml::table *inner = top.table("length", "{ bytes = 2 }");
  if (inner == nullptr) return prefix;
  TomlTable table(*inner, top.file(), "length");
  const auto bytes = table.number("bytes", 1, 8);
  if (!bytes) table.expected("bytes", "how many bytes tell the length of a record");
  prefix.bytes = static_cast<int>(*bytes);
  prefix.big = table.choice("order", {"little", "big"}).value_or(0) == 1;
  prefix.counts_itself = table.flag("counts_itself");
  table.finish();
  return prefix;
}

void check_size(TomlTable &table, const RecordType &record) {
  const auto size = table.number("size", 1, std::int64_t{1} << 30);
  if (size && static_cast<std::size_t>(*size) != record.bytes) {
    table.fault("size", "the fields take " + std::to_string(record.bytes) + " bytes, expected " +
                            std::to_string(*size));
  }
}

RecordType read_record(TomlTable &table, const FieldDefaults &defaults, const std::string &name) {
  RecordType record;
  record.name = name;
  RecordBuilder builder(record, defaults);
  builder.add_all(table, "field");
  builder.make_columns(table);
  if (record.fields.empty()) table.expected("field", "a field that is no fill");
  check_size(table, record);
  return record;
}

std::size_t selecting_field(const TomlTable &table, const RecordType &record,
                            const std::string &name) {
  for (std::size_t i = 0; i < record.fields.size(); ++i) {
    if (record.fields[i].name == name) return i;
  }
  table.expected("field", "a field called \"" + name + "\", which tells the records apart");
}

std::string stored_form(const TomlTable &table, const Field &field, const std::string &text) {
  std::vector<unsigned char> bytes(field.bytes);
  const char *lost = field.type->take(bytes.data(), PaddedString(text).text(), field.params);
  if (lost != nullptr) {
    table.expected("when", "a value of \"" + field.name + "\" (\"" + text + "\" " + lost + ")");
  }
  return {reinterpret_cast<const char *>(bytes.data()), bytes.size()};
}

// The values that tell the kind; no other kind has one of them.
void read_values(TomlTable &table, const Layout &layout, RecordType &record) {
  const Field &field = record.fields[record.select];
  for (const std::string &text : table.texts("when", "a value or some of them")) {
    const std::string stored = stored_form(table, field, text);
    for (const RecordType &other : layout.types) {
      if (std::find(other.when.begin(), other.when.end(), stored) == other.when.end()) continue;
      table.fault("when", "\"" + text + "\" tells the record \"" + other.name +
                              "\", expected each value once");
    }
    if (std::find(record.when.begin(), record.when.end(), stored) == record.when.end()) {
      record.when.push_back(stored);
    }
  }
  if (!record.when.empty()) return;
  for (const RecordType &other : layout.types) {
    if (other.when.empty()) table.expected("when", "a value, for all records but one");
  }
}

void add_record(TomlTable &table, Layout &layout, const FieldDefaults &defaults,
                const std::string &select) {
  const std::string name = table.required_text("name", "a name");
  if (layout.type_named(name) != nullptr) table.expected("name", "each record's name once");
  table.rename("record \"" + name + "\"");
  RecordType record = read_record(table, defaults, name);
  record.select = selecting_field(table, record, select);
  const Field &field = record.fields[record.select];
  if (layout.types.empty()) {
    layout.select_offset = field.offset;
    layout.select_bytes = field.bytes;
  } else if (field.offset != layout.select_offset || field.bytes != layout.select_bytes) {
    table.fault("field", "\"" + select + "\" stands at byte " + std::to_string(field.offset) +
                             ", expected the place and size it has in the other records");
  }
  read_values(table, layout, record);
  record.main = table.flag("main");
  for (const RecordType &other : layout.types) {
    if (record.main && other.main) table.expected("main", "one record that is the main one");
  }
  table.finish();
  layout.types.push_back(std::move(record));
}

void read_records(TomlTable &top, Layout &layout, const FieldDefaults &defaults) {
  const std::string select =
      top.required_text("select", "the name of the field that tells the records apart");
  if (top.has("field")) top.expected("field", "the fields inside the records");
  const toml::array *records = top.array("record", "an array of tables, [[record]]");
  if (records->empty()) top.expected("record", "at least one record");
  for (const toml::node &node : *records) {
    TomlTable table = top.element(node, "a record");
    add_record(table, layout, defaults, select);
  }
}

// The columns of all kinds, and that every name which an output makes is there once.
void gather_columns(const TomlTable &top, Layout &layout) {
  std::set<std::string_view> known;
  for (const RecordType &record : layout.types) {
    for (const Column &column : record.columns) {
      if (known.insert(column.name).second) layout.columns.push_back(column.name);
    }
    for (const Field &field : record.fields) {
      if (!layout.several() || (field.column != kKindColumn && field.path[0].key != kKindColumn)) {
        continue;
      }
      top.fault("record", "\"" + record.name + "\": \"" + kKindColumn +
                              "\" tells the kind, expected another name for the field \"" +
                              field.name + "\"");
    }
  }
  for (const std::string &column : layout.columns) {
    const std::string hex = column + std::string(kHexEnd);
    if (!known.contains(hex)) continue;
    top.fault("", "the column \"" + hex + "\" is what the bytes of \"" + column +
                      "\" are called, expected another name");
  }
}

Layout read_top(const toml::table &root, const std::string &name) {
  Layout layout;
  layout.file = name;
  TomlTable top(root, name, "");
  layout.name = top.required_text("name", "the name of the record");
  FieldDefaults defaults;
  try {
    defaults.charset = charset_named(top.text("encoding").value_or("ISO-8859-1"));
  } catch (const std::invalid_argument &error) {
    top.expected("encoding", error.what());
  }
  layout.parcela_decimals = static_cast<int>(top.number("parcela_decimals", 0, 18).value_or(4));
  defaults.parcela_decimals = layout.parcela_decimals;
  layout.header = read_margin(top, "header");
  layout.trailer = read_margin(top, "trailer");
  layout.prefix = read_prefix(top);
  if (top.has("record")) {
    read_records(top, layout, defaults);
  } else {
    layout.types.push_back(read_record(top, defaults, layout.name));
  }
  gather_columns(top, layout);
  top.finish();
  return layout;
}

}  // namespace

Layout parse_layout(std::string_view text, const std::string &name) {
  check_depth(text, name);
  try {
    // Without the name, which toml++ would copy where it promises to throw nothing.
    return read_top(toml::parse(text), name);
  } catch (const toml::parse_error &error) {
    layout_fault(name, error.source(), std::string(error.description()));
  }
}

Layout read_layout(const std::string &path) {
  Input input(path);
  constexpr std::size_t kStep = 64U << 10;
  std::string text;
  for (std::size_t got = kStep; got == kStep;) {
    const std::size_t kept = text.size();
    if (kept > kMostText)
      throw Error(ErrorCode::kLayout, input.name() + ": too large for a layout");
    text.resize(kept + kStep);
    got = input.read(text.data() + kept, kStep);
    text.resize(kept + got);
  }
  return parse_layout(text, input.name());
}

}  // namespace campotipo::records
