#include "files/input.hpp"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

#include "errors/error.hpp"

namespace campotipo::records {

Input::Input(const std::string &path, Use use, const std::string &name) {
  const bool twice = use == Use::kTwice;
  const bool standard = path.empty() || path == "-";
  name_ = !name.empty() ? name : standard ? "standard input" : path;
  // The opening of a pipe would wait for somebody to write into it.
  fd_ =
      standard ? STDIN_FILENO : open(path.c_str(), O_RDONLY | O_CLOEXEC | (twice ? O_NONBLOCK : 0));
  if (fd_ < 0)
    throw Error(ErrorCode::kInput, name_ + ": cannot be opened: " + std::strerror(errno));
  try {
    look_at(use);
  } catch (...) {
    close_file();
    throw;
  }
}

void Input::look_at(Use use) {
  struct stat state = {};
  if (fstat(fd_, &state) != 0) throw Error(ErrorCode::kInput, name_ + ": " + std::strerror(errno));
  if (S_ISDIR(state.st_mode))
    throw Error(ErrorCode::kInput, name_ + ": is a directory, a file was expected");
  if (use == Use::kTwice && !S_ISREG(state.st_mode)) {
    throw Error(ErrorCode::kInput,
                name_ + ": is a pipe or device, expected a regular file: it is read twice");
  }
  if (!S_ISREG(state.st_mode)) return;
  size_ = static_cast<std::uint64_t>(state.st_size);
  if (use == Use::kTwice) left_ = size_;
  // Standard input may have been read before.
  const off_t place = lseek(fd_, 0, SEEK_CUR);
  place_ = place < 0 ? size_ : static_cast<std::uint64_t>(place);
}

void Input::close_file() const {
  if (fd_ > STDIN_FILENO) close(fd_);
}

Input::~Input() { close_file(); }

std::size_t Input::read(void *dest, std::size_t room) {
  room = static_cast<std::size_t>(std::min<std::uint64_t>(room, left_));
  std::size_t done = 0;
  while (done < room) {
    const ssize_t got = ::read(fd_, static_cast<char *>(dest) + done, room - done);
    if (got == 0 && place_ + done < size_) {
      throw Error(ErrorCode::kInput, name_ + ": ends at byte " + std::to_string(place_ + done) +
                                         ", it had " + std::to_string(size_) +
                                         " when it was opened");
    }
    if (got == 0) break;
    if (got < 0) {
      if (errno == EINTR) continue;
      throw Error(ErrorCode::kInput, name_ + ": cannot be read: " + std::strerror(errno));
    }
    done += static_cast<std::size_t>(got);
  }
  left_ -= done;
  place_ += done;
  return done;
}

void Input::rewind() {
  if (lseek(fd_, 0, SEEK_SET) != 0)
    throw Error(ErrorCode::kInput, name_ + ": " + std::strerror(errno));
  left_ = size_;
  place_ = 0;
}

bool Input::skip(std::uint64_t bytes) {
  if (size_ == 0 || lseek(fd_, static_cast<off_t>(bytes), SEEK_CUR) < 0) return false;
  place_ += bytes;
  return true;
}

}  // namespace campotipo::records
