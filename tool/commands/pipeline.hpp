#pragma once

#include <condition_variable>
#include <cstddef>
#include <exception>
#include <functional>
#include <mutex>
#include <thread>
#include <utility>
#include <vector>

namespace campotipo::tool {

// Blocks of work in their order: fill(block) in one thread until it gives false, work(block) in
// `jobs` threads, drain(block) in the caller's thread and in the order of filling. At most two
// blocks a thread exist, so memory does not grow with the work. The first exception of any of the
// three ends everything and is thrown on, once the blocks in front of it are drained.
template <class Block>
class Pipeline {
 public:
  Pipeline(int jobs, std::function<bool(Block &)> fill, std::function<void(Block &)> work,
           std::function<void(Block &)> drain)
      : jobs_(jobs < 1 ? 1 : jobs),
        fill_(std::move(fill)),
        work_(std::move(work)),
        drain_(std::move(drain)) {}

  void run() {
    if (jobs_ == 1) {
      Block block;
      while (fill_(block)) {
        work_(block);
        drain_(block);
      }
      return;
    }
    slots_ = std::vector<Slot>(static_cast<std::size_t>(jobs_) * 2);
    std::vector<std::jthread> threads;
    threads.emplace_back([this] { fill_all(); });
    for (int i = 0; i < jobs_; ++i) threads.emplace_back([this] { work_all(); });
    try {
      drain_all();
    } catch (...) {
      stop();
      throw;
    }
  }

 private:
  enum class State { kFree, kFilled, kWorking, kDone };
  struct Slot {
    Block block;
    State state = State::kFree;
    std::exception_ptr error;
  };

  Slot &slot(std::size_t number) { return slots_[number % slots_.size()]; }

  void stop() {
    const std::lock_guard lock(mutex_);
    stopped_ = true;
    changed_.notify_all();
  }

  void mark(Slot &changed, State state) {
    const std::lock_guard lock(mutex_);
    changed.state = state;
    changed_.notify_all();
  }

  void fill_all() {
    for (std::size_t number = 0;; ++number) {
      Slot &next = slot(number);
      {
        std::unique_lock lock(mutex_);
        changed_.wait(lock, [&] { return stopped_ || next.state == State::kFree; });
        if (stopped_) return;
      }
      bool more = false;
      try {
        more = fill_(next.block);
      } catch (...) {
        next.error = std::current_exception();
      }
      const std::lock_guard lock(mutex_);
      if (more) {
        next.state = State::kFilled;
        filled_ = number + 1;
      } else {
        if (next.error) next.state = State::kDone;
        end_ = next.error ? number + 1 : number;
        ended_ = true;
      }
      changed_.notify_all();
      if (ended_) return;
    }
  }

  void work_all() {
    for (;;) {
      Slot *mine = nullptr;
      {
        std::unique_lock lock(mutex_);
        changed_.wait(lock, [&] { return stopped_ || taken_ < filled_ || ended_; });
        if (stopped_ || taken_ >= filled_) return;
        mine = &slot(taken_++);
        mine->state = State::kWorking;
      }
      try {
        work_(mine->block);
      } catch (...) {
        mine->error = std::current_exception();
      }
      mark(*mine, State::kDone);
    }
  }

  void drain_all() {
    for (std::size_t number = 0;; ++number) {
      Slot &next = slot(number);
      {
        std::unique_lock lock(mutex_);
        changed_.wait(lock,
                      [&] { return next.state == State::kDone || (ended_ && number >= end_); });
        if (next.state != State::kDone) return;
      }
      if (next.error) std::rethrow_exception(next.error);
      drain_(next.block);
      mark(next, State::kFree);
    }
  }

  int jobs_;
  std::function<bool(Block &)> fill_;
  std::function<void(Block &)> work_;
  std::function<void(Block &)> drain_;
  std::vector<Slot> slots_;
  std::mutex mutex_;
  std::condition_variable changed_;
  std::size_t filled_ = 0;
  std::size_t taken_ = 0;
  std::size_t end_ = 0;
  bool ended_ = false;
  bool stopped_ = false;
};

}  // namespace campotipo::tool
