#pragma once

#include <string>
#include <vector>

#include "handles.hpp"
#include "paths.hpp"

// What a call of read_campotipo asks for: files, the kind of record, and the columns they become.
namespace campotipo::duckdb {

struct Column {
  enum class Source { kRecord, kFile, kFault, kField };

  Source source;
  std::string name;
  std::size_t number = 0;      // of the field in the kind
  campotipo_field field = {};  // its names live as long as the layout
};

struct Table {
  Paths paths;
  Layout layout;
  std::size_t kind = 0;
  std::string kind_name;
  bool one_kind = false;  // the layout knows no other
  int wide = CAMPOTIPO_WIDE_STRING;
  bool faults_become_null = false;
  bool skip = false;
  std::uint64_t first = 1;
  std::uint64_t count = 0;  // 0: to the end
  std::vector<Column> columns;
  std::vector<Column> fields;  // all of the kind, for the column that tells their faults
};

// Fills in the kind by its name, which may be empty, and the columns.
void lay_out(Table &table, const std::string &kind);

// A width and type of DuckDB for a field. The caller frees it.
duckdb_logical_type type_of(const campotipo_field &field);
duckdb_logical_type type_of(const Column &column);

// As SQL writes it: "DECIMAL(13,2)".
std::string type_name(const campotipo_field &field);

}  // namespace campotipo::duckdb
