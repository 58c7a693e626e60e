#pragma once

#include <unistd.h>

#include "file_object.hpp"

// The records of several places as one stream of Arrow batches.
namespace campotipo::python {

class Chain {
 public:
  // `layout` is the capsule, kept for the places that are opened later.
  Chain(Request request, PyObject *layout)
      : request_(std::move(request)), layout_(Ref::share(layout)) {}
  Chain(const Chain &) = delete;
  Chain &operator=(const Chain &) = delete;
  // With the lock.
  ~Chain() { close(); }

  // Opens the first place, so that what is wrong with it is told at once; with the lock, null and an
  // exception where it fails.
  bool begin();

  // The callbacks of a stream. A released batch stands for the end. Without the lock, or with it.
  int schema(ArrowSchema *out);
  int next(ArrowArray *out);
  const campotipo_error &error() const { return error_; }

  // What a file object raised; with the lock.
  Ref take_failure() { return std::move(failure_); }

  // Whether the handler of a signal raised something, which becomes the error of this stream: who reads
  // it knows no exceptions of Python. Takes the lock.
  bool interrupted();

 private:
  bool open(const Place &place);
  void close();
  int fail(campotipo_status status, const std::string &text);
  void keep_failure();

  Request request_;
  Ref layout_;
  std::size_t at_ = 0;
  ArrowArrayStream stream_ = {};
  std::unique_ptr<FileObject> file_;
  campotipo_error error_ = sized<campotipo_error>();
  Ref failure_;
  pid_t process_ = getpid();
};

// Raises what ended the chain: what a file object raised, or what the library told. Gives null.
PyObject *raise_of(Chain &chain);

}  // namespace campotipo::python
