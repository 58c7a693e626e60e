// read_campotipo: records of files as rows.
#include <algorithm>
#include <memory>

#include "scan.hpp"

namespace campotipo::duckdb {

namespace {

std::vector<std::string> paths_of(const Value &value) {
  std::vector<std::string> paths;
  duckdb_logical_type type = duckdb_get_value_type(value.get());  // the value's own
  if (!value.given()) throw Failure("read_campotipo: the path is null");
  if (duckdb_get_type_id(type) == DUCKDB_TYPE_VARCHAR) return {value.text()};
  if (duckdb_get_type_id(type) != DUCKDB_TYPE_LIST) {
    throw Failure("read_campotipo: the path is neither a text nor a list of texts");
  }
  for (idx_t i = 0; i < duckdb_get_list_size(value.get()); ++i) {
    const Value item(duckdb_get_list_child(value.get(), i));
    if (!item.given()) throw Failure("read_campotipo: a path of the list is null");
    paths.push_back(item.text());
  }
  return paths;
}

// A named argument as text; "" where it is not given or null.
std::string argument(duckdb_bind_info info, const char *name) {
  const Value value(duckdb_bind_get_named_parameter(info, name));
  return value.given() ? value.text() : "";
}

std::uint64_t number(duckdb_bind_info info, const char *name, std::uint64_t missing) {
  const Value value(duckdb_bind_get_named_parameter(info, name));
  if (!value.given()) return missing;
  const std::int64_t told = duckdb_get_int64(value.get());
  if (told < 1) throw Failure(std::string("read_campotipo: ") + name + " is 1 or more");
  return static_cast<std::uint64_t>(told);
}

// Whether an argument is the second of two words; neither where it is not given.
bool is_second(duckdb_bind_info info, const char *name, const char *first, const char *second) {
  const std::string word = argument(info, name);
  if (word.empty() || word == first) return false;
  if (word == second) return true;
  throw Failure(std::string("read_campotipo: ") + name + " is '" + first + "' or '" + second +
                "', not '" + word + "'");
}

Layout layout_for(const Paths &paths, const std::string &place) {
  if (!place.empty()) return open_layout(place);
  const auto beside = layout_beside(paths.files[0]);
  if (beside) return open_layout(*beside);
  throw Failure(paths.files[0] +
                ": which layout? Tell it as layout := 'NAME or FILE.toml', or put it beside the "
                "file as " +
                paths.files[0] + ".toml");
}

std::unique_ptr<Table> table_of(duckdb_bind_info info) {
  auto table = std::make_unique<Table>();
  const Value path(duckdb_bind_get_parameter(info, 0));
  const std::vector<std::string> told = paths_of(path);
  const bool one = duckdb_get_type_id(duckdb_get_value_type(path.get())) == DUCKDB_TYPE_VARCHAR;
  table->paths = one ? expand(told[0]) : expand(told);
  for (const std::string &file : table->paths.files) refuse_compressed(file);
  table->layout = layout_for(table->paths, argument(info, "layout"));
  table->first = number(info, "first", 1);
  table->count = number(info, "count", 0);
  table->faults_become_null = is_second(info, "faults", "error", "null");
  table->wide = is_second(info, "wide", "string", "decimal128") ? CAMPOTIPO_WIDE_DECIMAL128
                                                                : CAMPOTIPO_WIDE_STRING;
  const Value skip(duckdb_bind_get_named_parameter(info, "skip"));
  table->skip = skip.given() && duckdb_get_bool(skip.get());
  lay_out(*table, argument(info, "kind"));
  return table;
}

void bind(duckdb_bind_info info) {
  guarded([&](const char *what) { duckdb_bind_set_error(info, what); },
          [&] {
            auto table = table_of(info);
            for (const Column &column : table->columns) {
              duckdb_bind_add_result_column(info, column.name.c_str(), Type(type_of(column)).get());
            }
            duckdb_bind_set_cardinality(info, likely_rows(*table), false);
            duckdb_bind_set_bind_data(info, table.release(), destroy<Table>);
          });
}

// What the threads of a query share.
struct Query {
  explicit Query(const Table &table) : tasks(table) {}
  Tasks tasks;
  std::vector<idx_t> columns;
};

void init(duckdb_init_info info) {
  guarded([&](const char *what) { duckdb_init_set_error(info, what); },
          [&] {
            const auto &table = *static_cast<const Table *>(duckdb_init_get_bind_data(info));
            auto query = std::make_unique<Query>(table);
            for (idx_t i = 0; i < duckdb_init_get_column_count(info); ++i) {
              // A column that is none of ours stands for the row itself.
              const idx_t column = duckdb_init_get_column_index(info, i);
              query->columns.push_back(column < table.columns.size() ? column : 0);
            }
            duckdb_init_set_max_threads(info, std::max<idx_t>(1, query->tasks.count()));
            duckdb_init_set_init_data(info, query.release(), destroy<Query>);
          });
}

// A thread's own state is made by its first call: DuckDB hands no global one to the local init.
void local_init(duckdb_init_info info) {
  guarded([&](const char *what) { duckdb_init_set_error(info, what); },
          [&] {
            duckdb_init_set_init_data(info, new std::unique_ptr<Scan>,
                                      destroy<std::unique_ptr<Scan>>);
          });
}

void read(duckdb_function_info info, duckdb_data_chunk chunk) {
  guarded(
      [&](const char *what) {
        duckdb_data_chunk_set_size(chunk, 0);
        duckdb_function_set_error(info, what);
      },
      [&] {
        auto &query = *static_cast<Query *>(duckdb_function_get_init_data(info));
        auto &scan =
            *static_cast<std::unique_ptr<Scan> *>(duckdb_function_get_local_init_data(info));
        if (scan == nullptr) {
          const auto &table = *static_cast<const Table *>(duckdb_function_get_bind_data(info));
          scan = std::make_unique<Scan>(table, query.tasks, query.columns);
        }
        scan->fill(chunk);
      });
}

}  // namespace

void add_read(duckdb_connection connection) {
  duckdb_table_function function = duckdb_create_table_function();
  duckdb_table_function_set_name(function, "read_campotipo");
  duckdb_table_function_add_parameter(function, Type(DUCKDB_TYPE_ANY).get());
  for (const char *name : {"layout", "kind", "faults", "wide"}) {
    duckdb_table_function_add_named_parameter(function, name, Type(DUCKDB_TYPE_VARCHAR).get());
  }
  for (const char *name : {"first", "count"}) {
    duckdb_table_function_add_named_parameter(function, name, Type(DUCKDB_TYPE_BIGINT).get());
  }
  duckdb_table_function_add_named_parameter(function, "skip", Type(DUCKDB_TYPE_BOOLEAN).get());
  duckdb_table_function_set_bind(function, bind);
  duckdb_table_function_set_init(function, init);
  duckdb_table_function_set_local_init(function, local_init);
  duckdb_table_function_set_function(function, read);
  duckdb_table_function_supports_projection_pushdown(function, true);
  const duckdb_state state = duckdb_register_table_function(connection, function);
  duckdb_destroy_table_function(&function);
  if (state == DuckDBError) throw Failure("read_campotipo cannot be registered");
}

}  // namespace campotipo::duckdb
