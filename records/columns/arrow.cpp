#include "columns/arrow.hpp"

#include <array>
#include <cstring>
#include <memory>
#include <string>

namespace campotipo::records {

namespace {

// What a structure owns. Its children are released with it unless they were moved out before, which
// the interface allows: a moved structure has no release callback.
struct OwnedSchema {
  std::string format;
  std::string name;
  std::vector<ArrowSchema> children;
  std::vector<ArrowSchema *> pointers;
};

struct OwnedArray {
  ColumnValues values;
  std::array<const void *, 3> buffers = {};
  std::vector<ArrowArray> children;
  std::vector<ArrowArray *> pointers;
};

template <class Owned, class Structure>
void release(Structure *structure) {
  auto *owned = static_cast<Owned *>(structure->private_data);
  for (Structure *child : owned->pointers) {
    if (child->release != nullptr) child->release(child);
  }
  structure->release = nullptr;
  delete owned;
}

template <class Owned, class Structure>
void finish(std::unique_ptr<Owned> owned, Structure *out) {
  for (Structure &child : owned->children) owned->pointers.push_back(&child);
  out->n_children = static_cast<std::int64_t>(owned->children.size());
  out->children = owned->pointers.empty() ? nullptr : owned->pointers.data();
  out->release = release<Owned, Structure>;
  out->private_data = owned.release();
}

// Children of an owner that comes to nothing are released with it.
template <class Owned>
struct Guard {
  explicit Guard(std::size_t children) : owned(std::make_unique<Owned>()) {
    owned->children.resize(children);
    owned->pointers.reserve(children);
  }
  ~Guard() {
    if (owned == nullptr) return;
    for (auto &child : owned->children) {
      if (child.release != nullptr) child.release(&child);
    }
  }
  Guard(const Guard &) = delete;
  Guard &operator=(const Guard &) = delete;

  std::unique_ptr<Owned> owned;
};

void make_schema(std::string format, std::string name, ArrowSchema *out) {
  auto owned = std::make_unique<OwnedSchema>();
  owned->format = std::move(format);
  owned->name = std::move(name);
  *out = {};
  out->format = owned->format.c_str();
  out->name = owned->name.c_str();
  out->flags = ARROW_FLAG_NULLABLE;
  finish(std::move(owned), out);
}

void make_array(const ColumnType &type, ColumnValues values, std::size_t rows, ArrowArray *out) {
  auto owned = std::make_unique<OwnedArray>();
  owned->values = std::move(values);
  ColumnValues &mine = owned->values;
  const bool text = type.physical == Physical::kUtf8;
  // A buffer is there even where it holds nothing.
  if (text && rows == 0) *reinterpret_cast<std::int32_t *>(mine.values.reserve(4)) = 0;
  mine.values.reserve(8);
  if (text) mine.text.reserve(8);
  owned->buffers = {mine.nulls == 0 ? nullptr : mine.validity.data(), mine.values.data(),
                    mine.text.data()};
  *out = {};
  out->length = static_cast<std::int64_t>(rows);
  out->null_count = mine.nulls;
  out->n_buffers = text ? 3 : 2;
  out->buffers = owned->buffers.data();
  finish(std::move(owned), out);
}

std::vector<TableColumn> columns_of(const ColumnPlan &plan) {
  std::vector<TableColumn> columns;
  for (const PlannedColumn &column : plan.columns) columns.push_back({column.name, column.type});
  return columns;
}

}  // namespace

void export_schema(const std::vector<TableColumn> &columns, ArrowSchema *out) {
  Guard<OwnedSchema> table(columns.size());
  for (std::size_t i = 0; i < columns.size(); ++i) {
    make_schema(columns[i].type.arrow(), columns[i].name, &table.owned->children[i]);
  }
  table.owned->format = "+s";
  *out = {};
  out->format = table.owned->format.c_str();
  out->name = table.owned->name.c_str();
  finish(std::move(table.owned), out);
}

void export_schema(const ColumnPlan &plan, ArrowSchema *out) {
  export_schema(columns_of(plan), out);
}

void export_table(const std::vector<TableColumn> &columns, std::vector<ColumnValues> values,
                  std::size_t rows, ArrowArray *out) {
  Guard<OwnedArray> table(columns.size());
  values.resize(columns.size());
  for (std::size_t i = 0; i < columns.size(); ++i) {
    make_array(columns[i].type, std::move(values[i]), rows, &table.owned->children[i]);
  }
  *out = {};
  out->length = static_cast<std::int64_t>(rows);
  out->n_buffers = 1;
  out->buffers = table.owned->buffers.data();
  finish(std::move(table.owned), out);
}

void export_batch(Batch &batch, ArrowArray *out) {
  export_table(columns_of(batch.plan()), std::move(batch.columns()), batch.rows(), out);
  batch.clear();
}

namespace {

// The value behind the last row; bits are there from the first null on.
void append_validity(ColumnValues &values, std::size_t rows, bool valid) {
  if (valid && values.nulls == 0) return;
  char *bits = values.validity.reserve(rows / 8 + 1);
  if (values.nulls == 0) std::memset(bits, 0xFF, rows / 8 + 1);
  const auto bit = static_cast<char>(1 << rows % 8);
  if (rows % 8 == 0) bits[rows / 8] = 0;
  bits[rows / 8] = static_cast<char>(valid ? bits[rows / 8] | bit : bits[rows / 8] & ~bit);
  values.nulls += valid ? 0 : 1;
}

}  // namespace

void append_number(ColumnValues &values, std::size_t rows, std::optional<std::int64_t> number) {
  const std::int64_t value = number.value_or(0);
  std::memcpy(values.values.reserve(8 * (rows + 1)) + 8 * rows, &value, sizeof value);
  append_validity(values, rows, number.has_value());
}

void append_text(ColumnValues &values, std::size_t rows, std::optional<std::string_view> text) {
  auto *ends = reinterpret_cast<std::int32_t *>(values.values.reserve(4 * (rows + 2)));
  if (rows == 0) ends[0] = 0;
  if (text && !text->empty()) {
    std::memcpy(values.text.reserve(values.text_size + text->size()) + values.text_size,
                text->data(), text->size());
    values.text_size += text->size();
  }
  ends[rows + 1] = static_cast<std::int32_t>(values.text_size);
  append_validity(values, rows, text.has_value());
}

}  // namespace campotipo::records
