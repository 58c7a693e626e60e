#include "findings/validator.hpp"

#include <algorithm>

#include "text/ascii.hpp"
#include "text/quote.hpp"

namespace campotipo::records {

std::string field_label(const Layout &layout, const RecordType &type, const Field &field) {
  return layout.several() ? type.name + "." + field.name : field.name;
}

namespace {

// A value as it stands there, with its bytes and with what it should be.
std::string shown(const Field &field, const unsigned char *bytes, const std::string &expected) {
  std::string record(field.offset, '\0');
  record.append(reinterpret_cast<const char *>(bytes), field.bytes);
  const std::string text =
      field_text(field, reinterpret_cast<const unsigned char *>(record.data()));
  const std::string hex = ascii::hex(bytes, std::min<std::size_t>(field.bytes, 24));
  const std::string value = text.empty() ? "bytes " + hex : shortened(text) + " (" + hex + ")";
  return expected.empty() ? value : value + ", expected " + shortened(expected);
}

}  // namespace

std::string Finding::label(const Layout &layout) const {
  if (type != nullptr && field != nullptr) return field_label(layout, *type, *field);
  return type != nullptr && layout.several() ? type->name + ".(record)" : "(record)";
}

std::string Finding::json(const Layout &layout, const std::string &file) const {
  const std::string record = place.record == 0 ? "null" : std::to_string(place.record);
  return "{\"_file\":" + json_string(file) + ",\"_record\":" + record +
         ",\"line\":" + (layout.lines() ? record : "null") +
         ",\"byte\":" + std::to_string(place.offset) +
         ",\"kind\":" + (type == nullptr ? "null" : json_string(type->name)) +
         ",\"field\":" + (field == nullptr ? "null" : json_string(field->flat)) +
         ",\"what\":" + json_string(word(what)) + ",\"value\":" + json_string(place.value) + "}\n";
}

namespace {

// Looks at the records of a block.
class Examiner {
 public:
  Examiner(const Layout &layout, const RecordBlock &block, std::vector<Finding> &findings)
      : layout_(&layout), block_(&block), findings_(&findings) {}

  void look(const RecordBlock::Record &record) {
    const RecordType &type = *record.type;
    const unsigned char *bytes = block_->record(record);
    for (const Field &field : type.fields) look_at_field(record, field, bytes);
    for (const Field &field : type.fillers) look_at_field(record, field, bytes);
    for (const FieldRules &rules : type.rules) look_at_rules(record, rules, bytes);
    const std::size_t at = layout_->lines() ? line_end_in(type, bytes) : type.bytes;
    if (at == type.bytes) return;
    findings_->push_back({&type,
                          nullptr,
                          What::kLineLength,
                          "the end of a line stands inside the record",
                          {block_->number(record), block_->place(record) + at, "", 0}});
  }

 private:
  void found(const RecordBlock::Record &record, const Field &field, const Breach &breach) {
    const std::string value = shown(field, block_->record(record) + field.offset, breach.expected);
    findings_->push_back(
        {record.type,
         &field,
         breach.what,
         breach.text,
         {block_->number(record), block_->place(record) + field.offset, value, 0}});
  }

  void look_at_field(const RecordBlock::Record &record, const Field &field,
                     const unsigned char *bytes) {
    What what = What::kInvalid;
    const char *fault = field_fault(field, bytes, &what);
    if (fault != nullptr) found(record, field, {what, fault, ""});
  }

  void look_at_rules(const RecordBlock::Record &record, const FieldRules &rules,
                     const unsigned char *bytes) {
    Breach breach;
    if (obeys(*record.type, rules, bytes, breach)) return;
    const Field &field = record.type->fields[rules.field];
    // What is no value is told as such.
    if (field.type->fault(bytes + field.offset, field.params) != nullptr) return;
    found(record, field, breach);
  }

  const Layout *layout_;
  const RecordBlock *block_;
  std::vector<Finding> *findings_;
};

}  // namespace

Validator::Validator(const Layout &layout, std::string file)
    : layout_(&layout), file_(std::move(file)), rules_(layout, [this](const RuleFinding &broken) {
        Location place{broken.record, broken.offset, "", 0};
        if (broken.field != nullptr) {
          const auto *bytes = reinterpret_cast<const unsigned char *>(broken.bytes.data());
          place.value = shown(*broken.field, bytes, broken.breach.expected);
        }
        gathered_.push_back(
            {broken.type, broken.field, broken.breach.what, broken.breach.text, place});
      }) {}

std::vector<Finding> Validator::examine(const RecordBlock &block) const {
  std::vector<Finding> findings;
  if (!looks_at_values_) return findings;
  Examiner examiner(*layout_, block, findings);
  for (const RecordBlock::Record &record : block.records) examiner.look(record);
  return findings;
}

void Validator::found(const Finding &finding) {
  findings_.add(finding.label(*layout_), finding.text, finding.place, finding.what);
  if (each_) each_(finding);
}

void Validator::add(const RecordBlock &block, std::vector<Finding> findings) {
  gathered_ = std::move(findings);
  records_ += block.records.size();
  if (looks_at_values_) add_faults(block);
  if (looks_at_file_) rules_.add(block);
  std::stable_sort(gathered_.begin(), gathered_.end(), [](const Finding &a, const Finding &b) {
    return a.place.offset < b.place.offset;
  });
  for (const Finding &finding : gathered_) found(finding);
  gathered_.clear();
}

void Validator::add_faults(const RecordBlock &block) {
  for (const auto *list : {&block.faults, &block.notes}) {
    for (const StreamFault &fault : *list) {
      if (skip_unknown_ && fault.word == What::kUnknownKind && !fault.fatal) {
        ++skipped_;
        continue;
      }
      gathered_.push_back(
          {nullptr, nullptr, fault.word, fault.what, {fault.record, fault.offset, "", 0}});
    }
  }
}

void Validator::finish() {
  if (looks_at_file_) rules_.finish();
  for (const Finding &finding : gathered_) found(finding);
  gathered_.clear();
}

std::string Validator::summary() const {
  std::string text =
      file_ + ": " + std::to_string(records_) + " records of " + layout_->name + ", ";
  if (skipped_ != 0) text += std::to_string(skipped_) + " of no kind passed over, ";
  if (findings_.empty()) return text + "every value valid";
  return text + std::to_string(findings_.total()) +
         (findings_.total() == 1 ? " finding" : " findings");
}

std::string Validator::json() const {
  std::string out = "{\"file\":" + json_string(file_) +
                    ",\"layout\":" + json_string(layout_->file) +
                    ",\"records\":" + std::to_string(records_) +
                    (skip_unknown_ ? ",\"skipped\":" + std::to_string(skipped_) : "") +
                    ",\"findings\":" + std::to_string(findings_.total()) + ",\"fields\":[";
  bool first = true;
  for (const FindingCounts::Line &line : findings_.lines()) {
    out += std::string(first ? "" : ",") + "{\"field\":" + json_string(line.field) +
           ",\"what\":" + json_string(word(line.word)) + ",\"text\":" + json_string(line.what) +
           ",\"count\":" + std::to_string(line.entry.count) + ",\"places\":[";
    first = true;
    for (const Location &place : line.entry.places) {
      out += std::string(first ? "" : ",") + "{\"record\":" + std::to_string(place.record) +
             ",\"byte\":" + std::to_string(place.offset) +
             ",\"value\":" + json_string(place.value) + "}";
      first = false;
    }
    out += "]}";
    first = false;
  }
  return out + "]}\n";
}

}  // namespace campotipo::records
