// Any text as a layout file: it is refused with a message and its place, or everything can be drawn
// from it, and records of its kinds come back from CSV byte for byte.

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <set>
#include <string>
#include <string_view>

#include "errors/error.hpp"
#include "fuzz/load_back.hpp"
#include "layout/reader.hpp"
#include "pictures/drawings.hpp"
#include "rows/row_writer.hpp"

namespace {

using namespace campotipo::records;
using namespace campotipo::tool;

void require(bool holds) {
  if (!holds) std::abort();
}

// Any bytes, made a record of the kind: a field that is not well formed loses its value.
std::string record_of(const RecordType &type, std::uint32_t seed) {
  std::string bytes(type.bytes, '\0');
  for (char &c : bytes) c = static_cast<char>((seed = seed * 1664525 + 1013904223) >> 24);
  for (const Field &filler : type.fillers)
    bytes.replace(filler.offset, filler.bytes, filler.params.fill);
  auto *record = reinterpret_cast<unsigned char *>(bytes.data());
  for (const Field &field : type.fields) {
    if (field_fault(field, record) == nullptr) continue;
    std::fill_n(record + field.offset, field.bytes, static_cast<unsigned char>(0));
    require(field.type->take(record + field.offset, PaddedText(), field.params) == nullptr);
    require(field.check != nullptr || field_fault(field, record) == nullptr);
  }
  for (const FieldRules &rules : type.rules) {
    const Field &field = type.fields[rules.field];
    if (rules.constant) bytes.replace(field.offset, field.bytes, rules.values[0].stored);
  }
  for (const Condition &condition : type.when) {
    const Field &field = type.fields[condition.field];
    bytes.replace(field.offset, field.bytes, condition.stored[0]);
  }
  return bytes;
}

void come_back(const Layout &layout) {
  const auto csv = csv_writers(layout, layout.columns, false, "\r\n");
  const auto json = json_writers(layout, layout.columns, true);
  Buffer text;
  Buffer other;
  std::string records;
  text.append(csv_header(layout, layout.columns, false, "\r\n"));
  for (std::uint32_t i = 0; i < 3 * layout.types.size(); ++i) {
    const std::size_t kind = i % layout.types.size();
    const std::string record = record_of(layout.types[kind], i);
    const auto *bytes = reinterpret_cast<const unsigned char *>(record.data());
    const RecordType &type = layout.types[kind];
    if (layout.type_of(bytes, record.size()) != &type) continue;
    if (layout.lines() && line_end_in(type, bytes) != type.bytes) continue;
    csv[kind].run(bytes, text);
    json[kind].run(bytes, other);
    records += length_prefix(layout, layout.types[kind]) + record + line_end(layout);
  }
  require(campotipo::fuzz::load_back(layout, std::string(text.view()), text.view().size() + 1) ==
          records);
}

void draw(const Layout &layout) {
  for (const RecordType &record : layout.types) {
    std::size_t at = 0;
    for (const Span &span : spans(record)) {
      require(span.offset == at);
      at += span.bytes;
    }
    require(at == record.bytes);
    svg(layout, record);
  }
  sql_tables(layout);
  const std::string header = c_header(layout);
  constexpr std::string_view kDefine = "\n#define ";
  std::set<std::string_view> macros;
  for (std::size_t at = header.find(kDefine); at != std::string::npos;
       at = header.find(kDefine, at + 1)) {
    const std::size_t name = at + kDefine.size();
    const std::size_t length = header.find_first_of(" \n", name) - name;
    require(macros.insert(std::string_view(header).substr(name, length)).second);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  if (size > 4096) return 0;
  Layout layout;
  try {
    layout = parse_layout({reinterpret_cast<const char *>(data), size}, "fuzz.toml");
  } catch (const Error &failure) {
    const std::string_view what = failure.what();
    require(what.starts_with("fuzz.toml:") && what[10] >= '1' && what[10] <= '9');
    return 0;
  }
  for (const RecordType &record : layout.types) {
    if (record.bytes > 1 << 14 || record.fields.size() > 200) return 0;
  }
  draw(layout);
  try {
    come_back(layout);
  } catch (const Error &) {
    // The length of a record that its prefix cannot tell.
    require(layout.prefix.bytes != 0);
  }
  return 0;
}
