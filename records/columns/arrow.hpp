#pragma once

#include <campotipo-records/arrow.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "columns/batch.hpp"

// Batches and their types as the Arrow C data interface hands them over.
namespace campotipo::records {

struct TableColumn {
  std::string name;
  ColumnType type;
};

// Fills a structure that the receiver releases. Throws std::bad_alloc, with nothing left behind.
void export_schema(const std::vector<TableColumn> &columns, ArrowSchema *out);
void export_schema(const ColumnPlan &plan, ArrowSchema *out);

// The same for values, which are given away.
void export_table(const std::vector<TableColumn> &columns, std::vector<ColumnValues> values,
                  std::size_t rows, ArrowArray *out);
void export_batch(Batch &batch, ArrowArray *out);

// Puts a value behind the `rows` that a column has: null where there is none.
void append_number(ColumnValues &values, std::size_t rows, std::optional<std::int64_t> number);
void append_text(ColumnValues &values, std::size_t rows, std::optional<std::string_view> text);

}  // namespace campotipo::records
