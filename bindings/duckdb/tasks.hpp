#pragma once

#include <atomic>
#include <vector>

#include "table.hpp"

// The parts of the files of a query that its threads take one after the other.
namespace campotipo::duckdb {

struct Task {
  std::size_t file = 0;
  campotipo_range range = {};
  bool counted = false;  // the file was looked at: range.count records were there
};

class Tasks {
 public:
  // Throws a Failure for a file that cannot be opened.
  explicit Tasks(const Table &table);

  std::size_t count() const { return tasks_.size(); }

  // Null behind the last.
  const Task *next() {
    const std::size_t at = next_.fetch_add(1, std::memory_order_relaxed);
    return at < tasks_.size() ? &tasks_[at] : nullptr;
  }

 private:
  void add(const Table &table, std::size_t file);
  void add_parts(const Table &table, std::size_t file, std::size_t parts);

  std::vector<Task> tasks_;
  std::atomic<std::size_t> next_ = 0;
};

// How many rows the files may hold, from their sizes.
std::uint64_t likely_rows(const Table &table);

// Whether numbers and places of records are arithmetic: one kind, one length, nothing in between.
bool is_plain(const Table &table);

}  // namespace campotipo::duckdb
