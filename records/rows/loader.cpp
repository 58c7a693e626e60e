#include "rows/loader.hpp"

#include <algorithm>
#include <cstring>
#include <set>

#include "errors/error.hpp"
#include "rules/field_rules.hpp"
#include "text/nearest.hpp"

namespace campotipo::records {

Loader::Loader(const Layout &layout, const std::vector<std::string> &header,
               const std::vector<std::string> &ignored, const std::string &file,
               const RecordType *kind)
    : layout_(&layout), only_(kind), header_(header) {
  match(ignored, file);
  for (const RecordType &type : layout.types) {
    if (only_ != nullptr && only_ != &type) continue;
    make_kind(type);
    follows_ = follows_ || has_followers(type);
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
  kind.blank = BlankRecord(*layout_, type);
  auto *record = reinterpret_cast<unsigned char *>(kind.blank.bytes.data()) + kind.blank.before;
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
      put_stored(record + field.offset, *constant);
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

// What ends a line inside a record would make two of it.
void Loader::refuse_line_end(LoadedBlock &block, const Kind &kind, const unsigned char *record,
                             const CsvRows &rows) const {
  const Field *field = field_with_line_end(*layout_, *kind.type, record);
  if (field == nullptr) return;
  block.lost.add(field->column, "holds the end of a line",
                 {block.rows + 1, 0, field_text(*field, record), rows.line()});
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
  char *out = block.records.reserve(kind->blank.bytes.size());
  std::memcpy(out, kind->blank.bytes.data(), kind->blank.bytes.size());
  auto *record = reinterpret_cast<unsigned char *>(out) + kind->blank.before;
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
  refuse_line_end(block, *kind, record, rows);
  block.fault = contradiction(*layout_, *kind->type, record, [&](const Field &field) {
    const auto column = columns_.find(field.column);
    const bool given = column != columns_.end() && !ignored_[column->second];
    return given ? std::string(row[column->second].view()) : std::string();
  });
  if (!block.fault.empty()) return false;
  if (follows_) {
    for (const FieldRules *rules : holes) block.holes.push_back({block.made.size(), rules});
    block.made.push_back({block.records.view().size() + kind->blank.before, kind->type});
  }
  block.records.end(out + kind->blank.bytes.size());
  return true;
}

void Loader::load(LoadedBlock &block, std::size_t places) const {
  block.records.clear();
  block.lost = FindingCounts(places);
  block.rows = 0;
  block.made.clear();
  block.holes.clear();
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
