// campotipo_layout and campotipo_layouts: what layouts hold, as rows.
#include <algorithm>
#include <memory>
#include <variant>

#include "handles.hpp"
#include "table.hpp"

namespace campotipo::duckdb {

namespace {

using Cell = std::variant<std::string, std::int64_t, bool>;

// Rows that are all known when the query begins.
struct SmallTable {
  std::vector<std::pair<const char *, duckdb_type>> columns;
  std::vector<std::vector<Cell>> rows;

  void tell(duckdb_bind_info info) const {
    for (const auto &[name, type] : columns) {
      duckdb_bind_add_result_column(info, name, Type(type).get());
    }
    duckdb_bind_set_cardinality(info, rows.size(), true);
  }
};

void put(duckdb_vector vector, idx_t at, const Cell &cell) {
  void *data = duckdb_vector_get_data(vector);
  if (const auto *text = std::get_if<std::string>(&cell)) {
    duckdb_vector_assign_string_element_len(vector, at, text->data(), text->size());
  } else if (const auto *number = std::get_if<std::int64_t>(&cell)) {
    static_cast<std::int64_t *>(data)[at] = *number;
  } else {
    static_cast<bool *>(data)[at] = std::get<bool>(cell);
  }
}

SmallTable fields_of(const std::string &place) {
  const Layout layout = open_layout(place);
  SmallTable table;
  table.columns = {{"kind", DUCKDB_TYPE_VARCHAR},  {"main", DUCKDB_TYPE_BOOLEAN},
                   {"field", DUCKDB_TYPE_VARCHAR}, {"type", DUCKDB_TYPE_VARCHAR},
                   {"sql", DUCKDB_TYPE_VARCHAR},   {"start", DUCKDB_TYPE_BIGINT},
                   {"bytes", DUCKDB_TYPE_BIGINT},  {"family", DUCKDB_TYPE_VARCHAR}};
  for (std::size_t i = 0; i < campotipo_layout_kinds(layout.get()); ++i) {
    auto kind = sized<campotipo_kind>();
    campotipo_layout_kind(layout.get(), i, &kind);
    for (std::size_t j = 0; j < kind.fields; ++j) {
      auto field = sized<campotipo_field>();
      campotipo_layout_field(layout.get(), i, j, CAMPOTIPO_WIDE_STRING, &field);
      table.rows.push_back({kind.name, kind.main != 0, field.name, field.type, type_name(field),
                            static_cast<std::int64_t>(field.offset),
                            static_cast<std::int64_t>(field.bytes), field.family});
    }
  }
  return table;
}

SmallTable ready_layouts() {
  SmallTable table;
  table.columns = {
      {"name", DUCKDB_TYPE_VARCHAR}, {"kinds", DUCKDB_TYPE_BIGINT}, {"text", DUCKDB_TYPE_VARCHAR}};
  for (std::size_t i = 0; campotipo_layout_ready_name(i) != nullptr; ++i) {
    const char *name = campotipo_layout_ready_name(i);
    const Layout layout = open_layout(name);
    table.rows.push_back({std::string(name),
                          static_cast<std::int64_t>(campotipo_layout_kinds(layout.get())),
                          std::string(campotipo_layout_ready(name))});
  }
  return table;
}

void keep(duckdb_bind_info info, SmallTable made) {
  auto table = std::make_unique<SmallTable>(std::move(made));
  table->tell(info);
  duckdb_bind_set_bind_data(info, table.release(), destroy<SmallTable>);
}

void bind_fields(duckdb_bind_info info) {
  guarded([&](const char *what) { duckdb_bind_set_error(info, what); },
          [&] {
            const Value place(duckdb_bind_get_parameter(info, 0));
            if (!place.given()) throw Failure("campotipo_layout: the layout is null");
            keep(info, fields_of(place.text()));
          });
}

void bind_ready(duckdb_bind_info info) {
  guarded([&](const char *what) { duckdb_bind_set_error(info, what); },
          [&] { keep(info, ready_layouts()); });
}

void init(duckdb_init_info info) {
  duckdb_init_set_max_threads(info, 1);
  duckdb_init_set_init_data(info, new std::size_t(0), destroy<std::size_t>);
}

void read(duckdb_function_info info, duckdb_data_chunk chunk) {
  guarded([&](const char *what) { duckdb_function_set_error(info, what); },
          [&] {
            const auto &table =
                *static_cast<const SmallTable *>(duckdb_function_get_bind_data(info));
            auto &passed = *static_cast<std::size_t *>(duckdb_function_get_init_data(info));
            const idx_t count = std::min<idx_t>(table.rows.size() - passed, duckdb_vector_size());
            for (idx_t i = 0; i < table.columns.size(); ++i) {
              duckdb_vector vector = duckdb_data_chunk_get_vector(chunk, i);
              for (idx_t row = 0; row < count; ++row) put(vector, row, table.rows[passed + row][i]);
            }
            passed += count;
            duckdb_data_chunk_set_size(chunk, count);
          });
}

void add(duckdb_connection connection, const char *name, duckdb_table_function_bind_t bind,
         bool takes_place) {
  duckdb_table_function function = duckdb_create_table_function();
  duckdb_table_function_set_name(function, name);
  if (takes_place) {
    duckdb_table_function_add_parameter(function, Type(DUCKDB_TYPE_VARCHAR).get());
  }
  duckdb_table_function_set_bind(function, bind);
  duckdb_table_function_set_init(function, init);
  duckdb_table_function_set_function(function, read);
  const duckdb_state state = duckdb_register_table_function(connection, function);
  duckdb_destroy_table_function(&function);
  if (state == DuckDBError) throw Failure(std::string(name) + " cannot be registered");
}

}  // namespace

void add_layouts(duckdb_connection connection) {
  add(connection, "campotipo_layout", bind_fields, true);
  add(connection, "campotipo_layouts", bind_ready, false);
}

}  // namespace campotipo::duckdb
