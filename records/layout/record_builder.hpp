#pragma once

#include <string>
#include <vector>

#include "layout/field_reader.hpp"
#include "layout/layout.hpp"

namespace campotipo::records {

// Lays the fields of a record behind one another, groups and repetitions unrolled.
class RecordBuilder {
 public:
  RecordBuilder(RecordType &record, const FieldDefaults &defaults)
      : record_(&record), defaults_(&defaults) {}

  // Reads the array of fields called `key` and every field below it.
  void add_all(TomlTable &table, const std::string &key);

  // Gathers the fields into the columns of a CSV file.
  void make_columns(const TomlTable &table);
  void name_flat(const TomlTable &table);

 private:
  struct Place {
    std::vector<PathStep> path;
    std::string suffix;  // places in arrays, for a column with a name of its own
  };

  void add_list(const toml::array &fields, const TomlTable &owner, const Place &place, int depth);
  // Gives the name, none for unused bytes.
  std::string add(const toml::node &node, const TomlTable &owner, const Place &place, int depth);
  void add_once(const toml::node &node, const TomlTable &owner, const Place &place,
                const std::string &name, int index, int depth);
  void add_value(TomlTable &table, const Place &place);
  void add_parts(TomlTable &table, Field area, const Place &place);
  void push(const TomlTable &table, Field field);

  RecordType *record_;
  const FieldDefaults *defaults_;
};

}  // namespace campotipo::records
