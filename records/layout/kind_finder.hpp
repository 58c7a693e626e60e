#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "layout/layout.hpp"

namespace campotipo::records {

// The kinds of many records, one after the other: Layout::type_of, but what it said of the same bytes
// before is kept. A file has few kinds, and what tells them mostly stands close together.
class KindFinder {
 public:
  explicit KindFinder(const Layout &layout);

  const RecordType *of(const unsigned char *record, std::size_t bytes) {
    if (bytes < need_) return layout_->type_of(record, bytes);
    std::uint64_t key;
    std::memcpy(&key, record + begin_, sizeof key);
    key &= mask_;
    Known &known = known_[key * kSpread >> (64 - kBits)];
    if (known.type == nullptr || known.key != key) known = {key, layout_->type_of(record, bytes)};
    return known.type;
  }

 private:
  static constexpr int kBits = 4;
  static constexpr std::uint64_t kSpread = 0x9E3779B97F4A7C15U;  // Knuth, multiplicative hashing

  struct Known {
    std::uint64_t key = 0;
    const RecordType *type = nullptr;
  };

  const Layout *layout_;
  std::size_t begin_ = 0;   // of the bytes that tell a kind
  std::size_t need_ = 0;    // bytes of a record that have to be there
  std::uint64_t mask_ = 0;  // of those that tell it
  std::array<Known, 1 << kBits> known_;
};

}  // namespace campotipo::records
