#include "columns/encoder.hpp"

#include <algorithm>
#include <cstring>
#include <set>

#include "errors/error.hpp"
#include "findings/finding_counts.hpp"
#include "rules/field_rules.hpp"
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
                         empty_of(field), hole_of(field));
    names_.push_back(name);
  }
}

// The stored form of no value: what has one form alone is filled.
std::string Encoder::empty_of(const Field &field) const {
  const std::string *constant = constant_of(*kind_, field);
  if (constant != nullptr) return *constant;
  std::string stored(field.bytes, '\0');
  field.type->take(reinterpret_cast<unsigned char *>(stored.data()), PaddedText(), field.params);
  return stored;
}

const FieldRules *Encoder::hole_of(const Field &field) const {
  if (constant_of(*kind_, field) != nullptr) return nullptr;
  const FieldRules *rules = rules_of(*kind_, field);
  return rules != nullptr && rules->follows() ? rules : nullptr;
}

void Encoder::make_blank() {
  blank_ = BlankRecord(*layout_, *kind_);
  auto *record = reinterpret_cast<unsigned char *>(blank_.bytes.data()) + blank_.before;
  for (std::size_t i = 0; i < kind_->fields.size(); ++i) {
    if (stored_[i]) continue;
    const Field &field = kind_->fields[i];
    put_stored(record + field.offset, empty_of(field));
    if (hole_of(field) != nullptr) missing_.push_back(hole_of(field));
  }
}

// What ends a line inside a record would make two of it.
void Encoder::look_at_line(std::size_t row, const unsigned char *record, EncodeNotes &notes) const {
  const Field *field = field_with_line_end(*layout_, *kind_, record);
  if (field == nullptr) return;
  const auto column = std::find(names_.begin(), names_.end(), field->flat) - names_.begin();
  notes.lost.push_back({row, static_cast<std::size_t>(column), "holds the end of a line",
                        field_text(*field, record)});
}

// What the records as a whole are, and where values have to be filled in.
void Encoder::look_at(EncodedBlock &block, EncodeNotes &notes, std::uint64_t before) const {
  const std::size_t size = blank_.bytes.size();
  const bool follows = std::any_of(layout_->types.begin(), layout_->types.end(), has_followers);
  const auto *record =
      reinterpret_cast<const unsigned char *>(block.records.view().data()) + blank_.before;
  for (std::size_t i = 0; i < block.rows; ++i, record += size) {
    if (follows) {
      block.made.push_back({i * size + blank_.before, kind_});
      for (const FieldRules *rules : missing_) notes.holes.push_back({i, rules});
    }
    look_at_line(i, record, notes);
    const std::string wrong = contradiction(
        *layout_, *kind_, record, [&](const Field &field) { return field_text(field, record); });
    if (wrong.empty()) continue;
    Error error(ErrorCode::kRecord, "record " + std::to_string(before + i + 1) + ": " + wrong);
    error.record = before + i + 1;
    error.kind = kind_->name;
    throw error;
  }
}

bool Encoder::next(EncodedBlock &block, std::uint64_t before) {
  const std::size_t size = blank_.bytes.size();
  block.records.clear();
  block.made.clear();
  const auto left = static_cast<std::size_t>(array_->length - done_);
  block.rows = std::min(left, std::clamp<std::size_t>(kBlockBytes / size, 1, kMostRows));
  if (block.rows == 0) return false;
  char *out = block.records.reserve(block.rows * size);
  for (std::size_t i = 0; i < block.rows; ++i) {
    std::memcpy(out + i * size, blank_.bytes.data(), size);
  }
  block.records.end(out + block.rows * size);
  const EncodeRows rows = {array_->offset + done_, block.rows,
                           reinterpret_cast<unsigned char *>(out) + blank_.before, size};
  EncodeNotes notes;
  for (FieldEncoder &field : fields_) field.run(rows, notes);
  // A layout of one kind that asks nothing of a record as a whole takes each.
  if (layout_->lines() || layout_->several() || !kind_->when.empty() || !kind_->rules.empty()) {
    look_at(block, notes, before);
  }
  std::stable_sort(notes.lost.begin(), notes.lost.end(),
                   [](const auto &a, const auto &b) { return a.row < b.row; });
  std::stable_sort(notes.holes.begin(), notes.holes.end(),
                   [](const auto &a, const auto &b) { return a.record < b.record; });
  block.lost = std::move(notes.lost);
  block.holes = std::move(notes.holes);
  done_ += static_cast<std::int64_t>(block.rows);
  return true;
}

}  // namespace campotipo::records
