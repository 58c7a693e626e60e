#include "rows/loader.hpp"

#include <algorithm>
#include <cstring>
#include <set>

#include "errors/error.hpp"
#include "rules/field_rules.hpp"
#include "text/nearest.hpp"

namespace campotipo::records {

std::string length_prefix(const Layout &layout, const RecordType &type) {
  const LengthPrefix &prefix = layout.prefix;
  std::size_t length = type.bytes;
  if (prefix.counts_itself) length += static_cast<std::size_t>(prefix.bytes);
  std::string bytes;
  for (int i = 0; i < prefix.bytes; ++i) bytes += static_cast<char>(length >> 8 * i & 0xFF);
  if (prefix.bytes != 0 && prefix.bytes < 8 && length >> 8 * prefix.bytes != 0) {
    throw Error(ErrorCode::kInput, layout.file + ": length: expected enough bytes for records of " +
                                       std::to_string(type.bytes) + " bytes");
  }
  if (prefix.big) std::reverse(bytes.begin(), bytes.end());
  return bytes;
}

std::string line_end(const Layout &layout) {
  return layout.line_end == LineEnd::kCrLf ? "\r\n" : layout.lines() ? "\n" : "";
}

Loader::Loader(const Layout &layout, const std::vector<std::string> &header,
               const std::vector<std::string> &ignored, const std::string &file,
               const RecordType *kind)
    : layout_(&layout), only_(kind), header_(header) {
  match(ignored, file);
  for (const RecordType &type : layout.types) {
    if (only_ != nullptr && only_ != &type) continue;
    make_kind(type);
    for (const FieldRules &rules : type.rules) follows_ = follows_ || rules.follows();
  }
}

std::vector<std::string> Loader::known_columns() const {
  if (only_ == nullptr) return layout_->columns;
  std::vector<std::string> names;
  for (const Column &column : only_->columns) names.push_back(column.name);
  return names;
}

void Loader::match(const std::vector<std::string> &ignored, const std::string &file) {
  const std::vector<std::string> columns = known_columns();
  const bool told = layout_->several() && only_ == nullptr;
  const std::set<std::string_view> known(columns.begin(), columns.end());
  const std::set<std::string_view> left_out(ignored.begin(), ignored.end());
  // Bytes that a dump writes beside a value.
  const auto is_hex = [&](std::string_view name) {
    return name.ends_with(kHexEnd) && known.contains(name.substr(0, name.size() - kHexEnd.size()));
  };
  ignored_.resize(header_.size());
  for (std::size_t i = 0; i < header_.size(); ++i) {
    const std::string &name = header_[i];
    if (!columns_.emplace(name, i).second) {
      throw Error(ErrorCode::kInput, file + ":1: two columns are called \"" + name + "\"");
    }
    if (told && name == kKindColumn) {
      kind_column_ = i;
    } else if (left_out.contains(name) || (!known.contains(name) && is_hex(name))) {
      ignored_[i] = true;
    } else if (!known.contains(name)) {
      const std::string near = nearest(name, columns);
      throw Error(ErrorCode::kInput, file + ":1: the layout has no column \"" + name + "\"" +
                                         (near.empty() ? "" : ", expected \"" + near + "\"?") +
                                         " (--ignore leaves a column out)");
    }
  }
  if (told && kind_column_ == kNone) {
    throw Error(ErrorCode::kInput,
                file + ":1: expected a column \"record\" with the kind of each record");
  }
  for (const std::string &column : columns) {
    if (!columns_.contains(column)) missing_.push_back(column);
  }
}

void Loader::make_kind(const RecordType &type) {
  Kind kind;
  kind.type = &type;
  const std::string prefix = length_prefix(*layout_, type);
  kind.before = prefix.size();
  kind.blank = prefix + std::string(type.bytes, '\0') + line_end(*layout_);
  auto *record = reinterpret_cast<unsigned char *>(kind.blank.data()) + kind.before;
  for (const Field &filler : type.fillers) {
    std::copy(filler.params.fill.begin(), filler.params.fill.end(), record + filler.offset);
  }
  kind.cells.resize(header_.size());
  for (const Column &column : type.columns) {
    const auto found = columns_.find(column.name);
    Cell none;
    Cell &cell = found == columns_.end() ? none : kind.cells[found->second];
    const bool stored = found != columns_.end() && !ignored_[found->second];
    for (const std::size_t place : column.fields) cell.fields.push_back(&type.fields[place]);
    if (!stored) {
      take_parts(kind, cell, PaddedText(), record, kind.missing);
      cell.fields.clear();
    } else if (cell.fields.size() == 1 && !is_filled(type, *cell.fields[0])) {
      cell.take = cell.fields[0]->type->take;
      cell.params = &cell.fields[0]->params;
      cell.offset = cell.fields[0]->offset;
    }
  }
  for (const FieldRules &rules : type.rules) {
    if (rules.constant) kind.constants.push_back(&rules);
  }
  kinds_.push_back(std::move(kind));
}

const Loader::Kind *Loader::kind_of(const std::vector<PaddedText> &row) const {
  if (kind_column_ == kNone) return kinds_.data();
  for (const Kind &kind : kinds_) {
    if (kind.type->name == row[kind_column_].view()) return &kind;
  }
  return nullptr;
}

// A cell of several fields is cut at the text that joins them. A field by which the kind is told needs
// no text where it has one value.
const char *Loader::take_parts(const Kind &kind, const Cell &cell, PaddedText value,
                               unsigned char *record, Holes &holes) const {
  std::string_view left = value.view();
  const char *lost = nullptr;
  for (std::size_t i = 0; i < cell.fields.size(); ++i) {
    const Field &field = *cell.fields[i];
    std::string_view part = left;
    if (i + 1 < cell.fields.size()) {
      const std::string &join = cell.fields[i + 1]->join;
      const std::size_t at = left.find(join);
      part = left.substr(0, at);
      left.remove_prefix(at == std::string_view::npos ? left.size() : at + join.size());
    }
    const std::string *constant = part.empty() ? constant_of(*kind.type, field) : nullptr;
    if (constant != nullptr) {
      // Parts of a bit area share their bytes with others.
      for (std::size_t at = 0; at < constant->size(); ++at) {
        record[field.offset + at] |= static_cast<unsigned char>((*constant)[at]);
      }
      continue;
    }
    const FieldRules *rules = part.empty() ? rules_of(*kind.type, field) : nullptr;
    if (rules != nullptr && rules->follows()) holes.push_back(rules);
    const char *what =
        field.type->take(record + field.offset, PaddedString(part).text(), field.params);
    if (what != nullptr) lost = what;
  }
  return lost;
}

// A cell that is not that of one field alone.
const char *Loader::take_other(const Kind &kind, std::size_t column, PaddedText value,
                               unsigned char *record, Holes &holes) const {
  const Cell &cell = kind.cells[column];
  if (!cell.fields.empty()) return take_parts(kind, cell, value, record, holes);
  const bool dropped = !ignored_[column] && column != kind_column_ && !value.empty();
  return dropped ? "the record has no such field" : nullptr;
}

// What to say of a record that would not be read as the kind that its row tells.
std::string Loader::contradiction(const Kind &kind, const std::vector<PaddedText> &row,
                                  const unsigned char *record) const {
  const RecordType &type = *kind.type;
  for (const Condition &condition : type.when) {
    if (type.holds(condition, record)) continue;
    const Field &field = type.fields[condition.field];
    std::string expected;
    std::vector<unsigned char> wanted(type.bytes);
    for (const std::string &stored : condition.stored) {
      std::copy(stored.begin(), stored.end(),
                wanted.begin() + static_cast<std::ptrdiff_t>(field.offset));
      expected += (expected.empty() ? "\"" : " or \"") + field_text(field, wanted.data()) + "\"";
    }
    const auto column = columns_.find(field.column);
    const bool given = column != columns_.end() && !ignored_[column->second];
    const std::string cell(given ? row[column->second].view() : std::string_view());
    return "field " + field.name + ": \"" + shortened(cell) + "\" does not tell the kind \"" +
           type.name + "\", expected " + expected;
  }
  return "the values are those of a record \"" + layout_->type_of(record, type.bytes)->name +
         "\", which the layout tells in front of \"" + type.name + "\"";
}

// What ends a line inside a record would make two of it.
void Loader::refuse_line_end(LoadedBlock &block, const Kind &kind, const unsigned char *record,
                             const CsvRows &rows) const {
  const std::size_t at = line_end_in(*kind.type, record);
  for (const Field &field : kind.type->fields) {
    if (at < field.offset || at >= field.offset + field.bytes) continue;
    block.lost.add(field.column, "holds the end of a line",
                   {block.rows + 1, 0, field_text(field, record), rows.line()});
    return;
  }
}

bool Loader::has_constants(LoadedBlock &block, const Kind &kind,
                           const unsigned char *record) const {
  for (const FieldRules *rules : kind.constants) {
    const Field &field = kind.type->fields[rules->field];
    const FieldRules::Value &value = rules->values[0];
    if (std::memcmp(record + field.offset, value.stored.data(), field.bytes) == 0) continue;
    block.fault = "field " + field.name + ": \"" + shortened(field_text(field, record)) +
                  "\" is not the value that it always has, expected \"" + value.text + "\"";
    return false;
  }
  return true;
}

bool Loader::load_row(LoadedBlock &block, const CsvRows &rows,
                      const std::vector<PaddedText> &row) const {
  block.fault_line = rows.line();
  if (row.size() != header_.size()) {
    block.fault = std::to_string(row.size()) + " cells, expected " + std::to_string(header_.size());
    return false;
  }
  const Kind *kind = kind_of(row);
  if (kind == nullptr) {
    block.fault =
        "no kind of record is called \"" + shortened(std::string(row[kind_column_].view())) + "\"";
    return false;
  }
  char *out = block.records.reserve(kind->blank.size());
  std::memcpy(out, kind->blank.data(), kind->blank.size());
  auto *record = reinterpret_cast<unsigned char *>(out) + kind->before;
  Holes holes = kind->missing;
  for (std::size_t i = 0; i < row.size(); ++i) {
    const Cell &cell = kind->cells[i];
    const PaddedText value = row[i];
    const char *lost = cell.take != nullptr ? cell.take(record + cell.offset, value, *cell.params)
                                            : take_other(*kind, i, value, record, holes);
    if (block.csv.has_nul && !ignored_[i] && value.view().find('\0') != std::string_view::npos) {
      lost = "a NUL byte, which ends the text";
    }
    if (lost == nullptr) continue;
    block.lost.add(header_[i], lost, {block.rows + 1, 0, std::string(value.view()), rows.line()});
  }
  if (layout_->lines()) refuse_line_end(block, *kind, record, rows);
  if (layout_->type_of(record, kind->type->bytes) != kind->type) {
    block.fault = contradiction(*kind, row, record);
    return false;
  }
  if (!has_constants(block, *kind, record)) return false;
  if (follows_) {
    for (const FieldRules *rules : holes)
      block.unfilled.holes.push_back({block.unfilled.made.size(), rules});
    block.unfilled.made.push_back({block.records.view().size() + kind->before, kind->type});
  }
  block.records.end(out + kind->blank.size());
  return true;
}

void Loader::load(LoadedBlock &block, std::size_t places) const {
  block.records.clear();
  block.lost = FindingCounts(places);
  block.rows = 0;
  block.unfilled.clear();
  block.fault.clear();
  CsvRows rows(block.csv);
  std::vector<PaddedText> row;
  while (rows.next(row)) {
    if (row.size() == 1 && row[0].empty() && header_.size() > 1) continue;
    if (!load_row(block, rows, row)) return;
    ++block.rows;
  }
  block.lines = rows.lines();
  const char *fault =
      block.csv.endless ? "a row without end, or a quote that is not closed" : rows.fault();
  if (fault == nullptr) return;
  block.fault = fault;
  block.fault_line = rows.line();
}

}  // namespace campotipo::records
