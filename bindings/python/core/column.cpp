#include "column.hpp"

#include <campotipo-records/arrow.h>

#include <array>
#include <cstdio>

#include "capsule.hpp"
#include "objects.hpp"

namespace campotipo::python {

namespace {

struct Column {
  std::shared_ptr<ColumnData> data;
  Py_ssize_t shape = 0;
  Py_ssize_t stride = 0;
  char format[24] = {};
};

// What an exported array owns: the values live as long as any of them does. A child may be moved out.
struct Owned {
  std::shared_ptr<ColumnData> data;
  std::array<const void *, 3> buffers = {};
  ArrowArray child = {};
  std::array<ArrowArray *, 1> children = {&child};
};

struct OwnedSchema {
  ArrowSchema child = {};
  std::array<ArrowSchema *, 1> children = {&child};
};

template <class Owner, class Structure>
void release(Structure *self) {
  auto *owned = static_cast<Owner *>(self->private_data);
  if (owned->child.release != nullptr) owned->child.release(&owned->child);
  delete owned;
  self->release = nullptr;
}

ColumnData &data_of(PyObject *self) { return *inside_of<Column>(self).data; }

ArrowArray items_of(std::shared_ptr<ColumnData> data) {
  auto owned = std::make_unique<Owned>();
  owned->buffers = {nullptr, data->item_ends(), data->item_text()};
  ArrowArray made = {};
  made.length = static_cast<std::int64_t>(data->items_size());
  made.n_buffers = 3;
  made.buffers = owned->buffers.data();
  made.release = release<Owned, ArrowArray>;
  owned->data = std::move(data);
  made.private_data = owned.release();
  return made;
}

ArrowArray array_of(std::shared_ptr<ColumnData> data) {
  auto owned = std::make_unique<Owned>();
  owned->buffers = {data->validity(), data->first(), data->second()};
  ArrowArray made = {};
  made.length = static_cast<std::int64_t>(data->size());
  made.null_count = static_cast<std::int64_t>(data->nulls());
  made.n_buffers = data->texts() ? 3 : 2;
  made.buffers = owned->buffers.data();
  if (data->lists()) {
    owned->child = items_of(data);
    made.n_children = 1;
    made.children = owned->children.data();
  }
  made.release = release<Owned, ArrowArray>;
  owned->data = std::move(data);
  made.private_data = owned.release();
  return made;
}

ArrowSchema type_of(const char *format, const char *name) {
  ArrowSchema made = {};
  made.format = format;
  made.name = name;
  made.flags = ARROW_FLAG_NULLABLE;
  made.release = release<OwnedSchema, ArrowSchema>;
  made.private_data = new OwnedSchema();
  return made;
}

ArrowSchema schema_of(const ColumnData &data) {
  ArrowSchema made = type_of(data.format(), "");
  if (!data.lists()) return made;
  auto *owned = static_cast<OwnedSchema *>(made.private_data);
  owned->child = type_of("u", "item");
  made.n_children = 1;
  made.children = owned->children.data();
  return made;
}

PyObject *text_object(std::string_view text) {
  return PyUnicode_DecodeUTF8(text.data(), static_cast<Py_ssize_t>(text.size()), "replace");
}

PyObject *list_object(const ColumnData &data, std::size_t row) {
  Ref list(PyList_New(0));
  for (std::size_t i = data.list_end(row); list && i < data.list_end(row + 1); ++i) {
    const Ref text(text_object(data.item(i)));
    if (!text || PyList_Append(list.get(), text.get()) != 0) return nullptr;
  }
  return list.release();
}

PyObject *arrow_schema(PyObject *self, PyObject *) {
  return capsule_of(schema_of(data_of(self)), "arrow_schema");
}

PyObject *arrow_array(PyObject *self, PyObject *arguments, PyObject *names) {
  PyObject *requested = nullptr;
  static const char *const kNames[] = {"requested_schema", nullptr};
  if (PyArg_ParseTupleAndKeywords(arguments, names, "|O", const_cast<char **>(kNames),
                                  &requested) == 0) {
    return nullptr;
  }
  const Ref schema(arrow_schema(self, nullptr));
  if (!schema) return nullptr;
  const Ref array(capsule_of(array_of(inside_of<Column>(self).data), "arrow_array"));
  return array ? PyTuple_Pack(2, schema.get(), array.get()) : nullptr;
}

PyObject *item(PyObject *self, Py_ssize_t at) {
  const ColumnData &data = data_of(self);
  if (at < 0 || static_cast<std::size_t>(at) >= data.size()) {
    PyErr_SetString(PyExc_IndexError, "no such row");
    return nullptr;
  }
  const auto row = static_cast<std::size_t>(at);
  if (data.is_null(row)) Py_RETURN_NONE;
  if (data.lists()) return list_object(data, row);
  if (data.texts()) return text_object(data.text(row));
  return PyBool_FromLong(data.truth(row) ? 1 : 0);
}

Py_ssize_t length(PyObject *self) { return static_cast<Py_ssize_t>(data_of(self).size()); }

PyObject *to_list(PyObject *self, PyObject *) {
  const Py_ssize_t count = length(self);
  Ref list(PyList_New(count));
  for (Py_ssize_t i = 0; list && i < count; ++i) {
    PyObject *value = item(self, i);
    if (value == nullptr || PyList_SetItem(list.get(), i, value) != 0) return nullptr;
  }
  return list.release();
}

PyObject *repr(PyObject *self) {
  const ColumnData &data = data_of(self);
  std::string text = "<campotipo.Column of " + std::to_string(data.size()) +
                     (data.lists()   ? " lists"
                      : data.texts() ? " texts"
                                     : " truths");
  if (data.nulls() != 0) text += ", " + std::to_string(data.nulls()) + " null";
  return text_of((text + ">").c_str());
}

int get_buffer(PyObject *self, Py_buffer *view, int flags) {
  view->obj = nullptr;
  ColumnData &data = data_of(self);
  if ((flags & PyBUF_WRITABLE) != 0 || data.nulls() != 0 || data.item_bytes() == 0) {
    PyErr_SetString(PyExc_BufferError, (flags & PyBUF_WRITABLE) != 0 ? "the column is read-only"
                                       : data.nulls() != 0 ? "null has no place in a buffer"
                                                           : "the values differ in length");
    return -1;
  }
  Column &object = inside_of<Column>(self);
  const auto bytes = static_cast<Py_ssize_t>(data.item_bytes());
  object.shape = static_cast<Py_ssize_t>(data.size());
  object.stride = bytes;
  std::snprintf(object.format, sizeof object.format, data.texts() ? "%zds" : "?", bytes);
  *view = {};
  view->buf = data.items();
  view->len = object.shape * bytes;
  view->itemsize = bytes;
  view->readonly = 1;
  view->ndim = 1;
  view->format = (flags & PyBUF_FORMAT) != 0 ? object.format : nullptr;
  view->shape = (flags & PyBUF_ND) != 0 ? &object.shape : nullptr;
  view->strides = (flags & PyBUF_STRIDES) == PyBUF_STRIDES ? &object.stride : nullptr;
  Py_INCREF(self);
  view->obj = self;
  return 0;
}

}  // namespace

PyObject *make_column_type(PyObject *module) {
  static PyMethodDef methods[] = {
      {"__arrow_c_schema__", arrow_schema, METH_NOARGS, "The type, as an Arrow schema."},
      {"__arrow_c_array__", reinterpret_cast<PyCFunction>(slot(arrow_array)),
       METH_VARARGS | METH_KEYWORDS, "The values, as an Arrow array; nothing is copied."},
      {"to_list", to_list, METH_NOARGS, "The values as a list."},
      {nullptr, nullptr, 0, nullptr}};
  static PyType_Slot slots[] = {
      {Py_tp_doc, const_cast<char *>("Results, one a value of a column, with Arrow's protocol and "
                                     "the buffer protocol.")},
      {Py_tp_dealloc, slot(destroy<Column>)},
      {Py_tp_repr, slot(repr)},
      {Py_tp_methods, methods},
      {Py_sq_length, slot(length)},
      {Py_sq_item, slot(item)},
      {Py_bf_getbuffer, slot(get_buffer)},
      {0, nullptr}};
  static PyType_Spec spec = {"campotipo._core.Column", sizeof(Holder<Column>), 0,
                             Py_TPFLAGS_DEFAULT | Py_TPFLAGS_DISALLOW_INSTANTIATION, slots};
  return PyType_FromModuleAndSpec(module, &spec, nullptr);
}

PyObject *column(PyObject *type, std::shared_ptr<ColumnData> data) {
  auto made = std::make_unique<Column>();
  made->data = std::move(data);
  return hold(type, std::move(made));
}

}  // namespace campotipo::python
