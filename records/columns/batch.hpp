#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "columns/plan.hpp"

namespace campotipo::records {

// Memory that a C consumer frees: grown by doubling, never cleared.
class Bytes {
 public:
  // At least so many bytes from the start.
  char *reserve(std::size_t bytes);
  char *data() const { return data_.get(); }
  char *release() { return data_.release(); }

 private:
  struct Free {
    void operator()(char *data) const { std::free(data); }
  };
  std::unique_ptr<char, Free> data_;
  std::size_t capacity_ = 0;
};

// Records of one kind, all of one block.
struct RecordRows {
  const unsigned char *const *records = nullptr;
  const std::uint64_t *numbers = nullptr;  // in the file, from 1
  std::size_t count = 0;
  const unsigned char *base = nullptr;  // the byte that stands at `offset` in the file
  std::uint64_t offset = 0;
};

// The values of a column, as Arrow lays them out.
struct ColumnValues {
  Bytes values;    // bits of a bool, ends of texts, else values
  Bytes text;      // of texts
  Bytes validity;  // bits, where nulls is not 0
  std::size_t text_size = 0;
  std::int64_t nulls = 0;
};

// Rows of a table, gathered block by block.
class Batch {
 public:
  // name: the file, as messages name it.
  Batch(const ColumnPlan &plan, std::string name) : plan_(&plan), name_(std::move(name)) {}

  // Throws an Error, with the place, for a value that is invalid or too large, unless the plan makes
  // it a null.
  void append(const RecordRows &rows);

  std::size_t rows() const { return rows_; }

  // A text column is near the end of what offsets of 4 bytes can tell.
  bool full() const;

  std::vector<ColumnValues> &columns() { return columns_; }
  const ColumnPlan &plan() const { return *plan_; }
  const std::string &name() const { return name_; }

  void clear();

 private:
  void append_field(std::size_t column, const RecordRows &rows);
  void append_numbers(ColumnValues &values, const RecordRows &rows);
  void append_texts(ColumnValues &values, const std::vector<std::string> &texts,
                    bool empty_is_null);
  void look_at_states(const PlannedColumn &column, const RecordRows &rows);
  void append_validity(ColumnValues &values, const std::uint8_t *valid, std::size_t count);
  [[noreturn]] void refuse(const PlannedColumn &column, const RecordRows &rows,
                           std::size_t i) const;

  const ColumnPlan *plan_;
  std::string name_;
  std::size_t rows_ = 0;
  std::vector<ColumnValues> columns_;
  std::vector<std::uint8_t> states_;
  std::vector<std::uint8_t> flags_;
  std::vector<std::string> fault_names_;
  bool faults_ = false;
};

}  // namespace campotipo::records
