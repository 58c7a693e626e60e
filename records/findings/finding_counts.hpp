#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "layout/layout.hpp"

namespace campotipo::records {

// A value that is not what it should be, and where.
struct Location {
  std::uint64_t record = 0;  // from 1
  std::uint64_t offset = 0;  // in the file
  std::string value;         // as it stands there, shortened
  std::uint64_t line = 0;    // of a CSV file, from 1
};

// Values counted by field and by what is wrong with them, with the first places.
class FindingCounts {
 public:
  static constexpr std::size_t kPlaces = 5;
  static constexpr std::size_t kEveryPlace = SIZE_MAX;

  // places: how many are kept of each pair of a field and what is wrong.
  explicit FindingCounts(std::size_t places = kPlaces) : places_(places) {}

  struct Entry {
    std::uint64_t count = 0;
    std::vector<Location> places;
  };

  // True if the place was kept. what: as people read it; word: as programs do.
  bool add(const std::string &field, const std::string &what, const Location &place,
           What word = What::kInvalid);

  // Takes over what was counted elsewhere, whose records and lines are numbered from 1 on after
  // those told.
  void merge(const FindingCounts &other, std::uint64_t records, std::uint64_t lines = 0);

  std::uint64_t total() const { return total_; }
  bool empty() const { return total_ == 0; }

  // In the order in which each pair was first met.
  struct Line {
    std::string field;
    std::string what;
    Entry entry;
    What word = What::kInvalid;
  };
  const std::vector<Line> &lines() const { return lines_; }

 private:
  Entry &entry(const std::string &field, const std::string &what, What word);

  std::size_t places_;
  std::map<std::pair<std::string, std::string>, std::size_t> known_;
  std::vector<Line> lines_;
  std::uint64_t total_ = 0;
};

// A value short enough for a message.
std::string shortened(const std::string &text);

}  // namespace campotipo::records
