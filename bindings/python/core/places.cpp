#include "places.hpp"

#include "layouts.hpp"

namespace campotipo::python {

namespace {

bool copy_text(PyObject *object, std::string &out) {
  Py_ssize_t bytes = 0;
  const char *text = PyUnicode_AsUTF8AndSize(object, &bytes);
  if (text == nullptr) return false;
  out.assign(text, static_cast<std::size_t>(bytes));
  if (out.find('\0') != std::string::npos) {
    PyErr_SetString(PyExc_ValueError, "embedded null character");
    return false;
  }
  return true;
}

// (path, memory, opener, closes, name, first, count, byte): one of the first three is not None.
std::unique_ptr<Place> place_of(PyObject *tuple) {
  PyObject *path = nullptr;
  PyObject *memory = nullptr;
  PyObject *opener = nullptr;
  PyObject *name = nullptr;
  int closes = 0;
  unsigned long long first = 0;
  unsigned long long count = 0;
  unsigned long long byte = 0;
  if (PyArg_ParseTuple(tuple, "OOOpOKKK", &path, &memory, &opener, &closes, &name, &first, &count,
                       &byte) == 0) {
    return nullptr;
  }
  auto place = std::make_unique<Place>();
  if (!copy_text(name, place->name)) return nullptr;
  if (path != Py_None) {
    char *bytes = PyBytes_AsString(path);
    if (bytes == nullptr) return nullptr;
    place->path = bytes;
  } else if (memory != Py_None) {
    if (PyObject_GetBuffer(memory, &place->buffer, PyBUF_SIMPLE) != 0) return nullptr;
    place->filled = true;
  } else {
    place->opener = Ref::share(opener);
  }
  place->closes = closes != 0;
  place->range.first = first;
  place->range.count = count;
  place->range.byte = byte;
  return place;
}

bool places_of(PyObject *list, Request &out) {
  const Py_ssize_t count = PyList_Size(list);
  if (count < 0) return false;
  for (Py_ssize_t i = 0; i < count; ++i) {
    auto place = place_of(PyList_GetItem(list, i));
    if (place == nullptr) return false;
    out.places.push_back(std::move(place));
  }
  return true;
}

bool fields_of(PyObject *list, Request &out) {
  if (list == Py_None) return true;
  out.has_fields = true;
  const Py_ssize_t count = PyList_Size(list);
  if (count < 0) return false;
  for (Py_ssize_t i = 0; i < count; ++i) {
    std::string name;
    if (!copy_text(PyList_GetItem(list, i), name)) return false;
    out.fields.push_back(std::move(name));
  }
  return true;
}

}  // namespace

campotipo_stream_options Request::options(const Place &place,
                                          std::vector<const char *> &names) const {
  auto told = sized<campotipo_stream_options>();
  told.kind = has_kind ? kind.c_str() : nullptr;
  names.clear();
  for (const std::string &field : fields) names.push_back(field.c_str());
  if (has_fields) {
    names.push_back(nullptr);
    told.fields = names.data();
    told.n_fields = fields.size();
  }
  told.wide = wide;
  told.times = times;
  told.faults = faults;
  told.file = files != 0 ? place.name.c_str() : nullptr;
  told.batch_rows = batch_rows;
  return told;
}

bool request_of(PyObject *arguments, Request &out) {
  PyObject *layout = nullptr;
  PyObject *places = nullptr;
  PyObject *kind = nullptr;
  PyObject *fields = nullptr;
  Py_ssize_t batch_rows = 0;
  if (PyArg_ParseTuple(arguments, "OOOOiiippn", &layout, &places, &kind, &fields, &out.wide,
                       &out.times, &out.faults, &out.skip, &out.files, &batch_rows) == 0) {
    return false;
  }
  out.batch_rows = batch_rows > 0 ? static_cast<std::size_t>(batch_rows) : 0;
  out.layout = layout_in(layout);
  if (out.layout == nullptr) return false;
  out.has_kind = kind != Py_None;
  if (out.has_kind && !copy_text(kind, out.kind)) return false;
  return fields_of(fields, out) && places_of(places, out);
}

campotipo_input input_of(const Place &place) {
  auto input = sized<campotipo_input>();
  input.name = place.name.c_str();
  if (place.filled) {
    input.memory = place.buffer.buf;
    input.memory_bytes = static_cast<std::size_t>(place.buffer.len);
    // No source at all is an empty one.
    if (place.buffer.len == 0) input.memory = nullptr;
  } else {
    input.path = place.path.c_str();
  }
  return input;
}

}  // namespace campotipo::python
