#include "columns/encoder.hpp"

#include <algorithm>
#include <cstring>
#include <set>

#include "errors/error.hpp"
#include "findings/finding_counts.hpp"
#include "rows/loader.hpp"
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
                         empty_of(field));
    names_.push_back(name);
  }
}

// The stored form of no value: where there is one form that the field has to have, that.
std::string Encoder::empty_of(const Field &field) const {
  if (const std::string *constant = constant_of(*kind_, field)) return *constant;
  std::string stored(field.bytes, '\0');
  field.type->take(reinterpret_cast<unsigned char *>(stored.data()), PaddedText(), field.params);
  return stored;
}

void Encoder::make_blank() {
  const std::string prefix = length_prefix(*layout_, *kind_);
  in_front_ = prefix.size();
  blank_ = prefix + std::string(kind_->bytes, '\0') + line_end(*layout_);
  auto *record = reinterpret_cast<unsigned char *>(blank_.data()) + in_front_;
  for (const Field &filler : kind_->fillers) {
    std::copy(filler.params.fill.begin(), filler.params.fill.end(), record + filler.offset);
  }
  for (std::size_t i = 0; i < kind_->fields.size(); ++i) {
    if (stored_[i]) continue;
    const Field &field = kind_->fields[i];
    add_stored(record + field.offset, empty_of(field));
    const FieldRules *rules = rules_of(*kind_, field);
    if (rules != nullptr && rules->follows()) missing_.push_back(rules);
  }
  for (const RecordType &type : layout_->types) {
    for (const FieldRules &rules : type.rules) follows_ = follows_ || rules.follows();
  }
}

// The fields whose values follow from other records, where the table has none.
void Encoder::find_unfilled(EncodedBlock &block) const {
  block.unfilled.clear();
  if (!follows_) return;
  for (std::size_t i = 0; i < block.rows; ++i) {
    for (const FieldRules *rules : missing_) block.unfilled.holes.push_back({i, rules});
    for (const FieldEncoder &encoder : fields_) {
      const FieldRules *rules = rules_of(*kind_, encoder.field());
      const bool hole = rules != nullptr && rules->follows() && !encoder.has_value(i);
      if (hole) block.unfilled.holes.push_back({i, rules});
    }
    block.unfilled.made.push_back({i * blank_.size() + in_front_, kind_});
  }
}

// Tells which field is not as the kind has it.
void Encoder::contradict(const unsigned char *record, std::uint64_t number) const {
  std::string field;
  std::string what = "the values do not tell the kind \"" + kind_->name + "\"";
  for (const Field &each : kind_->fields) {
    const std::string *constant = constant_of(*kind_, each);
    const auto *condition = condition_of(*kind_, each);
    const bool fits = condition != nullptr
                          ? kind_->holds(*condition, record)
                          : constant == nullptr || has_form(each, record, *constant);
    if (fits) continue;
    field = each.flat;
    what = "field " + field + ": \"" + shortened(field_text(each, record)) + "\" " +
           (condition != nullptr ? "does not tell the kind \"" + kind_->name + "\""
                                 : "is not the value that it always has");
    break;
  }
  Error error(ErrorCode::kRecord, "record " + std::to_string(number) + ": " + what);
  error.record = number;
  error.kind = kind_->name;
  error.field = field;
  throw error;
}

void Encoder::check_kind(const EncodedBlock &block, std::uint64_t before) const {
  const bool told = layout_->several() || !kind_->when.empty();
  std::vector<const FieldRules *> constants;
  for (const FieldRules &rules : kind_->rules) {
    if (rules.constant) constants.push_back(&rules);
  }
  if (!told && constants.empty() && !layout_->lines()) return;
  const auto *at = reinterpret_cast<const unsigned char *>(block.records.view().data());
  for (std::size_t i = 0; i < block.rows; ++i, at += blank_.size()) {
    const unsigned char *record = at + in_front_;
    const std::uint64_t number = before + i + 1;
    const bool fits = std::all_of(constants.begin(), constants.end(), [&](const auto *rules) {
      return has_form(kind_->fields[rules->field], record, rules->values[0].stored);
    });
    if (!fits || layout_->type_of(record, kind_->bytes) != kind_) contradict(record, number);
    if (!layout_->lines() || line_end_in(*kind_, record) == kind_->bytes) continue;
    Error error(ErrorCode::kRecord,
                "record " + std::to_string(number) + ": a value holds the end of a line");
    error.record = number;
    error.kind = kind_->name;
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
  find_unfilled(block);
  done_ += static_cast<std::int64_t>(block.rows);
  return true;
}

}  // namespace campotipo::records
