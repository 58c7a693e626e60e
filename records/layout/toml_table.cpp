#include "layout/toml_table.hpp"

#include <algorithm>
#include <sstream>

#include "errors/error.hpp"
#include "text/ascii.hpp"
#include "text/nearest.hpp"

namespace campotipo::records {

namespace {

std::string shown(const toml::node &node) {
  if (node.is_table()) return "a table";
  if (node.is_array()) return "an array";
  std::ostringstream out;
  out << toml::toml_formatter(node);
  std::string text = out.str();
  if (text.size() > 40) text = text.substr(0, 37) + "...";
  return text;
}

}  // namespace

void layout_fault(const std::string &file, const toml::source_region &where,
                  const std::string &what) {
  Error error(ErrorCode::kLayout, file + ":" + std::to_string(where.begin.line) + ":" +
                                      std::to_string(where.begin.column) + ": " + what);
  error.line = where.begin.line;
  error.column = where.begin.column;
  error.reason = what;
  throw error;
}

void TomlTable::fault_at(const toml::node &node, const std::string &what) const {
  layout_fault(*file_, node.source(), what_.empty() ? what : what_ + ": " + what);
}

void TomlTable::fault(std::string_view key, const std::string &what) const {
  const toml::node *found = table_->get(key);
  fault_at(found != nullptr ? *found : *table_,
           key.empty() ? what : std::string(key) + ": " + what);
}

void TomlTable::expected(std::string_view key, const std::string &what) const {
  const toml::node *found = table_->get(key);
  if (found == nullptr) find_misspelt(key);
  fault(key, "expected " + what + (found != nullptr ? ", found " + shown(*found) : ", found none"));
}

// A key that is not there may stand under a name like its own.
void TomlTable::find_misspelt(std::string_view wanted) const {
  for (const auto &[key, value] : *table_) {
    if (read_.contains(key.str()) || nearest(key.str(), {std::string(wanted)}).empty()) continue;
    unknown(key, std::string(wanted));
  }
}

void TomlTable::unknown(const toml::key &key, const std::string &near) const {
  std::string message = "nothing here is called \"" + std::string(key.str()) + "\"";
  if (!near.empty()) message += ", expected \"" + near + "\"?";
  layout_fault(*file_, key.source(), what_.empty() ? message : what_ + ": " + message);
}

const toml::node *TomlTable::node(std::string_view key) {
  read_.emplace(key);
  return table_->get(key);
}

std::optional<std::string> TomlTable::text(std::string_view key) {
  const toml::node *found = node(key);
  if (found == nullptr) return std::nullopt;
  if (!found->is_string()) expected(key, "a text");
  return found->as_string()->get();
}

std::string TomlTable::required_text(std::string_view key, const std::string &what) {
  auto found = text(key);
  if (!found || found->empty()) expected(key, what);
  return *found;
}

std::optional<std::int64_t> TomlTable::number(std::string_view key, std::int64_t low,
                                              std::int64_t high) {
  const toml::node *found = node(key);
  if (found == nullptr) return std::nullopt;
  const auto *value = found->as_integer();
  if (value == nullptr || value->get() < low || value->get() > high) {
    expected(key, "a whole number from " + std::to_string(low) + " to " + std::to_string(high));
  }
  return value->get();
}

bool TomlTable::flag(std::string_view key) {
  const toml::node *found = node(key);
  if (found == nullptr) return false;
  if (!found->is_boolean()) expected(key, "true or false");
  return found->as_boolean()->get();
}

std::vector<std::string> TomlTable::texts(std::string_view key, const std::string &what) {
  const toml::node *found = node(key);
  std::vector<std::string> all;
  if (found == nullptr) return all;
  if (const auto *one = found->as_string()) return {one->get()};
  const toml::array *list = found->as_array();
  if (list == nullptr) expected(key, what);
  for (const toml::node &element : *list) {
    if (!element.is_string()) fault_at(element, std::string(key) + ": expected " + what);
    all.push_back(element.as_string()->get());
  }
  return all;
}

std::optional<std::string> TomlTable::bytes(std::string_view key) {
  const auto digits = text(key);
  if (!digits) return std::nullopt;
  std::string all;
  if (!ascii::from_hex(*digits, all)) expected(key, "pairs of hexadecimal digits");
  return all;
}

std::optional<std::size_t> TomlTable::choice(std::string_view key,
                                             std::initializer_list<std::string_view> words) {
  const auto given = text(key);
  if (!given) return std::nullopt;
  std::string all;
  for (std::size_t i = 0; i < words.size(); ++i) {
    const std::string_view word = words.begin()[i];
    if (*given == word) return i;
    all += (i == 0 ? "\"" : i + 1 < words.size() ? ", \"" : " or \"") + std::string(word) + "\"";
  }
  expected(key, all);
}

const toml::array *TomlTable::array(std::string_view key, const std::string &what) {
  const toml::node *found = node(key);
  if (found == nullptr) return nullptr;
  if (!found->is_array()) expected(key, what);
  return found->as_array();
}

const toml::table *TomlTable::table(std::string_view key, const std::string &what) {
  const toml::node *found = node(key);
  if (found == nullptr) return nullptr;
  if (!found->is_table()) expected(key, what);
  return found->as_table();
}

TomlTable TomlTable::element(const toml::node &node, const std::string &what) const {
  if (!node.is_table()) fault_at(node, "expected a table, found " + shown(node));
  return {*node.as_table(), *file_, what};
}

void TomlTable::finish() const {
  const std::vector<std::string> known(read_.begin(), read_.end());
  for (const auto &[key, value] : *table_) {
    if (read_.contains(key.str())) continue;
    unknown(key, nearest(key.str(), known));
  }
}

}  // namespace campotipo::records
