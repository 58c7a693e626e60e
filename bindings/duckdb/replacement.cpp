// "from 'vendas.reg'": a file beside which its layout lies.
#include "paths.hpp"

#include "host.hpp"

namespace campotipo::duckdb {

namespace {

void look(duckdb_replacement_scan_info info, const char *name, void *) {
  guarded([&](const char *) {},  // not ours: the name is left to DuckDB
          [&] {
            const Paths paths = expand(std::string(name));
            if (!layout_beside(paths.files[0])) return;
            duckdb_replacement_scan_set_function_name(info, "read_campotipo");
            const Value path(duckdb_create_varchar(name));
            duckdb_replacement_scan_add_parameter(info, path.get());
          });
}

}  // namespace

void add_replacement(duckdb_database database) {
  duckdb_add_replacement_scan(database, look, nullptr, nullptr);
}

}  // namespace campotipo::duckdb
