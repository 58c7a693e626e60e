#pragma once

#include <set>
#include <string>
#include <vector>

#include "layout/layout.hpp"

// What can be drawn from a layout alone.
namespace campotipo::tool {

using namespace campotipo::records;

// Bytes of a record that belong together: a field, a whole bit area, or bytes without a meaning.
struct Span {
  std::string name;
  std::size_t offset = 0;
  std::size_t bytes = 0;
  const Field *field = nullptr;      // of a bit area: its first part
  std::vector<const Field *> parts;  // of a bit area
};

// Every byte of the record, in order.
std::vector<Span> spans(const RecordType &record);

// "BSTR21" or "CODALFA 60", with what the layout adds: decimals, encoding, check.
std::string type_text(const Span &span);

// A word of C, distinct from those in `taken`, to which it is added.
std::string c_name(const std::string &name, std::set<std::string> &taken);

std::string c_header(const Layout &layout);
std::string sql_tables(const Layout &layout);

// The bytes of one kind of record, to scale.
std::string svg(const Layout &layout, const RecordType &record);

// Colour of a family of types, for pictures.
const char *family_colour(const FieldType &type);

}  // namespace campotipo::tool
