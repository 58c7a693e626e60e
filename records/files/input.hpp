#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace campotipo::tool {

// A file, or standard input where the path is empty or "-". Refuses a directory.
class Input {
 public:
  explicit Input(const std::string &path);
  Input(const Input &) = delete;
  Input &operator=(const Input &) = delete;
  ~Input();

  // Reads until `room` bytes are there or the file ends; the result is less only at the end.
  std::size_t read(void *dest, std::size_t room);

  // Moves forward without reading, where the file allows it.
  bool skip(std::uint64_t bytes);

  // As messages name it.
  const std::string &name() const { return name_; }

  // Bytes of a regular file, else 0.
  std::uint64_t size() const { return size_; }

 private:
  std::string name_;
  int fd_ = -1;
  std::uint64_t size_ = 0;
};

}  // namespace campotipo::tool
