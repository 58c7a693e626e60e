// Layout files: where the fields come to lie, and faults told with file, line and expectation.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <set>
#include <sstream>

#include "errors/error.hpp"
#include "pictures/drawings.hpp"
#include "tests/records/tool_fixture.hpp"

namespace campotipo::records::test {

using namespace campotipo::tool;
namespace {

TEST(LayoutFile, PlacesGroupsRepetitionsAndParts) {
  const Layout layout = parse_layout(
      "name = 'r'\nsize = 25\nheader = 4\ntrailer = { hex = '0D0A' }\n"
      "length = { bytes = 2, order = 'big', counts_itself = true }\n"
      "[[field]]\nname = 'a'\ntype = 'BIN2'\n"
      "[[field]]\nname = 'g'\ncount = 2\n"
      "[[field.field]]\nname = 'x'\ntype = 'BIN3'\ncount = 2\n"
      "[[field.field]]\nname = 'y'\ntype = 'ZBTFIELD'\nbits = [{ name = 'p', bits = 5 }, 4]\n"
      "[[field]]\ntype = 'fill'\nhex = 'AB'\nbytes = 3\n"
      "[[field]]\nname = 'quando'\ntype = 'HORAC'\ncolumn = 'a'\njoin = ' '\n"
      "[[field]]\nname = 'z'\ntype = 'BIN2'\n",
      "x.toml");
  const RecordType &record = layout.types[0];
  std::string places;
  for (const Field &field : record.fields) {
    places += field.name + "@" + std::to_string(field.offset) + " ";
  }
  EXPECT_EQ(
      "a@0 g_1_x_1@2 g_1_x_2@5 g_1_y_p@8 g_1_y_parte2@8 g_2_x_1@10 g_2_x_2@13 g_2_y_p@16 "
      "g_2_y_parte2@16 quando@21 z@23 ",
      places);
  EXPECT_EQ("\xAB\xAB\xAB", record.fillers[0].params.fill);
  EXPECT_EQ(std::vector<std::size_t>({0, 9}), record.columns[0].fields);
  EXPECT_EQ(10U, layout.columns.size());
  EXPECT_EQ(4U, layout.header.bytes);
  EXPECT_EQ("\r\n", layout.trailer.content);
  EXPECT_TRUE(layout.prefix.big && layout.prefix.counts_itself && layout.prefix.bytes == 2);
  std::size_t at = 0;
  for (const Span &span : spans(record)) {
    EXPECT_EQ(at, span.offset) << span.name;
    at += span.bytes;
  }
  EXPECT_EQ(record.bytes, at);
}

TEST(LayoutFile, KindsAreToldApartByTheStoredForm) {
  const Layout layout = parse_layout(
      "name = 'f'\n"
      "[[record]]\nname = 'h'\nwhen={t='H'}\n[[record.field]]\nname = 't'\ntype = 'CODALF05'\n"
      "[[record]]\nname = 'd'\nwhen={t=['D', 'E']}\n[[record.field]]\nname = 't'\ntype = "
      "'CODALF05'\n"
      "[[record.field]]\nname = 'n'\ntype = 'BIN1'\n"
      "[[record]]\nname = 'o'\n[[record.field]]\nname = 't'\ntype = 'CODALF05'\n",
      "x.toml");
  for (const auto &[text, kind] : {std::pair{"H", "h"}, {"D", "d"}, {"E", "d"}, {"Q", "o"}}) {
    unsigned char record[5] = {};
    take(layout.types[0].fields[0], text, record);
    EXPECT_EQ(kind, layout.type_of(record, 5)->name);
  }
  EXPECT_FALSE(layout.fixed_size());
}

// Kinds by several fields, which need not stand at the same place: the first one whose conditions hold.
TEST(LayoutFile, TheFirstKindWhoseConditionsHold) {
  const Layout layout = parse_layout(
      "name='f'\n"
      "[[record]]\nname='a'\nwhen={t='3', u=['x', 'y']}\nfield=["
      "{name='t', type='CODSTR', bytes=1}, {name='u', type='CODSTR', bytes=1},"
      "{name='z', type='BIN1'}]\n"
      "[[record]]\nname='b'\nwhen={z='w'}\nfield=["
      "{name='t', type='CODSTR', bytes=2}, {name='z', type='CODSTR', bytes=1}]\n"
      "[[record]]\nname='c'\nwhen={t='3'}\nfield=["
      "{name='t', type='CODSTR', bytes=1}, {type='fill', bytes=2}]\n"
      "[[record]]\nname='d'\nwhen={p='2'}\nfield=["
      "{name='area', type='ZBTFIELD', bits=[3, {name='q', bits=5}], column='x'},"
      "{name='p', type='BIN2'}]\n",
      "x.toml");
  const auto kind = [&](const std::string &record) {
    const auto *bytes = reinterpret_cast<const unsigned char *>(record.data());
    const RecordType *type = layout.type_of(bytes, record.size());
    return type == nullptr ? "none" : type->name;
  };
  EXPECT_EQ("a", kind("3x."));
  EXPECT_EQ("a", kind("3yw"));
  EXPECT_EQ("b", kind("3zw"));
  EXPECT_EQ("c", kind("3z."));
  EXPECT_EQ("c", kind("3"));  // what is not there holds for no kind
  EXPECT_EQ("none", kind("4z."));
  EXPECT_EQ("d", kind(std::string("4\2\0", 3)));
  EXPECT_EQ("none", kind(std::string("4\2", 2)));
}

// A part of a bit area tells a kind by its own bits.
TEST(LayoutFile, BitsTellAKind) {
  const std::string area =
      "field=[{name='t', type='ZBTFIELD', bits=[{name='low', bits=2}, {name='high', bits=6}]}]\n";
  const Layout layout = parse_layout("name='f'\n[[record]]\nname='a'\nwhen={t_low=['1', '2']}\n" +
                                         area + "[[record]]\nname='b'\nwhen={t_high='5'}\n" + area,
                                     "x.toml");
  for (unsigned value = 0; value < 256; ++value) {
    const auto byte = static_cast<unsigned char>(value);
    const RecordType *type = layout.type_of(&byte, 1);
    const unsigned low = value & 3;
    const char *expected = low == 1 || low == 2 ? "a" : value >> 2 == 5 ? "b" : "none";
    EXPECT_EQ(expected, type == nullptr ? "none" : type->name) << value;
  }
}

// The values of three fields that a kind asks for, one a bit; 0: any.
using Wanted = std::array<unsigned, 3>;

// Whether each value of the last kind is in a record of it that is of no kind in front, by trying
// all records, in which each field has one of five values, one of them told by no kind.
bool all_met(const std::vector<Wanted> &kinds) {
  Wanted met = {};
  for (unsigned record = 0; record < 125; ++record) {
    const Wanted has = {1U << record % 5, 1U << record / 5 % 5, 1U << record / 25};
    const auto is = [&](const Wanted &kind) {
      return std::equal(kind.begin(), kind.end(), has.begin(), [](unsigned wanted, unsigned own) {
        return wanted == 0 || (wanted & own) != 0;
      });
    };
    if (std::find_if(kinds.begin(), kinds.end(), is) != kinds.end() - 1) continue;
    for (std::size_t i = 0; i < 3; ++i) met[i] |= has[i] & kinds.back()[i];
  }
  return met == kinds.back();
}

// Random kinds: the layout is refused if and only if one of their values is never met.
TEST(LayoutFile, RefusesAValueThatIsNeverMet) {
  Random random(21);
  int refused = 0;
  for (int round = 0; round < 300; ++round) {
    std::string toml = "name='f'\n";
    std::vector<Wanted> kinds;
    for (bool good = true; good && kinds.size() < 4;) {
      Wanted wanted = {};
      wanted[random.between<std::size_t>(0, 2)] = random.between(1U, 15U);
      wanted[random.between<std::size_t>(0, 2)] = random.between(1U, 15U);
      kinds.push_back(wanted);
      std::string when;
      for (std::size_t i = 0; i < 3; ++i) {
        std::string values;
        for (unsigned value = 0; value < 4; ++value) {
          if ((wanted[i] >> value & 1) != 0) values += "'" + std::to_string(value) + "', ";
        }
        if (!values.empty())
          when += std::string(when.empty() ? "" : ", ") + "abc"[i] + "=[" + values + "]";
      }
      toml += "[[record]]\nname='k" + std::to_string(kinds.size()) + "'\nwhen={" + when + "}\n" +
              "field=[{name='a', type='CODSTR', bytes=1}, {name='b', type='CODSTR', bytes=1}, "
              "{name='c', type='CODSTR', bytes=1}]\n";
      try {
        parse_layout(toml, "x.toml");
      } catch (const Error &error) {
        EXPECT_NE(nullptr, std::strstr(error.what(), "which stands in front")) << error.what();
        good = false;
        ++refused;
      }
      EXPECT_EQ(all_met(kinds), good) << toml;
    }
  }
  EXPECT_GT(refused, 30);
  EXPECT_LT(refused, 270);
}

struct Wrong {
  const char *toml, *place, *what;
};

TEST(LayoutFile, FaultsTellLineAndExpectation) {
  const std::string f = "name = 'r'\n[[field]]\nname = 'f'\n";
  std::string deep = "name = 'r'\n";
  for (int i = 0; i < 200000; ++i) deep += "a.";
  deep += "a = 1\n";
  const Wrong wrongs[] = {
      {"name = 'r'\nfeild = 1\n", "x.toml:2:1", "called \"feild\", expected \"field\"?"},
      {"name = 'r'\n", "x.toml:1", "field: expected at least one field, found none"},
      {"name = 'r'\nnome = 1\n[[field]]\nname='a'\ntype='BIN1'\n", "x.toml:2:1",
       "nothing here is called \"nome\", expected \"name\"?"},
      {"name = 3\n", "x.toml:1:8", "name: expected a text, found 3"},
      {"[[field]]\n", "x.toml:1:1", "name: expected the name of the record, found none"},
      {"name = 'r'\n[[field]]\nname = 'a b'\ntype='BIN1'", "x.toml:3:8", "without blanks"},
      {"name = 'r'\nx = \n", "x.toml:2", ""},
      {deep.c_str(), "x.toml:2", "at most 200 points"},
      {"name = 'r'\nencoding = 'no-such'\n", "x.toml:2:12", "a character set"},
      {"name = 'r'\nencoding = 'UTF-16LE'\n", "x.toml:2:12", "one byte a character"},
      {"name = 'r'\nsize = 3\n[[field]]\nname='a'\ntype='BIN1'", "x.toml:2:8",
       "the fields take 1 bytes, expected 3"},
      {"@type = 'CODALF13'\n", "x.toml:4:8", "such as \"CODALF1"},
      {"@type = 'codalf05'\n", "x.toml:4:8", "such as \"CODALF05\""},
      {"@type = 'CODSTR'\nbytes = 1048576\ncount = 17\n", "x.toml:2:1", "longer than 16 MiB"},
      {"@type = 'DATAC'\ncheck = 'CPF'\n", "x.toml:5:9", "a DATAC has no check digits"},
      {"@type = 'BIN8'\ndecimals = 2\ncheck = 'CPF'\n", "x.toml:6:9", "with decimals has no"},
      {"name = 'r'\nencoding = ''\n", "x.toml:2:12", "a character set"},
      {"name = 'r'\nencoding = '//TRANSLIT'\n", "x.toml:2:12", "a character set"},
      {"@type = 'BIN1'\n[[field]]\nname = 'f_hex'\ntype = 'BIN1'\n", "x.toml:5:1",
       "\"f_hex\" is what the bytes of \"f\" are called"},
      {"@type = 'BIN1'\n[[field]]\nname = 'g'\ncolumn = 'f_hex'\ntype = 'BIN1'\n", "x.toml:1:1",
       "\"f_hex\" is what the bytes of \"f\" are called"},
      {"@type = 'ZBTFIELD'\nbits = [{name = 'b_hex', bits = 1}, {name = 'b', bits = 1}]\n",
       "x.toml:5:9", "\"b_hex\" is what the bytes"},
      {"@type = 'CODALFA'\n", "x.toml:2:1", "positions: expected how many characters"},
      {"@type = 'NUM'\n", "x.toml:2:1", "digits: expected how many digits"},
      {"@type = 'NUM'\ndigits = 51\n", "x.toml:5:10",
       "digits: expected a whole number from 1 to 50"},
      {"@type = 'NUM'\ndigits = 3\ndecimals = 4\n", "x.toml:6:12", "from 0 to 3, found 4"},
      {"@type = 'NUM'\ndigits = 3\nsign = 'front'\n", "x.toml:6:8", "\"leading\", \"trailing\" or"},
      {"@type = 'NUM'\ndigits = 3\npad = '*'\n", "x.toml:6:7", "pad: expected \" \" or \"0\""},
      {"@type = 'NUM'\ndigits = 3\nempty = '99'\n", "x.toml:6:9", "or all 3 bytes of it"},
      {"@type = 'DIGITS'\ndigits = 3\nempty = []\n", "x.toml:6:9", "empty: expected one character"},
      {"@type = 'DIGITS'\ndigits = 3\nsign = 'leading'\n", "x.toml:6:1", "called \"sign\""},
      {"@type = 'TEXT'\nbytes = 3\npad = 'ab'\n", "x.toml:6:7", "pad: expected the character"},
      {"@type = 'TEXT'\nbytes = 3\nencoding = 'IBM037'\n", "x.toml:6:12", "blanks of ASCII"},
      {"@type = 'DATE'\n", "x.toml:2:1", "stored: expected DD, MM and AAAA"},
      {"@type = 'DATE'\nstored = 'AAAAMM'\n", "x.toml:5:10", "stored: expected DD, MM and AAAA"},
      {"@type = 'DATE'\nstored = 'DDMMAA'\npivot = 101\n", "x.toml:6:9", "from 0 to 100"},
      {"@type = 'TIME'\nstored = 'HH'\n", "x.toml:5:10", "stored: expected \"HHMM\" or"},
      {"@type = 'CODSTR'\nbytes = 0\n", "x.toml:5:9", "a whole number from 1 to"},
      {"@type = 'BIN4'\ndecimals = 51\n", "x.toml:5:12", "from 0 to 50, found 51"},
      {"@type = 'BIN4'\npositions = 5\n", "x.toml:5:1", "nothing here is called \"positions\""},
      {"@type = 'CODALF05'\noptions = ['zero']\n", "x.toml:5:11", "some of \"zeros\""},
      {"@type = 'DATAC'\nformat = 'DD/MM'\n", "x.toml:5:10", "DD, MM and AAAA"},
      {"@type = 'DATAC'\nencoding = 'bcd'\n", "x.toml:5:12", "\"both\", \"packed\" or \"decimal\""},
      {"@type = 'HORAC'\nseparator = '7'\n", "x.toml:5:13", "no digit"},
      {"@type = 'BIN4'\ncheck = 'CPFX'\n", "x.toml:5:9", "one of \"CPF\""},
      {"@type = 'ZBTFIELD'\nbits = [3, 65]\n", "x.toml:5:12", "1 to 64 bits"},
      {"@type = 'ZBTFIELD'\nbits = []\n", "x.toml:5:8", "the parts of the area"},
      {"@type = 'BIN4'\ncount = 0\n", "x.toml:5:9", "from 1 to"},
      {"@type = 'BIN1'\n[[field]]\nname = 'f'\ntype = 'BIN1'\n", "x.toml:5:1", "each name once"},
      {"@type = 'BIN1'\ncount = 2\n[[field]]\nname = 'f_1'\ntype = 'BIN1'\n", "x.toml:1",
       "two fields are called \"f_1\""},
      {"@type = 'CODSTR'\nbytes = 3\nencoding = 'no-such'\n", "x.toml:6:12", "a character set"},
      {"@type = 'BIN1'\n[[field]]\nname = 'g'\ncolumn='f'\ntype = 'BIN1'\n", "x.toml:1",
       "share the column"},
      {"@type = 'CODSTR50'\n[[field]]\nname = 'g'\ncolumn='f'\ntype = 'HORAC'\njoin = ' '\n",
       "x.toml:1", "expected a number, date or time as the first"},
      {"@type = 'DATAC'\nformat = 'DD_MM_AAAA'\n[[field]]\nname = 'g'\ncolumn='f'\ntype = 'HORAC'\n"
       "join = '_'\n",
       "x.toml:1", "a join that the first never holds"},
      {"@type = 'HORAC'\nseparator = 'T'\n[[field]]\nname = 'g'\ncolumn='f'\ntype = 'BIN1'\n"
       "join = 'T'\n",
       "x.toml:1", "a join that the first never holds"},
      {"@type = 'BIN1'\n[[field]]\ntype = 'fill'\nhex = '0'\n", "x.toml:7:7",
       "pairs of hexadecimal digits"},
      {"name='r'\nselect='t'\n[[record]]\nname='h'\n", "x.toml:2:8",
       "select: is gone, expected when = { field = \"value\" } in each record"},
      {"name='r'\n[[record]]\nname='h'\nwhen='1'\n[[record.field]]\nname='t'\ntype='BIN1'\n",
       "x.toml:4:6", "when: expected { field = \"value\" }"},
      {"name='r'\n[[record]]\nname='h'\nwhen={t='1'}\n[[record.field]]\nname='u'\n"
       "type='BIN1'\n",
       "x.toml:4:9", "\"h\" has no field of this name"},
      {"name='r'\n[[record]]\nname='h'\nwhen={t='900'}\n[[record.field]]\nname='t'\n"
       "type='BIN1'\n",
       "x.toml:4:9", "too large"},
      {"name='r'\n[[record]]\nname='h'\nwhen={t=[]}\n[[record.field]]\nname='t'\n"
       "type='BIN1'\n",
       "x.toml:4:9", "at least one value"},
      {"name='r'\n[[record]]\nname='h'\nwhen={record='1'}\n[[record.field]]\n"
       "name='record'\ntype='BIN1'\n[[record]]\nname='i'\n[[record.field]]\nname='record'\n"
       "type='BIN1'\n",
       "x.toml:2:1", "tells the kind, expected another name"},
      {"name='r'\n[[record]]\nname='h'\nwhen={t='1'}\n[[record.field]]\nname='t'\n"
       "type='BIN1'\n[[record.field]]\nname='record'\ncolumn='other'\ntype='BIN1'\n[[record]]\n"
       "name='i'\n[[record.field]]\nname='t'\ntype='BIN1'\n",
       "x.toml:2:1", "tells the kind, expected another name"},
      {"name='r'\n[[record]]\nname='h'\nwhen={t=['1', '2']}\n[[record.field]]\nname='t'\n"
       "type='BIN1'\n[[record]]\nname='i'\nwhen={t=['3', '02']}\n[[record.field]]\nname='t'\n"
       "type='BIN1'\n",
       "x.toml:10:6", "\"2\" in \"t\" tells the record \"h\""},
      {"name='r'\n[[record]]\nname='h'\n[[record.fields]]\nname='t'\ntype='BIN1'\n", "x.toml:4",
       "called \"fields\", expected \"field\"?"},
      {"name='r'\nsize=2\n[[record]]\nname='h'\n[[record.field]]\nname='t'\ntype='BIN1'\n",
       "x.toml:3:1", "record \"h\": the fields take 1 bytes, expected 2"},
      {"name='r'\nline_end='cr'\n[[field]]\nname='f'\ntype='BIN1'\n", "x.toml:2:10",
       "\"lf\" or \"crlf\""},
      {"name='r'\nheader=3\nline_end='lf'\n[[field]]\nname='f'\ntype='BIN1'\n", "x.toml:2:8",
       "header: a file of lines has none"},
      {"name='r'\n[[field]]\nname='_f'\ntype='BIN1'\n", "x.toml:3:6", "does not begin with \"_\""},
  };
  for (const Wrong &wrong : wrongs) {
    const std::string toml = wrong.toml[0] == '@' ? f + (wrong.toml + 1) : wrong.toml;
    SCOPED_TRACE(toml);
    try {
      parse_layout(toml, "x.toml");
      ADD_FAILURE() << "was accepted";
    } catch (const Error &error) {
      const std::string what = error.what();
      EXPECT_EQ(0U, what.find(wrong.place)) << what;
      EXPECT_NE(std::string::npos, what.find(wrong.what)) << what;
      EXPECT_EQ(ErrorCode::kLayout, error.code());
    }
  }
}

// Points count where they make a table inside another, and nowhere else.
TEST(LayoutFile, PointsThatNestNothingDoNotCount) {
  const std::string points(300, '.');
  std::string numbers = "1.5";
  for (int i = 0; i < 300; ++i) numbers += ", 1.5";
  std::string nested = "1";
  for (int i = 0; i < 60; ++i) nested = "[\n{a.b.c.d.e = " + nested + "}]";
  const std::string layout =
      "name = 'r' # " + points + "\n[[field]]\nname = 'a'\ntype = 'CODSTR'\nbytes = 3\n";
  const auto refusal = [](const std::string &text) {
    try {
      parse_layout(text, "x.toml");
    } catch (const Error &error) {
      return std::string(error.what());
    }
    return std::string();
  };
  EXPECT_EQ("", refusal(layout));
  for (const std::string &value :
       {"'" + points + "'", R"("\")" + points + "\"", "\"\"\"\n\"" + points + "\"\"\"\"\"",
        "'''\n" + points + "'''", "[" + numbers + "]"}) {
    const std::string what = refusal(layout + "x = " + value + "\n");
    EXPECT_NE(std::string::npos, what.find("nothing here is called \"x\"")) << value << what;
  }
  std::string deep = "a";
  for (int i = 0; i < 100000; ++i) deep += ".a";
  for (const std::string &text :
       {deep + " = 1\n", "x = \"\"\"a\"\"\"\"\n" + deep + " = 1\n", "[" + deep + "]\n",
        "x = {y = '''a'''', " + deep + " = 1}\n", "x = " + nested + "\n"}) {
    EXPECT_NE(std::string::npos, refusal(text).find("at most 200 points")) << text.substr(0, 40);
  }
}

TEST(LayoutDrawings, NameEveryFieldOnce) {
  const Layout layout = parse_layout(layout_of_every_type(), "every.toml");
  const std::string header = c_header(layout);
  const std::string sql = sql_tables(layout);
  const std::string picture = svg(layout, layout.types[0]);
  for (const Field &field : layout.types[0].fields) {
    EXPECT_NE(std::string::npos, sql.find("\"" + field.column + "\" ")) << field.column;
  }
  for (const Span &span : spans(layout.types[0])) {
    EXPECT_NE(std::string::npos, picture.find(">" + span.name + ": bytes")) << span.name;
  }
  EXPECT_EQ(std::string::npos, sql.find('%'));
  EXPECT_NE(std::string::npos, header.find("#define TUDO_F_DATAC_OFFSET "));
  std::set<std::string> taken;
  EXPECT_EQ("int_", c_name("int", taken));
  EXPECT_EQ("f1_a", c_name("1.a", taken));
  EXPECT_EQ("f1_a_2", c_name("1-a", taken));
}

// Names that differ in a header of C differ in their macros, which are in capitals.
TEST(LayoutDrawings, MakeEveryMacroOnce) {
  const std::string kinds =
      "name='r'\n[[record]]\nname='r'\nwhen={a='1'}\n[[record.field]]\nname='a'\n"
      "type='BIN1'\n[[record.field]]\nname='A'\ntype='BIN1'\n[[record.field]]\nname='a-b'\n"
      "type='BIN1'\n[[record.field]]\nname='B_b'\ntype='BIN1'\n[[record]]\nname='R'\nwhen={a='3'}\n"
      "[[record.field]]\nname='a'\ntype='BIN1'\n[[record]]\nname='r_a'\nwhen={a='2'}\n"
      "[[record.field]]\nname='a'\ntype='BIN1'\n[[record.field]]\nname='b'\ntype='BIN1'\n";
  const std::string header = c_header(parse_layout(kinds, "x.toml"));
  std::set<std::string> macros;
  std::istringstream lines(header);
  for (std::string line; std::getline(lines, line);) {
    if (!line.starts_with("#define ")) continue;
    EXPECT_TRUE(macros.insert(line.substr(0, line.find(' ', 8))).second) << line;
  }
  EXPECT_EQ(11U, macros.size());
}

}  // namespace
}  // namespace campotipo::records::test
