#pragma once

#include <cstdint>
#include <random>
#include <string>

namespace campotipo::test {

// Random input that is the same in every run, so that a failure can be seen again.
class Random {
 public:
  explicit Random(std::uint64_t seed) : engine_(seed) {}

  // Uniform in [low, high].
  template <class T>
  T between(T low, T high) {
    return std::uniform_int_distribution<T>(low, high)(engine_);
  }

  std::uint64_t word() { return engine_(); }

  // A word whose number of significant bits is uniform, so that small numbers are as common as
  // large ones.
  std::uint64_t word_of_any_size() { return word() >> between(0, 63); }

  std::string digits(std::size_t count) {
    std::string text(count, '0');
    for (char &digit : text) digit = static_cast<char>('0' + between(0, 9));
    return text;
  }

 private:
  std::mt19937_64 engine_;
};

}  // namespace campotipo::test
