#include "rules/file_state.hpp"

#include <algorithm>

namespace campotipo::records {

bool number_in(const Field &field, const unsigned char *record, Exact &value) {
  if (field.type->fault(record + field.offset, field.params) != nullptr) return false;
  return Exact::read(field_text(field, record), value);
}

FileState::FileState(const Layout &layout)
    : layout_(&layout),
      counters_(layout.counters.size()),
      counted_(layout.types.size()),
      summed_(layout.types.size()),
      measures_(layout.measures.size()),
      lost_(layout.measures.size()),
      begins_(layout.types.size()),
      memories_(layout.memories.size()) {
  for (std::size_t i = 0; i < layout.measures.size(); ++i) {
    for (const Measure::Part &part : layout.measures[i].parts) {
      const bool one = part.field == Measure::kCount;
      (one ? counted_ : summed_)[part.kind].push_back({i, &part});
    }
  }
  for (const RecordType &type : layout.types) {
    if (type.closes != RecordType::kNone) begins_[type.closes] = true;
  }
}

void FileState::enter(const RecordType &type, std::uint64_t number, std::uint64_t begin) {
  number_ = number;
  const std::size_t kind = place(type);
  for (std::size_t i = 0; i < counters_.size(); ++i) {
    if (layout_->counters[i].since == kind) counters_[i] = {};
  }
  for (const std::size_t counter : type.counters) ++counters_[counter].value;
  if (begins_[kind]) lots_.push_back({kind, number, begin, measures_, lost_});
}

bool FileState::takes(const RecordType &type, const Measure::Part &part,
                      const unsigned char *record) const {
  return std::all_of(part.where.begin(), part.where.end(),
                     [&](const Condition &condition) { return type.holds(condition, record); });
}

void FileState::count(const RecordType &type, const unsigned char *record) {
  for (const Addition &each : counted_[place(type)]) {
    if (takes(type, *each.part, record)) measures_[each.measure].add(1);
  }
}

void FileState::leave(const RecordType &type, const unsigned char *record) {
  const std::size_t kind = place(type);
  for (const Addition &each : summed_[kind]) {
    if (!takes(type, *each.part, record)) continue;
    const Field &field = type.fields[each.part->field];
    Exact value;
    if (number_in(field, record, value)) {
      measures_[each.measure].add(value);
    } else if (!field_absent(field, record)) {
      ++lost_[each.measure];
    }
  }
  for (std::size_t i = 0; i < memories_.size(); ++i) {
    const Memory &memory = layout_->memories[i];
    if (memory.kind != kind) continue;
    const Field &field = type.fields[memory.field];
    memories_[i].emplace(reinterpret_cast<const char *>(record + field.offset), field.bytes);
  }
}

bool FileState::close(const RecordType &type, std::vector<Lot> &unclosed) {
  if (lot_of(type) == nullptr) return false;
  for (;;) {
    const bool end = lots_.back().kind == type.closes;
    if (!end) unclosed.push_back(std::move(lots_.back()));
    lots_.pop_back();
    if (end) return true;
  }
}

void FileState::pass(std::uint64_t number) {
  number_ = number;
  for (Count &counter : counters_) ++counter.slack;
}

// What was found is followed, so that one number that is wrong is told once.
void FileState::follow(const FieldRules &rules, std::uint64_t value) {
  counters_[rules.counter] = {value, 0};
}

const std::string *FileState::same(const FieldRules &rules) const {
  const auto &kept = memories_[rules.same];
  return kept ? &*kept : nullptr;
}

const FileState::Lot *FileState::lot_of(const RecordType &type) const {
  const auto found = std::find_if(lots_.rbegin(), lots_.rend(),
                                  [&](const Lot &lot) { return lot.kind == type.closes; });
  return found == lots_.rend() ? nullptr : &*found;
}

std::optional<Exact> FileState::total(const RecordType &type, const FieldRules &rules,
                                      const std::string &by) const {
  const Total &total = rules.total;
  bool all = total.all;
  std::size_t measure = total.measure;
  Exact value;
  if (total.by != Total::kNone) {
    if (by.empty()) return std::nullopt;
    const auto choice = std::find_if(total.choices.begin(), total.choices.end(),
                                     [&](const Total::Choice &each) { return each.text == by; });
    // Of a kind that the layout does not know there is no record.
    if (choice == total.choices.end()) return value;
    all = choice->all;
    measure = choice->measure;
  }
  const bool lot = type.closes != RecordType::kNone;
  const Lot *open = lot ? lot_of(type) : nullptr;
  if (lot && open == nullptr) return std::nullopt;
  if (all) {
    value.add(static_cast<std::int64_t>(number_ - (lot ? open->number - 1 : 0)));
    return value;
  }
  value = measures_[measure];
  if (lot) value.subtract(open->before[measure]);
  return value;
}

bool FileState::has_lost(const RecordType &type, const FieldRules &rules) const {
  const std::size_t measure = rules.total.measure;
  if (!rules.total.sum) return false;
  const Lot *open = type.closes != RecordType::kNone ? lot_of(type) : nullptr;
  return lost_[measure] != (open != nullptr ? open->lost[measure] : 0);
}

}  // namespace campotipo::records
