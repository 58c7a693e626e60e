#include "layout/conditions.hpp"

#include <algorithm>

namespace campotipo::records {

namespace {

constexpr const char *kForm = "{ field = \"value\" }, or some values in an array";

// More combinations of values than any layout of people has.
constexpr std::size_t kMostPoints = 100000;

// Bits of a field that its value takes: all of them, but of a part of a bit area its own.
std::string bits_of(const Field &field) {
  std::string mask(field.bytes, '\xFF');
  if (!is_bit_area(*field.type)) return mask;
  std::fill(mask.begin(), mask.end(), '\0');
  const std::uint64_t most = ~std::uint64_t{0} >> (64 - field.params.n);
  field.type->take(reinterpret_cast<unsigned char *>(mask.data()),
                   PaddedString(std::to_string(most)).text(), field.params);
  return mask;
}

// A record of which some bits are known.
class Known {
 public:
  explicit Known(std::size_t bytes) : bytes_(bytes, '\0'), mask_(bytes, '\0') {}

  void set(const Field &field, const std::string &stored) {
    const std::string mask = bits_of(field);
    for (std::size_t i = 0; i < mask.size(); ++i) {
      bytes_[field.offset + i] = static_cast<char>(bytes_[field.offset + i] | stored[i]);
      mask_[field.offset + i] = static_cast<char>(mask_[field.offset + i] | mask[i]);
    }
  }

  // Whether the conditions of the kind hold whatever the other bits are.
  bool is(const RecordType &type) const {
    return std::all_of(type.when.begin(), type.when.end(), [&](const Condition &condition) {
      const Field &field = type.fields[condition.field];
      const std::string mask = bits_of(field);
      return std::any_of(
          condition.stored.begin(), condition.stored.end(),
          [&](const std::string &stored) { return has(field.offset, mask, stored); });
    });
  }

 private:
  bool has(std::size_t offset, const std::string &mask, const std::string &stored) const {
    if (offset + mask.size() > bytes_.size()) return false;
    for (std::size_t i = 0; i < mask.size(); ++i) {
      const bool known = (mask_[offset + i] & mask[i]) == mask[i];
      if (!known || (bytes_[offset + i] & mask[i]) != stored[i]) return false;
    }
    return true;
  }

  std::string bytes_;
  std::string mask_;
};

// Whether each record of the kind that has the value is one of a kind in front of it, which is then
// given.
const RecordType *taken(const Layout &layout, const RecordType &type, std::size_t condition,
                        std::size_t value) {
  std::vector<std::size_t> at(type.when.size());
  at[condition] = value;
  const RecordType *by = nullptr;
  for (;;) {
    Known record(type.bytes);
    for (std::size_t i = 0; i < at.size(); ++i) {
      record.set(type.fields[type.when[i].field], type.when[i].stored[at[i]]);
    }
    const RecordType *end = &type;
    by = std::find_if(layout.types.data(), end,
                      [&](const RecordType &other) { return record.is(other); });
    if (by == end) return nullptr;
    std::size_t next = 0;
    while (next < at.size() && (next == condition || ++at[next] == type.when[next].stored.size())) {
      if (next != condition) at[next] = 0;
      ++next;
    }
    if (next == at.size()) return by;
  }
}

void refuse_hidden(const Layout &layout, const RecordType &type, const TomlTable &table) {
  std::size_t points = 1;
  for (const Condition &condition : type.when) {
    points = std::min(kMostPoints + 1, points * condition.stored.size());
  }
  if (points > kMostPoints) table.expected("when", "fewer values together");
  for (std::size_t i = 0; i < type.when.size(); ++i) {
    const Field &field = type.fields[type.when[i].field];
    for (std::size_t value = 0; value < type.when[i].stored.size(); ++value) {
      const RecordType *by = taken(layout, type, i, value);
      if (by == nullptr) continue;
      std::vector<unsigned char> record(type.bytes);
      const std::string &stored = type.when[i].stored[value];
      std::copy(stored.begin(), stored.end(),
                record.begin() + static_cast<std::ptrdiff_t>(field.offset));
      table.fault("when", "\"" + field_text(field, record.data()) + "\" in \"" + field.name +
                              "\" tells the record \"" + by->name +
                              "\", which stands in front, expected a value that is left");
    }
  }
}

}  // namespace

std::size_t field_named(const RecordType &type, std::string_view name) {
  for (std::size_t i = 0; i < type.fields.size(); ++i) {
    if (type.fields[i].name == name) return i;
  }
  return RecordType::kNone;
}

std::string stored_form(const TomlTable &table, std::string_view key, const Field &field,
                        const std::string &text) {
  std::vector<unsigned char> bytes(field.bytes);
  const char *lost = field.type->take(bytes.data(), PaddedString(text).text(), field.params);
  if (lost != nullptr) {
    table.fault(key, "expected a value of \"" + field.name + "\" (\"" + text + "\" " + lost + ")");
  }
  return {reinterpret_cast<const char *>(bytes.data()), bytes.size()};
}

std::vector<Condition> read_conditions(TomlTable &table, std::string_view key,
                                       const RecordType &type) {
  std::vector<Condition> all;
  const toml::table *inner = table.table(key, kForm);
  if (inner == nullptr) return all;
  if (inner->empty()) table.expected(key, kForm);
  TomlTable fields(*inner, table.file(), table.what() + ": " + std::string(key));
  for (const auto &[name, node] : *inner) {
    Condition condition;
    condition.field = field_named(type, name.str());
    if (condition.field == RecordType::kNone) {
      fields.fault(name.str(), "\"" + type.name + "\" has no field of this name, expected one");
    }
    const Field &field = type.fields[condition.field];
    for (const std::string &text : fields.texts(name.str(), "a value or some of them, as texts")) {
      std::string stored = stored_form(fields, name.str(), field, text);
      auto &known = condition.stored;
      if (std::find(known.begin(), known.end(), stored) != known.end()) continue;
      known.push_back(std::move(stored));
    }
    if (condition.stored.empty()) fields.expected(name.str(), "at least one value");
    all.push_back(std::move(condition));
  }
  return all;
}

void refuse_hidden(const Layout &layout, const std::vector<TomlTable> &tables) {
  for (std::size_t i = 0; i < tables.size(); ++i) {
    const RecordType &type = layout.types[i];
    if (!type.when.empty()) {
      refuse_hidden(layout, type, tables[i]);
    } else if (i + 1 < tables.size()) {
      tables[i].fault("when",
                      "it takes every record, expected a condition, or its place at the end");
    }
  }
}

}  // namespace campotipo::records
