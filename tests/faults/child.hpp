#pragma once

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <string>

namespace campotipo::test {

// Runs a body in a process of its own, since what the library found out holds for a process.
template <class Body>
void in_child(Body body) {
  const auto run = [&] {
    body();
    std::exit(testing::Test::HasFailure() ? 1 : 0);  // with the counters of coverage written
  };
  EXPECT_EXIT(run(), testing::ExitedWithCode(0), "");
}

// A directory of its own, made the working directory, which goes away with the marker file in it.
class Workplace {
 public:
  Workplace() {
    if (mkdtemp(path_) == nullptr || chdir(path_) != 0) std::abort();
  }
  Workplace(const Workplace &) = delete;
  Workplace &operator=(const Workplace &) = delete;
  ~Workplace() {
    chmod(path_, 0700);
    const std::string marker = std::string(path_) + "/NBR_COM_ERRO.TXT";
    if (unlink(marker.c_str()) != 0) rmdir(marker.c_str());
    rmdir(path_);
  }

 private:
  char path_[32] = "/tmp/campotipo-place-XXXXXX";
};

}  // namespace campotipo::test
