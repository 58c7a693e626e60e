#include "terminal/output.hpp"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstring>

#include "terminal/failure.hpp"
#include "terminal/leftover.hpp"
#include "text/quote.hpp"

namespace campotipo::tool {

using namespace campotipo::records;

namespace {

constexpr int kMostLinks = 40;

std::string folder_of(const std::string &path) {
  const std::size_t slash = path.rfind('/');
  return slash == std::string::npos ? "./" : path.substr(0, slash + 1);
}

// Where a chain of symbolic links ends, even where nothing stands there yet: the file is replaced
// or made, and the link stays.
std::string resolved(std::string path) {
  for (int links = 0; links < kMostLinks; ++links) {
    char target[PATH_MAX];
    const ssize_t length = readlink(path.c_str(), target, sizeof target);
    if (length < 0) break;
    const std::string next(target, static_cast<std::size_t>(length));
    path = next.starts_with('/') ? next : folder_of(path) + next;
  }
  return path;
}

// A name in the folder of the path that is not that of a file, by the function given, which sets
// errno.
template <class Make>
std::string make_beside(const std::string &path, Make make) {
  for (int i = 0;; ++i) {
    std::string name =
        folder_of(path) + "campotipo." + std::to_string(getpid()) + "." + std::to_string(i);
    if (make(name)) return name;
    if (errno != EEXIST) return "";
  }
}

}  // namespace

Output::Output(const std::string &path) {
  if (path.empty() || path == "-") {
    name_ = "standard output";
    fd_ = STDOUT_FILENO;
    terminal_ = isatty(fd_) == 1;
    return;
  }
  name_ = path;
  struct stat state = {};
  const bool exists = stat(path.c_str(), &state) == 0;
  if (!exists && errno != ENOENT) fail(errno);
  if (exists && S_ISDIR(state.st_mode)) {
    throw Failure(name_ + ": is a directory, a file was expected");
  }
  if (exists && !S_ISREG(state.st_mode)) {
    fd_ = open(path.c_str(), O_WRONLY | O_CLOEXEC);
    if (fd_ < 0) fail(errno);
    terminal_ = isatty(fd_) == 1;
    return;
  }
  if (exists && access(path.c_str(), W_OK) != 0) fail(errno);
  target_ = resolved(path);
  open_file(exists, state.st_mode & 07777);
}

void Output::open_file(bool exists, unsigned mode) {
  const unsigned first = exists ? 0600 : 0666;
  fd_ = open(folder_of(target_).c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, first);
  // Without the names of descriptors such a file could not be put in its place.
  if (fd_ >= 0 && access("/proc/self/fd", X_OK) != 0) {
    close(fd_);
    fd_ = -1;
  }
  if (fd_ < 0) {
    const SignalsHeld held;
    temporary_ = make_beside(target_, [&](const std::string &name) {
      fd_ = open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, first);
      return fd_ >= 0;
    });
    if (fd_ < 0) fail(errno);
    remove_on_signal(temporary_);
  }
  // A file system without modes may refuse this, and the file is good all the same.
  if (exists && fchmod(fd_, mode) != 0) errno = 0;
}

Output::~Output() {
  if (fd_ > STDERR_FILENO) close(fd_);
  if (temporary_.empty()) return;
  unlink(temporary_.c_str());
  remove_on_signal("");
}

void Output::write(std::string_view bytes) {
  if (!terminal_) return write_coloured(bytes);
  write_coloured(printable_lines(bytes));
}

void Output::patch(std::uint64_t place, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t put = pwrite(fd_, bytes.data(), bytes.size(), static_cast<off_t>(place));
    if (put < 0 && errno != EINTR) fail(errno);
    if (put <= 0) continue;
    bytes.remove_prefix(static_cast<std::size_t>(put));
    place += static_cast<std::uint64_t>(put);
  }
}

void Output::write_coloured(std::string_view text) {
  for (std::size_t at = 0; at < text.size();) {
    const ssize_t put = ::write(fd_, &text[at], text.size() - at);
    if (put < 0) {
      if (errno == EINTR) continue;
      fail(errno);
    }
    at += static_cast<std::size_t>(put);
  }
}

// Gives 0 or the error.
int Output::link_as(const std::string &path) const {
  const std::string mine = "/proc/self/fd/" + std::to_string(fd_);
  return linkat(AT_FDCWD, mine.c_str(), AT_FDCWD, path.c_str(), AT_SYMLINK_FOLLOW) == 0 ? 0 : errno;
}

// A file is replaced by renaming another over it, so one without a name gets one for that moment.
void Output::put_in_place() {
  const SignalsHeld held;
  if (temporary_.empty()) {
    const int error = link_as(target_);
    if (error == 0) return;
    if (error != EEXIST) fail(error);
    temporary_ = make_beside(target_, [&](const std::string &name) {
      errno = link_as(name);
      return errno == 0;
    });
    if (temporary_.empty()) fail(errno);
  }
  const int error = std::rename(temporary_.c_str(), target_.c_str()) == 0 ? 0 : errno;
  if (error != 0) unlink(temporary_.c_str());
  temporary_.clear();
  remove_on_signal("");
  if (error != 0) fail(error);
}

void Output::commit() {
  if (target_.empty()) return;
  // A full or distant disk may tell only now that the bytes did not arrive.
  if (fsync(fd_) != 0 && errno != EINVAL && errno != EROFS) fail(errno);
  put_in_place();
  target_.clear();
  const int fd = fd_;
  fd_ = -1;
  if (close(fd) != 0) fail(errno);
}

void Output::fail(int error) {
  if (error == EPIPE) throw Failure(name_ + ": the reader has closed the pipe");
  throw Failure(name_ + ": cannot be written: " + std::strerror(error));
}

}  // namespace campotipo::tool
