#pragma once

#include "python.hpp"

namespace campotipo::python {

// The layout in a capsule that layout_parse made; null and an exception for anything else.
campotipo_layout *layout_in(PyObject *capsule);

PyObject *layout_parse(PyObject *, PyObject *arguments);
PyObject *layout_unknown(PyObject *, PyObject *name);
PyObject *layout_ready(PyObject *, PyObject *name);
PyObject *layout_ready_names(PyObject *, PyObject *);
PyObject *layout_name(PyObject *, PyObject *capsule);
PyObject *layout_kinds(PyObject *, PyObject *capsule);
PyObject *layout_find_kind(PyObject *, PyObject *arguments);

}  // namespace campotipo::python
