#include "layouts.hpp"

namespace campotipo::python {

namespace {

constexpr const char *kCapsule = "campotipo_layout";

PyObject *fields_of(const campotipo_layout *layout, std::size_t kind, std::size_t count) {
  Ref list(PyList_New(0));
  if (!list) return nullptr;
  for (std::size_t i = 0; i < count; ++i) {
    auto field = sized<campotipo_field>();
    if (campotipo_layout_field(layout, kind, i, CAMPOTIPO_WIDE_STRING, &field) != CAMPOTIPO_OK) {
      return refuse("no such field");
    }
    const Ref told(Py_BuildValue("(sssnn)", field.name, field.type, field.family,
                                 static_cast<Py_ssize_t>(field.offset),
                                 static_cast<Py_ssize_t>(field.bytes)));
    if (!told || PyList_Append(list.get(), told.get()) != 0) return nullptr;
  }
  return list.release();
}

}  // namespace

campotipo_layout *layout_in(PyObject *capsule) {
  return static_cast<campotipo_layout *>(PyCapsule_GetPointer(capsule, kCapsule));
}

PyObject *layout_parse(PyObject *, PyObject *arguments) {
  const char *text = nullptr;
  Py_ssize_t bytes = 0;
  const char *name = nullptr;
  if (PyArg_ParseTuple(arguments, "y#y", &text, &bytes, &name) == 0) return nullptr;
  campotipo_layout *layout = nullptr;
  auto error = sized<campotipo_error>();
  if (campotipo_layout_parse(text, static_cast<std::size_t>(bytes), name, &layout, &error) !=
      CAMPOTIPO_OK) {
    return raise(error);
  }
  PyObject *capsule = PyCapsule_New(layout, kCapsule, [](PyObject *self) {
    campotipo_layout_free(static_cast<campotipo_layout *>(PyCapsule_GetPointer(self, kCapsule)));
  });
  if (capsule == nullptr) campotipo_layout_free(layout);
  return capsule;
}

PyObject *layout_unknown(PyObject *, PyObject *name) {
  Py_ssize_t bytes = 0;
  const char *text = PyUnicode_AsUTF8AndSize(name, &bytes);
  if (text == nullptr) return nullptr;
  campotipo_layout *layout = nullptr;
  auto error = sized<campotipo_error>();
  if (campotipo_layout_open(text, &layout, &error) == CAMPOTIPO_OK) {
    campotipo_layout_free(layout);
    return refuse("a layout of this name has come to be");
  }
  return raise(error);
}

PyObject *layout_ready(PyObject *, PyObject *name) {
  Py_ssize_t bytes = 0;
  const char *text = PyUnicode_AsUTF8AndSize(name, &bytes);
  if (text == nullptr) return nullptr;
  const char *ready = campotipo_layout_ready(text);
  if (ready == nullptr) Py_RETURN_NONE;
  return text_of(ready);
}

PyObject *layout_ready_names(PyObject *, PyObject *) {
  Ref list(PyList_New(0));
  if (!list) return nullptr;
  for (std::size_t i = 0; campotipo_layout_ready_name(i) != nullptr; ++i) {
    const Ref name(text_of(campotipo_layout_ready_name(i)));
    if (!name || PyList_Append(list.get(), name.get()) != 0) return nullptr;
  }
  return list.release();
}

PyObject *layout_name(PyObject *, PyObject *capsule) {
  const campotipo_layout *layout = layout_in(capsule);
  return layout == nullptr ? nullptr : text_of(campotipo_layout_name(layout));
}

PyObject *layout_kinds(PyObject *, PyObject *capsule) {
  const campotipo_layout *layout = layout_in(capsule);
  if (layout == nullptr) return nullptr;
  Ref list(PyList_New(0));
  if (!list) return nullptr;
  for (std::size_t i = 0; i < campotipo_layout_kinds(layout); ++i) {
    auto kind = sized<campotipo_kind>();
    if (campotipo_layout_kind(layout, i, &kind) != CAMPOTIPO_OK) return refuse("no such kind");
    Ref fields(fields_of(layout, i, kind.fields));
    if (!fields) return nullptr;
    const Ref told(Py_BuildValue("(snOO)", kind.name, static_cast<Py_ssize_t>(kind.bytes),
                                 kind.main != 0 ? Py_True : Py_False, fields.get()));
    if (!told || PyList_Append(list.get(), told.get()) != 0) return nullptr;
  }
  return list.release();
}

PyObject *layout_find_kind(PyObject *, PyObject *arguments) {
  PyObject *capsule = nullptr;
  const char *name = nullptr;
  if (PyArg_ParseTuple(arguments, "Oz", &capsule, &name) == 0) return nullptr;
  const campotipo_layout *layout = layout_in(capsule);
  if (layout == nullptr) return nullptr;
  std::size_t kind = 0;
  auto error = sized<campotipo_error>();
  if (campotipo_layout_find_kind(layout, name, &kind, &error) != CAMPOTIPO_OK) return raise(error);
  return PyLong_FromSize_t(kind);
}

}  // namespace campotipo::python
