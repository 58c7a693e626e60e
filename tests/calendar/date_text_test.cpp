#include <campotipo-support/numbers.h>
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <string>

#include "tests/calendar/date_field.hpp"

// Stands in front of the number service, as a site's own might that gives no result of use.
extern "C" char *_8btoa(const unsigned char *src, char *text, int digits) noexcept {
  static const auto service = reinterpret_cast<decltype(&_8btoa)>(dlsym(RTLD_NEXT, "_8btoa"));
  service(src, text, digits);
  return nullptr;
}

namespace {

using namespace campotipo::test;
namespace reference = campotipo::reference;

// A text of known size with inaccessible memory behind it.
class TextBuffer {
 public:
  explicit TextBuffer(std::size_t size) : size_(size), text_(buffer_.text_at_end(size)) {}
  operator char *() {
    std::memset(text_, '#', size_);
    return text_;
  }
  // Whether `result` is this buffer and holds the text, a NUL in it or not.
  bool holds(const char *result, const std::string &text) const {
    return result == text_ && text.size() + 1 == size_ && text_[size_ - 1] == '\0' &&
           std::memcmp(text_, text.data(), text.size()) == 0;
  }

 private:
  GuardedBuffer buffer_;
  std::size_t size_;
  char *text_;
};

struct Texts {
  TextBuffer two{DATAC_EDITA_TEXT_SIZE}, four{DATAC_EDITA4_TEXT_SIZE};
  TextBuffer digits6{DATAC_DDMMAA_TEXT_SIZE}, digits8{DATAC_DDMMAAAA_TEXT_SIZE};
};

bool texts_agree(Texts &to, const unsigned char *field, std::uint32_t n) {
  return to.two.holds(DATAC_edita(to.two, field), reference::edit(n, '/', 0)) &&
         to.four.holds(DATAC_edita4(to.four, field), reference::edit(n, '/', 1)) &&
         to.digits6.holds(DATAC_dtoa(to.digits6, field), reference::digits6(n)) &&
         to.digits8.holds(DATAC_dtoa_DDMMAAAA(to.digits8, field), reference::digits8(n));
}

// Printing four texts with the C library takes long, so that a part of the patterns must do; the
// step is prime to everything in their make-up.
TEST(DateText, PrintsEveryKindOfBitPattern) {
  Texts to;
  DateField field;
  for (std::uint32_t n = 0; n < kPatterns; n += 17 * kPatternStep)
    ASSERT_TRUE(texts_agree(to, field(n), n)) << std::hex << n;
  for (std::uint32_t n : {0u, 0x800000u, 524u, 999999u, 0x7FFFFFu, 0xA00002u, 0xBFFFFFu, 0xFFFFFFu})
    EXPECT_TRUE(texts_agree(to, field(n), n)) << std::hex << n;
}

TEST(DateText, PutsAnySeparatorAndLooksAtOneFlag) {
  Texts to;
  DateField field(true);
  for (std::uint32_t n : {0x8FD19Fu, 311224u}) {
    field(n);
    for (const int sep : {int{'-'}, int{'/'}, int{' '}, 0, 0xE1, 256 + '-', -1}) {
      const std::string two = reference::edit(n, sep, 0), four = reference::edit(n, sep, 1);
      EXPECT_TRUE(to.two.holds(DATAC_edita_sep(to.two, field(), sep), two)) << sep;
      for (int flags : {0, 2, -2})
        EXPECT_TRUE(to.two.holds(DATAC_edita_1sep(to.two, field(), sep, flags), two)) << sep;
      for (int flags : {1, 3, -1})
        EXPECT_TRUE(to.four.holds(DATAC_edita_1sep(to.four, field(), sep, flags), four)) << sep;
    }
  }
}

void expect_read(const char *text) {
  DateField field;
  for (std::int32_t format : {0, 1, 2}) {
    for (std::int32_t year4 : {0, 1, -8}) {
      const std::uint32_t expected = reference::parse(format, year4 != 0, text);
      DATAC_fmt_atod(field(0x5A5A5A), format, year4, text);
      EXPECT_EQ(field.number(), expected) << '"' << text << "\" " << format << ' ' << year4;
      if (year4 < 0) continue;
      const InForce in_force(format);
      (year4 != 0 ? DATAC_atod_DDMMAAAA : DATAC_atod)(field(0x5A5A5A), text);
      EXPECT_EQ(field.number(), expected) << '"' << text << "\" " << format << ' ' << year4;
    }
  }
}

TEST(DateText, ReadsAsAtolDoes) {
  GuardedBuffer at_page_end;
  for (const char *text : {"",
                           " ",
                           "31/12/24",
                           "10124",
                           "310224",
                           "31122024",
                           "22222222",
                           "22220022",
                           "111111",
                           "x1",
                           "-311224",
                           "+311224",
                           "\t\v\f\r\n 31122024",
                           "- 1",
                           "+-1",
                           "-",
                           "0x1F",
                           "00000000311224",
                           "9999999999999999",
                           "99999999999999999999999",
                           "-99999999999999999999999",
                           "4294967296",
                           "2147483648",
                           "-2147483648",
                           "12345678.",
                           "1234567:",
                           "123456789",
                           "1\xB2",
                           "31122024\x80",
                           "1234567\xFF",
                           "29022100",
                           "290200",
                           "290201",
                           "8388608"}) {
    expect_read(text);
    expect_read(at_page_end.text(text));
  }
}

TEST(DateText, ReadsEveryLengthAtThePageEndAndBeforeIt) {
  Random random(53);
  GuardedBuffer page;
  for (int round = 0; round < 3000; ++round) {
    std::string text = random.digits(random.between<std::size_t>(0, 12));
    if (random.between(0, 2) == 0) {
      text.insert(random.between<std::size_t>(0, text.size()), 1,
                  static_cast<char>(random.between(1, 255)));
    }
    const std::string behind(random.between<std::size_t>(0, 10), '7');
    expect_read(page.text(text + std::string(1, '\0') + behind));
  }
}

TEST(DateText, WeekdaysAreNamedFromSaturdayOn) {
  const char *const names[] = {"S\341bado",    "Domingo",      "Segunda-feira", "Ter\347a-feira",
                               "Quarta-feira", "Quinta-feira", "Sexta-feira"};
  for (std::size_t i = 0; i < 7; ++i) EXPECT_STREQ(DATAC_txt_semana[i], names[i]);
}

}  // namespace
