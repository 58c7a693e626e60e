#include "layout/rule_reader.hpp"

#include <algorithm>

#include "layout/conditions.hpp"
#include "layout/total_reader.hpp"

namespace campotipo::records {

namespace {

constexpr std::size_t kNone = FieldRules::kNone;

// A text, or a number as it is written.
std::string read_bound(TomlTable &table, const char *key, const Field &field) {
  const toml::node *node = table.node(key);
  if (node == nullptr) return "";
  std::string text;
  if (node->is_string()) {
    text = node->as_string()->get();
  } else if (node->is_integer()) {
    text = std::to_string(node->as_integer()->get());
  } else {
    table.expected(key, "a text or a whole number");
  }
  return stored_form(table, key, field, text);
}

void read_values(TomlTable &table, const Field &field, FieldRules &rules) {
  const toml::node *node = table.node("value");
  if (node == nullptr) return;
  const auto add = [&](const TomlTable &from, std::string_view key, const std::string &text,
                       const std::string &meaning) {
    rules.values.push_back({stored_form(from, key, field, text), text, meaning});
  };
  if (const toml::table *meanings = node->as_table()) {
    TomlTable inner(*meanings, table.file(), table.what() + ": value");
    for (const auto &[text, meaning] : *meanings) {
      add(inner, text.str(), std::string(text.str()), inner.text(text.str()).value_or(""));
    }
  } else {
    const std::string expected = "a text, some of them, or a table of them with their meanings";
    for (const std::string &text : table.texts("value", expected)) add(table, "value", text, "");
    rules.constant = node->is_string();
  }
  if (rules.values.empty()) table.expected("value", "at least one value");
}

void read_check_by(TomlTable &table, const RecordType &type, FieldRules &rules) {
  const toml::node *node = table.node("check");
  if (node == nullptr || !node->is_table()) return;
  TomlTable inner(*node->as_table(), table.file(), table.what() + ": check");
  const std::string by = inner.required_text("by", "the field that tells which check holds");
  rules.check_by = field_named(type, by);
  if (rules.check_by == kNone) inner.expected("by", "a field of \"" + type.name + "\"");
  for (const auto &[text, name] : *node->as_table()) {
    if (text.str() == "by") continue;
    const std::string value(text.str());
    rules.checks.emplace_back(stored_form(inner, value, type.fields[rules.check_by], value),
                              &read_check_name(inner, value));
  }
  if (rules.checks.empty()) inner.fault("", "expected a check, as in 1 = \"CPF\"");
}

std::size_t kind_named(const TomlTable &table, const char *key, const Layout &layout,
                       const std::string &name) {
  const RecordType *type = layout.type_named(name);
  if (type == nullptr) table.expected(key, "the name of a record");
  return static_cast<std::size_t>(type - layout.types.data());
}

void read_sequence(TomlTable &table, Layout &layout, const Field &field, FieldRules &rules) {
  const auto word = table.text("sequence");
  if (!word) return;
  if ((field.type->traits & kRight) == 0 || field.params.decimals != 0) {
    table.fault("sequence", "expected it at a whole number");
  }
  Counter counter{*word, kNone};
  if (*word != "file") counter.since = kind_named(table, "sequence", layout, *word);
  auto &all = layout.counters;
  const auto known =
      std::find_if(all.begin(), all.end(), [&](const Counter &each) { return each.word == *word; });
  rules.counter = static_cast<std::size_t>(known - all.begin());
  if (known == all.end()) all.push_back(counter);
}

void read_same(TomlTable &table, Layout &layout, const Field &field, FieldRules &rules) {
  const auto word = table.text("same");
  if (!word) return;
  Memory memory{kind_named(table, "same", layout, *word), 0};
  memory.field = field_named(layout.types[memory.kind], field.name);
  if (memory.field == kNone) {
    table.expected("same", "a record that has a field \"" + field.name + "\"");
  }
  rules.same = layout.memories.size();
  layout.memories.push_back(memory);
}

// A value that follows from other records tells nothing else, and no kind.
void refuse_conflicts(const TomlTable &table, const RecordType &type, const FieldRules &rules) {
  const int sources = (rules.constant ? 1 : 0) + (rules.counter != kNone ? 1 : 0) +
                      (rules.same != kNone ? 1 : 0) + (rules.has_total() ? 1 : 0);
  if (sources > 1) {
    table.fault("", "a value, a sequence, same, counts and sums exclude one another, expected one");
  }
  for (const Condition &condition : type.when) {
    if (condition.field != rules.field) continue;
    if (rules.constant && condition.stored != std::vector<std::string>{rules.values[0].stored}) {
      table.fault("value", "another than the one that tells the kind of the record, expected that");
    }
    if (rules.follows()) {
      table.fault("",
                  "it tells the kind of the record, expected no value that follows from others");
    }
  }
}

}  // namespace

void read_rules(Layout &layout, const std::vector<std::vector<RuleSource>> &sources,
                const std::string &file) {
  for (std::size_t kind = 0; kind < sources.size(); ++kind) {
    RecordType &type = layout.types[kind];
    for (const RuleSource &source : sources[kind]) {
      TomlTable table(*source.table, file, source.what);
      const Field &field = type.fields[source.field];
      FieldRules rules;
      rules.field = source.field;
      rules.required = table.flag("required");
      read_values(table, field, rules);
      rules.least = read_bound(table, "min", field);
      rules.greatest = read_bound(table, "max", field);
      read_check_by(table, type, rules);
      read_sequence(table, layout, field, rules);
      read_same(table, layout, field, rules);
      rules.total = read_total(table, layout, type, field);
      refuse_conflicts(table, type, rules);
      if (rules.counter != kNone && std::find(type.counters.begin(), type.counters.end(),
                                              rules.counter) == type.counters.end()) {
        type.counters.push_back(rules.counter);
      }
      type.rules.push_back(std::move(rules));
    }
  }
}

}  // namespace campotipo::records
