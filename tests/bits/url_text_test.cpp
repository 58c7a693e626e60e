#include <gtest/gtest.h>
#include <stdlib.h>

#include <clocale>
#include <filesystem>

#include "tests/bits/agreement.hpp"
#include "tests/util/random.hpp"

namespace {

using campotipo::reference::url_decode;
using campotipo::reference::url_encode;
using campotipo::test::BitMemory;
using campotipo::test::Random;
using namespace std::string_literals;

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

class UrlTextTest : public testing::Test {
 protected:
  // At the end of the pages and at their start.
  void expect(const std::string &text) {
    for (const bool at_end : {true, false}) {
      BitMemory *memory = text.size() < 1300 ? &memory_ : &long_memory_;
      memory->at_end = at_end;
      ASSERT_TRUE(campotipo::test::url_agrees(memory, text)) << text;
    }
  }

  // Texts in which what is looked for is common or rare.
  void expect_any_text() {
    constexpr unsigned kRare[] = {1, 2, 8, 50, 1000};
    for (int round = 0; round < 1000; ++round) {
      const std::size_t length = random_.between<std::size_t>(0, round % 50 == 0 ? 9000 : 300);
      const unsigned rare = kRare[round % 5];
      const char *likely = round % 2 == 0 ? "abcdefghijklm" : "0123456789abcdefABCDEFg+~\xFF";
      std::string text;
      while (text.size() < length)
        text += random_.word() % rare != 0 ? likely[random_.word() % std::strlen(likely)]
                : round % 4 < 2            ? static_cast<char>(random_.between(1, 255))
                                           : '%';
      ASSERT_NO_FATAL_FAILURE(expect(text));
    }
  }

  Random random_{79};
  BitMemory memory_, long_memory_{28000};
};

TEST_F(UrlTextTest, ConvertsAnyByteAtAnyPlaceOfABlock) {
  for (int byte = 1; byte < 256; ++byte)
    for (const std::size_t before : {0, 1, 15, 16, 31, 62, 63, 64}) {
      const std::string text = std::string(before, 'a') + static_cast<char>(byte);
      ASSERT_NO_FATAL_FAILURE(expect(text));
      ASSERT_NO_FATAL_FAILURE(expect(text + "bc"));
      ASSERT_NO_FATAL_FAILURE(expect("%" + text));
    }
}

TEST_F(UrlTextTest, ConvertsAnyText) { expect_any_text(); }

TEST_F(UrlTextTest, EncodesAnyNumberOfEscapesBeforeMany) {
  for (std::size_t few = 1; few < 200; ++few)
    ASSERT_NO_FATAL_FAILURE(
        expect(std::string(few, ' ') + std::string(200 - few, '.') + std::string(200, ' ')));
}

TEST_F(UrlTextTest, FollowsTheLocaleAboveAscii) {
  const SingleByteLocale locale;
  if (!locale.set()) GTEST_SKIP() << "no single-byte locale can be made here";
  EXPECT_EQ(url_encode("a\xE7\xE3o \xD7"), "a\xE7\xE3o%20%D7");
  expect_any_text();
}

TEST_F(UrlTextTest, LeavesTheUnreservedSetInTheCLocale) {
  const std::string before = std::setlocale(LC_CTYPE, nullptr);
  std::setlocale(LC_CTYPE, "C");
  std::string all;
  for (int byte = 1; byte < 256; ++byte) all += static_cast<char>(byte);
  expect(all);
  EXPECT_EQ(url_encode(all).size(), 66u + 3 * 189);
  std::setlocale(LC_CTYPE, before.c_str());
}

TEST_F(UrlTextTest, DropsEscapesThatAreNotComplete) {
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
      ASSERT_NO_FATAL_FAILURE(expect(std::string(before, '.') + text));
  }
}

}  // namespace
