#pragma once

#include "python.hpp"

// The library's fields on plain values; `campotipo/_values.py` makes numbers and dates of them.
namespace campotipo::python {

PyObject *code_pack(PyObject *, PyObject *arguments);
PyObject *code_unpack(PyObject *, PyObject *arguments);
PyObject *number_pack(PyObject *, PyObject *arguments);
PyObject *number_unpack(PyObject *, PyObject *bytes);
PyObject *number_digits(PyObject *, PyObject *width);
PyObject *date_pack(PyObject *, PyObject *arguments);
PyObject *date_unpack(PyObject *, PyObject *bytes);
PyObject *date_step(PyObject *, PyObject *arguments);
PyObject *guid_parse(PyObject *, PyObject *text);
PyObject *guid_text(PyObject *, PyObject *arguments);
PyObject *guid_new(PyObject *, PyObject *);

PyObject *round_number(PyObject *, PyObject *arguments);
PyObject *percent_times(PyObject *, PyObject *arguments);
PyObject *percent_of(PyObject *, PyObject *arguments);
PyObject *percent_inverse(PyObject *, PyObject *arguments);

// The state of the services in this module, which is its own: once, before any of these.
void set_services();

}  // namespace campotipo::python
