#include "rows/filler.hpp"

#include <algorithm>
#include <cstring>

#include "errors/error.hpp"

namespace campotipo::records {

namespace {

constexpr std::size_t kNone = FieldRules::kNone;

}  // namespace

bool Filler::patches(const Layout &layout) {
  return std::any_of(layout.types.begin(), layout.types.end(), [](const RecordType &type) {
    const bool known = type.last || type.closes != RecordType::kNone;
    return !known && std::any_of(type.rules.begin(), type.rules.end(),
                                 [](const FieldRules &rules) { return rules.has_total(); });
  });
}

std::string Filler::stored(const Field &field, const std::string &text,
                           std::uint64_t record) const {
  std::string bytes(field.bytes, '\0');
  auto *at = reinterpret_cast<unsigned char *>(bytes.data());
  const char *lost = field.type->take(at, PaddedString(text).text(), field.params);
  if (lost == nullptr) return bytes;
  Error error(ErrorCode::kValue, "record " + std::to_string(record) + ": field " + field.name +
                                     ": " + text + ", which it has to hold, is " + lost);
  error.record = record;
  error.field = field.flat;
  throw error;
}

void Filler::put(const RecordType &type, const FieldRules &rules, const std::string &text,
                 unsigned char *record) {
  const Field &field = type.fields[rules.field];
  const std::string bytes = stored(field, text, records_);
  std::memcpy(record + field.offset, bytes.data(), bytes.size());
}

void Filler::fill_sequence(const RecordType &type, const FieldRules &rules, unsigned char *record) {
  put(type, rules, std::to_string(state_.sequence(rules)), record);
}

void Filler::fill_same(const RecordType &type, const FieldRules &rules, unsigned char *record) {
  const std::string *kept = state_.same(rules);
  if (kept == nullptr) return;
  const Memory &memory = layout_->memories[rules.same];
  const Field &other = layout_->types[memory.kind].fields[memory.field];
  const Field &field = type.fields[rules.field];
  if (other.type == field.type && other.bytes == field.bytes) {
    std::memcpy(record + field.offset, kept->data(), kept->size());
    return;
  }
  std::string before(other.offset, '\0');
  before += *kept;
  put(type, rules, field_text(other, reinterpret_cast<const unsigned char *>(before.data())),
      record);
}

void Filler::fill_total(const RecordType &type, const FieldRules &rules, unsigned char *record,
                        std::uint64_t place) {
  const Field &field = type.fields[rules.field];
  std::string by;
  if (rules.total.by != Total::kNone) by = field_text(type.fields[rules.total.by], record);
  if (!state_.is_known(type)) {
    pending_.push_back({&type, &rules, by, records_, place + field.offset});
    return;
  }
  const auto total = state_.total(type, rules, by);
  if (total) put(type, rules, total->text(field.params.decimals), record);
}

void Filler::fill(MadeRecords &block, std::uint64_t place) {
  auto hole = block.holes.begin();
  for (std::size_t i = 0; i < block.made.size(); ++i) {
    const RecordType &type = *block.made[i].type;
    const std::size_t at = block.made[i].at;
    auto *record = reinterpret_cast<unsigned char *>(block.records.data()) + at;
    const auto begin = hole;
    while (hole != block.holes.end() && hole->record == i) ++hole;
    const auto is_hole = [&](const FieldRules &rules) {
      return std::any_of(begin, hole, [&](const auto &each) { return each.rules == &rules; });
    };
    state_.enter(type, ++records_, place + at);
    for (const FieldRules &rules : type.rules) {
      if (rules.counter == kNone && rules.same == kNone) continue;
      Exact given;
      if (is_hole(rules)) {
        rules.counter != kNone ? fill_sequence(type, rules, record)
                               : fill_same(type, rules, record);
      } else if (rules.counter != kNone && number_in(type.fields[rules.field], record, given)) {
        const std::string text = given.text();
        if (text.size() < 19 && text[0] != '-') state_.follow(rules, std::stoull(text));
      }
    }
    state_.count(type, record);
    for (const FieldRules &rules : type.rules) {
      if (rules.has_total() && is_hole(rules)) fill_total(type, rules, record, place + at);
    }
    state_.leave(type, record);
    if (type.closes != RecordType::kNone) state_.close(type, unclosed_);
    unclosed_.clear();
  }
}

std::vector<Filler::Patch> Filler::finish() {
  std::vector<Patch> all;
  for (const Pending &pending : pending_) {
    const Field &field = pending.type->fields[pending.rules->field];
    const auto total = state_.total(*pending.type, *pending.rules, pending.by);
    if (!total) continue;
    all.push_back(
        {pending.place, stored(field, total->text(field.params.decimals), pending.record)});
  }
  return all;
}

}  // namespace campotipo::records
