// Every case runs in a child process, since the answer about the marker file holds for a process.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>

#include "tests/percent/agreement.hpp"
#include "tests/util/random.hpp"

namespace {

constexpr char kMarker[] = "NBR_COM_ERRO.TXT";
int looks = 0;
bool failing = false;

}  // namespace

// Stands in front of the platform's own: counts the looks for the marker file, and can fail.
extern "C" int access(const char *name, int mode) noexcept {
  if (std::strcmp(name, kMarker) == 0) {
    ++looks;
    if (mode != F_OK) std::abort();
    if (failing) {
      errno = EACCES;
      return -1;
    }
  }
  return faccessat(AT_FDCWD, name, mode, 0);
}

namespace {

using campotipo::test::Random;
namespace test = campotipo::test;

// A directory of its own, made the working directory of the child.
class Workplace {
 public:
  Workplace() {
    if (mkdtemp(path_) == nullptr || chdir(path_) != 0) std::abort();
  }
  ~Workplace() {
    set_marker(false);
    rmdir(path_);
  }
  void set_marker(bool present) {
    present ? close(open(kMarker, O_CREAT | O_WRONLY, 0000)) : unlink(kMarker);
  }

 private:
  char path_[32] = "/tmp/campotipo-marker-XXXXXX";
};

std::int64_t nbr(std::int64_t count, int casas, int extras) {
  PARCELA value = test::parcela(count);
  ARRED_v4_nbr(&value, casas, extras);
  return test::units(value);
}

void expect_marker_mode(bool marker) {
  Random random(42);
  for (int round = 0; round < 4000; ++round) {
    // Kept part, two leading digits near 50, and a rest that is often zero.
    std::int64_t count = random.between(0, 999) * 100 + random.between(49, 51);
    const int low = random.between(0, 3);
    for (int i = 0; i < low; ++i) count = count * 10 + (random.between(0, 3) == 0 ? 1 : 0);
    const int extras = random.between(0, 2 + low);
    EXPECT_TRUE(test::div_forms_agree(count, marker)) << count;
    EXPECT_TRUE(test::places_agree(count, 4 - (2 + low - extras), extras, marker)) << count;
  }
  for (const auto &family : test::kFamilies) {
    const std::int64_t half = family.kind.hundred / 2;
    for (std::int64_t base = 0; base < 1000; ++base) {
      unsigned char field[4];
      EXPECT_TRUE(test::products_agree(family, field, half, base, 4, marker)) << base;
      EXPECT_TRUE(test::products_agree(family, field, half / 5, base, 3, marker)) << base;
    }
  }
  EXPECT_EQ(looks, 1);
}

void in_new_place(bool marker, bool access_fails) {
  Workplace place;
  failing = access_fails;
  place.set_marker(marker);
  // ARRED_v4_nbr does not look before it meets a tie, nor do the short forms ever.
  QUANTIA value = test::quantia(50);
  ARRED_div100_nbr(&value);
  ARRED_div10_nbr(&value);
  EXPECT_EQ(nbr(12345100, 2, 2), 123500);
  EXPECT_EQ(nbr(12344900, 2, 2), 123400);
  EXPECT_EQ(looks, 0);
  expect_marker_mode(marker && !access_fails);
}

// Once known, the answer outlives the file that it was about.
void change_after_first_need(bool marker) {
  Workplace place;
  place.set_marker(marker);
  EXPECT_EQ(nbr(1245, 4, 1), marker ? 125 : 124);
  place.set_marker(!marker);
  expect_marker_mode(marker);
}

void look_at_once(void (*long_form)(QUANTIA *)) {
  QUANTIA value = test::quantia(0);
  long_form(&value);
  EXPECT_EQ(looks, 1);
}

template <class Body>
void in_child(Body body) {
  const auto run = [&] {
    body();
    std::exit(testing::Test::HasFailure() ? 1 : 0);  // with the counters of coverage written
  };
  EXPECT_EXIT(run(), testing::ExitedWithCode(0), "");
}

TEST(MarkerDeathTest, SwitchesTheLongFormsAndTheTieOfV4) {
  in_child([] { in_new_place(false, false); });
  in_child([] { in_new_place(true, false); });
}

TEST(MarkerDeathTest, ThatCannotBeLookedForIsAbsent) {
  in_child([] { in_new_place(true, true); });
}

TEST(MarkerDeathTest, IsLookedForOnce) {
  in_child([] { change_after_first_need(false); });
  in_child([] { change_after_first_need(true); });
}

TEST(MarkerDeathTest, IsLookedForByALongFormWhateverItsValue) {
  for (auto form : {ARRED_div1000_nbr, ARRED_div10000_nbr, ARRED_div100000_nbr})
    in_child([form] { look_at_once(form); });
}

TEST(MarkerDeathTest, IsLookedForByV4AtFiftyWhateverStandsBehind) {
  in_child([] {
    EXPECT_EQ(nbr(12345001, 2, 2), 123500);
    EXPECT_EQ(looks, 1);
  });
}

}  // namespace
