#include <campotipo-support/numbers.h>
#include <campotipo/codes.h>
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>
#include <utility>

#include "tests/codes/agreement.hpp"
#include "tests/util/guarded_buffer.hpp"
#include "tests/util/random.hpp"

// These stand in front of the number services, as a site's own might: one that takes digits and
// nothing else, and one that gives no result of use.
extern "C" int _ato8(unsigned char *dest, const char *text) noexcept {
  static const auto service = reinterpret_cast<decltype(&_ato8)>(dlsym(RTLD_NEXT, "_ato8"));
  EXPECT_EQ(text[std::strspn(text, "0123456789")], '\0') << text;
  return service(dest, text);
}
extern "C" char *_8btoa(const unsigned char *src, char *text, int digits) noexcept {
  static const auto service = reinterpret_cast<decltype(&_8btoa)>(dlsym(RTLD_NEXT, "_8btoa"));
  service(src, text, digits);
  return nullptr;
}

namespace {

using namespace campotipo::test;

class DigitStringTest : public testing::TestWithParam<DigitString> {
 protected:
  void expect_stored(const char *text, const std::string &digits) {
    EXPECT_TRUE(store_agrees(GetParam(), text, digits, field_.at_end(GetParam().bytes))) << digits;
  }

  void expect_read(const std::string &bytes, const std::string &expected) {
    const unsigned char *field =
        field_.field({reinterpret_cast<const unsigned char *>(bytes.data()), bytes.size()});
    char *out = text_.text_at_end(expected.size() + 1);
    EXPECT_EQ(GetParam().read(out, field), out);
    EXPECT_EQ(expected, out);
    EXPECT_TRUE(form_agrees(GetParam(), field)) << expected;
  }

  GuardedBuffer field_, text_;
};

TEST_P(DigitStringTest, KeepsEveryDigitThatATextBeginsWith) {
  Random random(8);
  EXPECT_EQ(GetParam().text_size, GetParam().digits + 1);
  for (std::size_t length = 0; length <= GetParam().digits + 3; ++length) {
    for (int round = 0; round < 16; ++round) {
      std::string text = random.digits(length);
      // Some begin with zeros, some have nothing else.
      std::fill_n(text.begin(), random.between<std::size_t>(0, round % 4 == 0 ? length : 0), '0');
      // Any byte may stand behind them, the neighbours of the digits above all.
      if (round % 4 == 1) text += std::string{static_cast<char>(random.between(1, 255))} + "99";
      if (round % 4 == 3) text += round % 8 == 3 ? ":" : "/";
      const std::string digits = digits_of(GetParam(), text);
      expect_stored(text_.text(text), digits);
      expect_read(digit_field(GetParam(), digits), digits);
    }
  }
  expect_stored(nullptr, "");
  for (const char *text : {" 12", "-5", "+1", "\t7", "a"}) expect_stored(text_.text(text), "");
  // Once the greatest count is reached nothing further is looked at, not even for a NUL.
  const std::string most = random.digits(GetParam().digits);
  char *last_bytes = text_.text_at_end(most.size());
  expect_stored(static_cast<char *>(std::memcpy(last_bytes, most.data(), most.size())), most);
}

TEST_P(DigitStringTest, ShowsAsManyDigitsAsItCounts) {
  Random random(9);
  const std::size_t high_bits = 8 * (GetParam().bytes - 9);
  for (int round = 0; round < 2000; ++round) {
    const std::size_t count = round < 256 ? static_cast<std::size_t>(round)
                                          : random.between<std::size_t>(0, GetParam().digits);
    // Any bytes may stand in a field, limbs out of their range too.
    const std::uint64_t low = random.word_of_any_size();
    const std::uint64_t high =
        round % 2 == 0 ? 0 : random.word_of_any_size() & (~std::uint64_t{0} >> (64 - high_bits));
    std::string number = std::to_string(low);
    if (high != 0) {
      if (number.size() < 19) number.insert(0, 19 - number.size(), '0');
      number = std::to_string(high) + number.substr(number.size() - 19);
    }
    std::string expected;
    if (count <= GetParam().digits) {
      expected = number.substr(0, count);
      expected.insert(0, count - expected.size(), '0');
    }
    expect_read(digit_field(GetParam(), count, low, high), expected);
  }
}

TEST_P(DigitStringTest, ConvertsWhereTheOtherStands) {
  Random random(10);
  for (std::size_t length = 0; length <= GetParam().digits; ++length) {
    const std::string digits = random.digits(length);
    for (std::size_t shift = 0; shift <= GetParam().bytes; ++shift) {
      // The field `shift` bytes behind the text's first byte, and as many in front of it.
      for (const auto &[text_at, field_at] : {std::pair{std::size_t{0}, shift}, {shift, 0}}) {
        unsigned char area[64] = {};
        auto *text = reinterpret_cast<char *>(area + text_at);
        std::strcpy(text, digits.c_str());
        EXPECT_TRUE(store_agrees(GetParam(), text, digits, area + field_at)) << shift;
        EXPECT_EQ(GetParam().read(text, area + field_at), digits) << shift;
      }
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Members, DigitStringTest, testing::ValuesIn(kDigitStrings),
                         [](const auto &member) { return member.param.name; });

}  // namespace
