#include "tests/bits/platform.hpp"

namespace campotipo::test::platform {
namespace {

bool heap_fails = false;
long heap_blocks = 0;
std::size_t heap_size = 0;
bool clock_is_set = false;
std::time_t clock_now = 0;

}  // namespace

Heap::Heap(bool fails) {
  heap_blocks = 0;
  heap_fails = fails;
}
Heap::~Heap() { heap_fails = false; }
long Heap::blocks() const { return heap_blocks; }
std::size_t Heap::last_size() const { return heap_size; }

Clock::Clock(std::time_t now) { set(now); }
Clock::~Clock() { clock_is_set = false; }
void Clock::set(std::time_t now) {
  clock_is_set = true;
  clock_now = now;
}

}  // namespace campotipo::test::platform

namespace platform = campotipo::test::platform;

extern "C" {

#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)

void *__libc_malloc(std::size_t size);
void __libc_free(void *block);

void *malloc(std::size_t size) {
  platform::heap_size = size;
  if (platform::heap_fails) return nullptr;
  ++platform::heap_blocks;
  return __libc_malloc(size);
}

void free(void *block) {
  if (block != nullptr) --platform::heap_blocks;
  __libc_free(block);
}

#endif

std::time_t time(std::time_t *result) {
  std::timespec now{};
  std::timespec_get(&now, TIME_UTC);
  const std::time_t value = platform::clock_is_set ? platform::clock_now : now.tv_sec;
  if (result != nullptr) *result = value;
  return value;
}
}
