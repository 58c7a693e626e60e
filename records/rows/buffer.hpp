#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <memory>
#include <string_view>

namespace campotipo::records {

// Bytes that are written at the end, with room made beforehand.
class Buffer {
 public:
  // At least `room` bytes may be written at the result.
  char *reserve(std::size_t room) {
    if (capacity_ - size_ < room) grow(room);
    return data_.get() + size_;
  }

  // Everything up to here is written.
  void end(const char *at) { size_ = static_cast<std::size_t>(at - data_.get()); }

  void append(std::string_view bytes) {
    if (bytes.empty()) return;
    std::memcpy(reserve(bytes.size()), bytes.data(), bytes.size());
    size_ += bytes.size();
  }

  void clear() { size_ = 0; }
  bool empty() const { return size_ == 0; }
  char *data() { return data_.get(); }
  std::string_view view() const { return {data_.get(), size_}; }

 private:
  void grow(std::size_t room) {
    const std::size_t capacity = std::max(2 * capacity_, size_ + room + 4096);
    // Not cleared: every byte is written before it is read.
    std::unique_ptr<char[]> larger(new char[capacity]);
    if (size_ != 0) std::memcpy(larger.get(), data_.get(), size_);
    data_ = std::move(larger);
    capacity_ = capacity;
  }

  std::unique_ptr<char[]> data_;
  std::size_t size_ = 0;
  std::size_t capacity_ = 0;
};

}  // namespace campotipo::records
