#pragma once

#include <memory>
#include <string_view>
#include <vector>

#include "python.hpp"

namespace campotipo::python {

// Values of a result, one a row: truths, texts or lists of texts, some of them null.
class ColumnData {
 public:
  // Truths.
  explicit ColumnData(std::size_t size);
  // Texts of `width` bytes each or, where it is 0, of `room` bytes at most.
  ColumnData(std::size_t size, std::size_t width, std::size_t room);
  // Lists.
  struct OfLists {};
  ColumnData(std::size_t size, OfLists);

  void add_null();
  void add(bool truth) { truths_[at_++] = truth ? 1 : 0; }
  void add(std::string_view text);
  // An item of the list that add_list ends.
  void add_item(std::string_view text);
  void add_list();

  std::size_t size() const { return size_; }
  std::size_t nulls() const { return nulls_; }
  bool texts() const { return bytes_ != nullptr; }
  bool lists() const { return !item_ends_.empty(); }
  bool is_null(std::size_t at) const { return (validity_[at / 8] >> at % 8 & 1) == 0; }
  bool truth(std::size_t at) const { return truths_[at] != 0; }
  std::string_view text(std::size_t at) const;
  // Of the lists, one behind the other: a list has those from its end to that of the next.
  std::string_view item(std::size_t at) const;
  std::size_t list_end(std::size_t at) const { return static_cast<std::size_t>(ends_[at]); }

  // As Arrow has them: the format, and the buffers behind the validity.
  const char *format() const;
  const void *validity() const { return nulls_ == 0 ? nullptr : validity_.get(); }
  const void *first();
  const void *second() const { return bytes_.get(); }

  const std::int32_t *item_ends() const { return item_ends_.data(); }
  const char *item_text() const { return item_text_.data(); }
  std::size_t items_size() const { return item_ends_.size() - 1; }

  // As NumPy has them: bytes a value, 0 where they differ; the first of them.
  std::size_t item_bytes() const { return truths_ != nullptr ? 1 : width_; }
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
  std::vector<std::int32_t> item_ends_;
  std::string item_text_;
};

// The type of the results; to be made once for a module.
PyObject *make_column_type(PyObject *module);

PyObject *column(PyObject *type, std::shared_ptr<ColumnData> data);

}  // namespace campotipo::python
