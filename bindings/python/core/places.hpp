#pragma once

#include <memory>
#include <string>
#include <vector>

#include "python.hpp"

// Where records come from, and what is wanted of them.
namespace campotipo::python {

// A path, memory, or what opens a file object; and which of its records.
struct Place {
  Place() = default;
  Place(const Place &) = delete;
  Place &operator=(const Place &) = delete;
  // With the lock.
  ~Place() {
    if (filled) PyBuffer_Release(&buffer);
  }

  std::string path;
  Py_buffer buffer = {};
  bool filled = false;
  Ref opener;           // called without arguments, gives the object
  bool closes = false;  // the object is closed when it has been read
  std::string name;     // as messages and the column "_file" say it
  campotipo_range range = sized<campotipo_range>();
};

struct Request {
  const campotipo_layout *layout = nullptr;
  std::vector<std::unique_ptr<Place>> places;
  std::string kind;
  bool has_kind = false;
  std::vector<std::string> fields;
  bool has_fields = false;
  int wide = 0;
  int times = 0;
  int faults = 0;
  int skip = 0;
  int files = 0;  // the column "_file" is told
  std::size_t batch_rows = 0;

  // What campotipo_stream takes, for the place; it points into this request and into `names`.
  campotipo_stream_options options(const Place &place, std::vector<const char *> &names) const;
};

// From (layout, places, kind, fields, wide, times, faults, skip, files, batch_rows); false and an
// exception where they are not such.
bool request_of(PyObject *arguments, Request &out);

// The input of a place that is no file object.
campotipo_input input_of(const Place &place);

}  // namespace campotipo::python
