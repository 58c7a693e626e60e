#pragma once

#include <signal.h>

#include <string>

namespace campotipo::tool {

// Keeps the signals that end a command waiting, in this thread.
class SignalsHeld {
 public:
  SignalsHeld();
  SignalsHeld(const SignalsHeld &) = delete;
  SignalsHeld &operator=(const SignalsHeld &) = delete;
  ~SignalsHeld();

 private:
  sigset_t before_;
};

// From now on a signal that ends the command removes this file first; none where the path is empty.
void remove_on_signal(const std::string &path);

}  // namespace campotipo::tool
