#pragma once

#include "places.hpp"

namespace campotipo::python {

// An open binary file of Python, read by the callbacks of the library from whatever thread it reads
// in. An exception is kept until it is asked for.
class FileObject {
 public:
  // With the lock; null and an exception where the object cannot be opened or read.
  static std::unique_ptr<FileObject> open(const Place &place);
  FileObject(const FileObject &) = delete;
  FileObject &operator=(const FileObject &) = delete;
  // With the lock.
  ~FileObject();

  campotipo_input input(const Place &place);

  // The exception that ended the reading, if one did; with the lock.
  Ref take_failure() { return std::move(failure_); }

 private:
  FileObject() = default;
  std::int64_t read(void *dest, std::size_t room);
  std::int64_t read_into(void *dest, std::size_t room);
  std::int64_t read_copy(void *dest, std::size_t room);
  bool skip(std::uint64_t bytes);

  Ref file_;
  Ref readinto_;
  Ref read_;
  Ref failure_;
  bool seekable_ = false;
  bool closes_ = false;
};

// The exception that is raised, as an object, taken away; with the lock.
Ref take_exception();

}  // namespace campotipo::python
