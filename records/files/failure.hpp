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

// A layout that cannot be used: the message names file, line and column.
class LayoutFailure : public Failure {
 public:
  LayoutFailure(const std::string &place, const std::string &reason)
      : Failure(place + ": " + reason), reason_(reason) {}

  // The message without the place.
  const std::string &reason() const { return reason_; }

 private:
  std::string reason_;
};

}  // namespace campotipo::tool
