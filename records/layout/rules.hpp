#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace campotipo::records {

struct NamedCheck;

// A field that has to hold one of some values.
struct Condition {
  std::size_t field = 0;            // place in RecordType::fields
  std::vector<std::string> stored;  // the forms that the values have in a record
  bool operator==(const Condition &) const = default;
};

// What is counted or summed over the records of a file: each part adds to it.
struct Measure {
  static constexpr std::size_t kCount = SIZE_MAX;

  struct Part {
    std::size_t kind = 0;
    std::size_t field = kCount;    // whose number is added; kCount: one a record
    std::vector<Condition> where;  // of the records that are taken
    bool operator==(const Part &) const = default;
  };
  std::vector<Part> parts;
  bool operator==(const Measure &) const = default;
};

// The count or sum that a field tells, over the file or the lot that its record closes.
struct Total {
  static constexpr std::size_t kNone = SIZE_MAX;

  bool all = false;             // every record, of whatever kind
  std::size_t measure = kNone;  // else this
  std::size_t by = kNone;       // or what the text of this field says:
  struct Choice {
    std::string text;
    bool all = false;
    std::size_t measure = kNone;
  };
  std::vector<Choice> choices;
  bool sum = false;
};

// What a layout asks of the value of a field beside its type.
struct FieldRules {
  static constexpr std::size_t kNone = SIZE_MAX;

  struct Value {
    std::string stored;
    std::string text;
    std::string meaning;  // for people
  };

  std::size_t field = 0;  // place in RecordType::fields
  bool required = false;
  std::vector<Value> values;  // that it may have; none: any
  bool constant = false;      // the one value
  std::string least;          // stored; empty: no bound
  std::string greatest;
  std::size_t check_by = kNone;  // the field that tells which check holds
  std::vector<std::pair<std::string, const NamedCheck *>> checks;  // by its stored form
  std::size_t counter = kNone;  // place in Layout::counters: the numbers of a sequence
  std::size_t same = kNone;     // place in Layout::memories: what it repeats
  Total total;

  bool has_total() const { return total.all || total.measure != kNone || total.by != kNone; }
  // Whether the value follows from other records.
  bool follows() const { return counter != kNone || same != kNone || has_total(); }
};

// Counts the records that have a field with its numbers, since a kind or in the whole file.
struct Counter {
  std::string word;
  std::size_t since = FieldRules::kNone;  // a kind; kNone: the beginning of the file
};

// A field of the last record of a kind.
struct Memory {
  std::size_t kind = 0;
  std::size_t field = 0;
};

}  // namespace campotipo::records
