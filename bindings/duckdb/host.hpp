#pragma once

#include <exception>
#include <stdexcept>
#include <string>

// The interface that every DuckDB from 1.2 on offers: what later ones add is not used.
#define DUCKDB_EXTENSION_API_VERSION_MAJOR 1
#define DUCKDB_EXTENSION_API_VERSION_MINOR 2
#define DUCKDB_EXTENSION_API_VERSION_PATCH 0
#include <duckdb_extension.h>

DUCKDB_EXTENSION_EXTERN

// Objects of DuckDB that free themselves, and where exceptions end.
namespace campotipo::duckdb {

// What DuckDB shows as the error of a query.
class Failure : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Runs `work`; what it throws goes to `tell` as a text.
template <class Tell, class Work>
void guarded(Tell tell, Work work) noexcept {
  try {
    work();
  } catch (const std::exception &error) {
    tell(error.what());
  } catch (...) {
    tell("unknown error");
  }
}

class Value {
 public:
  explicit Value(duckdb_value value) : value_(value) {}
  ~Value() {
    if (value_ != nullptr) duckdb_destroy_value(&value_);
  }
  Value(const Value &) = delete;
  Value &operator=(const Value &) = delete;

  duckdb_value get() const { return value_; }
  bool given() const { return value_ != nullptr && !duckdb_is_null_value(value_); }

  std::string text() const {
    char *made = duckdb_get_varchar(value_);
    std::string text = made != nullptr ? made : "";
    duckdb_free(made);
    return text;
  }

 private:
  duckdb_value value_;
};

class Type {
 public:
  explicit Type(duckdb_type type) : type_(duckdb_create_logical_type(type)) {}
  explicit Type(duckdb_logical_type type) : type_(type) {}
  ~Type() { duckdb_destroy_logical_type(&type_); }
  Type(const Type &) = delete;
  Type &operator=(const Type &) = delete;

  static duckdb_logical_type list_of(duckdb_type type) {
    const Type inner(type);
    return duckdb_create_list_type(inner.get());
  }

  duckdb_logical_type get() const { return type_; }

 private:
  duckdb_logical_type type_;
};

// How DuckDB is told to free an object that it keeps.
template <class Object>
void destroy(void *object) {
  delete static_cast<Object *>(object);
}

// What the extension consists of; each registers its functions.
void add_read(duckdb_connection connection);
void add_layouts(duckdb_connection connection);
void add_documents(duckdb_connection connection);
void add_arithmetic(duckdb_connection connection);
void add_replacement(duckdb_database database);

}  // namespace campotipo::duckdb
