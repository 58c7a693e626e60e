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

}  // namespace

Writing::Writing(std::shared_ptr<const Layout> layout, const campotipo_sink &sink,
                 const campotipo_loader_options &options)
    : layout_(std::move(layout)),
      sink_(sink),
      lossy_(options.lossy != 0),
      bare_(options.bare != 0),
      filler_(*layout_),
      lost_(options.lost),
      context_(options.context) {
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

void Writing::fill(Buffer &records, const Unfilled &unfilled) {
  if (bare_ && !unfilled.holes.empty()) {
    const Unfilled::Hole &hole = unfilled.holes[0];
    const RecordType &type = *unfilled.made[hole.record].type;
    throw Error(ErrorCode::kValue, "field " + type.fields[hole.rules->field].name +
                                       ": a value is missing that only the whole file tells");
  }
  filler_.fill(records, unfilled, 0);
}

void Writing::put(std::string_view bytes, std::uint64_t records) {
  records_ += records;
  if (!lossy_ && losses_ != 0) return;
  begin();
  write(bytes);
}

void Writing::begin() {
  if (!begun_) write(header_);
  begun_ = true;
}

void Writing::write(std::string_view bytes) {
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
  if (!filler_.finish().empty()) {
    throw Error(ErrorCode::kValue,
                "a count or sum of the whole file is missing in a record that is not the last one");
  }
  begin();
  write(trailer_);
}

}  // namespace campotipo::records::face
