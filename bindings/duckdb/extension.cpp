// Where DuckDB enters.
#include <campotipo/campotipo.h>

#include "host.hpp"

DUCKDB_EXTENSION_GLOBAL

extern "C" DUCKDB_CAPI_ENTRY_VISIBILITY bool campotipo_init_c_api(duckdb_extension_info info,
                                                                  duckdb_extension_access *access);

bool campotipo_init_c_api(duckdb_extension_info info, duckdb_extension_access *access) {
  DUCKDB_EXTENSION_API_INIT(info, access, DUCKDB_EXTENSION_API_VERSION_STRING)
  // Of this copy of the library: dates that steps write hold their year in full.
  DATAC_formato = DATAC_FORMATO_COMPACTO;
  duckdb_database *database = access->get_database(info);
  duckdb_connection connection = nullptr;
  if (database == nullptr || duckdb_connect(*database, &connection) == DuckDBError) {
    access->set_error(info, "campotipo: no connection to the database");
    return false;
  }
  bool good = false;
  campotipo::duckdb::guarded([&](const char *what) { access->set_error(info, what); },
                             [&] {
                               campotipo::duckdb::add_read(connection);
                               campotipo::duckdb::add_layouts(connection);
                               campotipo::duckdb::add_documents(connection);
                               campotipo::duckdb::add_arithmetic(connection);
                               campotipo::duckdb::add_replacement(*database);
                               good = true;
                             });
  duckdb_disconnect(&connection);
  return good;
}
