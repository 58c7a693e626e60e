#include "rows/loader.hpp"

#include <algorithm>
#include <cstring>

#include "files/failure.hpp"
#include "rows/program.hpp"
#include "text/nearest.hpp"
#include "text/scan.hpp"

namespace campotipo::tool {

namespace {

bool holds_name(const std::vector<std::string> &names, const std::string &name) {
  return std::find(names.begin(), names.end(), name) != names.end();
}

// Bytes that a dump writes beside a value.
bool is_hex_column(const Layout &layout, const std::string &name) {
  constexpr std::string_view kEnd = "_hex";
  return name.ends_with(kEnd) && !holds_name(layout.columns, name) &&
         holds_name(layout.columns, name.substr(0, name.size() - kEnd.size()));
}

}  // namespace

std::string length_prefix(const Layout &layout, const RecordType &type) {
  const LengthPrefix &prefix = layout.prefix;
  std::size_t length = type.bytes;
  if (prefix.counts_itself) length += static_cast<std::size_t>(prefix.bytes);
  std::string bytes;
  for (int i = 0; i < prefix.bytes; ++i) bytes += static_cast<char>(length >> 8 * i & 0xFF);
  if (prefix.bytes != 0 && prefix.bytes < 8 && length >> 8 * prefix.bytes != 0) {
    throw Failure(layout.file + ": length: expected enough bytes for records of " +
                  std::to_string(type.bytes) + " bytes");
  }
  if (prefix.big) std::reverse(bytes.begin(), bytes.end());
  return bytes;
}

Loader::Loader(const Layout &layout, const std::vector<std::string> &header,
               const std::vector<std::string> &ignored, const std::string &file)
    : layout_(&layout), header_(header) {
  match(header, ignored, file);
  for (const RecordType &type : layout.types) make_kind(type, header);
}

void Loader::match(const std::vector<std::string> &header, const std::vector<std::string> &ignored,
                   const std::string &file) {
  ignored_.resize(header.size());
  for (std::size_t i = 0; i < header.size(); ++i) {
    const std::string &name = header[i];
    if (std::find(header.begin(), header.begin() + static_cast<std::ptrdiff_t>(i), name) !=
        header.begin() + static_cast<std::ptrdiff_t>(i)) {
      throw Failure(file + ": two columns are called \"" + name + "\"");
    }
    if (layout_->several() && name == kKindColumn) {
      kind_column_ = i;
    } else if (holds_name(ignored, name) || is_hex_column(*layout_, name)) {
      ignored_[i] = true;
    } else if (!holds_name(layout_->columns, name)) {
      const std::string near = nearest(name, layout_->columns);
      throw Failure(file + ": the layout has no column \"" + name + "\"" +
                    (near.empty() ? "" : ", expected \"" + near + "\"?") +
                    " (--ignore leaves a column out)");
    }
  }
  if (layout_->several() && kind_column_ == SIZE_MAX) {
    throw Failure(file + ": expected a column \"record\" with the kind of each record");
  }
  for (const std::string &column : layout_->columns) {
    if (!holds_name(header, column)) missing_.push_back(column);
  }
}

void Loader::make_kind(const RecordType &type, const std::vector<std::string> &header) {
  Kind kind;
  kind.type = &type;
  const std::string prefix = length_prefix(*layout_, type);
  kind.blank = prefix + std::string(type.bytes, '\0');
  for (const Field &fill : type.fill) {
    std::copy(fill.params.fill.begin(), fill.params.fill.end(),
              kind.blank.begin() + static_cast<std::ptrdiff_t>(prefix.size() + fill.offset));
  }
  for (const Field &field : type.fields) {
    if (holds_name(header, field.column)) continue;
    const char no_text[1 + scan::kPadding] = {};
    auto *record = reinterpret_cast<unsigned char *>(kind.blank.data()) + prefix.size();
    field.type->take(record + field.offset, {no_text, 0}, field.params);
  }
  for (std::size_t i = 0; i < header.size(); ++i) {
    Cell cell;
    cell.ignored = ignored_[i];
    for (const Column &column : type.columns) {
      if (column.name != header[i] || cell.ignored) continue;
      for (const std::size_t place : column.fields) cell.fields.push_back(&type.fields[place]);
    }
    if (cell.fields.size() == 1) {
      cell.take = cell.fields[0]->type->take;
      cell.params = &cell.fields[0]->params;
      cell.offset = cell.fields[0]->offset;
    }
    kind.cells.push_back(std::move(cell));
  }
  kinds_.push_back(std::move(kind));
}

const Loader::Kind *Loader::kind_of(const std::vector<CsvCell> &row) const {
  if (kind_column_ == SIZE_MAX) return kinds_.data();
  for (const Kind &kind : kinds_) {
    if (kind.type->name == row[kind_column_].view()) return &kind;
  }
  return nullptr;
}

// A cell of several fields is cut at the text that joins them.
const char *Loader::take(const Cell &cell, const CsvCell &value, unsigned char *record) const {
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
    std::string text(part);
    text.resize(part.size() + 1 + scan::kPadding);
    const char *what =
        field.type->take(record + field.offset, {text.data(), part.size()}, field.params);
    if (what != nullptr) lost = what;
  }
  return lost;
}

// A cell that is not that of one field alone.
const char *Loader::take_other(const Cell &cell, std::size_t column, const CsvCell &value,
                               unsigned char *record) const {
  if (!cell.fields.empty()) return take(cell, value, record);
  const bool stored_nowhere = !cell.ignored && column != kind_column_ && value.length != 0;
  return stored_nowhere ? "the record has no such field" : nullptr;
}

void Loader::lose(LoadedBlock &block, std::size_t column, const CsvCell &value,
                  const char *what) const {
  block.lost.add(header_[column], what,
                 {block.rows + 1, block.csv.offset + value.at, std::string(value.view())});
}

bool Loader::load_row(LoadedBlock &block, const std::vector<CsvCell> &row) const {
  const Kind *kind = row.size() == header_.size() ? kind_of(row) : nullptr;
  if (kind == nullptr) {
    block.fault =
        row.size() == header_.size()
            ? "no kind of record is called \"" + std::string(row[kind_column_].view()) + "\""
            : std::to_string(row.size()) + " cells, expected " + std::to_string(header_.size());
    block.fault_at = block.csv.offset + row[0].at;
    return false;
  }
  char *out = block.records.reserve(kind->blank.size());
  std::memcpy(out, kind->blank.data(), kind->blank.size());
  auto *record = reinterpret_cast<unsigned char *>(out) + (kind->blank.size() - kind->type->bytes);
  for (std::size_t i = 0; i < row.size(); ++i) {
    const Cell &cell = kind->cells[i];
    const CsvCell &value = row[i];
    const char *lost = cell.take != nullptr
                           ? cell.take(record + cell.offset, value.view(), *cell.params)
                           : take_other(cell, i, value, record);
    if (block.csv.has_nul && std::memchr(value.text, 0, value.length) != nullptr) {
      lost = "a NUL byte, which ends the text";
    }
    if (lost != nullptr) lose(block, i, value, lost);
  }
  block.records.end(out + kind->blank.size());
  return true;
}

void Loader::load(LoadedBlock &block, bool stop) const {
  block.records.clear();
  block.lost = Tally();
  block.rows = 0;
  block.fault.clear();
  block.stopped = false;
  CsvRows rows(block.csv);
  std::vector<CsvCell> row;
  while (rows.next(row)) {
    if (row.size() == 1 && row[0].length == 0 && header_.size() > 1) continue;
    const std::size_t before = block.records.view().size();
    if (!load_row(block, row)) return;
    if (stop && !block.lost.empty()) {
      block.records.end(block.records.view().data() + before);
      block.stopped = true;
      return;
    }
    ++block.rows;
  }
  if (rows.fault().what != nullptr) {
    block.fault = rows.fault().what;
    block.fault_at = block.csv.offset + rows.fault().at;
  }
}

}  // namespace campotipo::tool
