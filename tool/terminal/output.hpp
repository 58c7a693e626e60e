#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace campotipo::tool {

// Standard output, or a file that appears under its name only when it is complete: until commit()
// it has no name, so that nothing is left of it however the command ends. Where the file system has
// no such files it stands beside its place under another name, which a signal takes away. What is
// no regular file (a device, a pipe) is written directly.
class Output {
 public:
  // Standard output where the path is empty or "-".
  explicit Output(const std::string &path);
  Output(const Output &) = delete;
  Output &operator=(const Output &) = delete;
  ~Output();

  // Text or bytes; on a terminal without what would steer it.
  void write(std::string_view bytes);

  // Bytes over those that were written at a place, where they can still be taken back.
  void patch(std::uint64_t place, std::string_view bytes);

  // Text that was made fit for a terminal, with its colours.
  void write_coloured(std::string_view text);

  // Every byte is out and, for a file, on its way to the disk under its own name. Without this call
  // a file does not appear.
  void commit();

  const std::string &name() const { return name_; }
  bool is_terminal() const { return terminal_; }

  // Whether what is written can still be taken back: commit() makes a file appear, a pipe has had
  // its bytes at once.
  bool is_held() const { return !target_.empty(); }

 private:
  [[noreturn]] void fail(int error);
  void open_file(bool exists, unsigned mode);
  void put_in_place();
  int link_as(const std::string &path) const;

  std::string name_;
  std::string target_;     // of a file that is not yet in place
  std::string temporary_;  // its name until then, if it has one
  int fd_ = -1;
  bool terminal_ = false;
};

}  // namespace campotipo::tool
