#pragma once

#include <string>

namespace campotipo::records {

// Refuses an output that is the file which is read, by whatever paths they are called: it would be
// lost, or read again as it grows. An empty path or "-" is standard input and standard output.
void refuse_same_file(const std::string &in, const std::string &out);

}  // namespace campotipo::records
