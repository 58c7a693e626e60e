#include "layout/kind_finder.hpp"

#include <algorithm>
#include <limits>

namespace campotipo::records {

KindFinder::KindFinder(const Layout &layout) : layout_(&layout) {
  std::size_t begin = std::numeric_limits<std::size_t>::max();
  std::size_t end = 0;
  for (const RecordType &type : layout.types) {
    for (const Condition &condition : type.when) {
      const Field &field = type.fields[condition.field];
      begin = std::min(begin, field.offset);
      end = std::max(end, field.offset + field.bytes);
    }
  }
  need_ = std::numeric_limits<std::size_t>::max();
  if (end == 0 || end - begin > sizeof mask_) return;
  begin_ = begin;
  need_ = begin + sizeof mask_;
  mask_ = ~std::uint64_t{0} >> 8 * (sizeof mask_ - (end - begin));
}

}  // namespace campotipo::records
