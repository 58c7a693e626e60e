#pragma once

#include <string>
#include <vector>

#include "columns/kernels.hpp"
#include "columns/physical.hpp"
#include "layout/layout.hpp"

namespace campotipo::records {

struct ColumnOptions {
  std::string kind;                 // empty: the only one, or the main one
  std::vector<std::string> fields;  // by their names in a flat table; none: all
  Wide wide = Wide::kString;
  Times times = Times::kSeconds;
  bool faults_become_null = false;  // else they end the reading
  std::string file;                 // for the column "_file"; empty: there is none
  bool record_numbers = true;       // the column "_record", where no fields are named
};

// A column of a table: a field, or what is told of the record beside its fields.
struct PlannedColumn {
  enum class Source : std::uint8_t { kField, kRecord, kFile, kFault };

  std::string name;
  Source source = Source::kField;
  const Field *field = nullptr;
  ColumnType type;
  Decode decode = nullptr;
};

// What one kind of record becomes as a table. The layout has to outlive it.
struct ColumnPlan {
  const Layout *layout = nullptr;
  const RecordType *kind = nullptr;
  std::vector<PlannedColumn> columns;
  bool faults_become_null = false;
  std::string file;
};

// Throws an Error for a kind or field that is not there, or where the kind is not told.
ColumnPlan column_plan(const Layout &layout, const ColumnOptions &options);

// The kind that a name stands for: where it is empty, the only one or the main one.
const RecordType &kind_for(const Layout &layout, const std::string &name);

}  // namespace campotipo::records
