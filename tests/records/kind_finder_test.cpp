// The kinds of records one after the other are those of each record by itself.

#include "layout/kind_finder.hpp"

#include <gtest/gtest.h>

#include <random>
#include <set>

#include "layout/reader.hpp"
#include "tests/records/tool_fixture.hpp"

namespace campotipo::records::test {

namespace {

const char *const kRecords =
    "[[record]]\nname = 'a'\nwhen = { t = '1', s = ['A', 'B'] }\nfield = [{ name = 't', type = "
    "'CODSTR', bytes = 1 }, { type = 'fill', bytes = %s }, { name = 's', type = 'CODSTR', bytes = "
    "2 "
    "}]\n"
    "[[record]]\nname = 'b'\nwhen = { t = '1' }\nfield = [{ name = 't', type = 'CODSTR', bytes = 1 "
    "}, "
    "{ type = 'fill', bytes = 30 }]\n"
    "[[record]]\nname = 'c'\nwhen = { t = ['2', '3'] }\nfield = [{ name = 't', type = 'CODSTR', "
    "bytes "
    "= 1 }]\n";

// Near enough together to be kept, and too far apart.
TEST(KindFinder, TellsWhatTheLayoutTells) {
  std::mt19937 random(1);
  for (const char *gap : {"1", "5", "6", "20"}) {
    std::string text = std::string("name = 'k'\n") + kRecords;
    text.replace(text.find("%s"), 2, gap);
    const Layout layout = parse_layout(text, "k.toml");
    KindFinder finder(layout);
    std::set<const RecordType *> seen;
    for (int i = 0; i < 20000; ++i) {
      const char kFirst[] = "1123 ";
      const char kSecond[] = "AB\0 ";
      unsigned char record[40] = {};
      for (unsigned char &byte : record) byte = static_cast<unsigned char>(random());
      record[0] = static_cast<unsigned char>(kFirst[random() % 5]);
      const std::size_t second = 1 + static_cast<std::size_t>(std::stoi(gap));
      record[second] = static_cast<unsigned char>(kSecond[random() % 4]);
      if (random() % 4 != 0) record[second + 1] = 0;
      const std::size_t bytes = random() % 8 == 0 ? random() % 40 : 40;
      const RecordType *type = finder.of(record, bytes);
      ASSERT_EQ(layout.type_of(record, bytes), type);
      seen.insert(type);
    }
    EXPECT_EQ(4U, seen.size());
  }
}

}  // namespace
}  // namespace campotipo::records::test
