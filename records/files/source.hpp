#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace campotipo::records {

// Bytes that are read from the front to the end.
class Source {
 public:
  Source() = default;
  Source(const Source &) = delete;
  Source &operator=(const Source &) = delete;
  virtual ~Source() = default;

  // Reads until `room` bytes are there or the source ends; the result is less only at the end.
  virtual std::size_t read(void *dest, std::size_t room) = 0;

  // Moves forward without reading, where the source allows it.
  virtual bool skip(std::uint64_t bytes) = 0;

  // Bytes of the whole where they are known, else 0.
  virtual std::uint64_t size() const = 0;

  // All of it, where it is in memory; else null.
  virtual const unsigned char *memory() const { return nullptr; }

  // As messages name it.
  virtual const std::string &name() const = 0;
};

}  // namespace campotipo::records
