// What a layout asks of values and records beside their types: held by check, filled by load.

#include <gtest/gtest.h>

#include <algorithm>
#include <map>

#include "errors/error.hpp"
#include "files/input.hpp"
#include "files/sources.hpp"
#include "findings/validator.hpp"
#include "rows/cells.hpp"
#include "rows/filler.hpp"
#include "rows/loader.hpp"
#include "rules/exact.hpp"
#include "tests/records/tool_fixture.hpp"

namespace campotipo::records::test {
namespace {

// The records that the rows make, with what the others tell.
std::string filled(const Layout &layout, const std::string &csv,
                   std::size_t block_size = 1U << 18) {
  MemorySource source(csv.data(), csv.size(), "csv");
  CsvStream stream(source, block_size);
  std::vector<std::string> header;
  EXPECT_TRUE(stream.header(header));
  const Loader loader(layout, header, {}, "csv");
  Filler filler(layout);
  std::string file(layout.header.bytes, '\0');
  LoadedBlock block;
  while (stream.read(block.csv)) {
    loader.load(block);
    EXPECT_EQ("", block.fault);
    EXPECT_TRUE(block.lost.empty());
    filler.fill(block, file.size());
    file += block.records.view();
  }
  for (const Filler::Patch &patch : filler.finish()) {
    file.replace(static_cast<std::size_t>(patch.place), patch.bytes.size(), patch.bytes);
  }
  return file;
}

// "what kind.field record", in order.
std::vector<std::string> findings(const Layout &layout, const std::string &file,
                                  std::size_t block_size = 256U << 10) {
  MemorySource source(file.data(), file.size(), "file");
  RecordStream stream(source, layout, {}, block_size);
  Validator validator(layout, "file");
  std::vector<std::string> all;
  validator.each([&](const Finding &finding) {
    all.push_back(std::string(word(finding.what)) + " " + finding.label(layout) + " " +
                  std::to_string(finding.place.record));
  });
  RecordBlock block;
  while (stream.read(block)) validator.add(block);
  validator.finish();
  return all;
}

using Findings = std::vector<std::string>;

TEST(Exact, AddsAsOnPaper) {
  Random random(31);
  for (int round = 0; round < 2000; ++round) {
    const int decimals = random.between(0, 5);
    // Tens complement on paper: 80 digits, all of whose sums are taken modulo 10^80.
    std::string paper(80, '0');
    Exact sum;
    for (int i = random.between(1, 20); i > 0; --i) {
      std::string digits = random.digits(random.between(decimals + 1, 50));
      const bool minus = random.between(0, 2) == 0;
      std::string text = digits;
      if (decimals > 0) text.insert(text.size() - std::size_t(decimals), ".");
      Exact value;
      ASSERT_TRUE(Exact::read((minus ? "-" : "") + text, value));
      const bool away = random.between(0, 3) == 0;
      away ? sum.subtract(value) : sum.add(value);
      digits.insert(0, 80 - digits.size(), '0');
      int carry = minus != away ? 1 : 0;
      for (std::size_t at = 80; at-- > 0;) {
        const int digit = minus != away ? '9' - digits[at] : digits[at] - '0';
        const int both = paper[at] - '0' + digit + carry;
        paper[at] = static_cast<char>('0' + both % 10);
        carry = both / 10;
      }
    }
    const bool below = paper[0] == '9';
    std::string expected = paper;
    if (below) {
      int carry = 1;
      for (std::size_t at = 80; at-- > 0;) {
        const int both = '9' - paper[at] + carry;
        expected[at] = static_cast<char>('0' + both % 10);
        carry = both / 10;
      }
    }
    expected.erase(0, std::min(expected.find_first_not_of('0'), 79 - std::size_t(decimals)));
    expected.erase(
        0, std::min(expected.find_first_not_of('0'), expected.size() - std::size_t(decimals) - 1));
    if (decimals > 0) expected.insert(expected.size() - std::size_t(decimals), ".");
    EXPECT_EQ((below ? "-" : "") + expected, sum.text(decimals));
  }
  Exact none;
  for (const char *text : {"", "-", "1x", "1,5", " 1", "+1"})
    EXPECT_FALSE(Exact::read(text, none)) << text;
}

// A file of lots, with a header that tells what stands behind it.
constexpr const char *kLots =
    "name='f'\n"
    "[[record]]\nname='h'\nfirst=true\nwhen={t='0'}\nfield=[{name='t', type='BIN1'}, "
    "{name='versao', type='BIN2', value='7'}, {name='todos', type='BIN4', counts='d'}]\n"
    "[[record]]\nname='hl'\nwhen={t='1'}\nfield=[{name='t', type='BIN1'}, "
    "{name='lote', type='BIN2', sequence='file'}]\n"
    "[[record]]\nname='d'\nwhen={t='3'}\nfield=[{name='t', type='BIN1'}, "
    "{name='lote', type='BIN2', same='hl'}, {name='seq', type='BIN3', sequence='hl'}, "
    "{name='tipo', type='BIN1', value={ 1='one', 2='two' }}, {name='valor', type='QUANTIA', "
    "min='-50.00', max='1000000000.00'}, {name='nome', type='CODSTR', bytes=3, required=true}]\n"
    "[[record]]\nname='tl'\ncloses='hl'\nwhen={t='5'}\nfield=[{name='t', type='BIN1'}, "
    "{name='lote', type='BIN2', same='hl'}, {name='n', type='BIN3', counts='*'}, "
    "{name='n1', type='BIN2', counts='d', where={tipo='1'}}, "
    "{name='soma', type='QUANTIA', sums='d.valor'}, "
    "{name='soma2', type='QUANTIA', sums='d.valor', where={tipo='2'}}]\n"
    "[[record]]\nname='tf'\nlast=true\nwhen={t='9'}\nfield=[{name='t', type='BIN1'}, "
    "{name='lotes', type='BIN2', counts='hl'}, {name='n', type='BIN4', counts='*'}, "
    "{name='ends', type='BIN4', counts=['h', 'tl', 'tf']}, "
    "{name='soma', type='QUANTIA', sums='tl.soma'}]\n";

std::string money(std::int64_t cents) {
  const std::string digits = std::to_string(std::abs(cents) + 100);
  const std::size_t point = digits.size() - 2;
  return (cents < 0 ? "-" : "") + std::to_string(std::abs(cents) / 100) + "." +
         digits.substr(point);
}

struct Lots {
  std::string bare;   // rows of what nothing else tells
  std::string whole;  // rows of everything, as a dump writes them
};

Lots random_lots(Random &random) {
  Lots made;
  made.bare = "record,tipo,valor,nome\r\n";
  made.whole = "record,t,versao,todos,lote,seq,tipo,valor,nome,n,n1,soma,soma2,lotes,ends\r\n";
  std::string body;
  int records = 2;
  int details = 0;
  std::int64_t total = 0;
  const int lots = random.between(0, 4);
  for (int lot = 1; lot <= lots; ++lot) {
    const std::string number = std::to_string(lot);
    made.bare += lot == 1 ? "h,,,\r\nhl,,,\r\n" : "hl,,,\r\n";
    body += "hl,1,,," + number + ",,,,,,,,,,\r\n";
    const int count = random.between(0, 9);
    int ones = 0;
    std::int64_t sum = 0;
    std::int64_t twos = 0;
    for (int i = 1; i <= count; ++i) {
      const int tipo = random.between(1, 2);
      const std::int64_t cents = random.between<std::int64_t>(-5000, 99999999999);
      const std::string row = std::to_string(tipo) + "," + money(cents) + ",ab";
      made.bare += "d," + row + "\r\n";
      body += "d,3,,," + number + "," + std::to_string(i) + "," + row + ",,,,,,\r\n";
      ones += tipo == 1 ? 1 : 0;
      sum += cents;
      twos += tipo == 2 ? cents : 0;
    }
    made.bare += "tl,,,\r\n";
    body += "tl,5,,," + number + ",,,,," + std::to_string(count + 2) + "," + std::to_string(ones) +
            "," + money(sum) + "," + money(twos) + ",,\r\n";
    records += count + 2;
    details += count;
    total += sum;
  }
  if (lots == 0) made.bare += "h,,,\r\n";
  made.bare += "tf,,,\r\n";
  made.whole += "h,0,7," + std::to_string(details) + ",,,,,,,,,,,\r\n" + body + "tf,9,,,,,,,," +
                std::to_string(records) + ",," + money(total) + ",," + std::to_string(lots) + "," +
                std::to_string(lots + 2) + "\r\n";
  return made;
}

std::string dumped(const Layout &layout, const std::string &file) {
  MemorySource source(file.data(), file.size(), "file");
  RecordStream stream(source, layout);
  const auto writers = csv_writers(layout, layout.columns, false, "\r\n");
  Buffer out;
  out.append(csv_header(layout, layout.columns, false, "\r\n"));
  RecordBlock block;
  while (stream.read(block)) {
    for (const auto &record : block.records) {
      writers[std::size_t(record.type - layout.types.data())].run(block.record(record), out);
    }
  }
  return std::string(out.view());
}

TEST(Rules, WhatFollowsIsFilledAndHolds) {
  const Layout layout = parse_layout(kLots, "test");
  Random random(32);
  for (int round = 0; round < 100; ++round) {
    const Lots lots = random_lots(random);
    SCOPED_TRACE(lots.bare);
    const std::string file = filled(layout, lots.bare, round % 2 == 0 ? 64 : 1U << 18);
    ASSERT_EQ(lots.whole, dumped(layout, file));
    ASSERT_EQ(Findings(), findings(layout, file));
    ASSERT_EQ(file, filled(layout, lots.whole));
  }
}

// Each value that follows from others, made another: told once and where it stands.
TEST(Rules, AnyOtherValueIsTold) {
  const Layout layout = parse_layout(kLots, "test");
  Random random(33);
  int tried = 0;
  for (int round = 0; round < 60; ++round) {
    const std::string file = filled(layout, random_lots(random).bare);
    MemorySource source(file.data(), file.size(), "file");
    RecordStream stream(source, layout);
    RecordBlock block;
    ASSERT_TRUE(stream.read(block));
    const auto &record = block.records[random.between<std::size_t>(0, block.records.size() - 1)];
    for (const FieldRules &rules : record.type->rules) {
      if (!rules.follows() && !rules.constant) continue;
      const Field &field = record.type->fields[rules.field];
      std::string other = file;
      other[std::size_t(block.place(record)) + field.offset] ^= 1;
      const std::string what = rules.constant                       ? "constant"
                               : rules.counter != FieldRules::kNone ? "sequence"
                               : rules.same != FieldRules::kNone    ? "not_same"
                                                                    : "total";
      const std::string finding = what + " " + record.type->name + "." + field.name + " " +
                                  std::to_string(block.number(record));
      const Findings told = findings(layout, other, 40);
      EXPECT_EQ(1, std::count(told.begin(), told.end(), finding)) << finding;
      ++tried;
    }
  }
  EXPECT_GT(tried, 60);
}

struct Case {
  const char *rows;
  Findings expected;
};

TEST(Rules, ToldByTheirWords) {
  const Layout layout = parse_layout(kLots, "test");
  const std::string header = "record,tipo,valor,nome,versao,lote,seq,n,lotes,todos,soma\n";
  const Case cases[] = {
      {"h\nhl\nd,1,1.00,ab\ntl\ntf\n", {}},
      {"h\nhl\nd,3,1.00,ab\ntl\ntf\n", {"not_allowed d.tipo 3"}},
      {"h\nhl\nd,1,-50.01,ab\ntl\ntf\n", {"out_of_range d.valor 3"}},
      {"h\nhl\nd,1,1000000000.01,\ntl\ntf\n", {"out_of_range d.valor 3", "required d.nome 3"}},
      {"h\nhl\nd,1,1.00,ab,,5\ntl\ntf\n", {"not_same d.lote 3"}},
      {"h\nd,1,1.00,ab,,5\ntf\n", {"not_same d.lote 2"}},
      // One number left out is one finding; those behind it follow it.
      {"h\nhl\nd,1,1,ab\nd,1,1,ab,,,3\nd,1,1,ab\ntl\nhl\nd,1,1,ab\ntl\ntf\n", {"sequence d.seq 4"}},
      {"h\nhl\ntl\nhl,,,,,5\ntl\nhl\ntl\ntf\n", {"sequence hl.lote 4"}},
      {"hl\ntl\ntf\n", {"order hl.(record) 1"}},
      {"h\nhl\ntl\n", {"order tl.(record) 3"}},
      {"h\ntf\nhl\ntl\ntf\n", {"order tf.(record) 2"}},
      {"h\nh\ntf\n", {"order h.(record) 2"}},
      {"h\nhl\nd,1,1,ab\ntf\n", {"order hl.(record) 2"}},
      {"h\ntl,,,,,0\ntf\n", {"order tl.(record) 2", "not_same tl.lote 2"}},
      {"h\nhl\nhl\ntl\ntf\n", {"order hl.(record) 2"}},
      {"h,,,,,,,,,1\ntf\n", {"total h.todos 1"}},
      {"h\ntf,,,,,,,,,,1\n", {"total tf.soma 2"}},
  };
  for (const Case &c : cases) {
    SCOPED_TRACE(c.rows);
    std::string csv = header;
    for (std::string_view left = c.rows; !left.empty(); left.remove_prefix(left.find('\n') + 1)) {
      std::string row(left.substr(0, left.find('\n')));
      row.append(std::size_t(10 - std::count(row.begin(), row.end(), ',')), ',');
      csv += row + "\n";
    }
    Findings told = findings(layout, filled(layout, csv));
    Findings expected = c.expected;
    std::sort(told.begin(), told.end());
    std::sort(expected.begin(), expected.end());
    // A lot that is out of its place has totals that do not hold either; told or not.
    std::erase_if(told, [&](const std::string &each) {
      return each.starts_with("total") && !expected.empty() &&
             !expected.back().starts_with("total");
    });
    EXPECT_EQ(expected, told);
  }
}

// A value that the row gives and another is the constant: refused with both.
TEST(Rules, LoadRefusesAnotherConstant) {
  const Layout layout = parse_layout(kLots, "test");
  const std::string csv = "record,versao\nh,8\n";
  MemorySource source(csv.data(), csv.size(), "csv");
  CsvStream stream(source);
  std::vector<std::string> header;
  ASSERT_TRUE(stream.header(header));
  const Loader loader(layout, header, {}, "csv");
  LoadedBlock block;
  ASSERT_TRUE(stream.read(block.csv));
  loader.load(block);
  EXPECT_EQ("field versao: \"8\" is not the value that it always has, expected \"7\"", block.fault);
}

// A total that its field cannot hold is told, and filled by nothing.
TEST(Rules, ATotalThatDoesNotFit) {
  const Layout layout = parse_layout(
      "name='f'\n[[record]]\nname='d'\nwhen={t='1'}\nfield=[{name='t', type='BIN1'}, "
      "{name='v', type='BIN8', decimals=2}]\n[[record]]\nname='z'\nlast=true\nwhen={t='2'}\nfield=["
      "{name='t', type='BIN1'}, {name='v', type='BIN8', decimals=2, sums='d.v'}]\n",
      "test");
  const std::string most = "184467440737095516.15";
  EXPECT_EQ(Findings(), findings(layout, filled(layout, "record,v\nd," + most + "\nz,\n")));
  const std::string rows = "record,v\nd," + most + "\nd,0.01\nz,";
  EXPECT_EQ(Findings({"total z.v 3"}), findings(layout, filled(layout, rows + "0\n")));
  try {
    filled(layout, rows + "\n");
    ADD_FAILURE() << "was stored";
  } catch (const Error &error) {
    EXPECT_NE(nullptr, strstr(error.what(), "record 3: field v: 184467440737095516.16"))
        << error.what();
  }
}

TEST(Rules, ACheckByAnotherField) {
  const Layout layout = parse_layout(
      "name='f'\n[[field]]\nname='tipo'\ntype='BIN1'\n[[field]]\nname='doc'\ntype='CODSTR'\nbytes="
      "15\n"
      "check={ by='tipo', 1='CPF', 2='CNPJ' }\n",
      "test");
  const auto told = [&](const std::string &row) {
    return findings(layout, filled(layout, "tipo,doc\n" + row + "\n"));
  };
  const Findings wrong = {"check_digit doc 1"};
  EXPECT_EQ(Findings(), told("1,12345678909"));
  EXPECT_EQ(Findings(), told("1,000012345678909"));
  EXPECT_EQ(wrong, told("1,12345678900"));
  EXPECT_EQ(wrong, told("1,11222333000181"));
  EXPECT_EQ(Findings(), told("2,00000000000191"));
  EXPECT_EQ(Findings(), told("2,000000000000191"));
  EXPECT_EQ(wrong, told("2,12345678909"));
  EXPECT_EQ(Findings(), told("3,12345678900"));
}

// What is counted is told by another field: the code of a kind, or a word for all.
TEST(Rules, CountsByACode) {
  const Layout layout = parse_layout(
      "name='f'\n[[record]]\nname='a'\nwhen={t='50'}\nfield=[{name='t', type='BIN1'}]\n"
      "[[record]]\nname='b'\nwhen={t='60', s='1'}\nfield=[{name='t', type='BIN1'}, "
      "{name='s', type='BIN1'}]\n[[record]]\nname='c'\nwhen={t='60'}\nfield=[{name='t', "
      "type='BIN1'}, "
      "{name='x', type='BIN1'}]\n[[record]]\nname='z'\nwhen={t='90'}\nfield=[{name='t', "
      "type='BIN1'}, "
      "{name='code', type='CODSTR', bytes=2}, {name='n', type='BIN1', counts={ by='code', 99='*' "
      "}}, "
      "{name='own', type='BIN1', counts='z'}]\n",
      "test");
  const std::string rows =
      "record,x,code,n,own\na,,,,\na,,,,\na,,,,\nb,,,,\nc,7,,,\nz,,50,,\nz,,60,,\nz,,99,,\n";
  const std::string file = filled(layout, rows);
  EXPECT_EQ("z,90,,,50,3,3\r\nz,90,,,60,2,3\r\nz,90,,,99,8,3\r\n",
            dumped(layout, file).substr(dumped(layout, file).find("z,90")));
  EXPECT_EQ(Findings(), findings(layout, file));
  std::string other = file;
  other[other.size() - 2] = 9;
  EXPECT_EQ(Findings({"total z.n 8"}), findings(layout, other));
}

// Records of no kind count, and may have taken numbers of a sequence.
TEST(Rules, RecordsOfNoKindCount) {
  const Layout layout = parse_layout(
      "name='f'\nline_end='lf'\n[[record]]\nname='d'\nwhen={t='D'}\nfield=["
      "{name='t', type='CODSTR', bytes=1}, {name='s', type='BIN1', sequence='file'}]\n"
      "[[record]]\nname='z'\nlast=true\nwhen={t='Z'}\nfield=[{name='t', type='CODSTR', bytes=1}, "
      "{name='n', type='BIN1', counts='*'}]\n",
      "test");
  EXPECT_EQ(Findings({"unknown_kind (record) 2"}), findings(layout, "D\1\nXX\nD\2\nZ\4\n"));
  EXPECT_EQ(Findings({"unknown_kind (record) 2"}), findings(layout, "D\1\nXX\nD\3\nZ\4\n"));
  EXPECT_EQ(Findings({"unknown_kind (record) 2", "sequence d.s 3"}),
            findings(layout, "D\1\nXX\nD\4\nZ\4\n"));
  EXPECT_EQ(Findings({"unknown_kind (record) 2", "total z.n 4"}),
            findings(layout, "D\1\nXX\nD\2\nZ\3\n"));
}

struct Wrong {
  const char *field;
  const char *what;
};

TEST(Rules, FaultsOfALayoutTellTheirPlace) {
  const Wrong wrongs[] = {
      {"{name='x', type='BIN1', at=3}", "at: the field begins at 2, expected 3"},
      {"{name='x', type='BIN1', value='900'}", "value: expected a value of \"x\""},
      {"{name='x', type='BIN1', value=3}", "value: expected a text, some of them"},
      {"{name='x', type='BIN1', value=[]}", "value: expected at least one value"},
      {"{name='x', type='BIN1', value={1=2}}", "1: expected a text"},
      {"{name='x', type='BIN1', min=true}", "min: expected a text or a whole number"},
      {"{name='x', type='BIN1', max='x'}", "max: expected a value of"},
      {"{name='x', type='BIN1', required=1}", "required: expected true or false"},
      {"{name='x', type='BIN1', sequence='q'}", "sequence: expected the name of a record"},
      {"{name='x', type='CODSTR', bytes=2, sequence='file'}", "sequence: expected it at a whole"},
      {"{name='x', type='BIN1', same='k'}", ""},
      {"{name='y', type='BIN1', same='o'}", "a record that has a field \"y\""},
      {"{name='x', type='BIN1', counts='q'}", "counts: expected \"*\", a record"},
      {"{name='x', type='BIN1', counts=[]}", "counts: expected \"*\", a record"},
      {"{name='x', type='BIN2', decimals=1, counts='*'}", "counts: expected it at a whole number"},
      {"{name='x', type='BIN1', counts='*', sums='o.x'}", "sums: expected no counts beside it"},
      {"{name='x', type='BIN1', sums='o'}", "sums: expected a field of a record"},
      {"{name='x', type='BIN1', sums='o.q'}", "\"o\" has no field \"q\""},
      {"{name='x', type='BIN1', sums='o.c'}", "sums: expected a number of 0 decimals"},
      {"{name='x', type='BIN1', sums='o.m'}", "sums: expected a number of 0 decimals"},
      {"{name='x', type='BIN1', where={x='1'}}", "where: expected counts or sums beside it"},
      {"{name='x', type='BIN1', counts='o', where={q='1'}}", "has no field of this name"},
      {"{name='x', type='BIN1', counts='*', where={q='1'}}", "fields that some record has"},
      {"{name='x', type='BIN1', counts={by='q'}}", "by: expected a field of \"k\""},
      {"{name='x', type='BIN1', counts={5='*'}}", "expected \"by\"?"},
      {"{name='x', type='BIN1', counts='*', value='3'}", "exclude one another"},
      {"{name='x', type='BIN1', value='1', sequence='file'}", "exclude one another"},
      {"{name='x', type='BIN1', check={by='q', 1='CPF'}}", "by: expected a field of \"k\""},
      {"{name='x', type='BIN1', check={by='t', 1='CPX'}}", "1: expected one of \"CPF\""},
      {"{name='x', type='BIN1', check={by='t'}}", "expected a check, as in"},
      {"{name='x', type='DATAC', check={by='t', 1='CPF'}}", "a DATAC has no check digits"},
      {"{type='fill', bytes=1, required=true}", "nothing here is called \"required\""},
  };
  for (const Wrong &wrong : wrongs) {
    const std::string toml =
        "name='f'\n[[record]]\nname='k'\nwhen={t='1'}\nfield=[{name='t', type='BIN1'}, " +
        std::string(wrong.field) +
        "]\n[[record]]\nname='o'\nfield=[{name='x', type='BIN1'}, {name='c', type='CODSTR', "
        "bytes=1}, "
        "{name='m', type='QUANTIA'}]\n";
    SCOPED_TRACE(wrong.field);
    try {
      parse_layout(toml, "x.toml");
      EXPECT_STREQ("", wrong.what) << "was accepted";
    } catch (const Error &error) {
      EXPECT_NE(nullptr, strstr(error.what(), wrong.what)) << error.what();
      EXPECT_STRNE("", wrong.what) << error.what();
      EXPECT_EQ(5U, error.line);
    }
  }
}

}  // namespace
}  // namespace campotipo::records::test
