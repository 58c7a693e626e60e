#include <campotipo/calendar.h>
#include <gtest/gtest.h>

#include <string>

#include "tests/reference/calendar.hpp"
#include "tests/util/guarded_buffer.hpp"

namespace {

using campotipo::test::GuardedBuffer;
namespace reference = campotipo::reference;

bool is_text(const char *result, const char *out, const std::string &expected) {
  return result == out && std::memcmp(out, expected.c_str(), expected.size() + 1) == 0;
}

TEST(TimeOfDay, EveryHourAndMinute) {
  GuardedBuffer field_memory, out_memory;
  unsigned char *field = field_memory.at_end(HORAC_BYTES);
  char *memory_end = out_memory.text_at_end(HORAC_TEXT_SIZE) + HORAC_TEXT_SIZE;
  std::size_t longest = 0;
  for (unsigned n = 0; n < 65536; ++n) {
    field[0] = static_cast<unsigned char>(n);
    field[1] = static_cast<unsigned char>(n >> 8);
    const unsigned hour = n / 100, minute = n % 100;
    ASSERT_EQ(HORAC_valida(field), n <= 2399 && minute < 60) << n;
    for (const int sep : {int{':'}, 0, 256 + '.'}) {
      const std::string expected = reference::edit_time(hour, minute, sep);
      longest = std::max(longest, expected.size());
      char *out = memory_end - expected.size() - 1;
      ASSERT_TRUE(is_text(HORAC_edita_sep(out, field, sep), out, expected)) << n;
      if (sep != ':') continue;
      ASSERT_TRUE(is_text(HORAC_edita(out, field), out, expected)) << n;
    }
  }
  EXPECT_EQ(longest + 1, HORAC_TEXT_SIZE);
}

class SecondsTest : public testing::Test {
 protected:
  void expect_time(unsigned hour, unsigned minute, unsigned second) {
    const unsigned parts[] = {hour, minute, second};
    for (unsigned i = 0; i < HHMMSS_BYTES; ++i) field_[i] = static_cast<unsigned char>(parts[i]);
    ASSERT_EQ(HHMMSS_valida(field_), reference::valid_time(hour, minute, second));
    for (int flags : {0, 1, 2, -1}) {
      const bool seconds = (flags & 1) == 0;
      const int sep = flags == 2 ? 0 : flags < 0 ? 'h' : ':';
      const std::string expected = seconds ? reference::edit_time(hour, minute, second, sep)
                                           : reference::edit_time(hour, minute, sep);
      longest_ = std::max(longest_, expected.size());
      char *out = memory_end_ - expected.size() - 1;
      ASSERT_TRUE(is_text(HHMMSS_edita_sep(out, field_, sep, flags), out, expected)) << expected;
      if (sep != ':') continue;
      const auto with_colon = seconds ? HHMMSS_edita : HHMMSS_edita_hhmm;
      ASSERT_TRUE(is_text(with_colon(out, field_), out, expected)) << expected;
    }
  }

  GuardedBuffer field_memory_, out_memory_;
  unsigned char *field_ = field_memory_.at_end(HHMMSS_BYTES);
  char *memory_end_ = out_memory_.text_at_end(HHMMSS_TEXT_SIZE) + HHMMSS_TEXT_SIZE;
  std::size_t longest_ = 0;
};

TEST_F(SecondsTest, EveryByteInEveryPlace) {
  for (unsigned a = 0; a < 256; ++a) {
    for (unsigned b = 0; b < 256; ++b) {
      expect_time(a, b, a ^ b);
      expect_time((a + b) % 25, a, b);
    }
  }
  EXPECT_EQ(longest_ + 1, HHMMSS_TEXT_SIZE);
}

}  // namespace
