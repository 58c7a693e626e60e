#pragma once

#include <memory>

#include "python.hpp"

// Objects of Python that own one C++ object.
namespace campotipo::python {

template <class Inside>
struct Holder {
  PyObject ob_base;
  Inside *inside;
};

template <class Inside>
Inside &inside_of(PyObject *self) {
  return *reinterpret_cast<Holder<Inside> *>(self)->inside;
}

template <class Inside>
PyObject *hold(PyObject *type, std::unique_ptr<Inside> inside) {
  auto *class_ = reinterpret_cast<PyTypeObject *>(type);
  auto *allocate = reinterpret_cast<allocfunc>(PyType_GetSlot(class_, Py_tp_alloc));
  PyObject *object = allocate(class_, 0);
  if (object != nullptr) reinterpret_cast<Holder<Inside> *>(object)->inside = inside.release();
  return object;
}

template <class Inside>
void destroy(PyObject *self) {
  PyTypeObject *type = Py_TYPE(self);
  delete reinterpret_cast<Holder<Inside> *>(self)->inside;
  reinterpret_cast<freefunc>(PyType_GetSlot(type, Py_tp_free))(self);
  Py_DECREF(type);
}

// A function of C in a slot or a table of methods.
template <class Function>
void *slot(Function *function) {
  return reinterpret_cast<void *>(function);
}

}  // namespace campotipo::python
