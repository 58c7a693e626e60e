#pragma once

#include <stdexcept>
#include <string>

namespace campotipo::tool {

// What the command leaves with.
enum Status { kGood = 0, kFound = 1, kUnusable = 2 };

// Ends the command with a message and a status: a command, layout or file that cannot be used, or
// (kFound) a value that cannot be stored whole.
class Failure : public std::runtime_error {
 public:
  explicit Failure(const std::string &message, Status status = kUnusable)
      : std::runtime_error(message), status_(status) {}
  Status status() const { return status_; }

 private:
  Status status_;
};

}  // namespace campotipo::tool
