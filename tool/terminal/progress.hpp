#pragma once

#include <chrono>
#include <cstdint>
#include <string>

namespace campotipo::tool {

// A bar on standard error for work that takes longer than a moment; nothing where that is no
// terminal.
class Progress {
 public:
  // total: bytes of the whole work, 0 where they are not known.
  Progress(std::string label, std::uint64_t total);
  Progress(const Progress &) = delete;
  Progress &operator=(const Progress &) = delete;
  ~Progress();

  // Bytes and records done so far.
  void at(std::uint64_t bytes, std::uint64_t records);

  // Takes the bar away before a message is written.
  void clear();

 private:
  using Clock = std::chrono::steady_clock;

  void draw(std::uint64_t bytes, std::uint64_t records);

  std::string label_;
  std::uint64_t total_;
  bool on_;
  bool shown_ = false;
  Clock::time_point start_;
  Clock::time_point next_;
};

}  // namespace campotipo::tool
