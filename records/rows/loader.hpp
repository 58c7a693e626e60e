#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "findings/finding_counts.hpp"
#include "layout/layout.hpp"
#include "rows/made_records.hpp"
#include "text/csv.hpp"

namespace campotipo::records {

// What became of the rows of a block. Records and lines are numbered from 1 on in the block.
struct LoadedBlock : MadeRecords {
  CsvBlock csv;
  FindingCounts lost;
  std::uint64_t rows = 0;
  std::uint64_t lines = 0;

  std::string fault;  // why the row behind the last one cannot be used; empty: none
  std::uint64_t fault_line = 0;
};

// Turns rows of CSV into records of a layout: the columns are matched with the fields once, then
// each cell goes straight into its place.
class Loader {
 public:
  // The names of the columns as the file tells them; those in `ignored` are left out. Throws an
  // Error for a column that the layout does not know.
  // kind: that of all rows, which then do not tell it; null: they do, where there are several.
  Loader(const Layout &layout, const std::vector<std::string> &header,
         const std::vector<std::string> &ignored, const std::string &file,
         const RecordType *kind = nullptr);

  // Ends at a row that is no record. places: how many are kept of each loss.
  void load(LoadedBlock &block, std::size_t places = FindingCounts::kPlaces) const;

  // Columns of the layout that the file does not have.
  const std::vector<std::string> &missing() const { return missing_; }

 private:
  static constexpr std::size_t kNone = SIZE_MAX;

  struct Cell {
    decltype(FieldType::take) take = nullptr;  // of the one field, where it is one
    const Params *params = nullptr;
    std::size_t offset = 0;
    std::vector<const Field *> fields;  // none: the cell is not stored
  };
  struct Kind {
    const RecordType *type = nullptr;
    BlankRecord blank;
    std::vector<Cell> cells;
    std::vector<const FieldRules *> missing;  // that follow from other records, without a column
  };

  void match(const std::vector<std::string> &ignored, const std::string &file);
  void make_kind(const RecordType &type);
  const Kind *kind_of(const std::vector<PaddedText> &row) const;
  bool load_row(LoadedBlock &block, const CsvRows &rows, const std::vector<PaddedText> &row) const;
  void refuse_line_end(LoadedBlock &block, const Kind &kind, const unsigned char *record,
                       const CsvRows &rows) const;
  using Holes = std::vector<const FieldRules *>;
  const char *take_other(const Kind &kind, std::size_t column, PaddedText value,
                         unsigned char *record, Holes &holes) const;
  const char *take_parts(const Kind &kind, const Cell &cell, PaddedText value,
                         unsigned char *record, Holes &holes) const;

  // The columns that rows may have.
  std::vector<std::string> known_columns() const;

  const Layout *layout_;
  const RecordType *only_;
  std::vector<std::string> header_;
  std::map<std::string_view, std::size_t> columns_;  // places in `header_`
  std::vector<bool> ignored_;
  std::vector<Kind> kinds_;
  std::size_t kind_column_ = kNone;
  std::vector<std::string> missing_;
  bool follows_ = false;  // some values follow from other records
};

}  // namespace campotipo::records
