#pragma once

#include <memory>
#include <string_view>

#include "python.hpp"

namespace campotipo::python {

// Values of a result, one a row: truths or texts, some of them null.
class ColumnData {
 public:
  // Truths.
  explicit ColumnData(std::size_t size);
  // Texts of `width` bytes each or, where it is 0, of `room` bytes at most.
  ColumnData(std::size_t size, std::size_t width, std::size_t room);

  void add_null();
  void add(bool truth) { truths_[at_++] = truth ? 1 : 0; }
  void add(std::string_view text);

  std::size_t size() const { return size_; }
  std::size_t nulls() const { return nulls_; }
  bool texts() const { return truths_ == nullptr; }
  bool is_null(std::size_t at) const { return (validity_[at / 8] >> at % 8 & 1) == 0; }
  bool truth(std::size_t at) const { return truths_[at] != 0; }
  std::string_view text(std::size_t at) const;

  // As Arrow has them: the format, and the buffers behind the validity.
  const char *format() const;
  const void *validity() const { return nulls_ == 0 ? nullptr : validity_.get(); }
  const void *first();
  const void *second() const { return bytes_.get(); }

  // As NumPy has them: bytes a value, 0 where they differ; the first of them.
  std::size_t item_bytes() const { return texts() ? width_ : 1; }
  void *items() { return texts() ? static_cast<void *>(bytes_.get()) : truths_.get(); }

 private:
  std::size_t size_;
  std::size_t width_ = 0;
  std::size_t at_ = 0;
  std::size_t nulls_ = 0;
  std::size_t used_ = 0;
  std::unique_ptr<std::uint8_t[]> validity_;
  std::unique_ptr<std::uint8_t[]> truths_;
  std::unique_ptr<std::uint8_t[]> bits_;  // the truths, made when they are asked for
  std::unique_ptr<char[]> bytes_;
  std::unique_ptr<std::int32_t[]> ends_;  // one more than values, the first 0
  std::unique_ptr<std::int64_t[]> long_ends_;
};

// The type of the results; to be made once for a module.
PyObject *make_column_type(PyObject *module);

PyObject *column(PyObject *type, std::shared_ptr<ColumnData> data);

}  // namespace campotipo::python
