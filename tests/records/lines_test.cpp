// Files of text: lines of one length and of several, their ends, and their parts.

#include <gtest/gtest.h>

#include <algorithm>

#include "errors/error.hpp"
#include "files/input.hpp"
#include "files/sources.hpp"
#include "files/splits.hpp"
#include "files/stream.hpp"
#include "tests/records/tool_fixture.hpp"

namespace campotipo::records::test {
namespace {

constexpr const char *kEven =
    "name='r'\nline_end='crlf'\n[[field]]\nname='a'\ntype='CODSTR'\nbytes=5\n";
constexpr const char *kKinds =
    "name='f'\nline_end='lf'\nsize=4\n"
    "[[record]]\nname='h'\nwhen={t='H'}\nfield=[{name='t', type='CODSTR', bytes=1}, "
    "{name='x', type='CODSTR', bytes=3}]\n"
    "[[record]]\nname='d'\nwhen={t=['D', 'E']}\nsize=6\nfield=[{name='t', type='CODSTR', bytes=1}, "
    "{name='x', type='CODSTR', bytes=5}]\n";

struct Read {
  std::vector<std::string> records;  // "number@place: bytes"
  std::vector<std::string> faults;   // "word record@place"
  std::vector<std::string> notes;
  bool fatal = false;
};

bool operator==(const Read &a, const Read &b) {
  return a.records == b.records && a.faults == b.faults && a.notes == b.notes;
}

std::ostream &operator<<(std::ostream &out, const Read &read) {
  for (const auto *list : {&read.records, &read.faults, &read.notes}) {
    for (const std::string &text : *list) out << text << "\n";
    out << "-\n";
  }
  return out;
}

Read read(const std::string &toml, Source &source, RecordStream::Range range = {},
          std::size_t block_size = 256U << 10) {
  const Layout layout = parse_layout(toml, "test");
  RecordStream stream(source, layout, range, block_size);
  RecordBlock block;
  Read all;
  const auto told = [](const StreamFault &fault) {
    return std::string(word(fault.word)) + " " + std::to_string(fault.record) + "@" +
           std::to_string(fault.offset);
  };
  while (stream.read(block)) {
    for (const auto &record : block.records) {
      const auto *bytes = reinterpret_cast<const char *>(block.record(record));
      all.records.push_back(std::to_string(block.number(record)) + "@" +
                            std::to_string(block.place(record)) + ": " +
                            std::string(bytes, record.type->bytes));
    }
    for (const StreamFault &fault : block.faults) {
      all.faults.push_back(told(fault));
      all.fatal = all.fatal || fault.fatal;
    }
    for (const StreamFault &note : block.notes) all.notes.push_back(told(note));
  }
  return all;
}

Read read(const std::string &toml, const std::string &file, RecordStream::Range range = {},
          std::size_t block_size = 256U << 10) {
  const TemporaryFile stored(file);
  Input input(stored.path());
  Read all = read(toml, input, range, block_size);
  MemorySource memory(file.data(), file.size(), "memory");
  EXPECT_EQ(all, read(toml, memory, range, block_size));
  return all;
}

struct Case {
  const char *toml;
  std::string file;
  Read expected;
};

TEST(Lines, CutsWhatTheLayoutTells) {
  const std::string end(1, '\x1A');
  const Case cases[] = {
      {kEven, "", {}},
      {kEven, end, {}},
      {kEven, "aaaaa\r\nbbbbb\r\n", {{"1@0: aaaaa", "2@7: bbbbb"}, {}, {}}},
      {kEven, "aaaaa\nbbbbb\n" + end, {{"1@0: aaaaa", "2@6: bbbbb"}, {}, {}}},
      {kEven, "aaaaa\nbbbbb" + end, {{"1@0: aaaaa", "2@6: bbbbb"}, {}, {}}},
      {kEven, "aaaaa", {{"1@0: aaaaa"}, {}, {}}},
      {kEven, "aaaaa\r\nbbbbb", {{"1@0: aaaaa", "2@7: bbbbb"}, {}, {}}},
      {kEven, "aaaaa\r\nbbbbb\r", {{"1@0: aaaaa", "2@7: bbbbb"}, {}, {"line_end 2@12"}}},
      {kEven,
       "aaaaa\r\nbbbbb\nccccc\r\n",
       {{"1@0: aaaaa", "2@7: bbbbb", "3@13: ccccc"}, {}, {"line_end 2@12"}}},
      {kEven,
       "aaaaa\nbbbbb\r\nccccc\n",
       {{"1@0: aaaaa", "2@6: bbbbb", "3@13: ccccc"}, {}, {"line_end 2@11"}}},
      {kEven, "aaaa\r\nbbbbb\r\n", {{"2@6: bbbbb"}, {"line_length 1@0"}, {}}},
      {kEven,
       "aaaaa\nbbbb\r\nccccc\n",
       {{"1@0: aaaaa", "3@12: ccccc"}, {"line_length 2@6"}, {"line_end 2@10"}}},
      {kEven, "aaaaa\n\nbbbbb\n", {{"1@0: aaaaa", "3@7: bbbbb"}, {"line_length 2@6"}, {}}},
      {kEven, "bb\ncc\nddddd\n", {{"3@6: ddddd"}, {"line_length 1@0", "line_length 2@3"}, {}}},
      {kEven, "aaaaa\nbb", {{"1@0: aaaaa"}, {"incomplete 2@6"}, {}}},
      {kEven, "aaaaa\nbbbbbb", {{"1@0: aaaaa"}, {"line_length 2@6"}, {}}},
      {kEven, "aaaaa\n" + end + "\n", {{"1@0: aaaaa"}, {"line_length 2@6"}, {}}},
      {kKinds, "Hxyz\nDxxxxx\nHabc\n", {{"1@0: Hxyz", "2@5: Dxxxxx", "3@12: Habc"}, {}, {}}},
      {kKinds,
       "Hxyz1\nZxxxxx\nHabc",
       {{"3@13: Habc"}, {"line_length 1@0", "unknown_kind 2@6"}, {}}},
      {kKinds, "Hxyz\nD", {{"1@0: Hxyz"}, {"incomplete 2@5"}, {}}},
  };
  for (const Case &c : cases) {
    SCOPED_TRACE(c.file);
    EXPECT_EQ(c.expected, read(c.toml, c.file));
  }
}

// Random lines, ends and lengths.
std::string random_file(Random &random, bool even) {
  std::string file;
  const int lines = random.between(0, 30);
  const int odd = random.between(0, 2) == 0 ? 3 : 40;
  const char *usual = random.between(0, 1) == 0 ? "\n" : "\r\n";
  for (int i = 0; i < lines; ++i) {
    const char kind = "HDEZ"[random.between(0, odd == 3 ? 3 : 2)];
    std::size_t length = even ? 5 : kind == 'H' ? 4 : 6;
    if (random.between(0, odd) == 0) length = random.between<std::size_t>(0, 8);
    if (random.between(0, 60) == 0) length = random.between<std::size_t>(30, 90);
    if (length > 0) file += kind + std::string(length - 1, static_cast<char>('a' + i));
    const bool other = random.between(0, odd * 2) == 0;
    file += other ? (random.between(0, 1) == 0 ? "\n" : "\r\n") : usual;
  }
  if (random.between(0, 3) == 0) file.resize(file.size() - std::min<std::size_t>(file.size(), 2));
  if (random.between(0, 3) == 0) file += '\x1A';
  return file;
}

// By the plainest way: all lines first, then each of them.
Read plainly(std::string file, bool even) {
  Read all;
  if (file.ends_with('\x1A')) file.pop_back();
  std::string usual;
  std::size_t at = 0;
  for (int number = 1; at < file.size(); ++number) {
    const std::size_t feed = file.find('\n', at);
    const bool ended = feed != std::string::npos;
    const std::size_t behind = ended ? feed + 1 : file.size();
    std::string line = file.substr(at, behind - at);
    std::string end;
    for (const char c : {'\n', '\r'}) {
      if (!line.ends_with(c)) continue;
      line.pop_back();
      end = c + end;
    }
    const std::string place = " " + std::to_string(number) + "@" + std::to_string(at);
    const bool head = line.starts_with('H');
    const bool known = even || head || line.starts_with('D') || line.starts_with('E');
    const std::size_t size = even ? 5 : head ? 4 : 6;
    if (end.empty() && line.size() < (known ? size : 4)) {
      all.faults.push_back("incomplete" + place);
    } else if (!known) {
      all.faults.push_back("unknown_kind" + place);
    } else if (line.size() != size) {
      all.faults.push_back("line_length" + place);
    } else {
      all.records.push_back(place.substr(1) + ": " + line);
    }
    if (usual.empty() && ended) usual = end;
    if (!end.empty() && end != usual) {
      all.notes.push_back("line_end " + std::to_string(number) + "@" +
                          std::to_string(at + line.size()));
    }
    at = behind;
  }
  return all;
}

TEST(Lines, AnyFileInAnyBlocks) {
  Random random(11);
  for (int round = 0; round < 600; ++round) {
    const bool even = round % 2 == 0;
    const char *toml = even ? kEven : kKinds;
    const std::string file = random_file(random, even);
    SCOPED_TRACE(file);
    const Read whole = read(toml, file);
    for (const std::size_t block : {0, 1, 9, 17, 40}) {
      ASSERT_EQ(whole, read(toml, file, {}, block)) << block;
    }
    // Two short lines may be as long as one, so that the plain way tells them and this one does not;
    // but only where all those in front were good.
    const Read expected = plainly(file, even);
    const bool joined = std::any_of(whole.records.begin(), whole.records.end(),
                                    [](const auto &text) { return text.find('\n') != text.npos; });
    if (!joined) {
      ASSERT_EQ(expected, whole);
    }
  }
}

// A line that is longer than any memory for it: its length is told, and what stands behind it is read.
TEST(Lines, ALineWithoutEndIsPassedOver) {
  const std::string longest(3000000, 'x');
  EXPECT_EQ((Read{{"1@0: aaaaa", "3@3000007: ccccc"}, {"line_length 2@6"}, {}}),
            read(kEven, "aaaaa\n" + longest + "\nccccc\n", {}, 100));
  EXPECT_EQ((Read{{"1@0: aaaaa"}, {"line_length 2@6"}, {}}), read(kEven, "aaaaa\n" + longest));
}

std::vector<RecordStream::Range> splits_of(const std::string &toml, const std::string &file,
                                           std::size_t wanted) {
  const Layout layout = parse_layout(toml, "test");
  MemorySource source(file.data(), file.size(), "memory");
  return splits(layout, source, wanted);
}

// The ranges together are the file, or one of them tells that lines are not in their places.
TEST(Lines, RangesHoldEachRecordOnce) {
  Random random(12);
  int arithmetic = 0;
  int fatal = 0;
  for (int round = 0; round < 500; ++round) {
    const bool even = round % 3 != 0;
    const char *toml = even ? kEven : kKinds;
    const std::string file = random_file(random, even);
    SCOPED_TRACE(file);
    const Read whole = read(toml, file);
    for (const std::size_t wanted : {1, 2, 3, 8}) {
      const auto ranges = splits_of(toml, file, wanted);
      ASSERT_LE(ranges.size(), wanted);
      arithmetic += even && ranges.size() > 1 ? 1 : 0;
      Read together;
      for (const auto &range : ranges) {
        const Read part = read(toml, file, range);
        together.records.insert(together.records.end(), part.records.begin(), part.records.end());
        together.faults.insert(together.faults.end(), part.faults.begin(), part.faults.end());
        together.fatal = together.fatal || part.fatal;
      }
      fatal += together.fatal ? 1 : 0;
      if (together.fatal) continue;
      ASSERT_EQ(whole.records, together.records);
      ASSERT_EQ(whole.faults, together.faults);
    }
  }
  EXPECT_GT(arithmetic, 100);
  EXPECT_LT(fatal * 4, arithmetic);
}

// Lines that are not where their number puts them are told by a range that begins behind them.
TEST(Lines, ARangeTellsWhatIsNotInItsPlace) {
  const std::string good = "aaaaa\nbbbbb\nccccc\nddddd\n";
  EXPECT_EQ((Read{{"3@12: ccccc"}, {}, {}}), read(kEven, good, {3, 1, 12}));
  EXPECT_EQ((Read{{"3@12: ccccc", "4@18: ddddd"}, {"line_length 5@24"}, {}}),
            read(kEven, good, {3, 9, 12}));
  const std::string odd = "aaaaa\nbbbb\nccccc\nddddd\n";
  Read told = read(kEven, odd, {3, 2, 12});
  EXPECT_EQ((Read{{}, {"line_length 3@12"}, {}}), told);
  EXPECT_TRUE(told.fatal);
  // A line of another end, inside the range.
  told = read(kEven, "aaaaa\nbbbbb\nccccc\r\nddddd\neeeee\n", {3, 3, 12});
  EXPECT_EQ((Read{{"3@12: ccccc", "4@19: ddddd", "5@25: eeeee"},
                  {"line_length 6@31"},
                  {"line_end 4@24", "line_end 5@30"}}),
            told);
  EXPECT_TRUE(told.fatal);
  EXPECT_EQ(1U, splits_of(kEven, odd, 3).size());
  EXPECT_EQ(3U, splits_of(kEven, good, 3).size());
  EXPECT_TRUE(read(kEven, good, {3, 2, 13}).fatal);
  const TemporaryFile stored(good);
  Input input(stored.path());
  EXPECT_FALSE(read(kEven, input, {3, 2, 100}).faults.empty());
}

}  // namespace
}  // namespace campotipo::records::test
