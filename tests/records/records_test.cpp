// Files of records: how they are cut, written as text, and loaded again.

#include <campotipo-support/money.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>

#include "commands/pipeline.hpp"
#include "errors/error.hpp"
#include "files/input.hpp"
#include "files/stream.hpp"
#include "findings/statistics.hpp"
#include "findings/validator.hpp"
#include "report/histogram.hpp"
#include "rows/cells.hpp"
#include "rows/loader.hpp"
#include "rows/row_writer.hpp"
#include "terminal/output.hpp"
#include "tests/records/tool_fixture.hpp"

namespace campotipo::records::test {

using namespace campotipo::tool;
namespace {

struct Cut {
  std::vector<std::string> records;
  std::vector<std::string> faults;
  std::vector<std::uint64_t> numbers;
};

Cut cut(const std::string &toml, const std::string &file, RecordStream::Range range = {},
        std::size_t size = 256U << 10) {
  const Layout layout = parse_layout(toml, "test");
  const TemporaryFile stored(file);
  Input input(stored.path());
  RecordStream stream(input, layout, range, size);
  RecordBlock block;
  Cut result;
  while (stream.read(block)) {
    for (const auto &record : block.records) {
      EXPECT_EQ(file.substr(block.place(record), record.type->bytes),
                std::string(block.data() + long(record.at),
                            block.data() + long(record.at + record.type->bytes)));
      result.records.push_back(record.type->name + "@" + std::to_string(block.place(record)));
      result.numbers.push_back(block.number(record));
    }
    for (const StreamFault &fault : block.faults) result.faults.push_back(fault.text());
  }
  return result;
}

const std::string kPair = "name='r'\n@[[field]]\nname='a'\ntype='BIN2'\n";
const std::string kKinds =
    "name='f'\n@[[record]]\nname='h'\nwhen={t='1'}\n[[record.field]]\nname='t'\n"
    "type='BIN1'\n[[record]]\nname='d'\nwhen={t='2'}\n[[record.field]]\nname='t'\ntype='BIN1'\n"
    "[[record.field]]\nname='x'\ntype='BIN2'\n";

std::string with(std::string toml, const std::string &keys) {
  return toml.replace(toml.find('@'), 1, keys);
}

struct Case {
  std::string toml, file;
  std::vector<std::string> records, faults;
};

TEST(RecordStream, CutsWhatTheLayoutTells) {
  const std::string own = "length={bytes=1}\n";
  const std::string kind = "a record of no kind that the layout knows";
  const std::string behind = "; nothing behind it can be read";
  const Case cases[] = {
      {with(kPair, ""), "", {}, {}},
      {with(kPair, ""), "aabb", {"r@0", "r@2"}, {}},
      {with(kPair, ""),
       "aab",
       {"r@0"},
       {"record 2, byte 2: incomplete record: the file ends 1 bytes into it"}},
      {with(kPair, "header=3\ntrailer=2\n"), "HHHaabbTT", {"r@3", "r@5"}, {}},
      {with(kPair, "header={hex='48'}\ntrailer={hex='54'}\n"),
       "haat",
       {"r@1"},
       {"byte 0: the header holds other bytes than told",
        "byte 3: the trailer holds other bytes than told"}},
      {with(kPair, "header=3\n"),
       "HH",
       {},
       {"byte 2: incomplete header: the file ends before its 3 bytes"}},
      {with(kPair, "trailer=3\n"),
       "TT",
       {},
       {"byte 0: incomplete trailer: the file ends before its 3 bytes"}},
      {with(kPair, own), "\2aa\2bb", {"r@1", "r@4"}, {}},
      {with(kPair, "length={bytes=2,order='big',counts_itself=true}\n"),
       std::string("\0\4aa\0\4bb", 8),
       {"r@2", "r@6"},
       {}},
      {with(kPair, own), "\1a\2bb", {"r@3"}, {"record 1, byte 0: a record of 1 bytes, expected 2"}},
      {with(kPair, "length={bytes=4}\n"),
       "\2\1\1\1aa",
       {},
       {"record 1, byte 0: a record of 16843010 bytes, expected at most 2" + behind}},
      {with(kKinds, ""), "\1\2xx\1", {"h@0", "d@1", "h@4"}, {}},
      {with(kKinds, ""), "\1\7xx\1", {"h@0"}, {"record 2, byte 1: " + kind + behind}},
      {with(kKinds, own), "\1\1\3\7xx\3\2xx", {"h@1", "d@7"}, {"record 2, byte 3: " + kind}},
      {with(kKinds, ""),
       "\1\2x",
       {"h@0"},
       {"record 2, byte 1: incomplete record: the file ends 2 bytes into it"}},
  };
  for (const Case &c : cases) {
    SCOPED_TRACE(c.toml + c.file);
    const Cut told = cut(c.toml, c.file);
    EXPECT_EQ(c.records, told.records);
    EXPECT_EQ(c.faults, told.faults);
  }
  EXPECT_EQ(std::vector<std::uint64_t>({1, 3}), cut(with(kKinds, own), "\1\1\3\7xx\3\2xx").numbers);
}

// Kinds of one size, one of them unknown now and then: told once each, in any blocks, and only of
// the records that are wanted.
TEST(RecordStream, ToldOnceAndInTheRange) {
  const std::string toml =
      "name='f'\n[[record]]\nname='a'\nwhen={t='1'}\n[[record.field]]\nname='t'\n"
      "type='BIN1'\n[[record.field]]\nname='x'\ntype='BIN7'\n[[record]]\nname='b'\nwhen={t='2'}\n"
      "[[record.field]]\nname='t'\ntype='BIN1'\n[[record.field]]\nname='x'\ntype='BIN7'\n";
  Random random(9);
  std::string file;
  std::vector<std::string> faults;
  for (int i = 0; i < 300; ++i) {
    const char kind = static_cast<char>(random.between(1, 3));
    if (kind == 3) {
      faults.push_back("record " + std::to_string(i + 1) + ", byte " + std::to_string(8 * i) +
                       ": a record of no kind that the layout knows");
    }
    file += kind + std::string(7, 'x');
  }
  ASSERT_GT(faults.size(), 50U);
  for (std::size_t block = 0; block < 40; ++block) {
    const Cut all = cut(toml, file, {}, block);
    ASSERT_EQ(faults, all.faults) << block;
    ASSERT_EQ(300 - faults.size(), all.records.size());
  }
  EXPECT_EQ(std::vector<std::string>({"record 3, byte 4: a record of 1 bytes, expected 8"}),
            cut("length={bytes=1}\n" + toml, std::string("\1\1\1\1\1\1"), {3, 1}).faults);
}

// Records that cross the ends of the blocks a file is read in, and any range of them.
TEST(RecordStream, BlocksDoNotShow) {
  Random random(3);
  std::string file = "H";
  std::vector<std::string> expected;
  for (int i = 0; i < 200000; ++i) {
    const bool head = random.between(0, 1) == 0;
    expected.push_back((head ? "h@" : "d@") + std::to_string(file.size()));
    file += head ? "\1" : "\2xy";
  }
  EXPECT_EQ(expected, cut(with(kKinds, "header=1\n"), file).records);
  for (const std::uint64_t from : {1, 7, 150000, 199999, 200001}) {
    const auto part = cut(with(kKinds, "header=1\n"), file, {from, 3}).records;
    const auto first = expected.begin() + long(from - 1);
    EXPECT_EQ(std::vector<std::string>(first, std::min(first + 3, expected.end())), part);
  }
  // A record longer than any block, which is left out.
  const std::string longer = std::string("\xF0\x49\x02") + std::string(150000, 'x');
  EXPECT_EQ(std::vector<std::string>({"r@3", "r@300014"}),
            cut(with(kPair, "length={bytes=3}\n"),
                std::string("\2\0\0aa", 5) + longer + longer + std::string("\2\0\0bb", 5))
                .records);
  const std::string fixed(500001, 'a');
  EXPECT_EQ(std::vector<std::string>({"r@400001"}),
            cut(with(kPair, "header=1\n"), fixed, {200001, 1}).records);
}

struct Loaded {
  std::string bytes;
  FindingCounts lost;
  std::string fault;  // "line: what"
};

Loaded load(const Layout &layout, const std::string &csv, std::size_t block_size = 1U << 18) {
  const TemporaryFile stored(csv);
  Input input(stored.path());
  CsvStream stream(input, block_size);
  std::vector<std::string> header;
  Loaded result;
  if (!stream.header(header)) return result;
  const Loader loader(layout, header, {}, "csv");
  LoadedBlock block;
  std::uint64_t rows = 0;
  std::uint64_t lines = stream.header_lines();
  while (result.fault.empty() && stream.read(block.csv)) {
    loader.load(block);
    result.bytes += block.records.view();
    result.lost.merge(block.lost, rows, lines);
    rows += block.rows;
    if (!block.fault.empty()) {
      result.fault = std::to_string(lines + block.fault_line) + ": " + block.fault;
    }
    lines += block.lines;
  }
  return result;
}

std::string dump(const Layout &layout, const std::string &file,
                 const std::vector<RowWriter> &writers) {
  const TemporaryFile stored(file);
  Input input(stored.path());
  RecordStream stream(input, layout);
  RecordBlock block;
  Buffer out;
  while (stream.read(block)) {
    EXPECT_TRUE(block.faults.empty());
    for (const auto &record : block.records) {
      writers[std::size_t(record.type - layout.types.data())].run(block.record(record), out);
    }
  }
  return std::string(out.view());
}

std::string csv_of(const Layout &layout, const std::string &file, bool hex = false) {
  return csv_header(layout, layout.columns, hex, "\r\n") +
         dump(layout, file, csv_writers(layout, layout.columns, hex, "\r\n"));
}

std::string random_record(const RecordType &type, Random &random) {
  std::vector<unsigned char> record(type.bytes);
  for (const Field &filler : type.fillers) {
    std::copy(filler.params.fill.begin(), filler.params.fill.end(),
              record.begin() + long(filler.offset));
  }
  for (const Field &field : type.fields) {
    EXPECT_EQ(nullptr, take(field, random_text(field, random), record.data())) << field.name;
  }
  return {record.begin(), record.end()};
}

TEST(RoundTrip, EveryTypeComesBackByteForByte) {
  const Layout layout = parse_layout(layout_of_every_type(), "test");
  Random random(4);
  std::string file;
  for (int i = 0; i < 500; ++i) file += random_record(layout.types[0], random);
  for (const bool hex : {false, true}) {
    const Loaded loaded = load(layout, csv_of(layout, file, hex));
    EXPECT_TRUE(loaded.lost.empty() && loaded.fault.empty()) << loaded.fault;
    EXPECT_TRUE(file == loaded.bytes);
  }
}

TEST(RoundTrip, SeveralKindsWithLengthsAndSharedColumns) {
  const Layout layout = parse_layout(
      "name='f'\nlength={bytes=2}\n"
      "[[record]]\nname='h'\nwhen={t='H'}\n[[record.field]]\nname='t'\ntype='CODALF05'\n"
      "[[record.field]]\nname='nome'\ntype='CODSTR'\nbytes=9\n"
      "[[record]]\nname='d'\n[[record.field]]\nname='t'\ntype='CODALF05'\n"
      "[[record.field]]\ntype='fill'\nhex='FE20'\n"
      "[[record.field]]\nname='dia'\ntype='DATAC'\nencoding='packed'\ncolumn='quando'\n"
      "[[record.field]]\nname='hora'\ntype='HHMMSS'\ncolumn='quando'\njoin=' '\n"
      "[[record.field]]\nname='nome'\ntype='CODSTR'\nbytes=3\n",
      "test");
  Random random(5);
  std::string file;
  for (int i = 0; i < 400; ++i) {
    const RecordType &type = layout.types[random.between<std::size_t>(0, 1)];
    std::string record = random_record(type, random);
    auto *bytes = reinterpret_cast<unsigned char *>(record.data());
    std::fill(bytes, bytes + 4, static_cast<unsigned char>(0));
    take(type.fields[0], type.name == "h" ? "H" : "D", bytes);
    file += length_prefix(layout, type) + record;
  }
  const std::string csv = csv_of(layout, file);
  EXPECT_EQ("record,t,nome,quando\r\n", csv.substr(0, csv.find('\n') + 1));
  EXPECT_TRUE(file == load(layout, csv).bytes);
  const Loaded lost = load(layout, "record,t,nome,quando\nh,H,x,01/01/2024 10:00:00\n");
  ASSERT_EQ(1U, lost.lost.total());
  EXPECT_EQ("the record has no such field", lost.lost.lines()[0].what);
  EXPECT_EQ("2: no kind of record is called \"z\"", load(layout, "record,t\nz,H\n").fault);
}

// A record is read as the kind that its bytes tell, so no row may be stored as another.
TEST(Loader, RefusesARowWhoseKindItsFieldContradicts) {
  const Layout layout = parse_layout(
      "name='f'\n"
      "[[record]]\nname='one'\nwhen={t='1'}\n[[record.field]]\nname='t'\ntype='BIN1'\n"
      "[[record]]\nname='two'\nwhen={t=['2', '3']}\n[[record.field]]\nname='t'\ntype='BIN1'\n"
      "[[record.field]]\nname='x'\ntype='BIN1'\n"
      "[[record]]\nname='rest'\n[[record.field]]\nname='t'\ntype='BIN1'\ncolumn='c'\n"
      "[[record.field]]\nname='y'\ntype='BIN1'\ncolumn='c'\njoin=' '\n",
      "test");
  struct Row {
    const char *csv, *fault, *bytes;
  };
  const Row rows[] = {
      {"record,t\none,1\none,\n", "", "\1\1"},
      {"record\none\n", "", "\1"},
      {"record,t,x\ntwo,3,7\n", "", "\3\7"},
      {"record,c\nrest,9 7\n", "", "\11\7"},
      {"record,t\none,1\none,0\n",
       "3: field t: \"0\" does not tell the kind \"one\", expected \"1\"", "\1"},
      {"record,t\none,2\n", "2: field t: \"2\" does not tell the kind \"one\"", ""},
      {"record,t\none,x\n", "2: field t: \"x\" does not tell the kind \"one\"", ""},
      {"record,t\ntwo,\n",
       "2: field t: \"\" does not tell the kind \"two\", expected \"2\" or \"3\"", ""},
      {"record\ntwo\n", "2: field t: \"\" does not tell the kind \"two\"", ""},
      {"record,c\nrest,1 7\n",
       "2: the values are those of a record \"one\", which the layout tells in front of \"rest\"",
       ""},
  };
  for (const Row &row : rows) {
    const Loaded loaded = load(layout, row.csv);
    EXPECT_EQ(0U, loaded.fault.find(row.fault)) << row.csv << loaded.fault;
    EXPECT_EQ(*row.fault == '\0', loaded.fault.empty()) << row.csv << loaded.fault;
    EXPECT_EQ(row.bytes, loaded.bytes) << row.csv;
  }
}

// Columns that look like something else: bytes beside a value, a mark in front of the file.
TEST(RoundTrip, ColumnsOfAnyName) {
  for (const char *name : {"b_hex", "\xEF\xBB\xBFz", "x\\\"y, z\\r"}) {
    const Layout layout =
        parse_layout("name=\"r\"\n[[field]]\nname=\"b\"\ncolumn=\"" + std::string(name) +
                         "\"\ntype=\"BIN2\"\n[[field]]\nname=\"a\"\ntype=\"BIN1\"\n",
                     "test");
    EXPECT_TRUE("123" == load(layout, csv_of(layout, "123")).bytes) << name;
  }
}

TEST(Loader, TellsEveryLossWithLineAndRecord) {
  const Layout layout =
      parse_layout(with(kPair, "") + "[[field]]\nname='b'\ntype='CODSTR'\nbytes=3\n", "test");
  const std::string csv = "a,b\r\n1,\"x\ny\"\n70000,\n\n2,\n99999,\n4,abcd\n5,\"a\n\n\n\"";
  for (const std::size_t block : {1U, 9U, 1U << 18}) {
    const Loaded loaded = load(layout, csv, block);
    EXPECT_EQ("", loaded.fault);
    EXPECT_EQ(30U, loaded.bytes.size());
    std::string places;
    for (const FindingCounts::Line &line : loaded.lost.lines()) {
      for (const Location &place : line.entry.places) {
        places += line.field + "@" + std::to_string(place.line) + "#" +
                  std::to_string(place.record) + " ";
      }
    }
    EXPECT_EQ("a@4#2 a@7#4 b@8#5 b@9#6 ", places);
    EXPECT_EQ("13: a quote that is not closed", load(layout, csv + "\n,\"", block).fault);
  }
  EXPECT_EQ("4: 3 cells, expected 2", load(layout, "a,b\n1,\"\n\"\n1,2,3\n").fault);
  EXPECT_EQ(1U, load(layout, std::string("a\n1\0002\n", 6)).lost.total());
}

// Each layout keeps the decimals of its own money values, whatever the process has set.
TEST(Layouts, DoNotChangeEachOther) {
  const auto layout = [](int decimals) {
    return parse_layout("name='r'\nparcela_decimals=" + std::to_string(decimals) +
                            "\n[[field]]\nname='v'\ntype='PARCELA'\n",
                        "test");
  };
  const Layout two = layout(2);
  const Layout eighteen = layout(18);
  EXPECT_THROW(parse_layout("name='r'\nparcela_decimals=7\n", "test"), Error);
  const int before = PARCELA_fixo;
  for (const int fixo : {0, 4, 9}) {
    PARCELA_fixo = fixo;
    for (const Layout *each : {&two, &eighteen}) {
      PARCELA value;
      unsigned char record[sizeof value];
      const std::string text = each == &two ? "-12345.67" : "-9.223372036854775808";
      EXPECT_EQ(nullptr, take(each->types[0].fields[0], text, record));
      EXPECT_EQ(text, field_text(each->types[0].fields[0], record));
      // The service says the same of these bytes, once it is told the decimals.
      std::memcpy(&value, record, sizeof value);
      char said[PARCELA_TEXT_SIZE(18)];
      PARCELA_fixo = each->parcela_decimals;
      EXPECT_EQ(text, PARCELA_vtoa(said, &value));
      PARCELA_fixo = fixo;
    }
  }
  PARCELA_fixo = before;
}

TEST(Programs, JsonNestsGroupsAndRepetitions) {
  const Layout layout = parse_layout(
      "name='r'\n[[field]]\nname='n'\ntype='BIN1'\ncount=2\n[[field]]\nname='g'\ncount=2\n"
      "[[field.field]]\nname='x'\ntype='CODSTR'\nbytes=2\n[[field.field]]\nname='b'\n"
      "type='ZBTFIELD'\nbits=[4, 4]\n[[field]]\nname='d'\ntype='DATAC'\n[[field]]\nname='v'\n"
      "type='BINQ9'\ndecimals=1\n",
      "test");
  std::string record(2, '\7');
  record +=
      "\"\n\x21"
      "a";
  record += std::string(layout.types[0].bytes - record.size(), '\0');
  const auto json = [&](const std::vector<std::string> &names) {
    return dump(layout, record, json_writers(layout, chosen_columns(layout, names), false));
  };
  EXPECT_EQ(
      "{\"n\":[7,7],\"g\":[{\"x\":\"\\\"\\n\",\"b\":{\"parte1\":\"1\",\"parte2\":\"2\"}},"
      "{\"x\":\"a\",\"b\":{\"parte1\":\"0\",\"parte2\":\"0\"}}],\"d\":null,\"v\":\"0.0\"}\n",
      json({}));
  EXPECT_EQ("{\"g\":[{\"b\":{\"parte1\":\"1\"}},{\"b\":{\"parte1\":\"0\"}}],\"d\":null}\n",
            json({"g_b_parte1", "d"}));
}

// A column that several fields share is there where one of them has a value.
TEST(Programs, ASharedColumnWithoutAValueIsAbsent) {
  const Layout layout = parse_layout(
      "name='r'\n[[field]]\nname='d'\ntype='DATAC'\nencoding='packed'\ncolumn='when'\n"
      "[[field]]\nname='h'\ntype='HORAC'\ncolumn='when'\njoin=' '\n"
      "[[field]]\nname='n'\ntype='BIN1'\ncolumn='when'\njoin='_'\n"
      "[[field]]\nname='z'\ntype='BIN1'\n",
      "test");
  struct Row {
    const char *csv, *json;
  };
  const Row rows[] = {
      {"", R"({"d":null,"h":null,"n":null,"z":5})"},
      {"01/02/2024 00:00_0", R"({"d":"01/02/2024","h":"00:00","n":0,"z":5})"},
      {" 00:00_7", R"({"d":null,"h":"00:00","n":7,"z":5})"},
  };
  for (const Row &row : rows) {
    const std::string csv = "when,z\r\n" + std::string(row.csv) + ",5\r\n";
    const Loaded loaded = load(layout, csv);
    ASSERT_TRUE(loaded.lost.empty());
    EXPECT_EQ(csv, csv_of(layout, loaded.bytes));
    EXPECT_EQ(row.json + std::string("\n"),
              dump(layout, loaded.bytes, json_writers(layout, layout.columns, false)));
    const auto *record = reinterpret_cast<const unsigned char *>(loaded.bytes.data());
    EXPECT_EQ(row.csv, Cells(layout, layout.columns, false).of(layout.types[0], record)[0]);
  }
}

TEST(Programs, ColumnsAreChosenByAnyNameOfTheirs) {
  const Layout layout = parse_layout(layout_of_every_type(), "test");
  using Names = std::vector<std::string>;
  EXPECT_EQ(Names({"grupo_1_a_1", "grupo_2_a_1", "grupo_1_a_2"}),
            chosen_columns(layout, {"grupo_1_a_1", "grupo_2_a_1", "grupo_1_a_1", "grupo_1_a_2"}));
  EXPECT_EQ(8U, chosen_columns(layout, {"grupo"}).size());
  EXPECT_EQ(4U, chosen_columns(layout, {"grupo_2"}).size());
  EXPECT_EQ(Names({"grupo_1_b", "grupo_2_b"}), chosen_columns(layout, {"grupo_b"}));
  try {
    chosen_columns(layout, {"F_DATAK"});
    ADD_FAILURE() << "was accepted";
  } catch (const Error &error) {
    EXPECT_NE(nullptr, strstr(error.what(), "expected \"f_DATAC\"?")) << error.what();
  }
}

// What a record holds and how it is measured hangs on no locale of the process.
TEST(Locale, DoesNotShow) {
  const Layout layout = parse_layout(
      "name='r'\n[[field]]\nname='c'\ntype='CODALF12'\n[[field]]\nname='a'\ntype='CODALFA'\n"
      "positions=9\n[[field]]\nname='q'\ntype='QUANTIA'\n[[field]]\nname='p'\ntype='PORC2'\n"
      "[[field]]\nname='b'\ntype='BINQ9'\ndecimals=3\n",
      "test");
  const std::string csv = "c,a,q,p,b\nistanbul,\xFD\xE9gil,1234.56,12.50,1.125\n\xFDi,I,-0.5,1,2\n";
  const Loaded loaded = load(layout, csv);
  const auto *record = reinterpret_cast<const unsigned char *>(loaded.bytes.data());
  const RecordType &type = layout.types[0];
  EXPECT_EQ("ISTANBUL", field_text(type.fields[0], record));
  EXPECT_EQ("GIL", field_text(type.fields[1], record));
  EXPECT_EQ("I", field_text(type.fields[0], record + type.bytes));
  EXPECT_EQ(3U, loaded.lost.total());
  for (const auto &[place, number] : {std::pair{2U, 1234.56}, {3U, 12.5}, {4U, 1.125}}) {
    const Field &field = type.fields[place];
    EXPECT_EQ(number, field.type->measure(record + field.offset, field.params));
  }
}

TEST(Pipeline, KeepsTheOrderAndTheFirstFault) {
  // Below zero: the fault is where a block is filled, else where it is worked on.
  for (const int jobs : {1, 2, 5, -1, -2, -5}) {
    for (const int bad : {-1, 0, 57, 199}) {
      int next = 0;
      std::vector<int> drained;
      const auto run = [&] {
        Pipeline<int>(
            std::abs(jobs),
            [&](int &block) {
              if (jobs < 0 && next == bad) throw std::runtime_error("bad");
              return (block = next++) < 200;
            },
            [&](int &block) {
              if (block == bad) throw std::runtime_error("bad");
              block *= 3;
            },
            [&](int &block) { drained.push_back(block); })
            .run();
      };
      if (bad < 0) {
        run();
      } else {
        EXPECT_THROW(run(), std::runtime_error);
      }
      ASSERT_EQ(bad < 0 ? 200U : std::size_t(bad), drained.size()) << jobs;
      for (std::size_t i = 0; i < drained.size(); ++i) ASSERT_EQ(int(i) * 3, drained[i]);
    }
  }
}

// The bounds that are told: the standard error, hardly ever three times that, never above the count.
TEST(Statistics, DistinctValuesAreEstimatedWithinTheBounds) {
  Random random(6);
  int counts = 0;
  int far = 0;
  double squares = 0;
  for (int round = 0; round < 60; ++round) {
    DistinctCount once;
    DistinctCount twice;
    std::uint64_t added = 0;
    for (std::uint64_t next = 8193; next < 400000; next += next / 3) {
      for (; added < next; ++added) {
        const std::uint64_t value = random.word();
        const auto *bytes = reinterpret_cast<const unsigned char *>(&value);
        once.add(bytes, sizeof value);
        for (int i = 0; i < 2; ++i) twice.add(bytes, sizeof value);
      }
      ASSERT_FALSE(once.exact());
      ASSERT_LE(once.value(), added);
      const double error = double(twice.value()) / double(added) - 1;
      squares += error * error;
      far += std::abs(error) > 0.025 ? 1 : 0;
      ++counts;
    }
  }
  EXPECT_LT(std::sqrt(squares / counts), 0.0089);
  EXPECT_LE(far, counts / 100);
}

// A file that changed between its two readings: what the first did not meet is in no bar.
TEST(Histogram, KeepsToTheScaleOfTheFirstReading) {
  for (const char *type : {"BIN8", "BINQ21", "QUANTIA"}) {
    SCOPED_TRACE(type);
    const Layout layout =
        parse_layout("name='r'\n[[field]]\nname='n'\ntype='" + std::string(type) + "'\n", "test");
    const Field &field = layout.types[0].fields[0];
    FieldStatistics statistics(field);
    const auto add = [&](const char *text, auto &to) {
      std::vector<unsigned char> record(field.bytes);
      take(field, text, record.data());
      to.add(record.data());
    };
    for (const char *text : {"10", "20", "34"}) add(text, statistics);
    Histogram histogram(statistics);
    for (const char *text : {"10", "10", "9", "0", "35", "9000000000000000000", "34"}) {
      add(text, histogram);
    }
    std::vector<std::uint64_t> expected(Histogram::kBars);
    expected.front() = 2;
    expected.back() = 1;
    EXPECT_EQ(expected, histogram.counts());
  }
}

TEST(Statistics, OrderCountsAndDistinctValues) {
  const Layout layout = parse_layout(
      "name='r'\n[[field]]\nname='n'\ntype='BIN4'\n[[field]]\nname='d'\ntype='DATAC'\n", "test");
  FieldStatistics numbers(layout.types[0].fields[0]);
  FieldStatistics dates(layout.types[0].fields[1]);
  constexpr int kValues = 60000;
  for (int i = 0; i < kValues; ++i) {
    unsigned char record[7] = {};
    take(layout.types[0].fields[0], std::to_string(i * 7), record);
    const char *const some[] = {"", "31/12/99", "01/01/2000", "15/06/2024"};
    take(layout.types[0].fields[1], some[i % 4], record);
    numbers.add(record);
    dates.add(record);
  }
  EXPECT_FALSE(numbers.distinct().exact());
  EXPECT_NEAR(kValues, double(numbers.distinct().value()), kValues * 0.025);
  EXPECT_EQ("419993", numbers.greatest());
  EXPECT_EQ("0", numbers.least());
  EXPECT_TRUE(dates.distinct().exact());
  EXPECT_EQ(4U, dates.distinct().value());
  EXPECT_EQ(kValues / 4U, dates.empty());
  EXPECT_EQ("31/12/99", dates.least());
  EXPECT_EQ("15/06/2024", dates.greatest());
  EXPECT_EQ(kValues / 4U, dates.few().at("01/01/2000"));
}

}  // namespace
}  // namespace campotipo::records::test
