#include "layout/reader.hpp"

#include <algorithm>
#include <set>
#include <stdexcept>

#include "errors/error.hpp"
#include "files/input.hpp"
#include "layout/depth.hpp"
#include "layout/kind_reader.hpp"
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

LineEnd read_line_end(TomlTable &top) {
  const auto told = top.choice("line_end", {"lf", "crlf"});
  if (!told) return LineEnd::kNone;
  for (const char *key : {"header", "trailer", "length"}) {
    if (top.has(key)) top.fault(key, "a file of lines has none, expected it without line_end");
  }
  return *told == 0 ? LineEnd::kLf : LineEnd::kCrLf;
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
  layout.line_end = read_line_end(top);
  read_kinds(top, layout, defaults);
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
