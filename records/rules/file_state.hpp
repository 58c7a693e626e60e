#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "layout/layout.hpp"
#include "rules/exact.hpp"

namespace campotipo::records {

// What the records of a file so far tell of the values in the next one: sequences, copies, counts
// and sums. Each record is entered, then counted, then left.
class FileState {
 public:
  explicit FileState(const Layout &layout);

  // A record of the kind begins; number: in the file, from 1; place: of its first byte.
  void enter(const RecordType &type, std::uint64_t number, std::uint64_t place);

  // It is there: counts take it.
  void count(const RecordType &type, const unsigned char *record);

  // All its values are there: sums and copies take them.
  void leave(const RecordType &type, const unsigned char *record);

  struct Lot {
    std::size_t kind;      // that began it
    std::uint64_t number;  // of its first record
    std::uint64_t place;   // of that in the file
    std::vector<Exact> before;
    std::vector<std::uint64_t> lost;
  };

  // Ends the lot that a kind closes, and those inside it that nothing closed, which are given. False
  // where none is open.
  bool close(const RecordType &type, std::vector<Lot> &unclosed);

  // A record that cannot be read: it counts, and may have taken a number of any sequence.
  void pass(std::uint64_t number);

  // The next number of a sequence, and how many more numbers it may be.
  std::uint64_t sequence(const FieldRules &rules) const { return counters_[rules.counter].value; }
  std::uint64_t slack(const FieldRules &rules) const { return counters_[rules.counter].slack; }
  void follow(const FieldRules &rules, std::uint64_t value);

  // The bytes that the field repeats; null where no record of the kind was there.
  const std::string *same(const FieldRules &rules) const;

  // Whether a total can be told when its record is there: of the lot that it closes, or of the file
  // where the record is the last. Others are known at the end.
  bool is_known(const RecordType &type) const {
    return type.last || type.closes != RecordType::kNone;
  }

  // What a total has to be; none where nothing is counted, or no lot is open.
  std::optional<Exact> total(const RecordType &type, const FieldRules &rules,
                             const std::string &by) const;

  // Texts in sums that are no numbers, so that no sum holds.
  bool has_lost(const RecordType &type, const FieldRules &rules) const;

  const std::vector<Lot> &lots() const { return lots_; }
  std::uint64_t records() const { return number_; }

 private:
  struct Count {
    std::uint64_t value = 0;
    std::uint64_t slack = 0;
  };
  struct Addition {
    std::size_t measure;
    const Measure::Part *part;
  };

  const Lot *lot_of(const RecordType &type) const;
  std::size_t place(const RecordType &type) const {
    return static_cast<std::size_t>(&type - layout_->types.data());
  }
  bool takes(const RecordType &type, const Measure::Part &part, const unsigned char *record) const;

  const Layout *layout_;
  std::uint64_t number_ = 0;
  std::vector<Count> counters_;
  std::vector<std::vector<Addition>> counted_;  // by each kind
  std::vector<std::vector<Addition>> summed_;
  std::vector<Exact> measures_;
  std::vector<std::uint64_t> lost_;  // values of each measure that are no numbers
  std::vector<bool> begins_;         // the kinds that begin a lot
  std::vector<Lot> lots_;            // that are open
  std::vector<std::optional<std::string>> memories_;
};

// The number in a field; false where the field is not well formed.
bool number_in(const Field &field, const unsigned char *record, Exact &value);

}  // namespace campotipo::records
