#include "layout/kind_reader.hpp"

#include <algorithm>
#include <optional>

#include "layout/conditions.hpp"
#include "layout/record_builder.hpp"
#include "layout/rule_reader.hpp"

namespace campotipo::records {

namespace {

constexpr std::int64_t kMostBytes = std::int64_t{1} << 30;

// The one kind that a flag marks; false where the key is not there.
bool read_flag(TomlTable &table, const Layout &layout, const char *key, bool RecordType::*flag) {
  if (!table.flag(key)) return false;
  for (const RecordType &other : layout.types) {
    if (other.*flag) table.expected(key, "it at one record: \"" + other.name + "\" has it");
  }
  return true;
}

using RuleSources = std::vector<std::vector<RuleSource>>;

RecordType read_fields(TomlTable &table, const FieldDefaults &defaults, const std::string &name,
                       RuleSources &rules) {
  RecordType record;
  record.name = name;
  RecordBuilder builder(record, defaults);
  builder.add_all(table, "field");
  builder.make_columns(table);
  if (record.fields.empty()) table.expected("field", "a field that is no fill");
  rules.push_back(builder.rules());
  return record;
}

// size: of every kind that does not tell its own.
void check_size(TomlTable &table, const RecordType &record, std::optional<std::int64_t> size) {
  const auto own = table.number("size", 1, kMostBytes);
  const auto wanted = own ? own : size;
  if (wanted && static_cast<std::size_t>(*wanted) != record.bytes) {
    table.fault(own ? "size" : "", "the fields take " + std::to_string(record.bytes) +
                                       " bytes, expected " + std::to_string(*wanted));
  }
}

TomlTable add_record(TomlTable table, Layout &layout, const FieldDefaults &defaults,
                     std::optional<std::int64_t> size, RuleSources &rules) {
  const std::string name = table.required_text("name", "a name");
  if (layout.type_named(name) != nullptr) table.expected("name", "each record's name once");
  table.rename("record \"" + name + "\"");
  RecordType record = read_fields(table, defaults, name, rules);
  check_size(table, record, size);
  record.when = read_conditions(table, "when", record);
  for (const Condition &condition : record.when) {
    const Field &field = record.fields[condition.field];
    record.told_bytes = std::max(record.told_bytes, field.offset + field.bytes);
  }
  record.main = read_flag(table, layout, "main", &RecordType::main);
  record.first = read_flag(table, layout, "first", &RecordType::first);
  record.last = read_flag(table, layout, "last", &RecordType::last);
  table.text("closes");
  table.finish();
  layout.types.push_back(std::move(record));
  return table;
}

void read_closes(Layout &layout, std::vector<TomlTable> &tables) {
  for (std::size_t i = 0; i < tables.size(); ++i) {
    const auto name = tables[i].text("closes");
    if (!name) continue;
    const RecordType *begins = layout.type_named(*name);
    if (begins == nullptr || begins == &layout.types[i]) {
      tables[i].expected("closes", "the name of another record, which begins the lot");
    }
    layout.types[i].closes = static_cast<std::size_t>(begins - layout.types.data());
  }
}

}  // namespace

void read_kinds(TomlTable &top, Layout &layout, const FieldDefaults &defaults) {
  if (top.has("select")) {
    top.fault("select", "is gone, expected when = { field = \"value\" } in each record");
  }
  RuleSources rules;
  if (!top.has("record")) {
    layout.types.push_back(read_fields(top, defaults, layout.name, rules));
    check_size(top, layout.types[0], std::nullopt);
    return read_rules(layout, rules, top.file());
  }
  if (top.has("field")) top.expected("field", "the fields inside the records");
  const auto size = top.number("size", 1, kMostBytes);
  const toml::array *records = top.array("record", "an array of tables, [[record]]");
  if (records->empty()) top.expected("record", "at least one record");
  std::vector<TomlTable> tables;
  for (const toml::node &node : *records) {
    tables.push_back(add_record(top.element(node, "a record"), layout, defaults, size, rules));
  }
  read_closes(layout, tables);
  refuse_hidden(layout, tables);
  read_rules(layout, rules, top.file());
}

}  // namespace campotipo::records
