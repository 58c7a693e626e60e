#include "scan.hpp"

#include <algorithm>
#include <cstring>

namespace campotipo::duckdb {

namespace {

// Numbers of records that are made up a chunk at a time.
constexpr std::size_t kNumbers = 2048;

}  // namespace

Scan::Scan(const Table &table, Tasks &tasks, const std::vector<idx_t> &columns)
    : table_(&table), tasks_(&tasks), columns_(columns), decoder_(table) {
  for (const idx_t at : columns_) {
    tells_faults_ = tells_faults_ || table.columns[at].source == Column::Source::kFault;
  }
  counts_ = only_numbers() && is_plain(table);
}

bool Scan::only_numbers() const {
  return std::all_of(columns_.begin(), columns_.end(), [&](idx_t at) {
    const Column::Source source = table_->columns[at].source;
    return source == Column::Source::kRecord || source == Column::Source::kFile;
  });
}

bool Scan::begin_task() {
  task_ = tasks_->next();
  if (task_ == nullptr) return false;
  passed_ = 0;
  if (counts_ && task_->counted) return true;
  const campotipo_input input = input_of(file());
  campotipo_reader *made = nullptr;
  auto error = sized<campotipo_error>();
  checked(campotipo_reader_open(table_->layout.get(), &input, &task_->range,
                                table_->skip ? CAMPOTIPO_SKIP : 0, &made, &error),
          error);
  reader_.reset(made);
  return true;
}

void Scan::end_task() {
  if (reader_ != nullptr && task_->counted) {
    passed_ += campotipo_reader_skipped(reader_.get());
    if (passed_ < task_->range.count) {
      throw Failure(file() + ": ends in front of record " +
                    std::to_string(task_->range.first + task_->range.count - 1) +
                    ", which was there when the query began");
    }
  }
  reader_.reset();
  task_ = nullptr;
}

bool Scan::next_block() {
  auto block = sized<campotipo_block>();
  auto error = sized<campotipo_error>();
  if (checked(campotipo_reader_next(reader_.get(), &block, &error), error) == CAMPOTIPO_END) {
    return false;
  }
  passed_ += block.count;
  if (table_->one_kind) {
    rows_ = {block.records, block.numbers, block.count};
    return true;
  }
  records_.clear();
  numbers_.clear();
  for (std::size_t i = 0; i < block.count; ++i) {
    if (block.kinds[i] != table_->kind) continue;
    records_.push_back(block.records[i]);
    numbers_.push_back(block.numbers[i]);
  }
  rows_ = {records_.data(), numbers_.data(), records_.size()};
  return true;
}

// More rows that can be taken; false at the end of the files.
bool Scan::next_rows() {
  rows_ = {};
  taken_ = 0;
  while (rows_.count == 0) {
    if (task_ == nullptr && !begin_task()) return false;
    if (reader_ != nullptr) {
      if (!next_block()) end_task();
      continue;
    }
    const std::uint64_t left = task_->range.count - passed_;
    const std::size_t count = static_cast<std::size_t>(std::min<std::uint64_t>(left, kNumbers));
    numbers_.resize(count);
    for (std::size_t i = 0; i < count; ++i) numbers_[i] = task_->range.first + passed_ + i;
    rows_ = {nullptr, numbers_.data(), count};
    passed_ += count;
    if (count == 0) end_task();
  }
  return true;
}

void Scan::fill(duckdb_data_chunk chunk) {
  const idx_t most = duckdb_vector_size();
  idx_t filled = 0;
  while (filled < most) {
    if (taken_ == rows_.count && !next_rows()) break;
    const std::size_t count = std::min<std::size_t>(rows_.count - taken_, most - filled);
    take(chunk, filled, count);
    taken_ += count;
    filled += count;
  }
  duckdb_data_chunk_set_size(chunk, filled);
}

void Scan::take(duckdb_data_chunk chunk, idx_t at, std::size_t count) {
  const Rows rows = {rows_.records + (rows_.records != nullptr ? taken_ : 0),
                     rows_.numbers + taken_, count};
  if (tells_faults_) fault_names_.assign(count, "");
  duckdb_vector faults = nullptr;
  std::vector<duckdb_vector> vectors(tells_faults_ ? table_->fields.size() : 0);
  for (idx_t i = 0; i < columns_.size(); ++i) {
    const Column &column = table_->columns[columns_[i]];
    duckdb_vector vector = duckdb_data_chunk_get_vector(chunk, i);
    switch (column.source) {
      case Column::Source::kRecord:
        std::memcpy(static_cast<std::int64_t *>(duckdb_vector_get_data(vector)) + at, rows.numbers,
                    count * sizeof(std::int64_t));
        break;
      case Column::Source::kFile:
        put_text(file(), count, vector, at);
        break;
      case Column::Source::kFault:
        faults = vector;
        break;
      case Column::Source::kField:
        if (tells_faults_) {
          vectors[column.number] = vector;
        } else {
          take_field(column, rows, vector, at);
        }
        break;
    }
  }
  if (!tells_faults_) return;
  // In the order of the fields, those that are not asked for too.
  for (std::size_t i = 0; i < table_->fields.size(); ++i) {
    take_field(table_->fields[i], rows, vectors[i], at);
  }
  take_faults(rows, faults, at);
}

void Scan::take_field(const Column &column, const Rows &rows, duckdb_vector vector, idx_t at) {
  const std::size_t fault = decoder_.decode(column, rows, vector, at);
  if (fault != 0) refuse(column, rows.numbers[fault - 1]);
  if (!tells_faults_ || !decoder_.any_fault()) return;
  for (std::size_t i = 0; i < rows.count; ++i) {
    if (!decoder_.at_fault(i)) continue;
    fault_names_[i] += (fault_names_[i].empty() ? "" : ",") + column.name;
  }
}

void Scan::take_faults(const Rows &rows, duckdb_vector vector, idx_t at) {
  duckdb_vector_ensure_validity_writable(vector);
  std::uint64_t *valid = duckdb_vector_get_validity(vector);
  for (std::size_t i = 0; i < rows.count; ++i) {
    const std::string &names = fault_names_[i];
    duckdb_vector_assign_string_element_len(vector, at + i, names.data(), names.size());
    if (names.empty()) duckdb_validity_set_row_invalid(valid, at + i);
  }
}

// The stream of the records library knows the words: the record is read once more, by it.
void Scan::refuse(const Column &column, std::uint64_t number) const {
  const campotipo_input input = input_of(file());
  auto range = sized<campotipo_range>();
  range.first = number;
  range.count = 1;
  auto error = sized<campotipo_error>();
  campotipo_reader *made = nullptr;
  checked(
      campotipo_reader_open(table_->layout.get(), &input, &range, CAMPOTIPO_SKIP, &made, &error),
      error);
  Reader reader(made);
  const char *name = column.field.name;
  auto options = sized<campotipo_stream_options>();
  options.kind = table_->kind_name.c_str();
  options.fields = &name;
  options.n_fields = 1;
  options.wide = table_->wide;
  ArrowArrayStream stream = {};
  checked(campotipo_stream(made, &options, &stream, &error), error);
  static_cast<void>(reader.release());
  ArrowArray array = {};
  const int result = stream.get_next(&stream, &array);
  std::string what = file() + ": record " + std::to_string(number) + ": field " +
                     table_->kind_name + "." + name + ": invalid, or too large for the column";
  if (result != 0 && stream.get_last_error(&stream) != nullptr) {
    what = stream.get_last_error(&stream);
  }
  if (array.release != nullptr) array.release(&array);
  stream.release(&stream);
  throw Failure(what);
}

}  // namespace campotipo::duckdb
