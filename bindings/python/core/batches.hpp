#pragma once

#include "python.hpp"

namespace campotipo::python {

// The types of the iterator over batches and of a batch; to be made once for a module.
PyObject *make_batches_type(PyObject *module);
PyObject *make_batch_type(PyObject *module);

// A new iterator; the arguments are those of a stream.
PyObject *batches(PyObject *type, PyObject *batch_type, PyObject *arguments);

}  // namespace campotipo::python
