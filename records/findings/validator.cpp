#include "findings/validator.hpp"

#include "text/ascii.hpp"
#include "text/quote.hpp"

namespace campotipo::records {

std::string field_label(const Layout &layout, const RecordType &type, const Field &field) {
  return layout.several() ? type.name + "." + field.name : field.name;
}

std::string Finding::json(const std::string &file) const {
  const std::string record = place.record == 0 ? "null" : std::to_string(place.record);
  return "{\"_file\":" + json_string(file) + ",\"_record\":" + record +
         ",\"byte\":" + std::to_string(place.offset) +
         ",\"kind\":" + (type == nullptr ? "null" : json_string(type->name)) +
         ",\"field\":" + (type == nullptr ? "null" : json_string(field)) +
         ",\"what\":" + json_string(what) + ",\"value\":" + json_string(place.value) + "}\n";
}

void Validator::examine(const RecordBlock &block, const RecordBlock::Record &record,
                        const Field &field) {
  const unsigned char *bytes = block.record(record);
  const char *fault = field_fault(field, bytes);
  if (fault == nullptr) return;
  const std::string text = field_text(field, bytes);
  const std::string shown =
      ascii::hex(bytes + field.offset, std::min<std::size_t>(field.bytes, 24));
  found({record.type,
         field_label(*layout_, *record.type, field),
         fault,
         {block.number(record), block.place(record) + field.offset,
          text.empty() ? "bytes " + shown : shortened(text) + " (" + shown + ")"}});
}

void Validator::found(const Finding &finding) {
  findings_.add(finding.field, finding.what, finding.place);
  if (each_) each_(finding);
}

void Validator::add(const RecordBlock &block) {
  for (const RecordBlock::Record &record : block.records) {
    for (const Field &field : record.type->fields) examine(block, record, field);
    for (const Field &field : record.type->fillers) examine(block, record, field);
  }
  records_ += block.records.size();
  for (const StreamFault &fault : block.faults) {
    found({nullptr, "(record)", fault.what, {fault.record, fault.offset, ""}});
  }
}

std::string Validator::summary() const {
  std::string text =
      file_ + ": " + std::to_string(records_) + " records of " + layout_->name + ", ";
  if (findings_.empty()) return text + "every value valid";
  return text + std::to_string(findings_.total()) +
         (findings_.total() == 1 ? " finding" : " findings");
}

std::string Validator::json() const {
  std::string out = "{\"file\":" + json_string(file_) +
                    ",\"layout\":" + json_string(layout_->file) +
                    ",\"records\":" + std::to_string(records_) +
                    ",\"findings\":" + std::to_string(findings_.total()) + ",\"fields\":[";
  bool first = true;
  for (const FindingCounts::Line &line : findings_.lines()) {
    out += std::string(first ? "" : ",") + "{\"field\":" + json_string(line.field) +
           ",\"what\":" + json_string(line.what) +
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
