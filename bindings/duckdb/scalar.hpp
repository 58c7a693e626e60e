#pragma once

#include <string_view>
#include <vector>

#include "host.hpp"

// What scalar functions share: their registration, and arguments with nulls.
namespace campotipo::duckdb {

// An argument of a scalar function, as many values as the chunk has rows.
class Argument {
 public:
  Argument(duckdb_data_chunk chunk, idx_t at)
      : vector_(duckdb_data_chunk_get_vector(chunk, at)),
        data_(duckdb_vector_get_data(vector_)),
        valid_(duckdb_vector_get_validity(vector_)) {}

  bool is_null(idx_t row) const {
    return valid_ != nullptr && !duckdb_validity_row_is_valid(valid_, row);
  }

  template <class T>
  T value(idx_t row) const {
    return static_cast<const T *>(data_)[row];
  }

  std::string_view text(idx_t row) const {
    const auto &stored = static_cast<const duckdb_string_t *>(data_)[row];
    const std::uint32_t length = stored.value.inlined.length;
    return {length <= sizeof stored.value.inlined.inlined ? stored.value.inlined.inlined
                                                          : stored.value.pointer.ptr,
            length};
  }

 private:
  duckdb_vector vector_;
  void *data_;
  std::uint64_t *valid_;
};

// The values of a result.
class Result {
 public:
  explicit Result(duckdb_vector vector) : vector_(vector), data_(duckdb_vector_get_data(vector)) {}

  void null(idx_t row) {
    duckdb_vector_ensure_validity_writable(vector_);
    duckdb_validity_set_row_invalid(duckdb_vector_get_validity(vector_), row);
  }

  template <class T>
  void value(idx_t row, T value) {
    static_cast<T *>(data_)[row] = value;
  }

  void text(idx_t row, std::string_view text) {
    duckdb_vector_assign_string_element_len(vector_, row, text.data(), text.size());
  }

 private:
  duckdb_vector vector_;
  void *data_;
};

// The loop over the rows of a chunk; what `work` throws is the error of the query.
template <class Work>
void for_rows(duckdb_function_info info, duckdb_data_chunk chunk, Work work) {
  guarded([&](const char *what) { duckdb_scalar_function_set_error(info, what); },
          [&] {
            for (idx_t row = 0; row < duckdb_data_chunk_get_size(chunk); ++row) work(row);
          });
}

struct ScalarFunction {
  std::vector<duckdb_logical_type> parameters;  // freed by add
  duckdb_logical_type result;                   // the same
  duckdb_scalar_function_t run;
};

void add_scalar(duckdb_connection connection, const char *name, const ScalarFunction &told);

}  // namespace campotipo::duckdb
