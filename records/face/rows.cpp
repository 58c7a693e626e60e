#include <campotipo-records/records.h>

#include "columns/plan.hpp"
#include "face/errors.hpp"
#include "face/objects.hpp"
#include "rows/row_writer.hpp"

namespace records = campotipo::records;
namespace face = campotipo::records::face;

struct campotipo_rows {
  std::unique_ptr<campotipo_reader> reader;
  std::vector<records::RowWriter> writers;  // one a kind
  const records::RecordType *kind = nullptr;
  std::string header;
  records::Buffer text;
};

namespace {

std::vector<std::string> names_of(const campotipo_rows_options &options) {
  std::vector<std::string> names;
  for (std::size_t i = 0; options.fields != nullptr && i < options.n_fields; ++i) {
    names.emplace_back(options.fields[i]);
  }
  return names;
}

std::unique_ptr<campotipo_rows> rows_of(campotipo_reader *reader,
                                        const campotipo_rows_options *options) {
  campotipo_rows_options told = {};
  told.size = sizeof told;
  if (options != nullptr) {
    face::check_size(options, "rows_options");
    told = *options;
  }
  if (told.format != CAMPOTIPO_ROWS_CSV && told.format != CAMPOTIPO_ROWS_NDJSON) {
    face::refuse("format is not known");
  }
  const records::Layout &layout = *reader->layout;
  auto rows = std::make_unique<campotipo_rows>();
  if (told.kind != nullptr && *told.kind != '\0')
    rows->kind = &records::kind_for(layout, told.kind);
  const auto columns = records::chosen_columns(layout, names_of(told), rows->kind);
  const bool hex = told.hex != 0;
  const std::string end = told.line_feeds != 0 ? "\n" : "\r\n";
  if (told.format == CAMPOTIPO_ROWS_NDJSON) {
    rows->writers = records::json_writers(layout, columns, hex, rows->kind);
  } else {
    rows->writers = records::csv_writers(layout, columns, hex, end, rows->kind);
    if (told.no_header == 0)
      rows->header = records::csv_header(layout, columns, hex, end, rows->kind);
  }
  return rows;
}

}  // namespace

extern "C" {

campotipo_status campotipo_rows_open(campotipo_reader *reader,
                                     const campotipo_rows_options *options, campotipo_rows **rows,
                                     campotipo_error *error) {
  return face::guarded(error, [&] {
    if (reader == nullptr || rows == nullptr) face::refuse("reader and rows have to be told");
    std::unique_ptr<campotipo_rows> made = rows_of(reader, options);
    made->reader.reset(reader);
    *rows = made.release();
    return CAMPOTIPO_OK;
  });
}

void campotipo_rows_free(campotipo_rows *rows) { delete rows; }

campotipo_status campotipo_rows_next(campotipo_rows *rows, const char **text, size_t *bytes,
                                     campotipo_error *error) {
  return face::guarded(error, [&] {
    if (rows == nullptr || text == nullptr || bytes == nullptr) {
      face::refuse("rows, text and bytes have to be told");
    }
    rows->text.clear();
    rows->text.append(rows->header);
    rows->header.clear();
    while (rows->text.empty()) {
      if (!face::next_block(*rows->reader)) return CAMPOTIPO_END;
      const records::RecordBlock &block = rows->reader->block;
      const records::RecordType *first = rows->reader->layout->types.data();
      for (const records::RecordBlock::Record &record : block.records) {
        if (rows->kind != nullptr && record.type != rows->kind) continue;
        rows->writers[static_cast<std::size_t>(record.type - first)].run(block.record(record),
                                                                         rows->text);
      }
    }
    *text = rows->text.view().data();
    *bytes = rows->text.view().size();
    return CAMPOTIPO_OK;
  });
}

}  // extern "C"
