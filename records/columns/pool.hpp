#pragma once

#include <array>
#include <cstddef>
#include <cstdlib>
#include <mutex>

namespace campotipo::records {

// Memory that the batches of a stream gave back, for those that follow: fresh pages would cost more
// than the values that are written to them. Batches may be released by any thread, also behind the
// end of the stream.
class Pool {
 public:
  struct Block {
    char *data = nullptr;
    std::size_t bytes = 0;
  };

  Pool() = default;
  Pool(const Pool &) = delete;
  Pool &operator=(const Pool &) = delete;
  ~Pool() {
    for (std::size_t i = 0; i < count_; ++i) std::free(blocks_[i].data);
  }

  // The smallest block that has so many bytes, and not many more; none where there is none.
  Block take(std::size_t bytes) {
    const std::lock_guard lock(mutex_);
    std::size_t best = count_;
    for (std::size_t i = 0; i < count_; ++i) {
      const std::size_t has = blocks_[i].bytes;
      if (has < bytes || has > 4 * bytes) continue;
      if (best == count_ || has < blocks_[best].bytes) best = i;
    }
    if (best == count_) return {};
    const Block found = blocks_[best];
    blocks_[best] = blocks_[--count_];
    held_ -= found.bytes;
    return found;
  }

  void give(Block block) {
    {
      const std::lock_guard lock(mutex_);
      if (count_ < blocks_.size() && held_ + block.bytes <= kMostBytes) {
        blocks_[count_++] = block;
        held_ += block.bytes;
        return;
      }
    }
    std::free(block.data);
  }

 private:
  static constexpr std::size_t kMostBytes = std::size_t{64} << 20;

  std::mutex mutex_;
  std::array<Block, 512> blocks_ = {};
  std::size_t count_ = 0;
  std::size_t held_ = 0;
};

}  // namespace campotipo::records
