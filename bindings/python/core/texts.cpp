#include "texts.hpp"

#include <cstring>

namespace campotipo::python {

namespace {

// A text of no length that is there.
constexpr const char *kEmpty = "";

template <class Offset>
std::string_view between(const ArrowArray &array, std::int64_t at) {
  const auto *offsets = static_cast<const Offset *>(array.buffers[1]);
  const auto *text = static_cast<const char *>(array.buffers[2]);
  if (text == nullptr) return {kEmpty, 0};
  return {text + offsets[at], static_cast<std::size_t>(offsets[at + 1] - offsets[at])};
}

// A view of 16 bytes: its length, and the text itself or the place of a longer one.
std::string_view viewed(const ArrowArray &array, std::int64_t at) {
  const char *view = static_cast<const char *>(array.buffers[1]) + at * 16;
  std::int32_t parts[4];
  std::memcpy(parts, view, sizeof parts);
  const auto length = static_cast<std::size_t>(parts[0]);
  if (length <= 12) return {view + 4, length};
  return {static_cast<const char *>(array.buffers[2 + parts[2]]) + parts[3], length};
}

template <class Structure>
Structure *inside(PyObject *capsule, const char *name) {
  return static_cast<Structure *>(PyCapsule_GetPointer(capsule, name));
}

bool has(PyObject *object, const char *name) {
  const Ref found(PyObject_GetAttrString(object, name));
  if (!found) PyErr_Clear();
  return static_cast<bool>(found);
}

}  // namespace

Texts::~Texts() {
  for (Chunk &chunk : chunks_) {
    if (chunk.array.release != nullptr) chunk.array.release(&chunk.array);
  }
  if (has_buffer_) PyBuffer_Release(&buffer_);
}

bool Texts::form_of(std::string_view format, Form &form, std::size_t &width) {
  width = 0;
  if (format == "n") {
    form = kNull;
  } else if (format == "u" || format == "z") {
    form = kOffsets32;
  } else if (format == "U" || format == "Z") {
    form = kOffsets64;
  } else if (format == "vu" || format == "vz") {
    form = kViews;
  } else if (format.starts_with("w:")) {
    form = kFixed;
    width = static_cast<std::size_t>(std::atoll(format.data() + 2));
  } else {
    return false;
  }
  return true;
}

std::string_view Texts::text_at(const ArrowArray &array, Form form, std::size_t width,
                                std::int64_t at) {
  switch (form) {
    case kOffsets32:
      return between<std::int32_t>(array, at);
    case kOffsets64:
      return between<std::int64_t>(array, at);
    case kViews:
      return viewed(array, at);
    case kFixed:
      return {static_cast<const char *>(array.buffers[1]) + static_cast<std::size_t>(at) * width,
              width};
    case kNull:
      break;
  }
  return {};
}

std::int64_t Texts::index_at(const ArrowArray &array, char format, std::int64_t at) {
  const void *values = array.buffers[1];
  switch (format) {
    case 'c':
      return static_cast<const std::int8_t *>(values)[at];
    case 'C':
      return static_cast<const std::uint8_t *>(values)[at];
    case 's':
      return static_cast<const std::int16_t *>(values)[at];
    case 'S':
      return static_cast<const std::uint16_t *>(values)[at];
    case 'i':
      return static_cast<const std::int32_t *>(values)[at];
    case 'I':
      return static_cast<const std::uint32_t *>(values)[at];
    default:
      return static_cast<const std::int64_t *>(values)[at];
  }
}

bool Texts::take(PyObject *object) {
  if (has(object, "__arrow_c_stream__")) {
    const Ref capsule(PyObject_CallMethod(object, "__arrow_c_stream__", nullptr));
    return capsule && take_stream(capsule.get());
  }
  if (has(object, "__arrow_c_array__")) {
    const Ref pair(PyObject_CallMethod(object, "__arrow_c_array__", nullptr));
    return pair && take_array(pair.get());
  }
  if (PyObject_CheckBuffer(object) != 0) return take_buffer(object);
  return take_sequence(object);
}

bool Texts::take_array(PyObject *pair) {
  PyObject *schema = nullptr;
  PyObject *array = nullptr;
  if (PyArg_ParseTuple(pair, "OO", &schema, &array) == 0) return false;
  const auto *type = inside<ArrowSchema>(schema, "arrow_schema");
  auto *values = inside<ArrowArray>(array, "arrow_array");
  if (type == nullptr || values == nullptr) return false;
  if (!add(*type, *values)) return false;
  values->release = nullptr;  // moved
  return true;
}

bool Texts::take_stream(PyObject *capsule) {
  auto *stream = inside<ArrowArrayStream>(capsule, "arrow_array_stream");
  if (stream == nullptr) return false;
  ArrowSchema schema = {};
  if (stream->get_schema(stream, &schema) != 0) {
    const char *text = stream->get_last_error(stream);
    refuse(text != nullptr ? text : "the column cannot be read");
    return false;
  }
  bool good = true;
  while (good) {
    ArrowArray array = {};
    if (stream->get_next(stream, &array) != 0) {
      const char *text = stream->get_last_error(stream);
      refuse(text != nullptr ? text : "the column cannot be read");
      good = false;
      break;
    }
    if (array.release == nullptr) break;
    good = add(schema, array);
    if (!good) array.release(&array);
  }
  schema.release(&schema);
  return good;
}

bool Texts::add(const ArrowSchema &schema, const ArrowArray &array) {
  Chunk chunk = {};
  chunk.array = array;
  const ArrowSchema *type = &schema;
  bool known = true;
  if (schema.dictionary != nullptr) {
    type = schema.dictionary;
    chunk.words = array.dictionary;
    chunk.index = schema.format[0];
    known = form_of(type->format, chunk.word_form, chunk.word_width) && chunk.word_form != kNull;
  } else {
    known = form_of(type->format, chunk.form, chunk.width);
  }
  if (chunk.words != nullptr) chunk.form = kOffsets32;
  if (!known) {
    PyErr_Format(PyExc_TypeError, "a column of texts is needed, not one of Arrow format \"%s\"",
                 type->format);
    return false;
  }
  size_ += static_cast<std::size_t>(array.length);
  chunks_.push_back(chunk);
  return true;
}

bool Texts::take_buffer(PyObject *object) {
  if (PyObject_GetBuffer(object, &buffer_, PyBUF_FORMAT | PyBUF_C_CONTIGUOUS) != 0) {
    PyErr_Clear();
    return take_sequence(object);
  }
  has_buffer_ = true;
  const std::string_view format = buffer_.format != nullptr ? buffer_.format : "B";
  if (format.empty() || format.back() != 's' || buffer_.itemsize < 1) {
    has_buffer_ = false;
    PyBuffer_Release(&buffer_);
    // An array of objects is a list.
    if (format == "O") return take_sequence(object);
    PyErr_Format(PyExc_TypeError, "a column of texts is needed, not a buffer of format \"%s\": %s",
                 format.data(), "give NumPy's bytes, as in astype(\"S\")");
    return false;
  }
  size_ = static_cast<std::size_t>(buffer_.len / buffer_.itemsize);
  return true;
}

bool Texts::take_sequence(PyObject *object) {
  Ref list(PySequence_List(object));
  if (!list) return false;
  const Py_ssize_t count = PyList_Size(list.get());
  views_.reserve(static_cast<std::size_t>(count));
  for (Py_ssize_t i = 0; i < count; ++i) {
    PyObject *item = PyList_GetItem(list.get(), i);
    if (item == Py_None) {
      views_.emplace_back();
      continue;
    }
    Py_ssize_t bytes = 0;
    const char *text = nullptr;
    if (PyBytes_Check(item)) {
      char *data = nullptr;
      if (PyBytes_AsStringAndSize(item, &data, &bytes) == 0) text = data;
    } else if (PyUnicode_Check(item)) {
      text = PyUnicode_AsUTF8AndSize(item, &bytes);
    } else {
      const Ref type(PyObject_Str(reinterpret_cast<PyObject *>(Py_TYPE(item))));
      if (type) PyErr_Format(PyExc_TypeError, "value %zd: a str is needed, not %U", i, type.get());
    }
    if (text == nullptr) return false;
    views_.emplace_back(text, static_cast<std::size_t>(bytes));
  }
  size_ = views_.size();
  kept_.push_back(std::move(list));
  return true;
}

}  // namespace campotipo::python
