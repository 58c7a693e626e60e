#pragma once

#include <string>
#include <vector>

#include "tasks.hpp"
#include "values.hpp"

namespace campotipo::duckdb {

// What one thread of a query reads: a part of a file after the other, into chunks of DuckDB.
class Scan {
 public:
  // columns: places in table.columns, in the order of the chunk's vectors.
  Scan(const Table &table, Tasks &tasks, const std::vector<idx_t> &columns);

  // Fills a chunk; one without rows is the end. Throws a Failure with the place of what is wrong.
  void fill(duckdb_data_chunk chunk);

 private:
  bool begin_task();
  void end_task();
  bool next_rows();
  bool next_block();
  void take(duckdb_data_chunk chunk, idx_t at, std::size_t count);
  void take_field(const Column &column, const Rows &rows, duckdb_vector vector, idx_t at);
  void take_faults(const Rows &rows, duckdb_vector vector, idx_t at);
  [[noreturn]] void refuse(const Column &column, std::uint64_t number) const;
  bool only_numbers() const;
  const std::string &file() const { return table_->paths.files[task_->file]; }

  const Table *table_;
  Tasks *tasks_;
  std::vector<idx_t> columns_;
  Decoder decoder_;
  bool tells_faults_ = false;
  bool counts_ = false;  // rows are known without a look at the records

  const Task *task_ = nullptr;
  Reader reader_;             // null in a task whose rows are counted
  std::uint64_t passed_ = 0;  // records of the task, of all kinds
  std::vector<const unsigned char *> records_;
  std::vector<std::uint64_t> numbers_;
  Rows rows_;  // of the kind, in the block
  std::size_t taken_ = 0;
  std::vector<std::string> fault_names_;
};

}  // namespace campotipo::duckdb
