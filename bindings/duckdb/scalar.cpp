#include "scalar.hpp"

#include <string>

namespace campotipo::duckdb {

void add_scalar(duckdb_connection connection, const char *name, const ScalarFunction &told) {
  duckdb_scalar_function function = duckdb_create_scalar_function();
  duckdb_scalar_function_set_name(function, name);
  for (const duckdb_logical_type type : told.parameters) {
    duckdb_scalar_function_add_parameter(function, Type(type).get());
  }
  duckdb_scalar_function_set_return_type(function, Type(told.result).get());
  duckdb_scalar_function_set_function(function, told.run);
  const duckdb_state state = duckdb_register_scalar_function(connection, function);
  duckdb_destroy_scalar_function(&function);
  if (state == DuckDBError) throw Failure(std::string(name) + " cannot be registered");
}

}  // namespace campotipo::duckdb
