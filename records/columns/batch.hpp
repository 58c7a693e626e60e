#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "columns/plan.hpp"
#include "columns/pool.hpp"

namespace campotipo::records {

// Memory that grows by doubling and is never cleared; a pool, where there is one, gets it back.
class Bytes {
 public:
  explicit Bytes(std::shared_ptr<Pool> pool = nullptr) : pool_(std::move(pool)) {}
  Bytes(Bytes &&other) noexcept
      : pool_(std::move(other.pool_)), block_(std::exchange(other.block_, {})) {}
  Bytes &operator=(Bytes &&other) noexcept {
    std::swap(pool_, other.pool_);
    std::swap(block_, other.block_);
    return *this;
  }
  ~Bytes() {
    if (block_.data != nullptr && pool_ != nullptr) {
      pool_->give(block_);
    } else {
      std::free(block_.data);
    }
  }

  // At least so many bytes from the start.
  char *reserve(std::size_t bytes);
  char *data() const { return block_.data; }
  std::size_t capacity() const { return block_.bytes; }

 private:
  std::shared_ptr<Pool> pool_;
  Pool::Block block_;
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
  ColumnValues() = default;
  explicit ColumnValues(const std::shared_ptr<Pool> &pool)
      : values(pool), text(pool), validity(pool) {}

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
  // What a column of the last batch took, so that the next begins with as much.
  struct Sizes {
    std::size_t values = 0;
    std::size_t text = 0;
    std::size_t validity = 0;
  };

  void begin();
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
  std::shared_ptr<Pool> pool_ = std::make_shared<Pool>();
  std::vector<ColumnValues> columns_;
  std::vector<Sizes> last_;
  std::vector<std::uint8_t> states_;
  std::vector<std::uint8_t> flags_;
  std::vector<std::string> fault_names_;
};

}  // namespace campotipo::records
