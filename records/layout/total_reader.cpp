#include "layout/total_reader.hpp"

#include <algorithm>
#include <map>

#include "layout/conditions.hpp"

namespace campotipo::records {

namespace {

constexpr const char *kCounted = "\"*\", a record, some of them, or { by = \"field\" }";
constexpr const char *kSummed = "a field of a record, \"record.field\", or some of them";

class TotalReader {
 public:
  TotalReader(TomlTable &table, Layout &layout, const RecordType &type, const Field &field)
      : table_(&table), layout_(&layout), type_(&type), field_(&field) {}

  Total read() {
    const toml::node *counts = table_->node("counts");
    const toml::node *sums = table_->node("sums");
    const toml::node *where = table_->node("where");
    Total total;
    if (counts == nullptr && sums == nullptr) {
      if (where != nullptr) table_->fault("where", "expected counts or sums beside it");
      return total;
    }
    if (counts != nullptr && sums != nullptr) table_->fault("sums", "expected no counts beside it");
    const char *key = sums != nullptr ? "sums" : "counts";
    const bool number = (field_->type->traits & kRight) != 0;
    if (!number || (counts != nullptr && field_->params.decimals != 0)) {
      table_->fault(key,
                    sums != nullptr ? "expected it at a number" : "expected it at a whole number");
    }
    total.sum = sums != nullptr;
    if (total.sum) {
      total.measure = summed();
    } else if (counts->is_table()) {
      if (where != nullptr) table_->fault("where", "expected it without { by = ... }");
      read_by(*counts->as_table(), total);
    } else {
      const auto names = table_->texts("counts", kCounted);
      if (names.empty()) table_->expected("counts", kCounted);
      total.all = names[0] == "*" && names.size() == 1 && where == nullptr;
      if (!total.all) total.measure = counted(*table_, "counts", names);
    }
    return total;
  }

 private:
  std::size_t add(Measure measure) {
    auto &all = layout_->measures;
    const auto known = std::find(all.begin(), all.end(), measure);
    const auto place = static_cast<std::size_t>(known - all.begin());
    if (known == all.end()) all.push_back(std::move(measure));
    return place;
  }

  std::size_t kind_named(const TomlTable &table, std::string_view key, const std::string &name,
                         const char *expected) const {
    const RecordType *type = layout_->type_named(name);
    if (type == nullptr) table.expected(key, expected);
    return static_cast<std::size_t>(type - layout_->types.data());
  }

  std::vector<Condition> where(const RecordType &type) {
    return read_conditions(*table_, "where", type);
  }

  // Of "*" with conditions, the kinds that have their fields.
  bool has_where(const RecordType &type) {
    const toml::node *node = table_->node("where");
    if (node == nullptr || !node->is_table()) return true;
    const toml::table &fields = *node->as_table();
    return std::all_of(fields.begin(), fields.end(), [&](const auto &entry) {
      return field_named(type, entry.first.str()) != RecordType::kNone;
    });
  }

  std::size_t counted(const TomlTable &table, std::string_view key,
                      const std::vector<std::string> &names) {
    Measure measure;
    for (const std::string &name : names) {
      if (name == "*" && names.size() == 1) {
        for (std::size_t kind = 0; kind < layout_->types.size(); ++kind) {
          const RecordType &type = layout_->types[kind];
          if (has_where(type)) measure.parts.push_back({kind, Measure::kCount, where(type)});
        }
        if (measure.parts.empty()) table_->expected("where", "fields that some record has");
        continue;
      }
      const std::size_t kind = kind_named(table, key, name, kCounted);
      measure.parts.push_back({kind, Measure::kCount, where(layout_->types[kind])});
    }
    return add(std::move(measure));
  }

  std::size_t summed() {
    Measure measure;
    for (const std::string &name : table_->texts("sums", kSummed)) {
      const std::size_t point = name.rfind('.');
      if (point == std::string::npos) table_->expected("sums", kSummed);
      const std::size_t kind = kind_named(*table_, "sums", name.substr(0, point), kSummed);
      const RecordType &type = layout_->types[kind];
      const std::size_t place = field_named(type, name.substr(point + 1));
      if (place == RecordType::kNone) {
        table_->fault("sums", "\"" + type.name + "\" has no field \"" + name.substr(point + 1) +
                                  "\", expected one");
      }
      const Field &field = type.fields[place];
      const int decimals = field_->params.decimals;
      if ((field.type->traits & kRight) == 0 || field.params.decimals != decimals) {
        table_->expected("sums", "a number of " + std::to_string(decimals) + " decimals");
      }
      measure.parts.push_back({kind, place, where(type)});
    }
    if (measure.parts.empty()) table_->expected("sums", kSummed);
    return add(std::move(measure));
  }

  // Every kind that is told by one value of a field, by the text of that value.
  std::map<std::string, Measure> by_code() const {
    std::map<std::string, Measure> codes;
    for (std::size_t kind = 0; kind < layout_->types.size(); ++kind) {
      const RecordType &type = layout_->types[kind];
      for (const Condition &condition : type.when) {
        if (condition.stored.size() != 1) continue;
        const Field &field = type.fields[condition.field];
        std::vector<unsigned char> record(type.bytes);
        const std::string &stored = condition.stored[0];
        std::copy(stored.begin(), stored.end(),
                  record.begin() + static_cast<std::ptrdiff_t>(field.offset));
        auto &parts = codes[field_text(field, record.data())].parts;
        const bool known = !parts.empty() && parts.back().kind == kind;
        if (!known) parts.push_back({kind, Measure::kCount, {}});
      }
    }
    return codes;
  }

  void read_by(const toml::table &told, Total &total) {
    TomlTable inner(told, table_->file(), table_->what() + ": counts");
    const std::string by = inner.required_text("by", "the field that tells what is counted");
    total.by = field_named(*type_, by);
    if (total.by == RecordType::kNone) inner.expected("by", "a field of \"" + type_->name + "\"");
    for (const auto &[text, node] : told) {
      if (text.str() == "by") continue;
      const auto names = inner.texts(text.str(), "\"*\", a record or some of them");
      Total::Choice choice{std::string(text.str()), names == std::vector<std::string>{"*"},
                           Total::kNone};
      if (!choice.all) choice.measure = counted(inner, text.str(), names);
      total.choices.push_back(std::move(choice));
    }
    for (auto &[text, measure] : by_code()) {
      const bool told_already =
          std::any_of(total.choices.begin(), total.choices.end(),
                      [&, &code = text](const Total::Choice &each) { return each.text == code; });
      if (told_already) continue;
      total.choices.push_back({text, false, add(std::move(measure))});
    }
  }

  TomlTable *table_;
  Layout *layout_;
  const RecordType *type_;
  const Field *field_;
};

}  // namespace

Total read_total(TomlTable &table, Layout &layout, const RecordType &type, const Field &field) {
  return TotalReader(table, layout, type, field).read();
}

}  // namespace campotipo::records
