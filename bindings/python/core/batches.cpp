#include "batches.hpp"

#include <vector>

#include "capsule.hpp"
#include "objects.hpp"
#include "streams.hpp"

namespace campotipo::python {

namespace {

// A batch and its schema, which live as long as anything that was handed out of them.
struct Kept {
  ArrowArray array = {};
  ArrowSchema schema = {};

  Kept() = default;
  Kept(const Kept &) = delete;
  Kept &operator=(const Kept &) = delete;
  ~Kept() {
    if (array.release != nullptr) array.release(&array);
    if (schema.release != nullptr) schema.release(&schema);
  }
};

using Batch = std::shared_ptr<Kept>;

template <class Structure>
struct Share {
  Batch kept;
  std::vector<Structure> children;
  std::vector<Structure *> pointers;
};

// Another structure over the same memory. A child may be moved out of it, and then has no release.
template <class Structure>
Structure share(const Structure &from, const Batch &kept) {
  auto owned = std::make_unique<Share<Structure>>();
  owned->kept = kept;
  const auto count = static_cast<std::size_t>(from.n_children);
  owned->children.reserve(count);
  for (std::size_t i = 0; i < count; ++i) {
    owned->children.push_back(share(*from.children[i], kept));
    owned->pointers.push_back(&owned->children.back());
  }
  Structure made = from;
  made.children = count == 0 ? nullptr : owned->pointers.data();
  made.release = [](Structure *self) {
    auto *mine = static_cast<Share<Structure> *>(self->private_data);
    for (Structure &child : mine->children) {
      if (child.release != nullptr) child.release(&child);
    }
    delete mine;
    self->release = nullptr;
  };
  made.private_data = owned.release();
  return made;
}

struct Batches {
  std::unique_ptr<Chain> chain;
  PyObject *batch_type = nullptr;  // the module's, which outlives this
  bool busy = false;
};

PyObject *arrow_schema(PyObject *self, PyObject *) {
  const Batch &batch = inside_of<Batch>(self);
  return capsule_of(share(batch->schema, batch), "arrow_schema");
}

PyObject *arrow_array(PyObject *self, PyObject *arguments, PyObject *names) {
  PyObject *requested = nullptr;
  static const char *const kNames[] = {"requested_schema", nullptr};
  if (PyArg_ParseTupleAndKeywords(arguments, names, "|O", const_cast<char **>(kNames),
                                  &requested) == 0) {
    return nullptr;
  }
  const Batch &batch = inside_of<Batch>(self);
  const Ref schema(arrow_schema(self, nullptr));
  if (!schema) return nullptr;
  const Ref array(capsule_of(share(batch->array, batch), "arrow_array"));
  return array ? PyTuple_Pack(2, schema.get(), array.get()) : nullptr;
}

Py_ssize_t length(PyObject *self) {
  return static_cast<Py_ssize_t>(inside_of<Batch>(self)->array.length);
}

PyObject *next(Batches &batches) {
  auto kept = std::make_shared<Kept>();
  if (!next_batch(*batches.chain, batches.busy, &kept->array)) return nullptr;
  if (batches.chain->schema(&kept->schema) != 0) return raise(batches.chain->error());
  return hold(batches.batch_type, std::make_unique<Batch>(std::move(kept)));
}

PyObject *iternext(PyObject *self) noexcept {
  try {
    return next(inside_of<Batches>(self));
  } catch (const std::bad_alloc &) {
    return PyErr_NoMemory();
  }
}

}  // namespace

PyObject *make_batches_type(PyObject *module) {
  static PyType_Slot slots[] = {{Py_tp_dealloc, slot(destroy<Batches>)},
                                {Py_tp_iter, slot(PyObject_SelfIter)},
                                {Py_tp_iternext, slot(iternext)},
                                {0, nullptr}};
  static PyType_Spec spec = {"campotipo._core.Batches", sizeof(Holder<Batches>), 0,
                             Py_TPFLAGS_DEFAULT | Py_TPFLAGS_DISALLOW_INSTANTIATION, slots};
  return PyType_FromModuleAndSpec(module, &spec, nullptr);
}

PyObject *make_batch_type(PyObject *module) {
  static PyMethodDef methods[] = {
      {"__arrow_c_schema__", arrow_schema, METH_NOARGS, "The columns, as an Arrow schema."},
      {"__arrow_c_array__", reinterpret_cast<PyCFunction>(slot(arrow_array)),
       METH_VARARGS | METH_KEYWORDS, "The rows, as an Arrow array; nothing is copied."},
      {nullptr, nullptr, 0, nullptr}};
  static PyType_Slot slots[] = {
      {Py_tp_doc, const_cast<char *>("Some records as columns, with Arrow's protocol.")},
      {Py_tp_dealloc, slot(destroy<Batch>)},
      {Py_tp_methods, methods},
      {Py_sq_length, slot(length)},
      {0, nullptr}};
  static PyType_Spec spec = {"campotipo._core.Batch", sizeof(Holder<Batch>), 0,
                             Py_TPFLAGS_DEFAULT | Py_TPFLAGS_DISALLOW_INSTANTIATION, slots};
  return PyType_FromModuleAndSpec(module, &spec, nullptr);
}

PyObject *batches(PyObject *type, PyObject *batch_type, PyObject *arguments) {
  auto made = std::make_unique<Batches>();
  made->chain = chain_of(arguments);
  if (made->chain == nullptr) return nullptr;
  made->batch_type = batch_type;
  return hold(type, std::move(made));
}

}  // namespace campotipo::python
