#pragma once

#include "chain.hpp"

namespace campotipo::python {

// A chain begun; null and an exception where it cannot be.
std::unique_ptr<Chain> chain_of(PyObject *arguments);

// The next batch of a chain, read without the lock, `busy` meanwhile; false at the end, and with an
// exception where it fails or a handler of a signal raises one.
bool next_batch(Chain &chain, bool &busy, ArrowArray *out);

// Whether this is the thread in which Python runs the handlers of signals.
bool in_main_thread();

PyObject *stream(PyObject *, PyObject *arguments);
PyObject *schema(PyObject *, PyObject *arguments);
PyObject *count(PyObject *, PyObject *arguments);
PyObject *splits(PyObject *, PyObject *arguments);

}  // namespace campotipo::python
