#include "file_object.hpp"

#include <algorithm>
#include <cstring>

namespace campotipo::python {

namespace {

// At most so much at a time, so that a file without readinto makes no large bytes.
constexpr std::size_t kMost = std::size_t{1} << 20;

Ref optional(PyObject *object, const char *name) {
  Ref found(PyObject_GetAttrString(object, name));
  if (!found) PyErr_Clear();
  return found;
}

}  // namespace

Ref take_exception() {
  PyObject *type = nullptr;
  PyObject *value = nullptr;
  PyObject *trace = nullptr;
  PyErr_Fetch(&type, &value, &trace);
  PyErr_NormalizeException(&type, &value, &trace);
  if (value != nullptr && trace != nullptr) PyException_SetTraceback(value, trace);
  Py_XDECREF(type);
  Py_XDECREF(trace);
  return Ref(value);
}

std::unique_ptr<FileObject> FileObject::open(const Place &place) {
  Ref file(PyObject_CallObject(place.opener.get(), nullptr));
  if (!file) return nullptr;
  std::unique_ptr<FileObject> made(new FileObject());
  made->readinto_ = optional(file.get(), "readinto");
  made->read_ = Ref(PyObject_GetAttrString(file.get(), "read"));
  if (!made->read_) return nullptr;
  const Ref asked = optional(file.get(), "seekable");
  if (asked) {
    const Ref answer(PyObject_CallObject(asked.get(), nullptr));
    if (!answer) return nullptr;
    made->seekable_ = PyObject_IsTrue(answer.get()) == 1;
  }
  made->closes_ = place.closes;
  made->file_ = std::move(file);
  return made;
}

FileObject::~FileObject() {
  if (!closes_ || !file_) return;
  const Ref done(PyObject_CallMethod(file_.get(), "close", nullptr));
  if (!done) PyErr_Clear();
}

campotipo_input FileObject::input(const Place &place) {
  auto input = sized<campotipo_input>();
  input.name = place.name.c_str();
  input.context = this;
  input.read = [](void *self, void *dest, std::size_t room) {
    const Locked lock;
    return sheltered([&] { return static_cast<FileObject *>(self)->read(dest, room); });
  };
  if (seekable_) {
    input.skip = [](void *self, std::uint64_t bytes) {
      const Locked lock;
      return sheltered([&] { return static_cast<FileObject *>(self)->skip(bytes) ? 0 : -1; });
    };
  }
  return input;
}

std::int64_t FileObject::read(void *dest, std::size_t room) {
  const std::int64_t got = readinto_ ? read_into(dest, room) : read_copy(dest, room);
  if (got < 0 && !failure_) failure_ = take_exception();
  return got;
}

std::int64_t FileObject::read_into(void *dest, std::size_t room) {
  const Ref view(PyMemoryView_FromMemory(static_cast<char *>(dest), static_cast<Py_ssize_t>(room),
                                         PyBUF_WRITE));
  if (!view) return -1;
  const Ref count(PyObject_CallFunctionObjArgs(readinto_.get(), view.get(), nullptr));
  std::int64_t got = -1;
  const bool told = count && number_of(count.get(), got);
  // Nobody keeps a way into memory that is the library's.
  PyObject *type = nullptr;
  PyObject *value = nullptr;
  PyObject *trace = nullptr;
  PyErr_Fetch(&type, &value, &trace);
  const Ref released(PyObject_CallMethod(view.get(), "release", nullptr));
  if (type != nullptr) {
    PyErr_Clear();
    PyErr_Restore(type, value, trace);
    return -1;
  }
  if (!told || !released) return -1;
  if (got < 0 || static_cast<std::uint64_t>(got) > room) {
    PyErr_Format(PyExc_ValueError, "readinto() gave %lld for a room of %zu",
                 static_cast<long long>(got), room);
    return -1;
  }
  return got;
}

std::int64_t FileObject::read_copy(void *dest, std::size_t room) {
  const std::size_t wanted = std::min(room, kMost);
  const Ref bytes(PyObject_CallFunction(read_.get(), "n", static_cast<Py_ssize_t>(wanted)));
  if (!bytes) return -1;
  Py_buffer buffer = {};
  if (PyObject_GetBuffer(bytes.get(), &buffer, PyBUF_SIMPLE) != 0) return -1;
  const std::int64_t got = buffer.len;
  const bool fits = static_cast<std::size_t>(got) <= wanted;
  if (fits) std::memcpy(dest, buffer.buf, static_cast<std::size_t>(got));
  PyBuffer_Release(&buffer);
  if (fits) return got;
  PyErr_Format(PyExc_ValueError, "read(%zu) gave %lld bytes", wanted, static_cast<long long>(got));
  return -1;
}

bool FileObject::skip(std::uint64_t bytes) {
  const Ref place(
      PyObject_CallMethod(file_.get(), "seek", "Ki", static_cast<unsigned long long>(bytes), 1));
  if (place) return true;
  if (!failure_) failure_ = take_exception();
  return false;
}

}  // namespace campotipo::python
