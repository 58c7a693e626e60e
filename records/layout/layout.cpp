#include "layout/layout.hpp"

#include <algorithm>
#include <cstring>

#include "text/scan.hpp"

namespace campotipo::records {

namespace {

bool selects(const RecordType &type, const unsigned char *field, std::size_t bytes) {
  return std::any_of(type.when.begin(), type.when.end(), [&](const std::string &stored) {
    return std::memcmp(stored.data(), field, bytes) == 0;
  });
}

bool smaller(const RecordType &a, const RecordType &b) { return a.bytes < b.bytes; }

}  // namespace

std::size_t Layout::least_bytes() const {
  return std::min_element(types.begin(), types.end(), smaller)->bytes;
}

std::size_t Layout::most_bytes() const {
  return std::max_element(types.begin(), types.end(), smaller)->bytes;
}

const RecordType *Layout::kind_of(const unsigned char *record) const {
  const RecordType *other = nullptr;
  for (const RecordType &type : types) {
    if (type.when.empty()) {
      other = &type;
    } else if (selects(type, record + select_offset, select_bytes)) {
      return &type;
    }
  }
  return other;
}

const RecordType *Layout::type_named(std::string_view wanted) const {
  for (const RecordType &type : types) {
    if (type.name == wanted) return &type;
  }
  return nullptr;
}

std::string field_text(const Field &field, const unsigned char *record) {
  std::string text(field.type->room(field.params) + scan::kPadding, '\0');
  const char *end = field.type->put(text.data(), record + field.offset, field.params);
  text.resize(static_cast<std::size_t>(end - text.data()));
  return text;
}

bool field_empty(const Field &field, const unsigned char *record) {
  const unsigned char *bytes = record + field.offset;
  if (field.type->content != nullptr) return field.type->content(bytes, field.params) == 0;
  return std::all_of(bytes, bytes + field.bytes, [](unsigned char byte) { return byte == 0; });
}

const char *field_fault(const Field &field, const unsigned char *record) {
  const unsigned char *bytes = record + field.offset;
  const char *fault = field.type->fault(bytes, field.params);
  if (fault != nullptr || is_fill(*field.type)) return fault;
  const std::string text = field_text(field, record);
  if (field.check != nullptr && !holds(*field.check, text)) return field.check->fault;
  std::vector<unsigned char> again(field.bytes);
  if (is_bit_area(*field.type)) std::copy_n(bytes, field.bytes, again.begin());
  field.type->take(again.data(), PaddedString(text).text(), field.params);
  if (std::equal(again.begin(), again.end(), bytes)) return nullptr;
  return "does not come back from its text";
}

}  // namespace campotipo::records
