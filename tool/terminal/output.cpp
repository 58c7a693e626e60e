#include "terminal/output.hpp"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "files/failure.hpp"

namespace campotipo::tool {

namespace {

// Where a chain of symbolic links ends, so that the rename replaces the file and not the link.
std::string resolved(const std::string &path) {
  char place[PATH_MAX];
  return realpath(path.c_str(), place) != nullptr ? place : path;
}

unsigned default_mode() {
  const mode_t mask = umask(0);
  umask(mask);
  return 0666 & ~mask;
}

}  // namespace

Output::Output(const std::string &path) {
  if (path.empty() || path == "-") {
    name_ = "standard output";
    fd_ = STDOUT_FILENO;
    return;
  }
  name_ = path;
  struct stat state = {};
  if (stat(path.c_str(), &state) != 0) {
    open_beside(path, default_mode());
  } else if (S_ISDIR(state.st_mode)) {
    throw Failure(name_ + ": is a directory, a file was expected");
  } else if (S_ISREG(state.st_mode)) {
    if (access(path.c_str(), W_OK) != 0) fail(errno);
    open_beside(resolved(path), state.st_mode & 07777);
  } else {
    fd_ = open(path.c_str(), O_WRONLY | O_CLOEXEC);
    if (fd_ < 0) fail(errno);
  }
}

void Output::open_beside(const std::string &path, unsigned mode) {
  target_ = path;
  temporary_ = path + ".XXXXXX";
  fd_ = mkostemp(temporary_.data(), O_CLOEXEC);
  if (fd_ < 0) {
    const int error = errno;
    temporary_.clear();
    fail(error);
  }
  // A file system without modes may refuse this, and the file is good all the same.
  if (fchmod(fd_, mode) != 0) errno = 0;
}

Output::~Output() {
  if (fd_ > STDERR_FILENO) close(fd_);
  if (!temporary_.empty()) unlink(temporary_.c_str());
}

void Output::write(std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t put = ::write(fd_, bytes.data(), bytes.size());
    if (put < 0) {
      if (errno == EINTR) continue;
      fail(errno);
    }
    bytes.remove_prefix(static_cast<std::size_t>(put));
  }
}

void Output::commit() {
  if (temporary_.empty()) return;
  const int fd = fd_;
  fd_ = -1;
  // A full or distant disk may tell only now that the bytes did not arrive.
  if (fsync(fd) != 0 && errno != EINVAL && errno != EROFS) {
    // GCOVR_EXCL_START: no disk of the tests fails this late
    const int error = errno;
    close(fd);
    fail(error);
    // GCOVR_EXCL_STOP
  }
  if (close(fd) != 0) fail(errno);
  if (std::rename(temporary_.c_str(), target_.c_str()) != 0) fail(errno);
  temporary_.clear();
}

bool Output::is_terminal() const { return fd_ >= 0 && isatty(fd_) == 1; }

void Output::fail(int error) {
  if (error == EPIPE) throw Failure(name_ + ": the reader has closed the pipe");
  throw Failure(name_ + ": cannot be written: " + std::strerror(error));
}

}  // namespace campotipo::tool
