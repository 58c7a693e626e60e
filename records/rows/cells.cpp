#include "rows/cells.hpp"

#include "text/scan.hpp"

namespace campotipo::records {

Cells::Cells(const Layout &layout, const std::vector<std::string> &columns, bool hex,
             const RecordType *kind)
    : layout_(&layout), writers_(csv_writers(layout, columns, hex, "\n", kind)) {}

std::vector<std::string> Cells::of(const RecordType &type, const unsigned char *record) {
  row_.clear();
  writers_[static_cast<std::size_t>(&type - layout_->types.data())].run(record, row_);
  const std::string_view row = row_.view();
  block_.bytes.assign(row.begin(), row.end());
  block_.bytes.resize(row.size() + scan::kPadding);
  block_.size = row.size();
  CsvRows(block_).next(cells_);
  std::vector<std::string> texts;
  texts.reserve(cells_.size());
  for (const PaddedText &cell : cells_) texts.emplace_back(cell.view());
  return texts;
}

}  // namespace campotipo::records
