#pragma once

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "tests/util/guarded_buffer.hpp"

namespace campotipo::test {

// An operation under test beside the obvious way of doing it.
template <class Operation, class Reference>
class Comparison {
 public:
  Comparison(Operation operation, Reference reference)
      : operation_(operation), reference_(reference) {}

  // At the end of the readable memory, and with room for wide loads behind the text.
  void expect_same(const std::string &text, int make) {
    std::string expected = text;
    const int good = reference_(expected, make);
    for (bool at_end : {true, false}) {
      const std::size_t size = text.size() + 1;
      auto *copy = reinterpret_cast<char *>(at_end ? buffer_.at_end(size) : buffer_.at_start(size));
      std::memcpy(copy, text.c_str(), size);
      EXPECT_EQ(operation_(copy, make), good) << text << " make " << make;
      EXPECT_EQ(std::memcmp(copy, expected.c_str(), size), 0) << text << " gives " << copy;
    }
  }

 private:
  Operation operation_;
  Reference reference_;
  GuardedBuffer buffer_;
};

}  // namespace campotipo::test
