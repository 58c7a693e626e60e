#include <campotipo/bits.h>
#include <gtest/gtest.h>
#include <stdlib.h>

#include <algorithm>
#include <clocale>
#include <cstring>
#include <filesystem>
#include <string>

#include "tests/reference/url_text.hpp"
#include "tests/util/guarded_buffer.hpp"
#include "tests/util/random.hpp"

namespace {

using campotipo::reference::url_decode;
using campotipo::reference::url_encode;
using campotipo::test::GuardedBuffer;
using campotipo::test::Random;

// Makes a locale of one byte a character and sets it, where the machine has what it takes.
class SingleByteLocale {
 public:
  SingleByteLocale() {
    char folder[] = "/tmp/campotipo-locale-XXXXXX";
    if (mkdtemp(folder) == nullptr) return;
    folder_ = folder;
    const std::string make =
        "localedef -f ISO-8859-1 -i pt_BR " + folder_ + "/pt_BR.ISO-8859-1 2>/dev/null";
    if (std::system(make.c_str()) != 0) return;
    setenv("LOCPATH", folder, 1);
    set_ = std::setlocale(LC_CTYPE, "pt_BR.ISO-8859-1") != nullptr;
    unsetenv("LOCPATH");
  }
  ~SingleByteLocale() {
    std::setlocale(LC_CTYPE, "C");
    if (!folder_.empty()) std::filesystem::remove_all(folder_);
  }
  bool set() const { return set_; }

 private:
  std::string folder_;
  bool set_ = false;
};

// How rare the characters are that are looked for.
constexpr unsigned kRare[] = {1, 2, 8, 50, 1000};

class UrlTextTest : public testing::Test {
 protected:
  // Runs an operation on a text that lies at the end of its pages and on one that lies at their
  // start, with room for the result and for no byte more.
  template <class Operation>
  void expect(Operation operation, const std::string &text, const std::string &expected) {
    const bool is_long = std::max(text.size(), expected.size()) >= 4096;
    GuardedBuffer &src = is_long ? long_src_ : src_, &result = is_long ? long_dest_ : dest_;
    for (const bool at_end : {true, false}) {
      const std::size_t size = text.size() + 1;
      unsigned char *from = at_end ? src.at_end(size) : src.at_start(size);
      std::memcpy(from, text.c_str(), size);
      char *dest = result.text_at_end(expected.size() + 1);
      ASSERT_EQ(operation(dest, reinterpret_cast<const char *>(from)), dest);
      ASSERT_EQ(std::string(dest, expected.size() + 1), expected + '\0') << text;
    }
  }
  void expect_encode(const std::string &text) {
    expect(URLENCOD_codifica, text, url_encode(text));
    expect(URLENCOD_decodifica, url_encode(text), text);
  }
  void expect_decode(const std::string &text) {
    const std::string expected = url_decode(text);
    expect(URLENCOD_decodifica, text, expected);
    // In place, where bytes behind the result are the source's.
    char *both = (text.size() >= 4096 ? long_src_ : src_).text_at_end(text.size() + 1);
    std::memcpy(both, text.c_str(), text.size() + 1);
    ASSERT_EQ(URLENCOD_decodifica(both, both), both);
    ASSERT_EQ(std::string(both, expected.size() + 1), expected + '\0') << text;
  }

  void expect_any_text() {
    for (int byte = 1; byte < 256; ++byte) {
      for (const std::size_t before : {0, 1, 15, 16, 31, 63}) {
        std::string text(before, 'a');
        text += static_cast<char>(byte);
        ASSERT_NO_FATAL_FAILURE(expect_encode(text));
        ASSERT_NO_FATAL_FAILURE(expect_encode(text + "bc"));
      }
    }
    for (int round = 0; round < 2000; ++round) {
      const std::size_t length = random_.between<std::size_t>(0, round % 50 == 0 ? 9000 : 220);
      const unsigned rare = kRare[round % 5];
      std::string text;
      while (text.size() < length)
        text += static_cast<char>(random_.word() % rare == 0 ? random_.between(1, 255)
                                                             : random_.between<int>('a', 'z'));
      ASSERT_NO_FATAL_FAILURE(expect_encode(text));
    }
  }

  Random random_{79};
  GuardedBuffer src_, dest_, long_src_{28000}, long_dest_{28000};
};

TEST_F(UrlTextTest, EncodesAnyTextAndReadsItBack) { expect_any_text(); }

TEST_F(UrlTextTest, EncodesAnyNumberOfEscapesBeforeMany) {
  for (std::size_t few = 1; few < 200; ++few)
    ASSERT_NO_FATAL_FAILURE(
        expect_encode(std::string(few, ' ') + std::string(200 - few, '.') + std::string(200, ' ')));
}

TEST_F(UrlTextTest, FollowsTheLocaleAboveAscii) {
  const SingleByteLocale locale;
  if (!locale.set()) GTEST_SKIP() << "no single-byte locale can be made here";
  expect(URLENCOD_codifica, "a\xE7\xE3o \xD7", "a\xE7\xE3o%20%D7");
  expect_any_text();
}

TEST_F(UrlTextTest, LeavesTheUnreservedSetInTheCLocale) {
  const std::string before = std::setlocale(LC_CTYPE, nullptr);
  std::setlocale(LC_CTYPE, "C");
  std::string all;
  for (int byte = 1; byte < 256; ++byte) all += static_cast<char>(byte);
  expect(URLENCOD_codifica, all, url_encode(all));
  EXPECT_EQ(url_encode(all).size(), 66u + 3 * 189);
  expect(URLENCOD_codifica, "a\xE7", "a%E7");
  std::setlocale(LC_CTYPE, before.c_str());
}

TEST_F(UrlTextTest, DropsEscapesThatAreNotComplete) {
  using namespace std::string_literals;
  const struct {
    std::string text, result;
  } cases[] = {
      {"100%", "100"},  {"%", ""},          {"%4", ""},     {"%zz", "zz"},
      {"%4z", "z"},     {"%%41", "A"},      {"%4%41", "A"}, {"%41", "A"},
      {"%4a%4A", "JJ"}, {"a%00b", "a\0b"s}, {"a+b", "a+b"}, {"%%%", ""},
  };
  for (const auto &[text, result] : cases) {
    ASSERT_EQ(url_decode(text), result);
    // The escape at each place of a block and across its end.
    for (std::size_t before = 0; before < 140; ++before)
      ASSERT_NO_FATAL_FAILURE(expect_decode(std::string(before, '.') + text));
  }
}

TEST_F(UrlTextTest, DecodesAnyText) {
  for (int high = 0; high < 256; ++high)
    for (const char low : {'0', 'F', 'a', 'g', '%', '\x80'})
      ASSERT_NO_FATAL_FAILURE(
          expect_decode(std::string("x%") + static_cast<char>(high == 0 ? 'x' : high) + low + "y"));
  for (int round = 0; round < 2000; ++round) {
    const std::size_t length = random_.between<std::size_t>(0, round % 50 == 0 ? 9000 : 300);
    const unsigned rare = kRare[round % 5];
    std::string text;
    while (text.size() < length)
      text +=
          random_.word() % rare == 0 ? '%' : "0123456789abcdefABCDEFg+~\xFF"[random_.word() % 26];
    ASSERT_NO_FATAL_FAILURE(expect_decode(text));
  }
}

TEST(UrlText, ExampleOfTheManual) {
  char text[URLENCOD_CODIFICA_SIZE(4)];
  EXPECT_STREQ(URLENCOD_codifica(text, "a b+"), "a%20b%2B");
  EXPECT_STREQ(URLENCOD_decodifica(text, text), "a b+");
}

}  // namespace
