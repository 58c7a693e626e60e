#include "terminal/progress.hpp"

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <utility>

namespace campotipo::tool {

namespace {
constexpr auto kPatience = std::chrono::milliseconds(300);
constexpr auto kInterval = std::chrono::milliseconds(100);
constexpr std::uint64_t kCells = 24;
}  // namespace

Progress::Progress(std::string label, std::uint64_t total)
    : label_(std::move(label)),
      total_(total),
      on_(isatty(STDERR_FILENO) == 1),
      start_(Clock::now()),
      next_(start_ + kPatience) {}

Progress::~Progress() { clear(); }

void Progress::at(std::uint64_t bytes, std::uint64_t records) {
  if (!on_) return;
  const auto now = Clock::now();
  if (now < next_) return;
  next_ = now + kInterval;
  draw(bytes, records);
}

void Progress::draw(std::uint64_t bytes, std::uint64_t records) {
  const double seconds = std::chrono::duration<double>(Clock::now() - start_).count();
  const double rate = static_cast<double>(bytes) / 1e6 / std::max(seconds, 1e-3);
  std::string bar;
  if (total_ != 0) {
    const std::uint64_t full = std::min(kCells, bytes * kCells / total_);
    bar = " [";
    for (std::uint64_t i = 0; i < kCells; ++i) bar += i < full ? '#' : '.';
    bar += "] " + std::to_string(std::min<std::uint64_t>(100, bytes * 100 / total_)) + "%";
  }
  std::fprintf(stderr, "\r\033[K%s%s  %llu records  %.0f MB/s", label_.c_str(), bar.c_str(),
               static_cast<unsigned long long>(records), rate);
  std::fflush(stderr);
  shown_ = true;
}

void Progress::clear() {
  if (!shown_) return;
  std::fputs("\r\033[K", stderr);
  std::fflush(stderr);
  shown_ = false;
}

}  // namespace campotipo::tool
