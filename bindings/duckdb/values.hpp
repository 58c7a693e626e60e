#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "table.hpp"

// Values of fields into vectors of DuckDB.
namespace campotipo::duckdb {

// Records of one kind, of one block.
struct Rows {
  const unsigned char *const *records = nullptr;
  const std::uint64_t *numbers = nullptr;
  std::size_t count = 0;
};

// Memory between the library and DuckDB, of one thread.
class Decoder {
 public:
  explicit Decoder(const Table &table) : table_(&table) {}

  // The values of a field from row `at` of a vector on; without a vector they are looked at alone.
  // Gives the number of the first row at fault plus 1, and 0 where there is none.
  std::size_t decode(const Column &column, const Rows &rows, duckdb_vector vector, idx_t at);

  // After a call of decode: whether the value of a row was at fault. Only where faults become null.
  bool at_fault(std::size_t row) const { return (faults_[row / 8] >> row % 8 & 1) != 0; }
  bool any_fault() const { return nulls_ != 0; }

 private:
  void prepare(const Column &column, const Rows &rows, void *values);
  void take_validity(std::size_t count, duckdb_vector vector, idx_t at) const;
  void take_texts(const Column &column, std::size_t count, duckdb_vector vector, idx_t at);

  const Table *table_;
  std::vector<std::uint8_t> validity_;
  std::vector<std::uint8_t> faults_;
  std::vector<std::int32_t> offsets_;
  std::unique_ptr<char[]> text_;
  std::size_t room_ = 0;
  std::unique_ptr<char[]> values_;  // those that DuckDB keeps in another way
  std::size_t values_room_ = 0;
  std::size_t nulls_ = 0;
};

// Texts of up to this many bytes stand in DuckDB's vector itself.
constexpr std::size_t kInline = 12;

// A text for every row.
void put_text(const std::string &text, std::size_t count, duckdb_vector vector, idx_t at);

}  // namespace campotipo::duckdb
