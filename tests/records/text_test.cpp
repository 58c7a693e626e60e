// Texts on their way out: whatever bytes a file holds, what is written is UTF-8 and steers nothing.

#include <gtest/gtest.h>
#include <iconv.h>
#include <wctype.h>

#include <clocale>

#include "tests/records/tool_fixture.hpp"
#include "text/ascii.hpp"
#include "text/charset.hpp"
#include "text/quote.hpp"
#include "text/utf8.hpp"

namespace campotipo::records::test {
namespace {

bool is_utf8(std::string text) {
  const iconv_t map = iconv_open("UTF-32LE", "UTF-8");
  std::string wide(4 * text.size() + 4, '\0');
  char *from = text.data();
  char *to = wide.data();
  std::size_t left = text.size();
  std::size_t room = wide.size();
  const bool good = iconv(map, &from, &left, &to, &room) == 0;
  iconv_close(map);
  return good;
}

TEST(Texts, AreUtf8WhateverTheBytes) {
  Random random(1);
  for (const char *set : {"UTF-8", "ISO-8859-1", "ISO-8859-15", "CP850", "CP1252", "IBM037"}) {
    SCOPED_TRACE(set);
    const Layout layout = parse_layout("name='r'\nencoding='" + std::string(set) +
                                           "'\n[[field]]\nname='f'\ntype='CODSTR'\nbytes=11\n",
                                       "test");
    const Field &field = layout.types[0].fields[0];
    std::size_t kept = 0;
    std::size_t replaced = 0;
    for (int i = 0; i < 20000; ++i) {
      std::string bytes(11, '\0');
      // Bytes of which characters of several bytes are made are common.
      for (char &byte : bytes) byte = static_cast<char>(random.word() % 3 == 0 ? 0x90 : 0);
      for (char &byte : bytes) byte = static_cast<char>(byte ^ (random.word() >> 57) * 3);
      const auto *record = reinterpret_cast<const unsigned char *>(bytes.data());
      const std::string text = field_text(field, record);
      ASSERT_TRUE(is_utf8(text)) << ascii::hex(record, 11);
      const bool bad = text.find("\xEF\xBF\xBD") != std::string::npos;
      (bad ? replaced : kept) += 1;
      if (bad) {
        ASSERT_NE(nullptr, field_fault(field, record));
      } else if (set == std::string("UTF-8")) {
        ASSERT_EQ(bytes.c_str(), text);
      }
    }
    EXPECT_GT(kept, 100U);
    EXPECT_EQ(set[0] == 'U' || std::string(set) == "CP1252", replaced > 100U);
  }
}

// Of every character: what the C library calls a control character, and what Unicode calls a
// bidirectional control, does not reach a terminal or a page; everything else does as it is.
TEST(Texts, SteerNothing) {
  ASSERT_NE(nullptr, std::setlocale(LC_CTYPE, "C.UTF-8"));
  for (char32_t point = 1; point < 0x30000; ++point) {
    if (point >= 0xD800 && point < 0xE000) continue;
    char bytes[4];
    const std::string text(bytes, utf8::put(bytes, point));
    const bool turns = point == 0x61C || point == 0x200E || point == 0x200F ||
                       (point >= 0x202A && point <= 0x202E) || (point >= 0x2066 && point <= 0x2069);
    const bool steers = turns || iswcntrl(static_cast<wint_t>(point)) != 0;
    ASSERT_EQ(steers ? "a\xC2\xB7z" : "a" + text + "z", printable("a" + text + "z"))
        << std::hex << unsigned(point);
    if (steers) {
      ASSERT_EQ("\xC2\xB7", html(text));
    }
  }
  std::setlocale(LC_CTYPE, "C");
  EXPECT_EQ("\xC2\xB7[1m\xC2\xB7", printable("\x1B[1m\x9B"));
  EXPECT_EQ("a\tb\r\n\xC2\xB7z\n\xC2\xB7", printable_lines("a\tb\r\n\rz\n\x1B"));
}

}  // namespace
}  // namespace campotipo::records::test
