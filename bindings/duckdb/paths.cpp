#include "paths.hpp"

#include <dirent.h>
#include <fcntl.h>
#include <glob.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <memory>

#include "host.hpp"

namespace campotipo::duckdb {

namespace {

bool is_kind(const std::string &path, mode_t kind) {
  struct stat state = {};
  return stat(path.c_str(), &state) == 0 && (state.st_mode & S_IFMT) == kind;
}

bool exists(const std::string &path) {
  struct stat state = {};
  return stat(path.c_str(), &state) == 0;
}

// Hidden files, names that begin with "_" and layouts are no records.
bool is_data(const std::string &name) {
  return name[0] != '.' && name[0] != '_' && !name.ends_with(".toml");
}

std::vector<std::string> files_of_folder(const std::string &folder) {
  struct Close {
    void operator()(DIR *open) const { closedir(open); }
  };
  const std::unique_ptr<DIR, Close> open(opendir(folder.c_str()));
  if (open == nullptr) throw Failure(folder + ": cannot be opened: " + std::strerror(errno));
  std::vector<std::string> files;
  while (const dirent *entry = readdir(open.get())) {
    if (!is_data(entry->d_name)) continue;
    const std::string path = folder + (folder.ends_with('/') ? "" : "/") + entry->d_name;
    if (is_kind(path, S_IFREG)) files.push_back(path);
  }
  return files;
}

std::vector<std::string> files_of_glob(const std::string &pattern) {
  struct Free {
    void operator()(glob_t *found) const { globfree(found); }
  };
  glob_t found = {};
  const std::unique_ptr<glob_t, Free> owner(&found);
  const int result = ::glob(pattern.c_str(), GLOB_NOSORT, nullptr, &found);
  if (result == GLOB_NOSPACE) throw std::bad_alloc();
  if (result != 0 && result != GLOB_NOMATCH) throw Failure(pattern + ": a folder cannot be read");
  std::vector<std::string> files;
  for (std::size_t i = 0; i < found.gl_pathc; ++i) {
    if (!is_kind(found.gl_pathv[i], S_IFDIR)) files.emplace_back(found.gl_pathv[i]);
  }
  return files;
}

}  // namespace

Paths expand(const std::string &path) {
  Paths paths;
  if (is_kind(path, S_IFDIR)) {
    paths.files = files_of_folder(path);
  } else if (path.find_first_of("*?[") != std::string::npos && !exists(path)) {
    paths.files = files_of_glob(path);
  } else {
    return {{path}, false};
  }
  if (paths.files.empty()) throw Failure(path + ": no file is there");
  paths.several = true;
  std::sort(paths.files.begin(), paths.files.end());
  return paths;
}

Paths expand(const std::vector<std::string> &list) {
  if (list.empty()) throw Failure("the list of files is empty");
  Paths paths;
  paths.several = true;
  for (const std::string &path : list) {
    for (std::string &file : expand(path).files) paths.files.push_back(std::move(file));
  }
  return paths;
}

std::optional<std::string> layout_beside(const std::string &file) {
  if (is_kind(file + ".toml", S_IFREG)) return file + ".toml";
  const std::size_t name = file.rfind('/') == std::string::npos ? 0 : file.rfind('/') + 1;
  const std::size_t ending = file.rfind('.');
  if (ending == std::string::npos || ending <= name) return std::nullopt;
  std::string beside = file.substr(0, ending) + ".toml";
  if (beside == file || !is_kind(beside, S_IFREG)) return std::nullopt;
  return beside;
}

void refuse_compressed(const std::string &file) {
  if (!file.ends_with(".gz")) return;
  const int open_file = open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  if (open_file < 0) return;
  unsigned char magic[2] = {};
  const ssize_t got = read(open_file, magic, sizeof magic);
  close(open_file);
  if (got == 2 && magic[0] == 0x1F && magic[1] == 0x8B) {
    throw Failure(file + ": is compressed by gzip, which is not read here: decompress it first");
  }
}

}  // namespace campotipo::duckdb
