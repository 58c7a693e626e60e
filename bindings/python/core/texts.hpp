#pragma once

#include <campotipo-records/arrow.h>

#include <string_view>
#include <vector>

#include "python.hpp"

// Columns of texts as Python programs have them: what gives Arrow arrays or streams, NumPy's fixed
// bytes, lists.
namespace campotipo::python {

class Texts {
 public:
  Texts() = default;
  Texts(const Texts &) = delete;
  Texts &operator=(const Texts &) = delete;
  // With the lock.
  ~Texts();

  // With the lock; false and an exception where the object is no column of texts.
  bool take(PyObject *object);

  std::size_t size() const { return size_; }

  // Calls `each(text)` for every value in order; a text without data is null. Without the lock.
  template <class Each>
  void visit(Each each) const;

 private:
  enum Form { kNull, kOffsets32, kOffsets64, kViews, kFixed };

  struct Chunk {
    ArrowArray array;
    Form form;
    std::size_t width;
    const ArrowArray *words;  // of a dictionary, into which the array points
    Form word_form;
    std::size_t word_width;
    char index;  // its format
  };

  bool take_array(PyObject *pair);
  bool take_stream(PyObject *capsule);
  bool take_buffer(PyObject *object);
  bool take_sequence(PyObject *object);
  bool add(const ArrowSchema &schema, const ArrowArray &array);

  static bool form_of(std::string_view format, Form &form, std::size_t &width);
  static std::string_view text_at(const ArrowArray &array, Form form, std::size_t width,
                                  std::int64_t at);
  static std::int64_t index_at(const ArrowArray &array, char format, std::int64_t at);
  static bool is_null(const ArrowArray &array, std::int64_t at) {
    if (array.n_buffers == 0 || array.buffers[0] == nullptr) return false;
    return (static_cast<const std::uint8_t *>(array.buffers[0])[at / 8] >> at % 8 & 1) == 0;
  }

  std::size_t size_ = 0;
  std::vector<Chunk> chunks_;
  Py_buffer buffer_ = {};
  bool has_buffer_ = false;
  std::vector<Ref> kept_;
  std::vector<std::string_view> views_;  // of a list; a null one is None
};

template <class Each>
void Texts::visit(Each each) const {
  if (has_buffer_) {
    const char *at = static_cast<const char *>(buffer_.buf);
    const auto width = static_cast<std::size_t>(buffer_.itemsize);
    for (std::size_t i = 0; i < size_; ++i, at += width) {
      std::size_t length = width;  // as NumPy has it: NULs behind a text are none of it
      while (length > 0 && at[length - 1] == '\0') --length;
      each(std::string_view(at, length));
    }
    return;
  }
  for (const std::string_view &view : views_) each(view);
  for (const Chunk &chunk : chunks_) {
    for (std::int64_t i = 0; i < chunk.array.length; ++i) {
      const std::int64_t at = i + chunk.array.offset;
      if (chunk.form == kNull || is_null(chunk.array, at)) {
        each(std::string_view());
      } else if (chunk.words == nullptr) {
        each(text_at(chunk.array, chunk.form, chunk.width, at));
      } else {
        const std::int64_t word = index_at(chunk.array, chunk.index, at) + chunk.words->offset;
        each(is_null(*chunk.words, word)
                 ? std::string_view()
                 : text_at(*chunk.words, chunk.word_form, chunk.word_width, word));
      }
    }
  }
}

}  // namespace campotipo::python
