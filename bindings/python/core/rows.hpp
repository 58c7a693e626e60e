#pragma once

#include "python.hpp"

namespace campotipo::python {

// The type of the iterator over records as dicts; to be made once for a module.
PyObject *make_rows_type(PyObject *module);

// A new iterator; the arguments are those of a stream.
PyObject *rows(PyObject *type, PyObject *arguments);

}  // namespace campotipo::python
