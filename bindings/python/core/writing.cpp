#include "writing.hpp"

#include "file_object.hpp"
#include "layouts.hpp"

namespace campotipo::python {

namespace {

// Where the bytes go; an exception is kept until the library has come back.
struct Output {
  PyObject *write;
  Ref failure;
};

int put(void *context, const void *bytes, std::size_t count) {
  return sheltered([&] {
    auto *output = static_cast<Output *>(context);
    const Locked lock;
    const Ref content(PyBytes_FromStringAndSize(static_cast<const char *>(bytes),
                                                static_cast<Py_ssize_t>(count)));
    const Ref done(content ? PyObject_CallFunctionObjArgs(output->write, content.get(), nullptr)
                           : nullptr);
    if (done) return 0;
    output->failure = take_exception();
    return -1;
  });
}

PyObject *fail(Output &output, const campotipo_error &error) {
  if (!output.failure) return raise(error);
  PyErr_SetObject(reinterpret_cast<PyObject *>(Py_TYPE(output.failure.get())),
                  output.failure.get());
  return nullptr;
}

struct Loader {
  campotipo_loader *loader = nullptr;
  ArrowSchema schema = {};
  ArrowArray batch = {};

  Loader() = default;
  Loader(const Loader &) = delete;
  Loader &operator=(const Loader &) = delete;
  ~Loader() {
    campotipo_loader_free(loader);
    if (batch.release != nullptr) batch.release(&batch);
    if (schema.release != nullptr) schema.release(&schema);
  }
};

// The producer may need the lock, and is called with it. The result of the last call.
bool next_rows(ArrowArrayStream *stream, Loader &loading) {
  if (loading.batch.release != nullptr) loading.batch.release(&loading.batch);
  loading.batch = {};
  if (PyErr_CheckSignals() != 0) return false;
  if (stream->get_next(stream, &loading.batch) != 0) {
    const char *text = stream->get_last_error(stream);
    if (PyErr_Occurred() == nullptr) refuse(text != nullptr ? text : "the rows cannot be read");
    return false;
  }
  return loading.batch.release != nullptr;
}

}  // namespace

PyObject *write_records(PyObject *, PyObject *arguments) {
  PyObject *capsule = nullptr;
  const char *kind = nullptr;
  int lossy = 0;
  PyObject *source = nullptr;
  Output output = {};
  if (PyArg_ParseTuple(arguments, "OzpOO", &capsule, &kind, &lossy, &source, &output.write) == 0) {
    return nullptr;
  }
  const campotipo_layout *layout = layout_in(capsule);
  if (layout == nullptr) return nullptr;
  auto *stream =
      static_cast<ArrowArrayStream *>(PyCapsule_GetPointer(source, "arrow_array_stream"));
  if (stream == nullptr) return nullptr;
  auto sink = sized<campotipo_sink>();
  sink.write = put;
  sink.context = &output;
  auto options = sized<campotipo_loader_options>();
  options.lossy = lossy;
  auto error = sized<campotipo_error>();
  Loader loading;
  if (campotipo_loader_open(layout, &sink, &options, &loading.loader, &error) != CAMPOTIPO_OK) {
    return fail(output, error);
  }
  if (stream->get_schema(stream, &loading.schema) != 0) return refuse("the rows cannot be read");
  campotipo_status status = CAMPOTIPO_OK;
  while (next_rows(stream, loading)) {
    {
      const Unlocked unlocked;
      status = campotipo_encode(loading.loader, kind, &loading.schema, &loading.batch, &error);
    }
    if (status != CAMPOTIPO_OK) return fail(output, error);
  }
  if (PyErr_Occurred() != nullptr) return nullptr;
  {
    const Unlocked unlocked;
    status = campotipo_loader_finish(loading.loader, &error);
  }
  if (status != CAMPOTIPO_OK) return fail(output, error);
  return Py_BuildValue("(KK)",
                       static_cast<unsigned long long>(campotipo_loader_records(loading.loader)),
                       static_cast<unsigned long long>(campotipo_loader_losses(loading.loader)));
}

}  // namespace campotipo::python
