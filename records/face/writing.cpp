#include "face/writing.hpp"

#include "face/errors.hpp"

namespace campotipo::records::face {

namespace {

std::string around(const Margin &margin, const void *given, std::size_t bytes, const char *name) {
  std::string content = margin.content;
  content.resize(margin.bytes);
  if (given == nullptr) return content;
  if (bytes != margin.bytes) {
    throw Error(ErrorCode::kArgument, std::string("a ") + name + " of " + std::to_string(bytes) +
                                          " bytes is given, the layout has one of " +
                                          std::to_string(margin.bytes));
  }
  return {static_cast<const char *>(given), bytes};
}

// Whether there is a value for the field at all: a total may be that of what another field tells.
bool is_told(const RecordType &type, const FieldRules &rules, const unsigned char *record) {
  return rules.total.by == Total::kNone || !field_text(type.fields[rules.total.by], record).empty();
}

void refuse_holes(const MadeRecords &made, std::uint64_t before) {
  for (const MadeRecords::Hole &hole : made.holes) {
    const RecordType &type = *made.made[hole.record].type;
    const auto *record = reinterpret_cast<const unsigned char *>(made.records.view().data()) +
                         made.made[hole.record].at;
    if (!is_told(type, *hole.rules, record)) continue;
    const std::string &field = type.fields[hole.rules->field].flat;
    Error error(ErrorCode::kValue, "record " + std::to_string(before + hole.record + 1) +
                                       ": field " + field +
                                       ": has no value, and only the whole file tells it");
    error.record = before + hole.record + 1;
    error.kind = type.name;
    error.field = field;
    throw error;
  }
}

}  // namespace

Writing::Writing(std::shared_ptr<const Layout> layout, const campotipo_sink &sink,
                 const campotipo_loader_options &options)
    : layout_(std::move(layout)),
      sink_(sink),
      lossy_(options.lossy != 0),
      bare_(options.bare != 0),
      lost_(options.lost),
      context_(options.context),
      filler_(*layout_),
      holds_(options.bare == 0 && Filler::patches(*layout_)) {
  for (std::size_t i = 0; options.ignored != nullptr && i < options.n_ignored; ++i) {
    ignored_.emplace_back(options.ignored[i]);
  }
  if (options.bare != 0) return;
  header_ = around(layout_->header, options.header, options.header_bytes, "header");
  trailer_ = around(layout_->trailer, options.trailer, options.trailer_bytes, "trailer");
}

void Writing::check_open() const {
  if (ended_) refuse("the file is finished, or an error has ended it");
}

void Writing::lose(const Error &loss) {
  ++losses_;
  if (!lossy_ && lost_ == nullptr) throw Error(loss);
  if (lost_ == nullptr) return;
  campotipo_error told = {};
  told.size = sizeof told;
  tell(&told, loss);
  lost_(context_, &told);
}

void Writing::put(MadeRecords &made, std::uint64_t records) {
  records_ += records;
  if (!lossy_ && losses_ != 0) return;
  begin();
  if (bare_) {
    refuse_holes(made, records_ - records);
  } else {
    filler_.fill(made, written_);
  }
  write(made.records.view());
}

void Writing::begin() {
  if (!begun_) write(header_);
  begun_ = true;
}

void Writing::write(std::string_view bytes) {
  written_ += bytes.size();
  if (holds_) {
    held_ += bytes;
  } else {
    flush(bytes);
  }
}

void Writing::flush(std::string_view bytes) {
  if (bytes.empty()) return;
  if (sink_.write(sink_.context, bytes.data(), bytes.size()) == 0) return;
  throw Error(ErrorCode::kOutput, "the records cannot be written");
}

void Writing::finish() {
  check_open();
  ended_ = true;
  if (!lossy_ && losses_ != 0) {
    throw Error(ErrorCode::kValue, std::to_string(losses_) +
                                       (losses_ == 1 ? " value is" : " values are") +
                                       " not stored whole: refused");
  }
  begin();
  write(trailer_);
  for (const Filler::Patch &patch : filler_.finish()) {
    held_.replace(patch.place, patch.bytes.size(), patch.bytes);
  }
  flush(held_);
}

}  // namespace campotipo::records::face
