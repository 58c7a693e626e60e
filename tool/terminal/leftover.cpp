#include "terminal/leftover.hpp"

#include <unistd.h>

#include <climits>

namespace campotipo::tool {

namespace {

constexpr int kEnding[] = {SIGHUP, SIGINT, SIGQUIT, SIGPIPE, SIGTERM, SIGXCPU, SIGXFSZ};

// A handler may look at little else than a plain array.
char leftover[PATH_MAX];

// GCOVR_EXCL_START: a process that ends by a signal tells nothing of what it reached
void remove_and_end(int number) {
  if (leftover[0] != '\0') unlink(leftover);
  // The disposition is the default one again: the signal ends the command behind this function.
  raise(number);
}
// GCOVR_EXCL_STOP

void catch_signals() {
  struct sigaction action = {};
  action.sa_handler = remove_and_end;
  action.sa_flags = static_cast<int>(SA_RESETHAND);
  sigfillset(&action.sa_mask);
  for (const int number : kEnding) {
    struct sigaction before = {};
    sigaction(number, nullptr, &before);
    if (before.sa_handler == SIG_DFL) sigaction(number, &action, nullptr);
  }
}

}  // namespace

SignalsHeld::SignalsHeld() {
  sigset_t ending;
  sigemptyset(&ending);
  for (const int number : kEnding) sigaddset(&ending, number);
  pthread_sigmask(SIG_BLOCK, &ending, &before_);
}

SignalsHeld::~SignalsHeld() { pthread_sigmask(SIG_SETMASK, &before_, nullptr); }

void remove_on_signal(const std::string &path) {
  const SignalsHeld held;
  leftover[path.copy(leftover, sizeof leftover - 1)] = '\0';
  if (!path.empty()) catch_signals();
}

}  // namespace campotipo::tool
