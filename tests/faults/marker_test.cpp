// The marker file, which the library looks for once: each case is a process of its own.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>

#include "tests/faults/child.hpp"
#include "tests/percent/agreement.hpp"
#include "tests/util/random.hpp"

namespace {

constexpr char kMarker[] = "NBR_COM_ERRO.TXT";
int looks = 0;

}  // namespace

// Stands in front of the platform's own and counts the looks for the marker file.
extern "C" int access(const char *name, int mode) noexcept {
  if (std::strcmp(name, kMarker) == 0) {
    ++looks;
    if (mode != F_OK) std::abort();
  }
  return faccessat(AT_FDCWD, name, mode, 0);
}

namespace {

using campotipo::test::in_child;
using campotipo::test::Random;
using campotipo::test::Workplace;
namespace test = campotipo::test;

void set_marker() { close(open(kMarker, O_CREAT | O_WRONLY, 0000)); }

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

// What stands in the working directory, and whether that is the marker.
const struct {
  const char *what;
  void (*prepare)();
  bool marker;
} kPlaces[] = {
    {"nothing", [] {}, false},
    {"a file", set_marker, true},
    {"a directory of that name", [] { mkdir(kMarker, 0000); }, true},
    {"a link that leads nowhere", [] { EXPECT_EQ(symlink("nowhere", kMarker), 0); }, false},
    {"a directory that may not be searched",
     [] {
       set_marker();
       chmod(".", 0600);
       // Who is root may search any directory; the real user counts.
       EXPECT_EQ(getuid() == 0 ? setresuid(65534, 0, 0) : 0, 0);
     },
     false},
    {"a directory that is gone", [] { Workplace gone; }, false},
};

TEST(MarkerDeathTest, SwitchesTheLongFormsAndTheTieOfV4) {
  for (const auto &place : kPlaces)
    in_child([&] {
      SCOPED_TRACE(place.what);
      Workplace here;
      place.prepare();
      // ARRED_v4_nbr does not look before it meets a tie, nor do the short forms ever.
      QUANTIA value = test::quantia(50);
      ARRED_div100_nbr(&value);
      ARRED_div10_nbr(&value);
      EXPECT_EQ(nbr(12345100, 2, 2), 123500);
      EXPECT_EQ(nbr(12344900, 2, 2), 123400);
      EXPECT_EQ(looks, 0);
      expect_marker_mode(place.marker);
    });
}

// Once known, the answer outlives the file and the directory that it was about.
TEST(MarkerDeathTest, IsLookedForOnce) {
  for (const bool marker : {false, true})
    in_child([marker] {
      Workplace first;
      if (marker) set_marker();
      EXPECT_EQ(nbr(1245, 4, 1), marker ? 125 : 124);
      marker ? static_cast<void>(unlink(kMarker)) : set_marker();
      expect_marker_mode(marker);
      Workplace second;
      if (!marker) set_marker();
      expect_marker_mode(marker);
    });
}

void look_at_once(void (*long_form)(QUANTIA *)) {
  QUANTIA value = test::quantia(0);
  long_form(&value);
  EXPECT_EQ(looks, 1);
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
