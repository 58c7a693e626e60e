#include <new>

#include "batches.hpp"
#include "checks.hpp"
#include "column.hpp"
#include "layouts.hpp"
#include "rows.hpp"
#include "streams.hpp"
#include "values.hpp"
#include "writing.hpp"

// The module campotipo._core: what Python around it is made of.
namespace campotipo::python {

namespace {

struct State {
  PyObject *rows_type;
  PyObject *batches_type;
  PyObject *batch_type;
  PyObject *column_type;
};

State &state_of(PyObject *module) { return *static_cast<State *>(PyModule_GetState(module)); }

template <class Work>
PyObject *guarded(Work work) noexcept {
  try {
    return work();
  } catch (const std::bad_alloc &) {
    return PyErr_NoMemory();
  } catch (const std::exception &error) {
    PyErr_SetString(PyExc_RuntimeError, error.what());
    return nullptr;
  }
}

template <PyObject *(*Work)(PyObject *, PyObject *)>
PyObject *plain(PyObject *self, PyObject *argument) {
  return guarded([&] { return Work(self, argument); });
}

using Fast = PyObject *(*)(PyObject *, PyObject *const *, Py_ssize_t);

template <Fast Work>
PyObject *fast(PyObject *self, PyObject *const *arguments, Py_ssize_t count) {
  return guarded([&] { return Work(state_of(self).column_type, arguments, count); });
}

PyObject *rows_of(PyObject *self, PyObject *arguments) {
  return guarded([&] { return rows(state_of(self).rows_type, arguments); });
}

PyObject *batches_of(PyObject *self, PyObject *arguments) {
  const State &state = state_of(self);
  return guarded([&] { return batches(state.batches_type, state.batch_type, arguments); });
}

PyObject *identifica_of(PyObject *self, PyObject *value) {
  return guarded([&] { return identifica(state_of(self).column_type, value); });
}

PyObject *documentos_of(PyObject *, PyObject *) { return documentos(); }

PyMethodDef methods[] = {
    {"valida", reinterpret_cast<PyCFunction>(reinterpret_cast<void (*)()>(fast<valida>)),
     METH_FASTCALL,
     "valida(doc, value, /)\n--\n\n"
     "Whether the check digits of a document hold, whatever punctuation it has.\n\n"
     "`doc` is one of documentos(), in letters of either case. A str gives a bool. A column of\n"
     "texts, which is anything with Arrow's protocol, NumPy's bytes or a list, gives a Column of\n"
     "bools, null where the value is null.\n\n"
     ">>> valida(\"CPF\", \"123.456.789-09\")\n"
     "True\n"
     ">>> valida(\"CPF\", [\"12345678909\", \"12345678900\", None]).to_list()\n"
     "[True, False, None]\n"},
    {"limpa", reinterpret_cast<PyCFunction>(reinterpret_cast<void (*)()>(fast<limpa>)),
     METH_FASTCALL,
     "limpa(doc, value, /)\n--\n\n"
     "A document without its punctuation. The check digits are not looked at.\n\n"
     "A str that has not the length and the characters of the document raises Error; in a column\n"
     "it becomes null.\n\n"
     ">>> limpa(\"CNPJ_alfa\", \"12.ABC.345/01DE-35\")\n"
     "'12ABC34501DE35'\n"
     ">>> limpa(\"CPF\", [\"123.456.789-09\", \"123\"]).to_list()\n"
     "['12345678909', None]\n"},
    {"edita", reinterpret_cast<PyCFunction>(reinterpret_cast<void (*)()>(fast<edita>)),
     METH_FASTCALL,
     "edita(doc, value, /)\n--\n\n"
     "A document with its punctuation, whatever punctuation it comes with; one that has none in\n"
     "use stays as it is. Wrong texts as in limpa().\n\n"
     ">>> edita(\"CPF\", \"12345678909\")\n"
     "'123.456.789-09'\n"},
    {"identifica", identifica_of, METH_O,
     "identifica(value, /)\n--\n\n"
     "Which documents a text can be: those whose length it has and whose check digits hold.\n\n"
     "A str gives a tuple of names, a column a Column of lists of them.\n\n"
     ">>> identifica(\"123.456.789-09\")\n"
     "('CPF',)\n"
     ">>> identifica([\"12ABC34501DE35\", \"x\"]).to_list()\n"
     "[['CNPJ_alfa'], []]\n"},
    {"documentos", documentos_of, METH_NOARGS,
     "documentos()\n--\n\n"
     "The names of the documents.\n\n"
     ">>> documentos()[:3]\n"
     "('CPF', 'CNPJ', 'CNPJ_alfa')\n"},
    {"layout_parse", plain<layout_parse>, METH_VARARGS, nullptr},
    {"layout_unknown", plain<layout_unknown>, METH_O, nullptr},
    {"layout_ready", plain<layout_ready>, METH_O, nullptr},
    {"layout_ready_names", plain<layout_ready_names>, METH_NOARGS, nullptr},
    {"layout_name", plain<layout_name>, METH_O, nullptr},
    {"layout_kinds", plain<layout_kinds>, METH_O, nullptr},
    {"layout_find_kind", plain<layout_find_kind>, METH_VARARGS, nullptr},
    {"stream", plain<stream>, METH_VARARGS, nullptr},
    {"schema", plain<schema>, METH_VARARGS, nullptr},
    {"count", plain<count>, METH_VARARGS, nullptr},
    {"splits", plain<splits>, METH_VARARGS, nullptr},
    {"write_records", plain<write_records>, METH_VARARGS, nullptr},
    {"rows", rows_of, METH_VARARGS, nullptr},
    {"batches", batches_of, METH_VARARGS, nullptr},
    {"code_pack", plain<code_pack>, METH_VARARGS, nullptr},
    {"code_unpack", plain<code_unpack>, METH_VARARGS, nullptr},
    {"number_pack", plain<number_pack>, METH_VARARGS, nullptr},
    {"number_unpack", plain<number_unpack>, METH_O, nullptr},
    {"number_digits", plain<number_digits>, METH_O, nullptr},
    {"date_pack", plain<date_pack>, METH_VARARGS, nullptr},
    {"date_unpack", plain<date_unpack>, METH_O, nullptr},
    {"date_step", plain<date_step>, METH_VARARGS, nullptr},
    {"guid_parse", plain<guid_parse>, METH_O, nullptr},
    {"guid_text", plain<guid_text>, METH_VARARGS, nullptr},
    {"guid_new", plain<guid_new>, METH_NOARGS, nullptr},
    {"round_number", plain<round_number>, METH_VARARGS, nullptr},
    {"percent_times", plain<percent_times>, METH_VARARGS, nullptr},
    {"percent_of", plain<percent_of>, METH_VARARGS, nullptr},
    {"percent_inverse", plain<percent_inverse>, METH_VARARGS, nullptr},
    {nullptr, nullptr, 0, nullptr}};

// The unwinder inside this file makes its tables at the first exception. Threads that the interpreter
// unwinds while it ends come by it without one.
void prepare_unwinder() {
  try {
    throw 0;
  } catch (int) {
  }
}

// Streams give their objects back from threads that know one interpreter alone.
int execute(PyObject *module) {
  if (PyInterpreterState_GetID(PyInterpreterState_Get()) != 0) {
    PyErr_SetString(PyExc_ImportError, "campotipo works in the main interpreter alone");
    return -1;
  }
  prepare_unwinder();
  set_services();
  State &state = state_of(module);
  state.rows_type = make_rows_type(module);
  state.batches_type = make_batches_type(module);
  state.batch_type = make_batch_type(module);
  state.column_type = make_column_type(module);
  if (state.rows_type == nullptr || state.batches_type == nullptr) return -1;
  for (PyObject *type : {state.batch_type, state.column_type}) {
    if (type == nullptr || PyModule_AddType(module, reinterpret_cast<PyTypeObject *>(type)) != 0) {
      return -1;
    }
  }
  return PyModule_AddStringConstant(module, "VERSION", CAMPOTIPO_VERSION_TEXT);
}

int traverse(PyObject *module, visitproc visit, void *arg) {
  Py_VISIT(state_of(module).rows_type);
  Py_VISIT(state_of(module).batches_type);
  Py_VISIT(state_of(module).batch_type);
  Py_VISIT(state_of(module).column_type);
  return 0;
}

int clear(PyObject *module) {
  Py_CLEAR(state_of(module).rows_type);
  Py_CLEAR(state_of(module).batches_type);
  Py_CLEAR(state_of(module).batch_type);
  Py_CLEAR(state_of(module).column_type);
  return 0;
}

PyModuleDef_Slot slots[] = {{Py_mod_exec, reinterpret_cast<void *>(execute)}, {0, nullptr}};

PyModuleDef definition = {PyModuleDef_HEAD_INIT,
                          "campotipo._core",
                          nullptr,
                          sizeof(State),
                          methods,
                          slots,
                          traverse,
                          clear,
                          nullptr};

}  // namespace
}  // namespace campotipo::python

extern "C" __attribute__((visibility("default"))) PyObject *PyInit__core();
PyObject *PyInit__core() { return PyModuleDef_Init(&campotipo::python::definition); }
