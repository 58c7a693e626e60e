#pragma once

#include "python.hpp"

namespace campotipo::python {

// (layout, kind, lossy, stream, write): the batches of an Arrow stream as records, handed to a function
// of Python as bytes. Gives (records, losses).
PyObject *write_records(PyObject *, PyObject *arguments);

}  // namespace campotipo::python
