#include "python.hpp"

namespace campotipo::python {

namespace {

// A class of campotipo._errors, whose constructor takes the message and then the place.
PyObject *raise_as(const char *name, Ref arguments) {
  const Ref module(PyImport_ImportModule("campotipo._errors"));
  if (!module || !arguments) return nullptr;
  const Ref type(PyObject_GetAttrString(module.get(), name));
  if (!type) return nullptr;
  const Ref made(PyObject_CallObject(type.get(), arguments.get()));
  if (made) PyErr_SetObject(type.get(), made.get());
  return nullptr;
}

}  // namespace

PyObject *raise(const campotipo_error &error) {
  Ref text(text_of(error.text));
  if (!text) return nullptr;
  switch (error.status) {
    case CAMPOTIPO_MEMORY:
      return PyErr_NoMemory();
    case CAMPOTIPO_INPUT:
    case CAMPOTIPO_OUTPUT:
      PyErr_SetObject(PyExc_OSError, text.get());
      return nullptr;
    case CAMPOTIPO_LAYOUT:
      return raise_as("LayoutError",
                      Ref(Py_BuildValue("(OII)", text.get(), error.line, error.column)));
    case CAMPOTIPO_RECORD:
    case CAMPOTIPO_VALUE: {
      const Ref kind(text_of(error.kind));
      const Ref field(text_of(error.field));
      if (!kind || !field) return nullptr;
      return raise_as(
          "RecordError",
          Ref(Py_BuildValue("(OKKOO)", text.get(), static_cast<unsigned long long>(error.record),
                            static_cast<unsigned long long>(error.byte), kind.get(), field.get())));
    }
    default:
      return raise_as("Error", Ref(Py_BuildValue("(O)", text.get())));
  }
}

PyObject *refuse(const std::string &text) {
  const Ref message(text_of(text.c_str()));
  if (!message) return nullptr;
  return raise_as("Error", Ref(Py_BuildValue("(O)", message.get())));
}

PyObject *refuse_with(PyObject *message) {
  const Ref text(message);
  return text ? raise_as("Error", Ref(Py_BuildValue("(O)", text.get()))) : nullptr;
}

}  // namespace campotipo::python
