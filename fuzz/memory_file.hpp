#pragma once

#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

namespace campotipo::fuzz {

// Bytes under a path, so that they are read as any file is.
class MemoryFile {
 public:
  MemoryFile(const std::uint8_t *bytes, std::size_t count) : fd_(memfd_create("fuzz", 0)) {
    if (fd_ < 0 || write(fd_, bytes, count) != static_cast<ssize_t>(count)) std::abort();
    path_ = "/proc/self/fd/" + std::to_string(fd_);
  }
  MemoryFile(const MemoryFile &) = delete;
  MemoryFile &operator=(const MemoryFile &) = delete;
  ~MemoryFile() { close(fd_); }
  const std::string &path() const { return path_; }

 private:
  int fd_;
  std::string path_;
};

}  // namespace campotipo::fuzz
