#include "columns/encoder.hpp"

#include <algorithm>
#include <cstring>
#include <set>

#include "errors/error.hpp"
#include "findings/finding_counts.hpp"
#include "rows/loader.hpp"
#include "text/nearest.hpp"

namespace campotipo::records {

namespace {

// A block stays in the cache while each column goes over it.
constexpr std::size_t kBlockBytes = 128U << 10;
constexpr std::size_t kMostRows = 1024;

[[noreturn]] void refuse(const std::string &what) { throw Error(ErrorCode::kArgument, what); }

bool told_beside(const std::string &name) {
  return name == "_record" || name == "_file" || name == "_fault";
}

void check_table(const ArrowSchema &schema, const ArrowArray &array) {
  if (schema.release == nullptr || array.release == nullptr) refuse("the table is released");
  if (schema.format == nullptr || std::strcmp(schema.format, "+s") != 0) {
    refuse("a table is expected: a struct whose children are its columns");
  }
  if (array.length < 0 || array.offset < 0 || schema.n_children != array.n_children ||
      (schema.n_children != 0 && (schema.children == nullptr || array.children == nullptr))) {
    refuse("the table does not follow its schema");
  }
  for (std::int64_t i = 0; i < schema.n_children; ++i) {
    const ArrowArray *column = array.children[i];
    if (schema.children[i] == nullptr || column == nullptr ||
        column->length < array.offset + array.length) {
      refuse("the table does not follow its schema");
    }
  }
  const auto *validity = array.n_buffers > 0 && array.buffers != nullptr
                             ? static_cast<const unsigned char *>(array.buffers[0])
                             : nullptr;
  for (std::int64_t i = array.offset; validity != nullptr && i < array.offset + array.length; ++i) {
    if ((validity[i / 8] >> i % 8 & 1) == 0) {
      refuse("row " + std::to_string(i - array.offset + 1) + " of the table is null");
    }
  }
}

}  // namespace

Encoder::Encoder(const Layout &layout, const RecordType &kind, const ArrowSchema &schema,
                 const ArrowArray &array, const std::vector<std::string> &ignored)
    : layout_(&layout), kind_(&kind), array_(&array), stored_(kind.fields.size()) {
  check_table(schema, array);
  match(schema, ignored);
  make_blank();
}

void Encoder::match(const ArrowSchema &schema, const std::vector<std::string> &ignored) {
  std::set<std::string_view> seen;
  std::vector<std::string> known;
  for (const Field &field : kind_->fields) known.push_back(field.flat);
  for (std::int64_t i = 0; i < schema.n_children; ++i) {
    const ArrowSchema &child = *schema.children[i];
    const std::string name = child.name == nullptr ? "" : child.name;
    if (told_beside(name) || std::find(ignored.begin(), ignored.end(), name) != ignored.end()) {
      continue;
    }
    const auto found = std::find(known.begin(), known.end(), name);
    if (found == known.end()) {
      const std::string near = nearest(name, known);
      refuse("the kind \"" + kind_->name + "\" has no field \"" + shortened(name) + "\"" +
             (near.empty() ? "" : ", expected \"" + near + "\"?"));
    }
    const auto place = static_cast<std::size_t>(found - known.begin());
    if (!seen.insert(known[place]).second) refuse("two columns are called \"" + name + "\"");
    const Field &field = kind_->fields[place];
    stored_[place] = true;
    fields_.emplace_back(field, InputColumn(child, *array_->children[i], name), names_.size(),
                         empty_of(field));
    names_.push_back(name);
  }
}

// The stored form of no value: what tells the kind is filled where there is one form of it.
std::string Encoder::empty_of(const Field &field) const {
  if (layout_->several() && &field == &kind_->fields[kind_->select] && kind_->when.size() == 1) {
    return kind_->when[0];
  }
  std::string stored(field.bytes, '\0');
  field.type->take(reinterpret_cast<unsigned char *>(stored.data()), PaddedText(), field.params);
  return stored;
}

void Encoder::make_blank() {
  const std::string prefix = length_prefix(*layout_, *kind_);
  in_front_ = prefix.size();
  blank_ = prefix + std::string(kind_->bytes, '\0');
  auto *record = reinterpret_cast<unsigned char *>(blank_.data()) + in_front_;
  for (const Field &filler : kind_->fillers) {
    std::copy(filler.params.fill.begin(), filler.params.fill.end(), record + filler.offset);
  }
  for (std::size_t i = 0; i < kind_->fields.size(); ++i) {
    if (stored_[i]) continue;
    const Field &field = kind_->fields[i];
    add_stored(record + field.offset, empty_of(field));
  }
}

void Encoder::check_kind(const EncodedBlock &block, std::uint64_t before) const {
  if (!layout_->several()) return;
  const auto *at = reinterpret_cast<const unsigned char *>(block.records.view().data());
  for (std::size_t i = 0; i < block.rows; ++i, at += blank_.size()) {
    if (layout_->type_of(at + in_front_) == kind_) continue;
    const Field &select = kind_->fields[kind_->select];
    Error error(ErrorCode::kRecord, "record " + std::to_string(before + i + 1) + ": field " +
                                        select.flat + ": \"" +
                                        shortened(field_text(select, at + in_front_)) +
                                        "\" does not tell the kind \"" + kind_->name + "\"");
    error.record = before + i + 1;
    error.kind = kind_->name;
    error.field = select.flat;
    throw error;
  }
}

bool Encoder::next(EncodedBlock &block, std::uint64_t before) {
  block.records.clear();
  block.lost.clear();
  const auto left = static_cast<std::size_t>(array_->length - done_);
  const std::size_t most = std::clamp<std::size_t>(kBlockBytes / blank_.size(), 1, kMostRows);
  block.rows = std::min(left, most);
  if (block.rows == 0) return false;
  const std::size_t size = blank_.size();
  char *out = block.records.reserve(block.rows * size);
  for (std::size_t i = 0; i < block.rows; ++i) std::memcpy(out + i * size, blank_.data(), size);
  block.records.end(out + block.rows * size);
  const EncodeRows rows = {array_->offset + done_, block.rows,
                           reinterpret_cast<unsigned char *>(out) + in_front_, size};
  for (FieldEncoder &field : fields_) field.run(rows, block.lost);
  std::stable_sort(block.lost.begin(), block.lost.end(),
                   [](const EncodeLoss &a, const EncodeLoss &b) { return a.row < b.row; });
  check_kind(block, before);
  done_ += static_cast<std::int64_t>(block.rows);
  return true;
}

}  // namespace campotipo::records
