#include "terminal/spool.hpp"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "terminal/failure.hpp"

namespace campotipo::tool {

namespace {

std::string temporary_directory() {
  const char *told = std::getenv("TMPDIR");
  return told != nullptr && *told != '\0' ? told : "/tmp";
}

}  // namespace

Spool::Spool() {
  const std::string directory = temporary_directory();
  fd_ = open(directory.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, 0600);
  if (fd_ >= 0) return;
  // A file system that has no files without a name.
  std::string path = directory + "/campotipo.XXXXXX";
  fd_ = mkostemp(path.data(), O_CLOEXEC);
  if (fd_ < 0) fail(errno);
  unlink(path.c_str());
}

Spool::~Spool() {
  if (fd_ >= 0) close(fd_);
}

void Spool::fail(int error) const {
  throw Failure(temporary_directory() + ": no temporary file: " + std::strerror(error));
}

void Spool::write(std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t put = ::write(fd_, bytes.data(), bytes.size());
    if (put < 0 && errno != EINTR) fail(errno);
    if (put > 0) bytes.remove_prefix(static_cast<std::size_t>(put));
  }
}

void Spool::patch(std::uint64_t place, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t put = pwrite(fd_, bytes.data(), bytes.size(), static_cast<off_t>(place));
    if (put < 0 && errno != EINTR) fail(errno);
    if (put <= 0) continue;
    bytes.remove_prefix(static_cast<std::size_t>(put));
    place += static_cast<std::uint64_t>(put);
  }
}

void Spool::copy_to(Output &output) {
  std::vector<char> block(256U << 10);
  if (lseek(fd_, 0, SEEK_SET) < 0) fail(errno);
  for (;;) {
    const ssize_t got = ::read(fd_, block.data(), block.size());
    if (got < 0 && errno != EINTR) fail(errno);
    if (got == 0) return;
    if (got > 0) output.write({block.data(), static_cast<std::size_t>(got)});
  }
}

}  // namespace campotipo::tool
