#include <campotipo-records/records.h>

#include <algorithm>
#include <optional>

#include "columns/arrow.hpp"
#include "face/arrow_stream.hpp"
#include "face/errors.hpp"
#include "face/objects.hpp"
#include "findings/validator.hpp"

namespace records = campotipo::records;
namespace face = campotipo::records::face;

namespace campotipo::records::face {

namespace {

constexpr std::size_t kBatchRows = 65536;

const std::vector<TableColumn> &columns() {
  static const std::vector<TableColumn> all = {
      {"_file", {Physical::kUtf8}}, {"_record", {Physical::kInt64}}, {"line", {Physical::kInt64}},
      {"byte", {Physical::kInt64}}, {"kind", {Physical::kUtf8}},     {"field", {Physical::kUtf8}},
      {"what", {Physical::kUtf8}},  {"value", {Physical::kUtf8}}};
  return all;
}

// The findings of a file as a table, block by block.
class Findings : public ArrowStream {
 public:
  Findings(const campotipo_reader &reader, const campotipo_check_options &options)
      : file_(options.file != nullptr ? options.file : reader.source->name()),
        batch_rows_(options.batch_rows != 0 ? options.batch_rows : kBatchRows),
        validator_(*reader.layout, file_) {
    validator_.each([this](const Finding &finding) { found_.push_back(finding); });
    if (reader.skip) validator_.skip_unknown();
    if (options.part == CAMPOTIPO_CHECK_VALUES) validator_.leave_out_file();
    if (options.part == CAMPOTIPO_CHECK_FILE) validator_.leave_out_values();
  }

  void own(campotipo_reader *reader) { reader_.reset(reader); }

 private:
  void make_schema(ArrowSchema *out) override { export_schema(columns(), out); }

  void make_next(ArrowArray *out) override {
    if (taken_ == found_.size()) {
      found_.clear();
      taken_ = 0;
    }
    while (found_.size() - taken_ < batch_rows_ && !ended_) look_further();
    const std::size_t rows = std::min(found_.size() - taken_, batch_rows_);
    if (rows == 0) return;
    std::vector<ColumnValues> values(columns().size());
    for (std::size_t i = 0; i < rows; ++i) add(values, i, found_[taken_ + i]);
    export_table(columns(), std::move(values), rows, out);
    taken_ += rows;
  }

  void look_further() {
    if (reader_->stream->read(reader_->block)) {
      validator_.add(reader_->block);
    } else {
      ended_ = true;
      validator_.finish();
    }
  }

  void add(std::vector<ColumnValues> &values, std::size_t row, const Finding &finding) const {
    std::optional<std::int64_t> record;
    if (finding.place.record != 0) record = static_cast<std::int64_t>(finding.place.record);
    append_text(values[0], row, file_);
    append_number(values[1], row, record);
    append_number(values[2], row, reader_->layout->lines() ? record : std::nullopt);
    append_number(values[3], row, static_cast<std::int64_t>(finding.place.offset));
    std::optional<std::string_view> kind;
    std::optional<std::string_view> field;
    if (finding.type != nullptr) kind = finding.type->name;
    if (finding.field != nullptr) field = finding.field->flat;
    append_text(values[4], row, kind);
    append_text(values[5], row, field);
    append_text(values[6], row, word(finding.what));
    append_text(values[7], row, finding.place.value);
  }

  std::string file_;
  std::size_t batch_rows_;
  Validator validator_;
  std::unique_ptr<campotipo_reader> reader_;
  std::vector<Finding> found_;
  std::size_t taken_ = 0;
  bool ended_ = false;
};

}  // namespace

}  // namespace campotipo::records::face

extern "C" {

campotipo_status campotipo_check(campotipo_reader *reader, const campotipo_check_options *options,
                                 struct ArrowArrayStream *out, campotipo_error *error) {
  return face::guarded(error, [&] {
    if (reader == nullptr || out == nullptr) face::refuse("reader and out have to be told");
    campotipo_check_options told = {};
    told.size = sizeof told;
    if (options != nullptr) {
      face::check_size(options, "check_options");
      told = *options;
    }
    if (told.part < CAMPOTIPO_CHECK_ALL || told.part > CAMPOTIPO_CHECK_FILE) {
      face::refuse("part is not known");
    }
    if (!reader->whole && told.part != CAMPOTIPO_CHECK_VALUES) {
      face::refuse("of a range, only the values can be checked: CAMPOTIPO_CHECK_VALUES");
    }
    auto findings = std::make_unique<face::Findings>(*reader, told);
    findings->own(reader);
    face::hand_over(std::move(findings), out);
    return CAMPOTIPO_OK;
  });
}

}  // extern "C"
