#pragma once

#include <benchmark/benchmark.h>
#include <valgrind/callgrind.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

// One task, done by the library and by its peers on the same 512 inputs, in one process.
//
//     Task("codes", "12 characters to 9 bytes", goal)
//         .ours([&](std::size_t i) { ... }, answer)
//         .peer("OpenSSL", [&](std::size_t i) { ... }, answer)
//         .floor("copy of 9 bytes", [&](std::size_t i) { ... });
//
// Each contender's answer, a text, is compared with the library's for every input before anything
// is timed. A peer whose answer has another form gives none, and its comparison is made by the
// caller.
namespace campotipo::bench {

inline constexpr std::size_t kInputs = 512;

// The compiler must take every byte of memory as used and changed.
inline void clobber() { asm volatile("" ::: "memory"); }

template <class T>
inline void keep(T &&value) {
  benchmark::DoNotOptimize(value);
}

// Each task as the library does it, for counting instructions: run over all inputs once.
struct Counted {
  std::string name;
  std::function<void()> run;
};

inline std::vector<Counted> &counted() {
  static std::vector<Counted> all;
  return all;
}

class Task {
 public:
  // `goal` is the time of one operation that is aimed at, in ns; 0 for none.
  Task(std::string family, std::string task, double goal = 0)
      : name_(std::move(family) + '/' + std::move(task)), goal_(goal) {}

  template <class Operation>
  Task &ours(Operation operation) {
    counted().push_back({name_, [operation] {
                           for (std::size_t i = 0; i < kInputs; ++i) operation(i);
                         }});
    return enter("campotipo", operation);
  }

  template <class Operation, class Answer>
  Task &ours(Operation operation, Answer answer) {
    for (std::size_t i = 0; i < kInputs; ++i) expected_[i] = answer(i);
    return ours(operation);
  }

  template <class Operation>
  Task &peer(const std::string &peer, Operation operation) {
    return enter(peer, operation);
  }

  template <class Operation, class Answer>
  Task &peer(const std::string &peer, Operation operation, Answer answer) {
    for (std::size_t i = 0; i < kInputs; ++i) {
      const std::string given = answer(i);
      if (given == expected_[i]) continue;
      std::fprintf(stderr, "%s: input %zu: %s says \"%s\", the library \"%s\"\n", name_.c_str(), i,
                   peer.c_str(), given.c_str(), expected_[i].c_str());
      std::exit(1);
    }
    return enter(peer, operation);
  }

  template <class Operation>
  Task &floor(const std::string &what, Operation operation) {
    return enter("floor: " + what, operation);
  }

 private:
  // One iteration of the benchmark is all 512 inputs; the report divides by that.
  template <class Operation>
  Task &enter(const std::string &contender, Operation operation) {
    benchmark::RegisterBenchmark((name_ + '/' + contender).c_str(),
                                 [operation, goal = goal_](benchmark::State &state) {
                                   for (auto _ : state)
                                     for (std::size_t i = 0; i < kInputs; ++i) operation(i);
                                   state.counters["goal"] = goal;
                                 });
    return *this;
  }

  std::string name_;
  double goal_;
  std::array<std::string, kInputs> expected_;
};

}  // namespace campotipo::bench
