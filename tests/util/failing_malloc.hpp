#pragma once

#include <malloc.h>

#include <climits>
#include <cstddef>
#include <cstring>
#include <new>

// malloc, realloc and free as the libraries find them in this program, which can fail from a chosen
// call on; the C++ objects of the test itself stay clear of that. To be included by one source of a
// program, and by none under a sanitizer, which keeps these calls for itself.

namespace campotipo::test {

inline long allocations_left = LONG_MAX, blocks_held = 0;
inline bool allocation_failed = false;
inline unsigned char *last_block = nullptr;
inline std::size_t last_size = 0, last_room = 0;

// From the allocation number `first` on, counted from 1, none succeeds while this lives.
class FailingHeap {
 public:
  explicit FailingHeap(long first) : before_(blocks_held) {
    allocation_failed = false;
    allocations_left = first - 1;
  }
  ~FailingHeap() { allocations_left = LONG_MAX; }
  bool failed() const { return allocation_failed; }
  long blocks() const { return blocks_held - before_; }  // allocated and not yet freed

 private:
  long before_;
};

// Whether the bytes that the heap put behind the newest block for its own ends are as it left them.
inline bool nothing_behind_newest_block() {
  for (std::size_t i = last_size; i < last_room; ++i)
    if (last_block[i] != 0xA5) return false;
  return true;
}

inline bool may_allocate() {
  if (allocations_left > 0) return --allocations_left, true;
  allocation_failed = true;
  return false;
}

inline void *remember(void *block, std::size_t size) {
  last_block = static_cast<unsigned char *>(block);
  last_size = size;
  last_room = malloc_usable_size(block);
  std::memset(last_block + size, 0xA5, last_room - size);
  return block;
}

}  // namespace campotipo::test

extern "C" {
void *__libc_malloc(std::size_t size);
void *__libc_realloc(void *block, std::size_t size);
void __libc_free(void *block);

void *malloc(std::size_t size) {
  if (!campotipo::test::may_allocate()) return nullptr;
  ++campotipo::test::blocks_held;
  return campotipo::test::remember(__libc_malloc(size), size);
}
void *realloc(void *block, std::size_t size) {
  if (!campotipo::test::may_allocate()) return nullptr;
  if (block == nullptr) ++campotipo::test::blocks_held;
  return campotipo::test::remember(__libc_realloc(block, size), size);
}
void free(void *block) {
  if (block != nullptr) --campotipo::test::blocks_held;
  __libc_free(block);
}
}

void *operator new(std::size_t size) { return __libc_malloc(size); }
void operator delete(void *block) noexcept { __libc_free(block); }
void operator delete(void *block, std::size_t) noexcept { __libc_free(block); }
