#pragma once

#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <span>
#include <string_view>

namespace campotipo::test {

// Memory between two inaccessible pages. A buffer ends at the page behind it or begins at the page
// before it, so that one byte read or written too far is a fault. The bytes on the open side are
// canaries, checked when the next buffer is placed and at the end.
class GuardedBuffer {
 public:
  explicit GuardedBuffer(std::size_t capacity = 4096) {
    const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    room_ = (capacity + page - 1) / page * page;
    mapped_ = room_ + 2 * page;
    map_ = static_cast<unsigned char *>(
        mmap(nullptr, mapped_, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0));
    begin_ = map_ + page;
    if (map_ == MAP_FAILED || mprotect(begin_, room_, PROT_READ | PROT_WRITE) != 0) std::abort();
    at_end(0);
  }
  GuardedBuffer(const GuardedBuffer &) = delete;
  GuardedBuffer &operator=(const GuardedBuffer &) = delete;
  ~GuardedBuffer() {
    expect_canaries();
    munmap(map_, mapped_);
  }

  // `size` bytes with the inaccessible page directly behind them.
  unsigned char *at_end(std::size_t size) { return place(begin_ + room_ - size, size); }

  // `size` bytes with the inaccessible page directly before them.
  unsigned char *at_start(std::size_t size) { return place(begin_, size); }

  char *text_at_end(std::size_t size) { return reinterpret_cast<char *>(at_end(size)); }

  // A copy of the text whose NUL is the last byte that may be read.
  const char *text(std::string_view characters) {
    char *copy = text_at_end(characters.size() + 1);
    std::memcpy(copy, characters.data(), characters.size());
    copy[characters.size()] = '\0';
    return copy;
  }

  // A copy of the bytes of a field, with nothing readable behind them.
  unsigned char *field(std::span<const unsigned char> bytes) {
    unsigned char *copy = at_end(bytes.size());
    if (!bytes.empty()) std::memcpy(copy, bytes.data(), bytes.size());
    return copy;
  }

  // Ends the program at a write in front of or behind the buffer placed last.
  void expect_canaries() const {
    if (are_canaries(begin_, buffer_) && are_canaries(buffer_ + size_, begin_ + room_)) return;
    for (const unsigned char *at = begin_; at != begin_ + room_; ++at) {
      if (at >= buffer_ && at < buffer_ + size_) continue;
      if (*at != kCanary) {
        std::fprintf(stderr, "a byte outside the buffer was written, at offset %td\n",
                     at - buffer_);
        std::abort();
      }
    }
  }

 private:
  static constexpr unsigned char kCanary = 0xA5;

  // Each byte like the one before it: one call, and not a loop, also in builds that do not optimize.
  static bool are_canaries(const unsigned char *from, const unsigned char *end) {
    if (from == end) return true;
    return *from == kCanary &&
           std::memcmp(from, from + 1, static_cast<std::size_t>(end - from) - 1) == 0;
  }

  unsigned char *place(unsigned char *buffer, std::size_t size) {
    if (size > room_) std::abort();
    if (buffer_ != nullptr) expect_canaries();
    std::memset(begin_, kCanary, room_);
    buffer_ = buffer;
    size_ = size;
    return buffer;
  }

  std::size_t room_ = 0;
  std::size_t mapped_ = 0;
  unsigned char *map_ = nullptr;
  unsigned char *begin_ = nullptr;
  unsigned char *buffer_ = nullptr;
  std::size_t size_ = 0;
};

}  // namespace campotipo::test
