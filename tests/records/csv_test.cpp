// CSV against a reader that looks at one character at a time, and the escapes of both outputs.

#include <gtest/gtest.h>

#include "errors/error.hpp"
#include "files/input.hpp"
#include "tests/records/tool_fixture.hpp"
#include "text/charset.hpp"
#include "text/csv.hpp"
#include "text/quote.hpp"
#include "text/utf8.hpp"

namespace campotipo::records::test {
namespace {

using Rows = std::vector<std::vector<std::string>>;

// The rules of RFC 4180, with either line end; the rows in front of the first fault.
Rows plainly(const std::string &text, bool &good) {
  Rows rows;
  std::vector<std::string> row;
  std::string cell;
  std::size_t at = 0;
  good = true;
  while (at < text.size() || !row.empty()) {
    cell.clear();
    if (at < text.size() && text[at] == '"') {
      for (++at;; ++at) {
        if (at >= text.size()) return good = false, rows;
        if (text[at] == '"' && text[at + 1] != '"') break;
        if (text[at] == '"') ++at;
        cell += text[at];
      }
      ++at;
      const bool end = at >= text.size() || text.compare(at, 2, "\r\n") == 0 || text[at] == '\n' ||
                       text.substr(at) == "\r";
      if (!end && text[at] != ',') return good = false, rows;
      if (end && at < text.size() && text[at] == '\r') ++at;
    } else {
      while (at < text.size() && text[at] != ',' && text[at] != '\n') {
        if (text[at] == '"') return good = false, rows;
        cell += text[at++];
      }
      if ((at >= text.size() || text[at] == '\n') && cell.ends_with("\r")) cell.pop_back();
    }
    row.push_back(cell);
    const bool more = at < text.size() && text[at] == ',';
    ++at;
    if (more) continue;
    rows.push_back(row);
    row.clear();
  }
  return rows;
}

Rows read(const std::string &text, bool &good) {
  CsvBlock block;
  block.bytes.assign(text.begin(), text.end());
  block.bytes.resize(text.size() + scan::kPadding);
  block.size = text.size();
  CsvRows rows(block);
  Rows all;
  std::vector<PaddedText> cells;
  while (rows.next(cells)) {
    all.emplace_back();
    for (const PaddedText &cell : cells) {
      all.back().emplace_back(cell.view());
      EXPECT_EQ('\0', cell.data()[cell.size()]);
    }
  }
  good = rows.fault() == nullptr;
  return all;
}

TEST(Csv, ReadsAsTheRulesSay) {
  Random random(6);
  for (int i = 0; i < 200000; ++i) {
    const std::string text = random_characters(random, "a\",\n\r\n,\"bcdefghij", 40);
    bool expected_good = false;
    bool good = false;
    const Rows expected = plainly(text, expected_good);
    ASSERT_EQ(expected, read(text, good)) << text;
    ASSERT_EQ(expected_good, good) << text;
  }
}

TEST(Csv, WhatIsWrittenIsRead) {
  Random random(7);
  for (int i = 0; i < 20000; ++i) {
    const std::string a = random_characters(random, "a\",\n\r\xC3\xA7", 30);
    const std::string b = random_characters(random, "a\",\n\r", 3);
    bool good = false;
    ASSERT_EQ(Rows({{a, b}}), read(csv_cell(a) + "," + csv_cell(b) + "\r\n", good));
    ASSERT_TRUE(good);
  }
}

// The blocks of a stream end with rows, whatever quotes and line ends stand in between.
TEST(Csv, BlocksDoNotShow) {
  Random random(8);
  std::string text = "\xEF\xBB\xBFx,y\r\n";
  Rows expected;
  while (text.size() < 900000) {
    const std::string a = random_characters(random, "a\",\n\rxyz", 3000);
    const std::string b = random_characters(random, "abc", 5);
    expected.push_back({a, b});
    text += csv_cell(a) + "," + csv_cell(b) + "\n";
  }
  const TemporaryFile file(text);
  Input input(file.path());
  CsvStream stream(input);
  std::vector<std::string> header;
  ASSERT_TRUE(stream.header(header));
  EXPECT_EQ(std::vector<std::string>({"x", "y"}), header);
  Rows all;
  CsvBlock block;
  std::vector<PaddedText> cells;
  while (stream.read(block)) {
    CsvRows rows(block);
    while (rows.next(cells)) {
      ASSERT_EQ(2U, cells.size());
      all.push_back({std::string(cells[0].view()), std::string(cells[1].view())});
    }
    ASSERT_EQ(nullptr, rows.fault());
  }
  EXPECT_TRUE(expected == all);
}

TEST(Charset, EveryByteComesBack) {
  for (const char *name : {"ISO-8859-1", "ISO-8859-15", "CP1252", "CP850", "IBM037"}) {
    const auto charset = charset_named(name);
    std::size_t known = 0;
    for (int byte = 1; byte < 256; ++byte) {
      const std::string one(1, static_cast<char>(byte));
      if (!charset->knows(one)) continue;
      std::string text = one;
      text.resize(16);
      text.resize(std::size_t(charset->to_utf8(text.data(), 1) - text.data()));
      bool whole = false;
      EXPECT_EQ(one, charset->from_utf8(text, whole)) << name << " " << byte;
      EXPECT_TRUE(whole && utf8::valid(text));
      ++known;
    }
    EXPECT_GE(known, 250U) << name;
  }
  EXPECT_FALSE(charset_named("IBM037")->keeps_ascii());
  EXPECT_TRUE(charset_named("CP1252")->keeps_ascii());
}

TEST(Utf8, RefusesWhatIsNoCharacter) {
  for (const char *bad : {"\x80", "\xC0\x80", "\xC3", "\xE0\x80\x80", "\xED\xA0\x80",
                          "\xF4\x90\x80\x80", "\xF8\x88\x80\x80\x80"}) {
    EXPECT_FALSE(utf8::valid(bad));
    EXPECT_NE(std::string::npos, json_string(bad).find("\\ufffd"));
  }
  for (char32_t point : {0x24U, 0xE7U, 0x20ACU, 0x1F600U}) {
    char text[4];
    const std::string_view view(text, std::size_t(utf8::put(text, point) - text));
    std::size_t at = 0;
    EXPECT_EQ(point, utf8::next(view, at));
    EXPECT_EQ(view.size(), at);
  }
}

}  // namespace
}  // namespace campotipo::records::test
