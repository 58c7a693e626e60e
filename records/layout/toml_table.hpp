#pragma once

#include <toml++/toml.h>

#include <cstdint>
#include <initializer_list>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace campotipo::records {

// Ends the reading of a layout: file, line, and what was expected.
[[noreturn]] void layout_fault(const std::string &file, const toml::source_region &where,
                               const std::string &what);

// A table of a layout file that is read key by key and asked at the end for keys that nobody read.
class TomlTable {
 public:
  TomlTable(const toml::table &table, const std::string &file, std::string what)
      : table_(&table), file_(&file), what_(std::move(what)) {}

  bool has(std::string_view key) const { return table_->contains(key); }
  const toml::table &toml() const { return *table_; }
  const std::string &file() const { return *file_; }
  const std::string &what() const { return what_; }

  std::optional<std::string> text(std::string_view key);
  std::string required_text(std::string_view key, const std::string &expected);
  std::optional<std::int64_t> number(std::string_view key, std::int64_t low, std::int64_t high);
  bool flag(std::string_view key);

  // A text, or some of them.
  std::vector<std::string> texts(std::string_view key, const std::string &expected);

  // Bytes told in hexadecimal digits.
  std::optional<std::string> bytes(std::string_view key);

  // One of the words told.
  std::optional<std::size_t> choice(std::string_view key,
                                    std::initializer_list<std::string_view> words);

  // Null where the key is not there.
  const toml::array *array(std::string_view key, const std::string &expected);
  const toml::table *table(std::string_view key, const std::string &expected);
  const toml::node *node(std::string_view key);

  // An element of an array that has to be a table.
  TomlTable element(const toml::node &node, const std::string &what) const;

  // What to say of a key, or of the table as a whole where it is empty.
  [[noreturn]] void fault(std::string_view key, const std::string &what) const;
  [[noreturn]] void expected(std::string_view key, const std::string &what) const;
  [[noreturn]] void fault_at(const toml::node &node, const std::string &what) const;

  void rename(std::string what) { what_ = std::move(what); }

  // A fault for each key that was not read.
  void finish() const;

 private:
  void find_misspelt(std::string_view wanted) const;
  [[noreturn]] void unknown(const toml::key &key, const std::string &near) const;

  const toml::table *table_;
  const std::string *file_;
  std::string what_;
  std::set<std::string, std::less<>> read_;
};

}  // namespace campotipo::records
