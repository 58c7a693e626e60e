// Files and directories that are not as they should be, each case in a child process.

#include <campotipo/bits.h>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "tests/percent/agreement.hpp"

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

template <class Body>
void in_child(Body body) {
  const auto run = [&] {
    body();
    _exit(testing::Test::HasFailure() ? 1 : 0);
  };
  EXPECT_EXIT(run(), testing::ExitedWithCode(0), "");
}

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
  in_child([] {
    for (const rlim_t most : {20, 0}) {
      const rlimit limit{most, most};
      ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &limit), 0);
      for (int i = 0; i < 50; ++i)
        EXPECT_EQ(generated() == std::string(32, '0'), most == 0) << most << ' ' << i;
    }
  });
}

// Half a unit above an even one: up only where the marker stands.
std::int64_t rounded() {
  QUANTIA value = campotipo::test::quantia(12501);
  ARRED_div1000_nbr(&value);
  return campotipo::test::units(value);
}
constexpr std::int64_t kWithMarker = 12, kWithout = 13;

class Place {
 public:
  Place() {
    if (mkdtemp(path_) == nullptr || chdir(path_) != 0) std::abort();
  }
  ~Place() {
    chmod(path_, 0700);
    unlink((std::string(path_) + "/NBR_COM_ERRO.TXT").c_str());
    rmdir(path_);
  }
  const char *path() const { return path_; }

 private:
  char path_[32] = "/tmp/campotipo-place-XXXXXX";
};

void set_marker() {
  std::FILE *file = std::fopen("NBR_COM_ERRO.TXT", "w");
  ASSERT_NE(file, nullptr);
  std::fclose(file);
}

TEST(MarkerFileDeathTest, IsAnythingOfThatName) {
  in_child([] {
    Place place;
    EXPECT_EQ(mkdir("NBR_COM_ERRO.TXT", 0000), 0);
    EXPECT_EQ(rounded(), kWithMarker);
    rmdir("NBR_COM_ERRO.TXT");
  });
  in_child([] {  // a link that leads nowhere is nothing
    Place place;
    EXPECT_EQ(symlink("nowhere", "NBR_COM_ERRO.TXT"), 0);
    EXPECT_EQ(rounded(), kWithout);
  });
}

TEST(MarkerFileDeathTest, IsAbsentWhereTheDirectoryCannotBeSearched) {
  in_child([] {
    Place place;
    set_marker();
    chmod(place.path(), 0600);
    // Who is root may search any directory; the real user counts.
    EXPECT_EQ(getuid() == 0 ? setresuid(65534, 0, 0) : 0, 0);
    EXPECT_EQ(rounded(), kWithout);
  });
}

TEST(MarkerFileDeathTest, IsAbsentWhereTheDirectoryIsGone) {
  in_child([] {
    { Place place; }
    EXPECT_EQ(rounded(), kWithout);
  });
}

TEST(MarkerFileDeathTest, IsLookedForWhereTheProcessStandsAtFirstNeed) {
  in_child([] {
    Place first;
    set_marker();
    Place second;
    EXPECT_EQ(rounded(), kWithout);
    EXPECT_EQ(chdir(first.path()), 0);
    EXPECT_EQ(rounded(), kWithout);
  });
}

}  // namespace
