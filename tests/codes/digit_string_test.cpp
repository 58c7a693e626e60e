#include <campotipo-support/numbers.h>
#include <campotipo/codes.h>
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>

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

using campotipo::test::GuardedBuffer;
using campotipo::test::Random;

struct Member {
  std::size_t bytes;
  std::size_t text_size;
  std::size_t digits;
  int (*save)(unsigned char *, const char *);
  char *(*read)(char *, const unsigned char *);
};

constexpr Member kMembers[] = {
    {BSTR21_BYTES, BSTR21_TEXT_SIZE, 21, BSTR21_atob, BSTR21_btoa},
    {BSTR23_BYTES, BSTR23_TEXT_SIZE, 23, BSTR23_atob, BSTR23_btoa},
    {BSTR26_BYTES, BSTR26_TEXT_SIZE, 26, BSTR26_atob, BSTR26_btoa},
    {BSTR28_BYTES, BSTR28_TEXT_SIZE, 28, BSTR28_atob, BSTR28_btoa},
    {BSTR31_BYTES, BSTR31_TEXT_SIZE, 31, BSTR31_atob, BSTR31_btoa},
    {BSTR33_BYTES, BSTR33_TEXT_SIZE, 33, BSTR33_atob, BSTR33_btoa},
    {BSTR35_BYTES, BSTR35_TEXT_SIZE, 35, BSTR35_atob, BSTR35_btoa},
    {BSTR38_BYTES, BSTR38_TEXT_SIZE, 38, BSTR38_atob, BSTR38_btoa},
};

constexpr std::size_t kLimb = 19;

std::string padded(std::uint64_t limb) {
  const std::string digits = std::string(kLimb, '0') + std::to_string(limb);
  return digits.substr(digits.size() - kLimb);
}

class DigitStringTest : public testing::TestWithParam<Member> {
 protected:
  // The stored form of two limbs.
  std::string stored(std::size_t count, std::uint64_t low, std::uint64_t high) const {
    std::string field(1, static_cast<char>(count));
    for (std::size_t i = 0; i + 1 < GetParam().bytes; ++i)
      field += static_cast<char>((i < 8 ? low : high) >> (8 * (i % 8)));
    return field;
  }

  std::string stored(const std::string &digits) const {
    const std::size_t split = digits.size() - std::min(kLimb, digits.size());
    const auto value = [](const std::string &text) { return text.empty() ? 0 : std::stoull(text); };
    return stored(digits.size(), value(digits.substr(split)), value(digits.substr(0, split)));
  }

  unsigned char *field_of(const std::string &bytes) {
    return field_.field({reinterpret_cast<const unsigned char *>(bytes.data()), bytes.size()});
  }

  void expect_saved(const char *text, const std::string &digits) {
    unsigned char *field = field_.at_end(GetParam().bytes);
    EXPECT_EQ(GetParam().save(field, text), !digits.empty());
    EXPECT_EQ(std::string(reinterpret_cast<char *>(field), GetParam().bytes), stored(digits))
        << digits;
  }

  void expect_read(const std::string &field, const std::string &expected) {
    char *out = text_.text_at_end(expected.size() + 1);
    EXPECT_EQ(GetParam().read(out, field_of(field)), out);
    EXPECT_EQ(expected, out);
  }

  GuardedBuffer field_, text_;
};

TEST_P(DigitStringTest, KeepsEveryDigitThatATextBeginsWith) {
  Random random(8);
  EXPECT_EQ(GetParam().text_size, GetParam().digits + 1);
  for (std::size_t length = 0; length <= GetParam().digits + 3; ++length) {
    for (int round = 0; round < 16; ++round) {
      std::string digits = random.digits(length);
      // Some begin with zeros, some have nothing else.
      std::fill_n(digits.begin(), random.between<std::size_t>(0, round % 4 == 0 ? length : 0), '0');
      const std::string rest =
          round % 2 == 0 ? "" : std::string{static_cast<char>(random.between(1, 255))} + "99";
      const std::string text = digits + rest;
      digits = text.substr(0, std::min(text.find_first_not_of("0123456789"), text.size()));
      digits.resize(std::min(digits.size(), GetParam().digits));
      expect_saved(text_.text(text), digits);
      expect_read(stored(digits), digits);
    }
  }
  expect_saved(nullptr, "");
  // Once the greatest count is reached nothing further is looked at, not even for a NUL.
  const std::string most = random.digits(GetParam().digits);
  expect_saved(std::copy(most.begin(), most.end(), text_.text_at_end(most.size())) - most.size(),
               most);
  for (const char *text : {" 12", "-5", "+1", "\t7", "a"}) expect_saved(text_.text(text), "");
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
    const std::string number = high == 0 ? std::to_string(low) : std::to_string(high) + padded(low);
    std::string expected;
    if (count <= GetParam().digits) {
      expected = number.substr(0, count);
      expected.insert(0, count - expected.size(), '0');
    }
    expect_read(stored(count, low, high), expected);
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
        GetParam().save(area + field_at, text);
        EXPECT_EQ(std::string(reinterpret_cast<char *>(area + field_at), GetParam().bytes),
                  stored(digits));
        EXPECT_EQ(GetParam().read(text, area + field_at), digits) << shift;
      }
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Members, DigitStringTest, testing::ValuesIn(kMembers),
                         [](const auto &member) { return std::to_string(member.param.digits); });

TEST(DigitString, ExampleOfTheManual) {
  unsigned char field[BSTR21_BYTES];
  char text[BSTR21_TEXT_SIZE];
  const unsigned char expected[BSTR21_BYTES] = {6, 0x7B};
  EXPECT_EQ(BSTR21_atob(field, "000123"), 1);
  EXPECT_EQ(std::memcmp(field, expected, sizeof field), 0);
  EXPECT_STREQ(BSTR21_btoa(text, field), "000123");
}

}  // namespace
