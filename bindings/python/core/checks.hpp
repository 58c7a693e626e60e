#pragma once

#include "python.hpp"

namespace campotipo::python {

// Over a text or a column of texts; `type` is that of the results. Arguments as the manual of the
// module tells them.
PyObject *valida(PyObject *type, PyObject *const *arguments, Py_ssize_t count);
PyObject *limpa(PyObject *type, PyObject *const *arguments, Py_ssize_t count);
PyObject *edita(PyObject *type, PyObject *const *arguments, Py_ssize_t count);
PyObject *identifica(PyObject *type, PyObject *value);
PyObject *documentos();

}  // namespace campotipo::python
