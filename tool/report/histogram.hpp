#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "findings/statistics.hpp"

namespace campotipo::tool {

using namespace campotipo::records;

// Counts of the values of a field along its scale. The ends of the scale are known from a first
// reading of the file, the counts are gathered in a second.
class Histogram {
 public:
  static constexpr std::size_t kBars = 24;

  explicit Histogram(const FieldStatistics &field);

  // Whether the field has a scale on which its values differ.
  bool used() const { return used_; }
  void add(const unsigned char *record);
  const std::vector<std::uint64_t> &counts() const { return counts_; }

 private:
  const FieldStatistics *field_;
  bool used_;
  std::vector<std::uint64_t> counts_;
};

// A small picture of counts, as SVG inside a page. The titles tell what each bar stands for.
std::string bars(const std::vector<std::uint64_t> &counts, const std::vector<std::string> &titles,
                 const std::string &left, const std::string &right);

// A few values and how often each stands there, as rows of a page.
std::string shares(const FieldStatistics &field);

}  // namespace campotipo::tool
