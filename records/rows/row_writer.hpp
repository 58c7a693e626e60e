#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "layout/layout.hpp"
#include "rows/buffer.hpp"

namespace campotipo::records {

// What stands between the quotes, commas and braces of an output: decided once for a kind of
// record, then run for each record.
class RowWriter {
 public:
  enum class Style : std::uint8_t {
    kRaw,           // needs nothing
    kCsv,           // quotes where the text needs them
    kCsvAlone,      // the same, and "" for no text: the only cell of a row
    kJson,          // between quotes, with escapes
    kJsonOrNull,    // null for no text
    kNumber,        // a number of JSON
    kNumberOrNull,  // the same, null for no text, a string for a text that is no number
    kHex,           // the bytes in hexadecimal digits
  };

  // What is written, in this order. The fields have to outlive the writer.
  void text(std::string_view text);
  void value(const Field &field, Style style);

  // The same for one of the fields that share a column: null where no field of it has a value.
  void member(const RecordType &type, const Column &column, const Field &field, Style style);

  void cell(const RecordType &type, const Column &column, Style style);

  // Writes one record.
  void run(const unsigned char *record, Buffer &out) const;

 private:
  struct Step {
    decltype(FieldType::put) put = nullptr;  // null: of several fields
    const Params *params = nullptr;
    std::uint32_t offset = 0;
    std::uint32_t bytes = 0;
    std::uint32_t prefix = 0;  // place in `literals_` of what stands before the value
    std::uint32_t prefix_length = 0;
    Style style = Style::kRaw;
    std::uint32_t shared = 0;  // place in `shared_`, counted from 1; 0: the column is its own
  };

  char *put_prefix(const Step &step, char *out) const;
  char *run_quoted(const unsigned char *record, char *out) const;
  char *run_styled(const Step &step, const unsigned char *record, char *out) const;
  char *run_shared(const Step &step, const unsigned char *record, char *out) const;
  bool is_empty(const Step &step, const unsigned char *record, char *scratch) const;
  Step step_of(const Field &field, Style style) const;
  void add(Step step, std::size_t room);
  std::size_t share(Step &step, const RecordType &type, const Column &column);

  std::vector<Step> steps_;
  std::vector<std::vector<const Field *>> shared_;
  std::string literals_;
  std::size_t told_ = 0;  // bytes of `literals_` that steps begin with; the rest ends the record
  std::size_t room_ = 64;
  std::size_t commas_ = 0;  // in front of the values
  bool plain_ = true;       // cells of CSV alone, which seldom need quotes
};

// The columns that an output shows, of those that the layout knows; all of them where no name is
// given. A name may be that of a column, a field, a repeated field or a group. kind: the only one
// whose records are wanted; null: all.
std::vector<std::string> chosen_columns(const Layout &layout, const std::vector<std::string> &names,
                                        const RecordType *kind = nullptr);

// The writers of a layout, one for each kind of record, in the order of its kinds. `layout` has to
// outlive them. Where one kind alone is wanted its rows do not tell it.
std::vector<RowWriter> csv_writers(const Layout &layout, const std::vector<std::string> &columns,
                                   bool hex, const std::string &line_end,
                                   const RecordType *kind = nullptr);
std::vector<RowWriter> json_writers(const Layout &layout, const std::vector<std::string> &columns,
                                    bool hex, const RecordType *kind = nullptr);

// The row of names in front of the records.
std::string csv_header(const Layout &layout, const std::vector<std::string> &columns, bool hex,
                       const std::string &line_end, const RecordType *kind = nullptr);

}  // namespace campotipo::records
