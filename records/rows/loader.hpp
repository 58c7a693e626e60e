#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "findings/losses.hpp"
#include "layout/layout.hpp"
#include "rows/buffer.hpp"
#include "text/csv.hpp"

namespace campotipo::tool {

// What became of the rows of a block.
struct LoadedBlock {
  CsvBlock csv;
  Buffer records;
  Tally lost;  // records numbered from 1 on in this block
  std::uint64_t rows = 0;
  std::string fault;           // why the row behind the last one cannot be used; empty: none
  std::uint64_t fault_at = 0;  // in the file
  bool stopped = false;        // at the first value lost
};

// Turns rows of CSV into records of a layout: the columns are matched with the fields once, then
// each cell goes straight into its place.
class Loader {
 public:
  // The names of the columns as the file tells them; those in `ignored` are left out. Throws a
  // Failure for a column that the layout does not know.
  Loader(const Layout &layout, const std::vector<std::string> &header,
         const std::vector<std::string> &ignored, const std::string &file);

  // stop: nothing is loaded behind the first record that loses a value, nor that record.
  void load(LoadedBlock &block, bool stop) const;

  // Columns of the layout that the file does not have.
  const std::vector<std::string> &missing() const { return missing_; }

 private:
  struct Cell {
    decltype(FieldType::take) take = nullptr;  // of the one field, where it is one
    const Params *params = nullptr;
    std::size_t offset = 0;
    std::vector<const Field *> fields;  // none: the cell is not stored
    bool ignored = false;
  };
  struct Kind {
    const RecordType *type = nullptr;
    std::string blank;  // a record without values
    std::vector<Cell> cells;
  };

  void match(const std::vector<std::string> &header, const std::vector<std::string> &ignored,
             const std::string &file);
  void make_kind(const RecordType &type, const std::vector<std::string> &header);
  const Kind *kind_of(const std::vector<CsvCell> &row) const;
  bool load_row(LoadedBlock &block, const std::vector<CsvCell> &row) const;
  const char *take_other(const Cell &cell, std::size_t column, const CsvCell &value,
                         unsigned char *record) const;
  const char *take(const Cell &cell, const CsvCell &value, unsigned char *record) const;
  void lose(LoadedBlock &block, std::size_t column, const CsvCell &value, const char *what) const;

  const Layout *layout_;
  std::vector<std::string> header_;
  std::vector<bool> ignored_;
  std::vector<Kind> kinds_;
  std::size_t kind_column_ = SIZE_MAX;
  std::vector<std::string> missing_;
};

// The bytes that stand in front of a record of the kind.
std::string length_prefix(const Layout &layout, const RecordType &type);

}  // namespace campotipo::tool
