#include "layout/record_builder.hpp"

#include <algorithm>
#include <map>

#include "kinds/bits.hpp"
#include "kinds/dates.hpp"

namespace campotipo::records {

namespace {

constexpr std::int64_t kMostRepeats = 10000;
constexpr std::size_t kMostFields = 20000;
constexpr std::size_t kMostRecordBytes = 16U << 20;
constexpr int kMostDepth = 8;
constexpr std::size_t kLongestName = 200;
constexpr const char *kRules[] = {"required", "value",  "min",  "max",  "sequence",
                                  "same",     "counts", "sums", "where"};

void check_name(const TomlTable &table, const std::string &name) {
  const bool good =
      name.size() <= kLongestName && std::all_of(name.begin(), name.end(), [](char c) {
        return static_cast<unsigned char>(c) > ' ' && c != '.' && c != ',' && c != '"';
      });
  if (!good) table.expected("name", "a name without blanks, points, commas and quotes");
  if (name[0] == '_') table.expected("name", "a name that does not begin with \"_\"");
}

// The bytes of a field stand beside it under a name that no other field may have.
void check_hex_names(const TomlTable &owner,
                     const std::map<std::string, const toml::node *> &names) {
  for (const auto &[name, node] : names) {
    const auto other = names.find(name + std::string(kHexEnd));
    if (other == names.end()) continue;
    owner.fault_at(*other->second, "\"" + other->first + "\" is what the bytes of \"" + name +
                                       "\" are called, expected another name");
  }
}

// Whether the text of a number, date or time may hold characters of the text that joins it with the
// next one: a cell is cut at the first place where that stands.
bool may_hold(const Field &field, const std::string &join) {
  const unsigned keys = field.type->keys;
  if ((keys & kSeparator) != 0) return join.find(field.params.separator) != std::string::npos;
  return (keys & kFormat) != 0 &&
         field.params.pattern->text.find_first_of(join) != std::string::npos;
}

// Whether the table tells rules; they are read later.
bool has_rules(TomlTable &table) {
  bool any = false;
  for (const char *key : kRules) any = table.node(key) != nullptr || any;
  const toml::node *check = table.node("check");
  return any || (check != nullptr && check->is_table());
}

}  // namespace

void RecordBuilder::add_all(TomlTable &table, const std::string &key) {
  const toml::array *fields = table.array(key, "an array of tables, [[" + key + "]]");
  if (fields == nullptr || fields->empty()) table.expected(key, "at least one field");
  add_list(*fields, table, {}, 0);
}

void RecordBuilder::add_list(const toml::array &fields, const TomlTable &owner, const Place &place,
                             int depth) {
  std::map<std::string, const toml::node *> names;
  for (const toml::node &node : fields) {
    const std::string name = add(node, owner, place, depth);
    if (!name.empty() && !names.emplace(name, &node).second) {
      owner.fault_at(node, "two fields are called \"" + name + "\", expected each name once");
    }
  }
  check_hex_names(owner, names);
}

std::string RecordBuilder::add(const toml::node &node, const TomlTable &owner, const Place &place,
                               int depth) {
  TomlTable table = owner.element(node, "a field");
  const bool fill = table.text("type").value_or("") == "fill";
  const std::string name =
      fill ? table.text("name").value_or("fill") : table.required_text("name", "a name");
  check_name(table, name);
  if (depth >= kMostDepth) table.expected("field", "at most 8 groups inside one another");
  const auto count = table.number("count", 1, kMostRepeats);
  if (!count) add_once(node, owner, place, name, -1, depth);
  for (int i = 0; count && i < *count; ++i) add_once(node, owner, place, name, i, depth);
  return fill ? "" : name;
}

void RecordBuilder::add_once(const toml::node &node, const TomlTable &owner, const Place &place,
                             const std::string &name, int index, int depth) {
  TomlTable table = owner.element(node, "field \"" + name + "\"");
  table.node("name");
  table.node("count");
  Place mine = place;
  mine.path.push_back({name, -1});
  if (index >= 0) {
    mine.path.push_back({"", index});
    mine.suffix += "_" + std::to_string(index + 1);
  }
  check_place(table, mine);
  if (table.has("field")) {
    const toml::array *fields = table.array("field", "an array of tables");
    if (fields->empty()) table.expected("field", "at least one field in the group");
    add_list(*fields, table, mine, depth + 1);
  } else {
    add_value(table, mine);
  }
  table.finish();
}

// Manuals count the places of a record from 1; a repeated field is told by its first place.
void RecordBuilder::check_place(TomlTable &table, const Place &place) const {
  const auto at = table.number("at", 1, static_cast<std::int64_t>(kMostRecordBytes));
  const bool first = std::all_of(place.path.begin(), place.path.end(),
                                 [](const PathStep &step) { return step.index <= 0; });
  if (!at || !first || static_cast<std::size_t>(*at) == record_->bytes + 1) return;
  table.fault("at", "the field begins at " + std::to_string(record_->bytes + 1) + ", expected " +
                        std::to_string(*at));
}

void RecordBuilder::add_value(TomlTable &table, const Place &place) {
  const TypedField typed = read_typed_field(table, *defaults_);
  Field field;
  field.type = typed.type;
  field.params = typed.params;
  field.check = typed.check;
  field.path = place.path;
  field.offset = record_->bytes;
  field.join = table.text("join").value_or("");
  if (const auto column = table.text("column")) field.column = *column + place.suffix;
  if (is_bit_area(*field.type)) return add_parts(table, std::move(field), place);
  field.bytes = static_cast<std::size_t>(field.params.bytes);
  record_->bytes += field.bytes;
  if (!is_fill(*field.type) && has_rules(table)) {
    rules_.push_back({&table.toml(), table.what(), record_->fields.size()});
  }
  push(table, std::move(field));
}

void RecordBuilder::add_parts(TomlTable &table, Field area, const Place &place) {
  const std::string expected = "the parts of the area, as { name = \"x\", bits = 3 } or 3";
  area.params.big = table.choice("order", {"little", "big"}).value_or(0) == 1;
  const toml::array *parts = table.array("bits", expected);
  if (parts == nullptr || parts->empty() || parts->size() > 4096) table.expected("bits", expected);
  std::vector<Field> fields;
  std::map<std::string, const toml::node *> names;
  int bits = 0;
  for (const toml::node &node : *parts) {
    Field part = area;
    std::string name = "parte" + std::to_string(fields.size() + 1);
    std::int64_t width = node.is_integer() ? node.as_integer()->get() : 0;
    if (node.is_table()) {
      TomlTable inner = table.element(node, "part of a bit area");
      name = inner.required_text("name", "a name");
      check_name(inner, name);
      width = inner.number("bits", 1, bits::kWidest).value_or(0);
      const auto column = inner.text("column");
      part.column = column ? *column + place.suffix : "";
      inner.finish();
    } else {
      part.column.clear();
    }
    if (width < 1 || width > bits::kWidest) {
      table.fault_at(node, "bits: expected 1 to " + std::to_string(bits::kWidest) + " bits");
    }
    names.emplace(name, &node);
    part.path.push_back({name, -1});
    part.params.start = bits;
    part.params.n = static_cast<int>(width);
    bits += static_cast<int>(width);
    fields.push_back(std::move(part));
  }
  check_hex_names(table, names);
  fields.back().params.area_bits = bits;
  const std::size_t bytes = static_cast<std::size_t>(bits + 7) / 8;
  record_->bytes += bytes;
  for (Field &part : fields) {
    part.bytes = bytes;
    part.params.bytes = static_cast<int>(bytes);
    push(table, std::move(part));
  }
}

void RecordBuilder::push(const TomlTable &table, Field field) {
  field.name = path_name(field.path, true);
  field.base = path_name(field.path, false);
  if (field.column.empty()) field.column = field.name;
  if (record_->bytes > kMostRecordBytes) {
    table.fault("", "the record is longer than 16 MiB, expected fewer bytes");
  }
  auto &list = is_fill(*field.type) ? record_->fillers : record_->fields;
  if (list.size() >= kMostFields) {
    table.fault("", "the record has more than 20000 fields, expected fewer");
  }
  list.push_back(std::move(field));
}

void RecordBuilder::make_columns(const TomlTable &table) {
  std::map<std::string, std::size_t> places;
  std::map<std::string, std::size_t> names;
  for (std::size_t i = 0; i < record_->fields.size(); ++i) {
    const Field &field = record_->fields[i];
    if (!names.emplace(field.name, i).second) {
      table.fault("", "two fields are called \"" + field.name + "\", expected each name once");
    }
    const auto [place, fresh] = places.emplace(field.column, record_->columns.size());
    if (fresh) {
      record_->columns.push_back({field.column, {i}});
      continue;
    }
    Column &column = record_->columns[place->second];
    const Field &before = record_->fields[column.fields.back()];
    const std::string both = "\"" + before.name + "\" and \"" + field.name + "\"";
    if (field.join.empty() || field.join.find_first_not_of(" ;|_T") != std::string::npos) {
      table.fault("",
                  both + " share the column \"" + field.column +
                      "\", expected a join of blank, \"T\", \";\", \"|\" or \"_\" in the second");
    }
    if ((before.type->traits & kNoBlank) == 0) {
      table.fault("", both + " share a column, expected a number, date or time as the first");
    }
    if (may_hold(before, field.join)) {
      table.fault("", both + " share a column, expected a join that the first never holds");
    }
    column.fields.push_back(i);
  }
  for (const Column &column : record_->columns) {
    if (column.fields.size() == 1) continue;
    for (const std::size_t i : column.fields) {
      Field &field = record_->fields[i];
      std::vector<unsigned char> none(field.offset + field.bytes);
      field.type->take(none.data() + field.offset, PaddedText(), field.params);
      field.empty = field_text(field, none.data());
    }
  }
  name_flat(table);
}

// In a flat table fields that share a column stay apart, under their own names.
void RecordBuilder::name_flat(const TomlTable &table) {
  std::map<std::string_view, std::size_t> sharing;
  for (const Column &column : record_->columns) sharing[column.name] = column.fields.size();
  std::set<std::string_view> names;
  for (Field &field : record_->fields) {
    field.flat = sharing[field.column] == 1 ? field.column : field.name;
    std::replace(field.flat.begin(), field.flat.end(), '.', '_');
    if (!names.insert(field.flat).second) {
      table.fault("", "two columns of a table would be called \"" + field.flat +
                          "\", expected other names");
    }
  }
}

}  // namespace campotipo::records
