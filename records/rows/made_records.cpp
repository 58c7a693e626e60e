#include "rows/made_records.hpp"

#include <algorithm>

#include "errors/error.hpp"
#include "findings/finding_counts.hpp"
#include "rules/field_rules.hpp"

namespace campotipo::records {

std::string length_prefix(const Layout &layout, const RecordType &type) {
  const LengthPrefix &prefix = layout.prefix;
  std::size_t length = type.bytes;
  if (prefix.counts_itself) length += static_cast<std::size_t>(prefix.bytes);
  std::string bytes;
  for (int i = 0; i < prefix.bytes; ++i) bytes += static_cast<char>(length >> 8 * i & 0xFF);
  if (prefix.bytes != 0 && prefix.bytes < 8 && length >> 8 * prefix.bytes != 0) {
    throw Error(ErrorCode::kInput, layout.file + ": length: expected enough bytes for records of " +
                                       std::to_string(type.bytes) + " bytes");
  }
  if (prefix.big) std::reverse(bytes.begin(), bytes.end());
  return bytes;
}

std::string line_end(const Layout &layout) {
  return layout.line_end == LineEnd::kCrLf ? "\r\n" : layout.lines() ? "\n" : "";
}

BlankRecord::BlankRecord(const Layout &layout, const RecordType &type)
    : bytes(length_prefix(layout, type)), before(bytes.size()) {
  bytes += std::string(type.bytes, '\0') + line_end(layout);
  for (const Field &filler : type.fillers) {
    bytes.replace(before + filler.offset, filler.bytes, filler.params.fill);
  }
}

bool has_followers(const RecordType &type) {
  return std::any_of(type.rules.begin(), type.rules.end(),
                     [](const FieldRules &rules) { return rules.follows(); });
}

void put_stored(unsigned char *field, const std::string &stored) {
  for (std::size_t i = 0; i < stored.size(); ++i) {
    field[i] = static_cast<unsigned char>(field[i] | static_cast<unsigned char>(stored[i]));
  }
}

namespace {

using Given = std::function<std::string(const Field &)>;

std::string value_of(const Field &field, const Given &given) {
  return "field " + field.flat + ": \"" + shortened(given(field)) + "\" ";
}

std::string other_kind(const Layout &layout, const RecordType &type, const unsigned char *record,
                       const Given &given) {
  for (const Condition &condition : type.when) {
    if (type.holds(condition, record)) continue;
    const Field &field = type.fields[condition.field];
    std::string expected;
    std::vector<unsigned char> wanted(type.bytes);
    for (const std::string &stored : condition.stored) {
      std::copy(stored.begin(), stored.end(),
                wanted.begin() + static_cast<std::ptrdiff_t>(field.offset));
      expected += (expected.empty() ? "\"" : " or \"") + field_text(field, wanted.data()) + "\"";
    }
    return value_of(field, given) + "does not tell the kind \"" + type.name + "\", expected " +
           expected;
  }
  return "the values are those of a record \"" + layout.type_of(record, type.bytes)->name +
         "\", which the layout tells in front of \"" + type.name + "\"";
}

}  // namespace

std::string contradiction(const Layout &layout, const RecordType &type, const unsigned char *record,
                          const Given &given) {
  if (layout.type_of(record, type.bytes) != &type) return other_kind(layout, type, record, given);
  for (const FieldRules &rules : type.rules) {
    if (!rules.constant) continue;
    const Field &field = type.fields[rules.field];
    const FieldRules::Value &value = rules.values[0];
    if (has_form(field, record, value.stored)) continue;
    return value_of(field, given) + "is not the value that it always has, expected \"" +
           value.text + "\"";
  }
  return "";
}

const Field *field_with_line_end(const Layout &layout, const RecordType &type,
                                 const unsigned char *record) {
  if (!layout.lines()) return nullptr;
  const std::size_t at = line_end_in(type, record);
  for (const Field &field : type.fields) {
    if (at >= field.offset && at < field.offset + field.bytes) return &field;
  }
  return nullptr;
}

}  // namespace campotipo::records
