#pragma once

#include <cstdint>
#include <string_view>

#include "terminal/output.hpp"

namespace campotipo::tool {

// Bytes for an output that cannot take them back, kept in a file without a name until it is sure
// that they are wanted.
class Spool {
 public:
  Spool();
  Spool(const Spool &) = delete;
  Spool &operator=(const Spool &) = delete;
  ~Spool();

  void write(std::string_view bytes);

  // Bytes over those that were written at a place.
  void patch(std::uint64_t place, std::string_view bytes);

  // Everything that was written, once.
  void copy_to(Output &output);

 private:
  [[noreturn]] void fail(int error) const;

  int fd_ = -1;
};

}  // namespace campotipo::tool
