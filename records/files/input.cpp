#include "files/input.hpp"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "files/failure.hpp"

namespace campotipo::tool {

Input::Input(const std::string &path) {
  const bool standard = path.empty() || path == "-";
  name_ = standard ? "standard input" : path;
  fd_ = standard ? STDIN_FILENO : open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (fd_ < 0) throw Failure(name_ + ": cannot be opened: " + std::strerror(errno));
  struct stat state = {};
  if (fstat(fd_, &state) != 0) throw Failure(name_ + ": " + std::strerror(errno));
  if (S_ISDIR(state.st_mode)) throw Failure(name_ + ": is a directory, a file was expected");
  if (S_ISREG(state.st_mode)) size_ = static_cast<std::uint64_t>(state.st_size);
}

Input::~Input() {
  if (fd_ > STDIN_FILENO) close(fd_);
}

std::size_t Input::read(void *dest, std::size_t room) {
  std::size_t done = 0;
  while (done < room) {
    const ssize_t got = ::read(fd_, static_cast<char *>(dest) + done, room - done);
    if (got == 0) break;
    if (got < 0) {
      if (errno == EINTR) continue;
      throw Failure(name_ + ": cannot be read: " + std::strerror(errno));
    }
    done += static_cast<std::size_t>(got);
  }
  return done;
}

bool Input::skip(std::uint64_t bytes) {
  return size_ != 0 && lseek(fd_, static_cast<off_t>(bytes), SEEK_CUR) >= 0;
}

}  // namespace campotipo::tool
