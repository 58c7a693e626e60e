#pragma once

#include <string>
#include <vector>

#include "layout/layout.hpp"
#include "rows/buffer.hpp"
#include "rows/row_writer.hpp"
#include "text/csv.hpp"

namespace campotipo::records {

// The cells of a record as a row of CSV holds them, without its quotes.
class Cells {
 public:
  Cells(const Layout &layout, const std::vector<std::string> &columns, bool hex,
        const RecordType *kind = nullptr);

  std::vector<std::string> of(const RecordType &type, const unsigned char *record);

 private:
  const Layout *layout_;
  std::vector<RowWriter> writers_;
  Buffer row_;
  CsvBlock block_;
  std::vector<PaddedText> cells_;
};

}  // namespace campotipo::records
