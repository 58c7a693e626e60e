#include "table.hpp"

#include <algorithm>
#include <set>

namespace campotipo::duckdb {

namespace {

std::string lower(std::string name) {
  for (char &c : name) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
  return name;
}

// DuckDB takes names that differ in case alone for one.
void tell_apart(std::vector<Column> &columns) {
  std::set<std::string> known;
  for (const Column &column : columns) known.insert(lower(column.name));
  if (known.size() == columns.size()) return;
  std::set<std::string> taken;
  for (Column &column : columns) {
    const std::string name = column.name;
    for (int i = 1; !taken.insert(lower(column.name)).second; ++i) {
      do {
        column.name = name + "_" + std::to_string(i);
      } while (known.count(lower(column.name)) != 0 && ++i != 0);
    }
  }
}

duckdb_type plain_type(int physical) {
  switch (physical) {
    case CAMPOTIPO_BOOL:
      return DUCKDB_TYPE_BOOLEAN;
    case CAMPOTIPO_INT32:
      return DUCKDB_TYPE_INTEGER;
    case CAMPOTIPO_INT64:
      return DUCKDB_TYPE_BIGINT;
    case CAMPOTIPO_DATE32:
      return DUCKDB_TYPE_DATE;
    case CAMPOTIPO_TIME32:
      return DUCKDB_TYPE_TIME;
    default:
      return DUCKDB_TYPE_VARCHAR;
  }
}

}  // namespace

duckdb_logical_type type_of(const campotipo_field &field) {
  if (field.physical == CAMPOTIPO_DECIMAL128) {
    return duckdb_create_decimal_type(static_cast<std::uint8_t>(field.precision),
                                      static_cast<std::uint8_t>(field.scale));
  }
  return duckdb_create_logical_type(plain_type(field.physical));
}

duckdb_logical_type type_of(const Column &column) {
  if (column.source == Column::Source::kField) return type_of(column.field);
  return duckdb_create_logical_type(column.source == Column::Source::kRecord ? DUCKDB_TYPE_BIGINT
                                                                             : DUCKDB_TYPE_VARCHAR);
}

std::string type_name(const campotipo_field &field) {
  switch (field.physical) {
    case CAMPOTIPO_BOOL:
      return "BOOLEAN";
    case CAMPOTIPO_INT32:
      return "INTEGER";
    case CAMPOTIPO_INT64:
      return "BIGINT";
    case CAMPOTIPO_DATE32:
      return "DATE";
    case CAMPOTIPO_TIME32:
      return "TIME";
    case CAMPOTIPO_DECIMAL128:
      return "DECIMAL(" + std::to_string(field.precision) + "," + std::to_string(field.scale) + ")";
    default:
      return "VARCHAR";
  }
}

void lay_out(Table &table, const std::string &kind) {
  auto error = sized<campotipo_error>();
  checked(campotipo_layout_find_kind(table.layout.get(), kind.c_str(), &table.kind, &error), error);
  auto known = sized<campotipo_kind>();
  campotipo_layout_kind(table.layout.get(), table.kind, &known);
  table.kind_name = known.name;
  table.one_kind = campotipo_layout_kinds(table.layout.get()) == 1;
  for (std::size_t i = 0; i < known.fields; ++i) {
    auto field = sized<campotipo_field>();
    if (campotipo_layout_field(table.layout.get(), table.kind, i, table.wide, &field) !=
        CAMPOTIPO_OK) {
      throw Failure("wide := 'decimal128': a field of " + table.kind_name +
                    " has more than 38 decimals");
    }
    table.fields.push_back({Column::Source::kField, field.name, i, field});
  }
  table.columns.push_back({Column::Source::kRecord, "_record"});
  if (table.paths.several) table.columns.push_back({Column::Source::kFile, "_file"});
  table.columns.insert(table.columns.end(), table.fields.begin(), table.fields.end());
  if (table.faults_become_null) table.columns.push_back({Column::Source::kFault, "_fault"});
  tell_apart(table.columns);
}

}  // namespace campotipo::duckdb
