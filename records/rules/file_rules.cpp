#include "rules/file_rules.hpp"

#include <algorithm>

namespace campotipo::records {

FileRules::FileRules(const Layout &layout, Found found)
    : layout_(&layout), found_(std::move(found)), state_(layout) {
  for (const RecordType &type : layout.types) {
    if (type.first) first_ = &type;
    if (type.last) last_ = &type;
    active_ = active_ || type.first || type.last || type.closes != RecordType::kNone ||
              std::any_of(type.rules.begin(), type.rules.end(),
                          [](const FieldRules &rules) { return rules.follows(); });
  }
}

void FileRules::tell(RuleFinding finding, What what, const std::string &text,
                     const std::string &expected) {
  finding.breach = {what, text, expected};
  found_(finding);
}

void FileRules::disorder(const RecordType &type, std::uint64_t number, std::uint64_t place,
                         const std::string &text) {
  tell({&type, nullptr, {}, number, place, ""}, What::kOrder, text, "");
}

void FileRules::look_at_order(const RecordType &type, std::uint64_t number, std::uint64_t place) {
  if (first_ != nullptr && number == 1 && &type != first_) {
    disorder(type, number, place, "the file does not begin with a record \"" + first_->name + "\"");
  }
  if (&type == first_ && number != 1) {
    disorder(type, number, place, "it is not the first record of the file");
  }
  if (before_ != nullptr && before_ == last_) {
    disorder(*last_, number - 1, before_place_, "it is not the last record of the file");
  }
  before_ = &type;
  before_place_ = place;
}

void FileRules::look_at_lots(const RecordType &type, std::uint64_t number, std::uint64_t place) {
  if (type.closes == RecordType::kNone) return;
  std::vector<FileState::Lot> unclosed;
  if (!state_.close(type, unclosed)) {
    disorder(type, number, place,
             "no \"" + layout_->types[type.closes].name + "\" begins what it ends");
  }
  for (const FileState::Lot &lot : unclosed) {
    disorder(layout_->types[lot.kind], lot.number, lot.place, "no record ends what it begins");
  }
}

void FileRules::look_at_sequence(const FieldRules &rules, RuleFinding &finding,
                                 const unsigned char *record) {
  Exact found;
  if (!number_in(*finding.field, record, found)) return;
  const std::uint64_t expected = state_.sequence(rules);
  const std::string text = found.text();
  if (text == std::to_string(expected)) return state_.follow(rules, expected);
  // Numbers of more digits than these belong to no file.
  const std::uint64_t value = text.size() < 19 && text[0] != '-' ? std::stoull(text) : expected;
  const bool skipped = value > expected && value - expected <= state_.slack(rules);
  if (!skipped) {
    tell(finding, What::kSequence, "not the next number of its sequence", std::to_string(expected));
  }
  state_.follow(rules, value);
}

void FileRules::look_at_same(const FieldRules &rules, RuleFinding &finding,
                             const unsigned char *record) {
  const Memory &memory = layout_->memories[rules.same];
  const RecordType &type = layout_->types[memory.kind];
  const std::string *kept = state_.same(rules);
  if (kept == nullptr) {
    return tell(finding, What::kNotSame, "no \"" + type.name + "\" stands in front of it", "");
  }
  const Field &other = type.fields[memory.field];
  std::string bytes(other.offset, '\0');
  bytes += *kept;
  const auto *before = reinterpret_cast<const unsigned char *>(bytes.data());
  const std::string expected = field_text(other, before);
  const bool alike = other.type == finding.field->type && other.bytes == finding.field->bytes;
  const bool same = alike ? *kept == finding.bytes : field_text(*finding.field, record) == expected;
  if (!same) tell(finding, What::kNotSame, "not what \"" + type.name + "\" holds", expected);
}

void FileRules::hold_total(const Pending &pending) {
  const Field &field = *pending.finding.field;
  const auto total = state_.total(*pending.type, *pending.rules, pending.by);
  if (!total) return;
  std::string record(field.offset, '\0');
  record += pending.finding.bytes;
  Exact found;
  if (!number_in(field, reinterpret_cast<const unsigned char *>(record.data()), found)) return;
  const std::string expected = total->text(field.params.decimals);
  if (found.text(field.params.decimals) == expected) return;
  std::vector<unsigned char> room(field.bytes);
  const bool fits =
      field.type->take(room.data(), PaddedString(expected).text(), field.params) == nullptr;
  const bool lost = state_.has_lost(*pending.type, *pending.rules);
  const char *text = !fits                       ? "the total does not fit"
                     : !pending.rules->total.sum ? "not the count of the records"
                     : lost                      ? "not the sum of the values that are numbers"
                                                 : "not the sum of the values";
  tell(pending.finding, What::kTotal, text, expected);
}

void FileRules::look_at_total(const FieldRules &rules, RuleFinding &finding,
                              const unsigned char *record) {
  std::string by;
  if (rules.total.by != Total::kNone) {
    by = field_text(finding.type->fields[rules.total.by], record);
  }
  Pending pending{finding.type, &rules, by, finding};
  if (state_.is_known(*finding.type)) {
    hold_total(pending);
  } else {
    pending_.push_back(std::move(pending));
  }
}

void FileRules::add(const RecordBlock &block, const RecordBlock::Record &record) {
  const RecordType &type = *record.type;
  const std::uint64_t number = block.number(record);
  const std::uint64_t place = block.place(record);
  const unsigned char *bytes = block.record(record);
  look_at_order(type, number, place);
  state_.enter(type, number, place);
  const auto each = [&](auto look, auto is) {
    for (const FieldRules &rules : type.rules) {
      if (!is(rules)) continue;
      const Field &field = type.fields[rules.field];
      // What is no value is told by itself, and no value is one where none has to be.
      if (field.type->fault(bytes + field.offset, field.params) != nullptr) continue;
      if (field_absent(field, bytes)) continue;
      RuleFinding finding{&type,
                          &field,
                          {},
                          number,
                          place + field.offset,
                          {reinterpret_cast<const char *>(bytes + field.offset), field.bytes}};
      (this->*look)(rules, finding, bytes);
    }
  };
  each(&FileRules::look_at_sequence,
       [](const FieldRules &rules) { return rules.counter != FieldRules::kNone; });
  each(&FileRules::look_at_same,
       [](const FieldRules &rules) { return rules.same != FieldRules::kNone; });
  state_.count(type, bytes);
  each(&FileRules::look_at_total, [](const FieldRules &rules) { return rules.has_total(); });
  state_.leave(type, bytes);
  look_at_lots(type, number, place);
}

void FileRules::pass(std::uint64_t number, std::uint64_t place) {
  if (before_ != nullptr && before_ == last_) {
    disorder(*last_, number - 1, before_place_, "it is not the last record of the file");
  }
  before_ = nullptr;
  before_place_ = place;
  state_.pass(number);
}

void FileRules::add(const RecordBlock &block) {
  if (!active_) return;
  auto fault = block.faults.begin();
  const auto pass_to = [&](std::uint64_t number) {
    for (; fault != block.faults.end() && fault->record < number; ++fault) {
      if (fault->record != 0) pass(fault->record, fault->offset);
    }
  };
  for (const RecordBlock::Record &record : block.records) {
    pass_to(block.number(record));
    add(block, record);
  }
  pass_to(UINT64_MAX);
}

void FileRules::finish() {
  if (!active_) return;
  if (last_ != nullptr && state_.records() != 0 && before_ != last_) {
    tell({before_, nullptr, {}, state_.records(), before_place_, ""}, What::kOrder,
         "the file does not end with a record \"" + last_->name + "\"", "");
  }
  for (const FileState::Lot &lot : state_.lots()) {
    disorder(layout_->types[lot.kind], lot.number, lot.place, "no record ends what it begins");
  }
  for (const Pending &pending : pending_) hold_total(pending);
}

}  // namespace campotipo::records
