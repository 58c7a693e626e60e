#include "chain.hpp"

#include <cerrno>
#include <cstring>

namespace campotipo::python {

namespace {

int errno_of(campotipo_status status) {
  switch (status) {
    case CAMPOTIPO_MEMORY:
      return ENOMEM;
    case CAMPOTIPO_INPUT:
      return EIO;
    default:
      return EINVAL;
  }
}

}  // namespace

bool Chain::begin() {
  if (request_.places.empty()) return true;
  if (open(*request_.places[at_])) {
    ++at_;
    return true;
  }
  raise_of(*this);
  return false;
}

// File objects are opened with the lock, which this takes.
bool Chain::open(const Place &place) {
  error_ = sized<campotipo_error>();
  campotipo_input input = {};
  if (place.opener) {
    const Locked lock;
    file_ = sheltered([&] { return FileObject::open(place); });
    if (file_ == nullptr) {
      failure_ = take_exception();
      keep_failure();
      return false;
    }
    input = file_->input(place);
  } else {
    input = input_of(place);
  }
  campotipo_reader *reader = nullptr;
  const unsigned flags = request_.skip != 0 ? CAMPOTIPO_SKIP : 0;
  if (campotipo_reader_open(request_.layout, &input, &place.range, flags, &reader, &error_) !=
      CAMPOTIPO_OK) {
    keep_failure();
    return false;
  }
  std::vector<const char *> names;
  const campotipo_stream_options options = request_.options(place, names);
  if (campotipo_stream(reader, &options, &stream_, &error_) == CAMPOTIPO_OK) return true;
  campotipo_reader_free(reader);
  return false;
}

void Chain::close() {
  if (stream_.release != nullptr) stream_.release(&stream_);
  if (file_ == nullptr) return;
  const Locked lock;
  file_.reset();
}

int Chain::fail(campotipo_status status, const std::string &text) {
  error_ = sized<campotipo_error>();
  error_.status = status;
  const std::size_t bytes = std::min(text.size(), sizeof error_.text - 1);
  std::memcpy(error_.text, text.data(), bytes);
  return errno_of(status);
}

// The message of what Python raised, behind the one that the library made of it.
void Chain::keep_failure() {
  if (!failure_ && file_ == nullptr) return;
  const Locked lock;
  if (!failure_) failure_ = file_->take_failure();
  if (!failure_) return;
  const Ref name(PyType_GetName(Py_TYPE(failure_.get())));
  const Ref text(name ? PyUnicode_FromFormat("%U: %S", name.get(), failure_.get()) : nullptr);
  Py_ssize_t bytes = 0;
  const char *told = text ? PyUnicode_AsUTF8AndSize(text.get(), &bytes) : nullptr;
  if (told == nullptr) PyErr_Clear();
  std::string message = error_.text;
  if (!message.empty()) message += ": ";
  fail(CAMPOTIPO_INPUT, message + (told != nullptr ? told : "an exception without a text"));
}

bool Chain::interrupted() {
  const Locked lock;
  if (PyErr_CheckSignals() == 0) return false;
  failure_ = take_exception();
  fail(CAMPOTIPO_INPUT, "interrupted");
  keep_failure();
  return true;
}

int Chain::schema(ArrowSchema *out) {
  std::vector<const char *> names;
  const Place nowhere;
  const campotipo_stream_options options =
      request_.options(request_.places.empty() ? nowhere : *request_.places[0], names);
  error_ = sized<campotipo_error>();
  if (campotipo_stream_schema(request_.layout, &options, out, &error_) == CAMPOTIPO_OK) return 0;
  return errno_of(error_.status);
}

int Chain::next(ArrowArray *out) {
  *out = {};
  if (getpid() != process_) {
    return fail(CAMPOTIPO_INPUT, "this stream was opened by another process: open it anew");
  }
  while (true) {
    if (stream_.release == nullptr) {
      if (at_ == request_.places.size()) return 0;
      if (!open(*request_.places[at_])) return errno_of(error_.status);
      ++at_;
    }
    const int result = stream_.get_next(&stream_, out);
    if (result != 0) {
      campotipo_stream_error(&stream_, &error_);
      keep_failure();
      return result;
    }
    if (out->release != nullptr) return 0;
    close();
  }
}

PyObject *raise_of(Chain &chain) {
  const Ref failure = chain.take_failure();
  if (!failure) return raise(chain.error());
  const Ref type = Ref::share(reinterpret_cast<PyObject *>(Py_TYPE(failure.get())));
  PyErr_SetObject(type.get(), failure.get());
  return nullptr;
}

}  // namespace campotipo::python
