#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace campotipo::tool {

// Standard output, or a file that appears under its name only when it is complete: it is written
// beside its place under a temporary name, and commit() renames it. What is no regular file (a
// device, a pipe) is written directly.
class Output {
 public:
  // Standard output where the path is empty or "-".
  explicit Output(const std::string &path);
  Output(const Output &) = delete;
  Output &operator=(const Output &) = delete;
  ~Output();

  void write(std::string_view bytes);

  // Every byte is out and, for a file, on its way to the disk under its own name. Without this call
  // a file does not appear.
  void commit();

  const std::string &name() const { return name_; }
  bool is_terminal() const;

 private:
  [[noreturn]] void fail(int error);
  void open_beside(const std::string &path, unsigned mode);

  std::string name_;
  std::string target_;
  std::string temporary_;
  int fd_ = -1;
};

}  // namespace campotipo::tool
