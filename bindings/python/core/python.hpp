#pragma once

#include <Python.h>
#include <campotipo-records/records.h>
#include <cxxabi.h>
#include <unistd.h>

#include <cstdint>
#include <string>
#include <utility>

// What every source of the module starts with: the limited interface of CPython 3.11, references
// that give themselves back, and errors.
namespace campotipo::python {

class Ref {
 public:
  Ref() = default;
  explicit Ref(PyObject *owned) : object_(owned) {}
  static Ref share(PyObject *object) {
    Py_XINCREF(object);
    return Ref(object);
  }
  Ref(Ref &&other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  Ref &operator=(Ref &&other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }
  Ref(const Ref &) = delete;
  Ref &operator=(const Ref &) = delete;
  ~Ref() { Py_XDECREF(object_); }

  PyObject *get() const { return object_; }
  PyObject *release() { return std::exchange(object_, nullptr); }
  explicit operator bool() const { return object_ != nullptr; }

 private:
  PyObject *object_ = nullptr;
};

// Work that may ask for the interpreter's lock. While the interpreter ends, it unwinds the threads that
// do, which no destructor nor any function without exceptions can let pass: they stay where they are
// until the process is gone, as newer interpreters have it.
template <class Work>
auto sheltered(Work work) {
  try {
    return work();
  } catch (const abi::__forced_unwind &) {
    while (true) pause();
  }
}

// The interpreter's lock, let go of for as long as this lives.
class Unlocked {
 public:
  Unlocked() : state_(PyEval_SaveThread()) {}
  ~Unlocked() {
    sheltered([&] { PyEval_RestoreThread(state_); });
  }
  Unlocked(const Unlocked &) = delete;
  Unlocked &operator=(const Unlocked &) = delete;

 private:
  PyThreadState *state_;
};

// The lock, taken by a thread that may or may not have it.
class Locked {
 public:
  Locked() : state_(sheltered([] { return PyGILState_Ensure(); })) {}
  ~Locked() { PyGILState_Release(state_); }
  Locked(const Locked &) = delete;
  Locked &operator=(const Locked &) = delete;

 private:
  PyGILState_STATE state_;
};

template <class Structure>
Structure sized() {
  Structure made = {};
  made.size = sizeof made;
  return made;
}

// UTF-8 of any bytes, since names of files hold any.
inline PyObject *text_of(const char *text) {
  return PyUnicode_DecodeUTF8(text, static_cast<Py_ssize_t>(std::char_traits<char>::length(text)),
                              "replace");
}

// Raises what the library told, as the class that belongs to its status. Gives null.
PyObject *raise(const campotipo_error &error);

// Raises campotipo.Error. Gives null.
PyObject *refuse(const std::string &text);
// The same with a text of Python, which is given away.
PyObject *refuse_with(PyObject *message);

// An integer in its range; -1 and an exception where it is none.
inline bool number_of(PyObject *object, std::int64_t &out) {
  out = PyLong_AsLongLong(object);
  return out != -1 || PyErr_Occurred() == nullptr;
}

}  // namespace campotipo::python
