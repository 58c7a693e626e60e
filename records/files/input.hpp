#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>

#include "files/source.hpp"

namespace campotipo::records {

// A file, or standard input where the path is empty or "-". Refuses a directory, with an Error.
class Input : public Source {
 public:
  explicit Input(const std::string &path) : Input(path, Use::kOnce) {}

  // kTwice: what is no regular file is refused, and the file ends where it did when it was opened.
  enum class Use { kOnce, kTwice };
  // name: as messages name it; empty: by its path.
  Input(const std::string &path, Use use, const std::string &name = "");
  ~Input() override;

  // Reads until `room` bytes are there or the file ends; the result is less only at the end. Throws
  // an Error where a regular file ends before the size that it had when it was opened.
  std::size_t read(void *dest, std::size_t room) override;

  // Moves forward without reading, where the file allows it.
  bool skip(std::uint64_t bytes) override;

  // Back to the beginning of a file opened for kTwice.
  void rewind();

  // As messages name it.
  const std::string &name() const override { return name_; }

  // Bytes of a regular file, else 0.
  std::uint64_t size() const override { return size_; }

 private:
  void look_at(Use use);
  void close_file() const;

  std::string name_;
  int fd_ = -1;
  std::uint64_t size_ = 0;
  std::uint64_t place_ = 0;  // of the next byte, in a regular file
  std::uint64_t left_ = std::numeric_limits<std::uint64_t>::max();  // that may still be read
};

}  // namespace campotipo::records
