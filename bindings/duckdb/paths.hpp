#pragma once

#include <optional>
#include <string>
#include <vector>

// Which files a query means.
namespace campotipo::duckdb {

struct Paths {
  std::vector<std::string> files;
  bool several = false;  // a glob, list or folder, however many files it holds
};

// The files that a path, glob or folder stands for, in the order of their bytes. Throws a Failure
// where there are none.
Paths expand(const std::string &path);

// Those of each part of a list, in the order of the list.
Paths expand(const std::vector<std::string> &list);

// FILE.toml, or the file's name with ".toml" in the place of its ending, where one of them is a file.
std::optional<std::string> layout_beside(const std::string &file);

// Throws a Failure for a file that is compressed.
void refuse_compressed(const std::string &file);

}  // namespace campotipo::duckdb
