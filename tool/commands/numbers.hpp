#pragma once

#include <CLI/CLI.hpp>

#include <charconv>
#include <cstdint>
#include <limits>
#include <string>

namespace campotipo::tool {

// What an option that takes a whole number takes: its digits alone, within bounds that are told. The
// parser would read zeros in front of them as a sign of octal digits.
inline CLI::Validator whole_number(std::uint64_t least,
                                   std::uint64_t most = std::numeric_limits<std::uint64_t>::max()) {
  const bool open = most == std::numeric_limits<std::uint64_t>::max();
  const std::string range = open ? std::to_string(least) + " or more"
                                 : std::to_string(least) + " to " + std::to_string(most);
  const auto check = [=](std::string &text) {
    std::uint64_t value = 0;
    const char *end = text.data() + text.size();
    const auto [behind, error] = std::from_chars(text.data(), end, value);
    const bool good = error == std::errc() && behind == end && value >= least && value <= most;
    if (!good) return "expected " + range + ", found \"" + text + "\"";
    text = std::to_string(value);
    return std::string();
  };
  return {check, ""};
}

}  // namespace campotipo::tool
