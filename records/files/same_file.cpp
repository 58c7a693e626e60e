#include "files/same_file.hpp"

#include <sys/stat.h>
#include <unistd.h>

#include "errors/error.hpp"

namespace campotipo::records {

namespace {

// False for what is no regular file: a terminal may well be both.
bool look(const std::string &path, int standard, struct stat &state) {
  const bool no_path = path.empty() || path == "-";
  const int result = no_path ? fstat(standard, &state) : stat(path.c_str(), &state);
  return result == 0 && S_ISREG(state.st_mode);
}

}  // namespace

void refuse_same_file(const std::string &in, const std::string &out) {
  struct stat source = {};
  struct stat target = {};
  if (!look(in, STDIN_FILENO, source) || !look(out, STDOUT_FILENO, target)) return;
  if (source.st_dev != target.st_dev || source.st_ino != target.st_ino) return;
  throw Error(ErrorCode::kArgument,
              (out.empty() || out == "-" ? "standard output" : out) +
                  ": is a file that is read, another was expected for the output");
}

}  // namespace campotipo::records
