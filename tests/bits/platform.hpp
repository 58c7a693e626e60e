#pragma once

#include <cstddef>
#include <ctime>

// The platform's calls that the library makes by name, as this program answers them. Sanitizers
// keep malloc and free for themselves.
namespace campotipo::test::platform {

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
inline constexpr bool kOwnsHeap = false;
#else
inline constexpr bool kOwnsHeap = true;
#endif

// Counts what is allocated and not freed as long as it lives, or lets malloc fail.
class Heap {
 public:
  explicit Heap(bool fails);
  ~Heap();
  long blocks() const;            // allocated and not yet freed
  std::size_t last_size() const;  // asked for last
};

// What time gives.
class Clock {
 public:
  explicit Clock(std::time_t now);
  ~Clock();
  void set(std::time_t now);
};

}  // namespace campotipo::test::platform
