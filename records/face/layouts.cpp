#include <campotipo-records/records.h>

#include <cstring>

#include "columns/plan.hpp"
#include "face/errors.hpp"
#include "face/objects.hpp"
#include "layout/reader.hpp"
#include "layout/ready.hpp"

namespace records = campotipo::records;
namespace face = campotipo::records::face;

extern "C" {

campotipo_status campotipo_layout_open(const char *place, campotipo_layout **layout,
                                       campotipo_error *error) {
  return face::guarded(error, [&] {
    if (place == nullptr || layout == nullptr) face::refuse("place and layout have to be told");
    *layout = new campotipo_layout{
        std::make_shared<const records::Layout>(records::layout_at_place(place))};
    return CAMPOTIPO_OK;
  });
}

campotipo_status campotipo_layout_parse(const char *text, size_t bytes, const char *name,
                                        campotipo_layout **layout, campotipo_error *error) {
  return face::guarded(error, [&] {
    if (text == nullptr || layout == nullptr) face::refuse("text and layout have to be told");
    *layout = new campotipo_layout{std::make_shared<const records::Layout>(
        records::parse_layout({text, bytes}, name != nullptr ? name : "layout"))};
    return CAMPOTIPO_OK;
  });
}

void campotipo_layout_free(campotipo_layout *layout) { delete layout; }

const char *campotipo_layout_ready(const char *name) {
  return name == nullptr ? nullptr : records::ready_layout(name);
}

const char *campotipo_layout_ready_name(size_t at) { return records::ready_layout_name(at); }

const char *campotipo_layout_name(const campotipo_layout *layout) {
  return layout->layout->name.c_str();
}

size_t campotipo_layout_kinds(const campotipo_layout *layout) {
  return layout->layout->types.size();
}

campotipo_status campotipo_layout_kind(const campotipo_layout *layout, size_t kind,
                                       campotipo_kind *out) {
  if (out == nullptr || out->size < sizeof *out || kind >= layout->layout->types.size()) {
    return CAMPOTIPO_ARGUMENT;
  }
  const records::RecordType &type = layout->layout->types[kind];
  out->name = type.name.c_str();
  out->bytes = type.bytes;
  out->fields = type.fields.size();
  out->main = type.main || !layout->layout->several() ? 1 : 0;
  return CAMPOTIPO_OK;
}

campotipo_status campotipo_layout_find_kind(const campotipo_layout *layout, const char *name,
                                            size_t *kind, campotipo_error *error) {
  return face::guarded(error, [&] {
    if (layout == nullptr || kind == nullptr) face::refuse("layout and kind have to be told");
    const records::RecordType &type =
        records::kind_for(*layout->layout, name != nullptr ? name : "");
    *kind = static_cast<size_t>(&type - layout->layout->types.data());
    return CAMPOTIPO_OK;
  });
}

campotipo_status campotipo_layout_field(const campotipo_layout *layout, size_t kind, size_t field,
                                        int wide, campotipo_field *out) {
  return face::guarded(nullptr, [&] {
    if (out == nullptr || out->size < sizeof *out) return CAMPOTIPO_ARGUMENT;
    if (kind >= layout->layout->types.size()) return CAMPOTIPO_ARGUMENT;
    const records::RecordType &type = layout->layout->types[kind];
    if (field >= type.fields.size()) return CAMPOTIPO_ARGUMENT;
    const records::Field &known = type.fields[field];
    const records::ColumnType column =
        records::column_type(known, face::wide_of(wide), records::Times::kSeconds);
    out->name = known.flat.c_str();
    out->type = known.type->name;
    out->family = known.type->family;
    out->offset = known.offset;
    out->bytes = known.bytes;
    out->physical = face::physical_of(column.physical);
    out->precision = column.precision;
    out->scale = column.scale;
    out->room = column.physical == records::Physical::kUtf8 ? known.type->room(known.params) : 0;
    return CAMPOTIPO_OK;
  });
}

}  // extern "C"
