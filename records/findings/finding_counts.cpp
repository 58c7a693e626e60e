#include "findings/finding_counts.hpp"

#include "text/quote.hpp"
#include "text/utf8.hpp"

namespace campotipo::records {

namespace {
constexpr std::size_t kLongest = 48;
}  // namespace

std::string shortened(const std::string &text) {
  const std::string first = utf8::first(text, kLongest);
  return printable(first.size() < text.size() ? first + "..." : first);
}

FindingCounts::Entry &FindingCounts::entry(const std::string &field, const std::string &what,
                                           What word) {
  const auto [found, fresh] = known_.try_emplace({field, what}, lines_.size());
  if (fresh) lines_.push_back({field, what, {}, word});
  return lines_[found->second].entry;
}

bool FindingCounts::add(const std::string &field, const std::string &what, const Location &place,
                        What word) {
  Entry &counted = entry(field, what, word);
  ++counted.count;
  ++total_;
  if (counted.places.size() >= places_) return false;
  counted.places.push_back(place);
  return true;
}

void FindingCounts::merge(const FindingCounts &other, std::uint64_t records, std::uint64_t lines) {
  for (const Line &line : other.lines_) {
    Entry &counted = entry(line.field, line.what, line.word);
    counted.count += line.entry.count;
    for (Location place : line.entry.places) {
      if (counted.places.size() >= places_) break;
      place.record += records;
      place.line += lines;
      counted.places.push_back(std::move(place));
    }
  }
  total_ += other.total_;
}

}  // namespace campotipo::records
