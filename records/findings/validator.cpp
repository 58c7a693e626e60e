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

Validator::Validator(const Layout &layout, std::string file)
    : layout_(&layout), file_(std::move(file)), rules_(layout, [this](const RuleFinding &broken) {
        Location place{broken.record, broken.offset, "", 0};
        if (broken.field != nullptr) {
          const auto *bytes = reinterpret_cast<const unsigned char *>(broken.bytes.data());
          place.value = shown(*broken.field, bytes, broken.breach.expected);
        }
        found({broken.type, broken.field, broken.breach.what, broken.breach.text, place});
      }) {}

void Validator::examine(const RecordBlock &block, const RecordBlock::Record &record,
                        const Field &field) {
  const unsigned char *bytes = block.record(record);
  What what = What::kInvalid;
  const char *fault = field_fault(field, bytes, &what);
  if (fault == nullptr) return;
  found({record.type,
         &field,
         what,
         fault,
         {block.number(record), block.place(record) + field.offset,
          shown(field, bytes + field.offset, ""), 0}});
}

void Validator::examine_rules(const RecordBlock &block, const RecordBlock::Record &record) {
  const unsigned char *bytes = block.record(record);
  for (const FieldRules &rules : record.type->rules) {
    const Field &field = record.type->fields[rules.field];
    Breach breach;
    if (field.type->fault(bytes + field.offset, field.params) != nullptr) continue;
    if (obeys(*record.type, rules, bytes, breach)) continue;
    found({record.type,
           &field,
           breach.what,
           breach.text,
           {block.number(record), block.place(record) + field.offset,
            shown(field, bytes + field.offset, breach.expected), 0}});
  }
}

void Validator::examine_line(const RecordBlock &block, const RecordBlock::Record &record) {
  const std::size_t at = line_end_in(*record.type, block.record(record));
  if (at == record.type->bytes) return;
  found({record.type,
         nullptr,
         What::kLineLength,
         "the end of a line stands inside the record",
         {block.number(record), block.place(record) + at, "", 0}});
}

void Validator::found(const Finding &finding) {
  findings_.add(finding.label(*layout_), finding.text, finding.place, finding.what);
  if (each_) each_(finding);
}

void Validator::add(const RecordBlock &block) {
  for (const RecordBlock::Record &record : block.records) {
    for (const Field &field : record.type->fields) examine(block, record, field);
    for (const Field &field : record.type->fillers) examine(block, record, field);
    if (!record.type->rules.empty()) examine_rules(block, record);
    if (layout_->lines()) examine_line(block, record);
  }
  records_ += block.records.size();
  for (const auto *list : {&block.faults, &block.notes}) {
    for (const StreamFault &fault : *list) {
      if (skip_unknown_ && fault.word == What::kUnknownKind && !fault.fatal) {
        ++skipped_;
        continue;
      }
      found({nullptr, nullptr, fault.word, fault.what, {fault.record, fault.offset, "", 0}});
    }
  }
  rules_.add(block);
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
