#include "tasks.hpp"

#include <sys/stat.h>

#include <algorithm>

#include "face/objects.hpp"

namespace campotipo::duckdb {

namespace {

// Bytes of a part: enough that opening it costs nothing beside reading it, and little enough that
// all threads end at about the same time.
constexpr std::uint64_t kLeastPart = 2U << 20;
constexpr std::uint64_t kMostPart = 16U << 20;
constexpr std::uint64_t kParts = 32;

std::uint64_t size_of(const std::string &path) {
  struct stat state = {};
  if (stat(path.c_str(), &state) != 0 || !S_ISREG(state.st_mode)) return 0;
  return static_cast<std::uint64_t>(state.st_size);
}

// What a query's own range leaves of a part; false where that is nothing.
bool clip(campotipo_range &range, std::uint64_t first, std::uint64_t count) {
  if (range.count != 0 && range.first + range.count <= first) return false;
  if (range.first < first) {
    if (range.count != 0) range.count -= first - range.first;
    range.first = first;
    range.byte = 0;
  }
  if (count == 0) return true;
  const std::uint64_t passed = range.first - first;
  if (passed >= count) return false;
  if (range.count == 0 || range.count > count - passed) range.count = count - passed;
  return true;
}

}  // namespace

bool is_plain(const Table &table) { return table.layout->layout->plain(); }

Tasks::Tasks(const Table &table) {
  for (std::size_t i = 0; i < table.paths.files.size(); ++i) add(table, i);
}

void Tasks::add(const Table &table, std::size_t file) {
  const std::uint64_t size = size_of(table.paths.files[file]);
  const std::uint64_t part = std::clamp(size / kParts, kLeastPart, kMostPart);
  if (size > part) return add_parts(table, file, static_cast<std::size_t>(size / part + 1));
  Task task = {file, sized<campotipo_range>(), false};
  task.range.first = table.first;
  task.range.count = table.count;
  tasks_.push_back(task);
}

void Tasks::add_parts(const Table &table, std::size_t file, std::size_t parts) {
  std::vector<campotipo_range> ranges(parts, sized<campotipo_range>());
  const campotipo_input input = input_of(table.paths.files[file]);
  auto error = sized<campotipo_error>();
  std::size_t made = 0;
  checked(campotipo_splits(table.layout.get(), &input, parts, ranges.data(), &made, &error), error);
  for (std::size_t i = 0; i < made; ++i) {
    const bool counted = ranges[i].count != 0;
    if (clip(ranges[i], table.first, table.count)) tasks_.push_back({file, ranges[i], counted});
  }
}

std::uint64_t likely_rows(const Table &table) {
  std::uint64_t bytes = 0;
  for (const std::string &file : table.paths.files) bytes += size_of(file);
  auto kind = sized<campotipo_kind>();
  campotipo_layout_kind(table.layout.get(), table.kind, &kind);
  const std::uint64_t rows = bytes / std::max<std::size_t>(kind.bytes, 1);
  if (table.count == 0) return rows;
  return std::min(rows, table.count * table.paths.files.size());
}

}  // namespace campotipo::duckdb
