// The file of the kernel that is not as it should be, each case in a process of its own.

#include <campotipo/bits.h>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "tests/faults/child.hpp"

namespace {

const char *kernel_file = nullptr;

}  // namespace

// Opens another file where the library asks for the kernel's.
extern "C" int open(const char *path, int flags, ...) {
  const bool replaced =
      kernel_file != nullptr && std::strcmp(path, "/proc/sys/kernel/random/uuid") == 0;
  std::va_list more;
  va_start(more, flags);
  const auto mode = (flags & O_CREAT) != 0 ? va_arg(more, mode_t) : mode_t{};
  va_end(more);
  return openat(AT_FDCWD, replaced ? kernel_file : path, flags, mode);
}

namespace {

using campotipo::test::in_child;

// A file of its own with that text, removed at the end.
class File {
 public:
  explicit File(const char *text) {
    const int file = mkstemp(path_);
    if (file < 0 || write(file, text, std::strlen(text)) < 0 || close(file) != 0) std::abort();
  }
  ~File() { unlink(path_); }
  const char *path() const { return path_; }

 private:
  char path_[32] = "/tmp/campotipo-uuid-XXXXXX";
};

std::string generated() {
  unsigned char guid[ZGUID_BYTES + 1];
  char text[ZGUID_STRING_MAX_SIZE];
  std::memset(guid, 0xFF, sizeof guid);
  ZGUID_gera(guid);
  EXPECT_EQ(guid[ZGUID_BYTES], 0xFF);
  ZGUID_string(text, guid, 0);
  return text;
}

TEST(KernelFileDeathTest, GivesWhatCanBeReadOfIt) {
  const std::string zero(32, '0');
  const std::string digits = "00112233445566778899aabbccddeeff";
  const File empty(""), line("00112233-4455-6677-8899-aabbccddeeff\n"), cut("0011"),
      endless(std::string(500, '7').c_str());
  const struct {
    const char *path;
    std::string expected;
  } cases[] = {{"/nowhere/at/all", zero},
               {"/", zero},  // opens, and cannot be read
               {"/proc/self/mem", zero},
               {empty.path(), zero},
               {cut.path(), "0011" + zero.substr(4)},
               {endless.path(), std::string(32, '7')},
               {line.path(), digits}};
  for (const auto &one : cases)
    in_child([&] {
      kernel_file = one.path;
      EXPECT_EQ(generated(), one.expected) << one.path;
    });
}

// A GUID needs a descriptor, gives it back, and without one is all zero.
TEST(KernelFileDeathTest, TakesOneDescriptorAndGivesItBack) {
#ifdef __SANITIZE_ADDRESS__
  GTEST_SKIP() << "the sanitizer's own checks take descriptors";
#endif
  in_child([] {
    for (const rlim_t most : {20, 0}) {
      const rlimit limit{most, most};
      ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &limit), 0);
      for (int i = 0; i < 50; ++i)
        EXPECT_EQ(generated() == std::string(32, '0'), most == 0) << most << ' ' << i;
    }
  });
}

}  // namespace
