#include "streams.hpp"

#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <new>

#include "capsule.hpp"
#include "layouts.hpp"

namespace campotipo::python {

namespace {

Chain &chain_in(ArrowArrayStream *stream) { return *static_cast<Chain *>(stream->private_data); }

template <class Work>
int guarded(Work work) noexcept {
  try {
    return work();
  } catch (const std::bad_alloc &) {
    return ENOMEM;
  } catch (...) {
    return EINVAL;
  }
}

int next(ArrowArrayStream *self, ArrowArray *out) {
  return guarded([&] {
    *out = {};
    Chain &chain = chain_in(self);
    if (in_main_thread() && chain.interrupted()) return EINTR;
    return chain.next(out);
  });
}

// An interpreter that has ended takes nothing back.
void release(ArrowArrayStream *self) {
  self->release = nullptr;
  if (Py_IsInitialized() == 0) return;
  const Locked lock;
  delete &chain_in(self);
}

void fill_callbacks(Chain *chain, ArrowArrayStream *out) {
  *out = {};
  out->get_schema = [](ArrowArrayStream *self, ArrowSchema *schema) {
    return guarded([&] { return chain_in(self).schema(schema); });
  };
  out->get_next = next;
  out->get_last_error = [](ArrowArrayStream *self) -> const char * {
    return static_cast<const char *>(chain_in(self).error().text);
  };
  out->release = release;
  out->private_data = chain;
}

// Another thread may come while the lock is let go of.
class Busy {
 public:
  explicit Busy(bool &flag) : flag_(flag) { flag_ = true; }
  ~Busy() { flag_ = false; }
  Busy(const Busy &) = delete;
  Busy &operator=(const Busy &) = delete;

 private:
  bool &flag_;
};

struct Counted {
  std::uint64_t rows = 0;
  std::uint64_t skipped = 0;
};

// Adds the records of the kind; without the lock, which is taken for signals alone.
bool count_in(campotipo_reader *reader, std::size_t kind, Counted &counted, campotipo_error &error,
              bool &stopped) {
  auto block = sized<campotipo_block>();
  campotipo_status status = CAMPOTIPO_OK;
  while ((status = campotipo_reader_next(reader, &block, &error)) == CAMPOTIPO_OK) {
    for (std::size_t i = 0; i < block.count; ++i) counted.rows += block.kinds[i] == kind ? 1 : 0;
    if (in_main_thread()) {
      const Locked lock;
      stopped = PyErr_CheckSignals() != 0;
      if (stopped) return false;
    }
  }
  counted.skipped += campotipo_reader_skipped(reader);
  return status == CAMPOTIPO_END;
}

bool count_place(const Request &request, const Place &place, std::size_t kind, Counted &counted) {
  campotipo_input input = input_of(place);
  std::unique_ptr<FileObject> file;
  if (place.opener) {
    file = FileObject::open(place);
    if (file == nullptr) return false;
    input = file->input(place);
  }
  auto error = sized<campotipo_error>();
  campotipo_reader *reader = nullptr;
  bool stopped = false;
  bool good = false;
  {
    const Unlocked unlocked;
    good = campotipo_reader_open(request.layout, &input, &place.range,
                                 request.skip != 0 ? CAMPOTIPO_SKIP : 0, &reader,
                                 &error) == CAMPOTIPO_OK &&
           count_in(reader, kind, counted, error, stopped);
    campotipo_reader_free(reader);
  }
  if (good || stopped) return good;
  const Ref failure = file != nullptr ? file->take_failure() : Ref();
  if (failure) {
    PyErr_SetObject(reinterpret_cast<PyObject *>(Py_TYPE(failure.get())), failure.get());
  } else {
    raise(error);
  }
  return false;
}

}  // namespace

bool in_main_thread() { return syscall(SYS_gettid) == getpid(); }

std::unique_ptr<Chain> chain_of(PyObject *arguments) {
  Request request;
  if (!request_of(arguments, request)) return nullptr;
  auto chain = std::make_unique<Chain>(std::move(request), PyTuple_GetItem(arguments, 0));
  return chain->begin() ? std::move(chain) : nullptr;
}

bool next_batch(Chain &chain, bool &busy, ArrowArray *out) {
  if (busy) {
    refuse("these records are being read by another thread");
    return false;
  }
  if (PyErr_CheckSignals() != 0) return false;
  const Busy told(busy);
  int result = 0;
  {
    const Unlocked unlocked;
    result = chain.next(out);
  }
  if (result != 0) raise_of(chain);
  return result == 0 && out->release != nullptr;
}

PyObject *stream(PyObject *, PyObject *arguments) {
  std::unique_ptr<Chain> chain = chain_of(arguments);
  if (chain == nullptr) return nullptr;
  ArrowArrayStream made = {};
  fill_callbacks(chain.release(), &made);
  return capsule_of(made, "arrow_array_stream");
}

PyObject *schema(PyObject *, PyObject *arguments) {
  Request request;
  if (!request_of(arguments, request)) return nullptr;
  Chain chain(std::move(request), PyTuple_GetItem(arguments, 0));
  ArrowSchema made = {};
  if (chain.schema(&made) != 0) return raise(chain.error());
  return capsule_of(made, "arrow_schema");
}

PyObject *count(PyObject *, PyObject *arguments) {
  Request request;
  if (!request_of(arguments, request)) return nullptr;
  std::size_t kind = 0;
  auto error = sized<campotipo_error>();
  if (campotipo_layout_find_kind(request.layout, request.has_kind ? request.kind.c_str() : nullptr,
                                 &kind, &error) != CAMPOTIPO_OK) {
    return raise(error);
  }
  Counted counted;
  for (const auto &place : request.places) {
    if (!count_place(request, *place, kind, counted)) return nullptr;
  }
  return Py_BuildValue("(KK)", static_cast<unsigned long long>(counted.rows),
                       static_cast<unsigned long long>(counted.skipped));
}

PyObject *splits(PyObject *, PyObject *arguments) {
  PyObject *capsule = nullptr;
  const char *path = nullptr;
  Py_ssize_t wanted = 0;
  if (PyArg_ParseTuple(arguments, "Oyn", &capsule, &path, &wanted) == 0) return nullptr;
  const campotipo_layout *layout = layout_in(capsule);
  if (layout == nullptr) return nullptr;
  if (wanted < 1) return refuse("splits: at least 1 is needed");
  auto input = sized<campotipo_input>();
  input.path = path;
  std::vector<campotipo_range> ranges(static_cast<std::size_t>(wanted));
  std::size_t made = 0;
  auto error = sized<campotipo_error>();
  campotipo_status status = CAMPOTIPO_OK;
  {
    const Unlocked unlocked;
    status = campotipo_splits(layout, &input, ranges.size(), ranges.data(), &made, &error);
  }
  if (status != CAMPOTIPO_OK) return raise(error);
  Ref list(PyList_New(0));
  for (std::size_t i = 0; list && i < made; ++i) {
    const Ref told(Py_BuildValue("(KKK)", static_cast<unsigned long long>(ranges[i].first),
                                 static_cast<unsigned long long>(ranges[i].count),
                                 static_cast<unsigned long long>(ranges[i].byte)));
    if (!told || PyList_Append(list.get(), told.get()) != 0) return nullptr;
  }
  return list.release();
}

}  // namespace campotipo::python
