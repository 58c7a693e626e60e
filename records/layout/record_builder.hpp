#pragma once

#include <string>
#include <vector>

#include "layout/field_reader.hpp"
#include "layout/layout.hpp"

namespace campotipo::records {

// The table of a field that has rules, to be read when all kinds are known.
struct RuleSource {
  const toml::table *table;
  std::string what;       // as messages call it
  std::size_t field = 0;  // place in RecordType::fields
};

// Lays the fields of a record behind one another, groups and repetitions unrolled.
class RecordBuilder {
 public:
  RecordBuilder(RecordType &record, const FieldDefaults &defaults)
      : record_(&record), defaults_(&defaults) {}

  // Reads the array of fields called `key` and every field below it.
  void add_all(TomlTable &table, const std::string &key);

  // Gathers the fields into the columns of a CSV file.
  void make_columns(const TomlTable &table);

  const std::vector<RuleSource> &rules() const { return rules_; }

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
  void check_place(TomlTable &table, const Place &place) const;
  void name_flat(const TomlTable &table);
  void push(const TomlTable &table, Field field);

  RecordType *record_;
  const FieldDefaults *defaults_;
  std::vector<RuleSource> rules_;
};

}  // namespace campotipo::records
