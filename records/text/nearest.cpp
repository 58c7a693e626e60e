#include "text/nearest.hpp"

#include <algorithm>

#include "text/ascii.hpp"

namespace campotipo::records {

namespace {

// Letters to add, drop or change on the way from one word to the other, small or capital.
std::size_t distance(std::string_view a, std::string_view b) {
  std::vector<std::size_t> row(b.size() + 1);
  for (std::size_t j = 0; j <= b.size(); ++j) row[j] = j;
  for (std::size_t i = 1; i <= a.size(); ++i) {
    std::size_t corner = row[0];
    row[0] = i;
    for (std::size_t j = 1; j <= b.size(); ++j) {
      const bool same = ascii::capital(a[i - 1]) == ascii::capital(b[j - 1]);
      const std::size_t change = corner + (same ? 0 : 1);
      corner = row[j];
      row[j] = std::min({row[j] + 1, row[j - 1] + 1, change});
    }
  }
  return row[b.size()];
}

}  // namespace

std::string nearest(std::string_view word, const std::vector<std::string> &list) {
  std::string best;
  std::size_t least = std::max<std::size_t>(2, word.size() / 3) + 1;
  for (const std::string &candidate : list) {
    const std::size_t far = word.size() < 64 ? distance(word, candidate) : least;
    if (far < least) {
      least = far;
      best = candidate;
    }
  }
  return best;
}

}  // namespace campotipo::records
