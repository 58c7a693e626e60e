// Field kinds: text to field and back, what is lost on the way, and what is not well formed.

#include <gtest/gtest.h>

#include "kinds/checks.hpp"
#include "tests/records/tool_fixture.hpp"
#include "text/ascii.hpp"

namespace campotipo::records::test {
namespace {

Layout one_field(const std::string &keys) {
  return parse_layout("name = \"r\"\n[[field]]\nname = \"f\"\n" + keys, "test");
}

TEST(Fields, EveryKindGivesItsTextsAndBytesBack) {
  const Layout layout = parse_layout(layout_of_every_type(), "test");
  Random random(1);
  for (const Field &field : layout.types[0].fields) {
    SCOPED_TRACE(field.name);
    for (int i = 0; i < 300; ++i) {
      std::vector<unsigned char> record(layout.types[0].bytes);
      const std::string text = random_text(field, random);
      const char *lost = take(field, text, record.data());
      ASSERT_EQ(nullptr, lost) << text << ": " << lost;
      const char *fault = field_fault(field, record.data());
      ASSERT_EQ(nullptr, fault) << text << ": " << fault;
      // No text is no number: the field then says 0, or zeros.
      if (!text.empty()) {
        ASSERT_EQ(text, field_text(field, record.data()));
      }
    }
  }
}

// Whatever the bytes are: what is called well formed comes back from its text, and a text never
// takes more room than the kind asks for.
TEST(Fields, WhatIsWellFormedComesBack) {
  const Layout layout = parse_layout(layout_of_every_type(), "test");
  Random random(2);
  std::size_t good = 0;
  for (int i = 0; i < 4000; ++i) {
    std::vector<unsigned char> record(layout.types[0].bytes);
    for (auto &byte : record) byte = static_cast<unsigned char>(random.word_of_any_size());
    for (const Field &field : layout.types[0].fields) {
      if (is_bit_area(*field.type) || field_fault(field, record.data()) != nullptr) continue;
      std::vector<unsigned char> again(record.size());
      ASSERT_EQ(nullptr, take(field, field_text(field, record.data()), again.data())) << field.name;
      ASSERT_TRUE(std::equal(again.begin() + long(field.offset),
                             again.begin() + long(field.offset + field.bytes),
                             record.begin() + long(field.offset)))
          << field.name << " " << ascii::hex(record.data() + field.offset, field.bytes);
      ++good;
    }
  }
  EXPECT_GT(good, 4000U);
}

// The place on a scale, the library's order and its test for content agree with each other.
TEST(Fields, ScaleOrderAndContentAgree) {
  const Layout layout = parse_layout(layout_of_every_type(), "test");
  Random random(3);
  std::size_t apart = 0;
  for (const Field &field : layout.types[0].fields) {
    SCOPED_TRACE(field.name);
    std::vector<unsigned char> nothing(layout.types[0].bytes);
    take(field, "", nothing.data());
    // Digits that cannot be absent say zeros, which is something.
    const bool can_be_absent = (field.type->keys & kEmpty) == 0 || !field.params.empties.empty();
    std::vector<std::vector<unsigned char>> records(60, nothing);
    for (auto &record : records) take(field, random_text(field, random), record.data());
    const auto at = [&](const auto &record) { return record.data() + field.offset; };
    const auto compare = [&](const auto &a, const auto &b) {
      return field.type->compare(at(a), at(b), field.params);
    };
    const bool nullable = (field.type->traits & kNullable) != 0;
    EXPECT_EQ(can_be_absent, field_empty(field, nothing.data()));
    for (const auto &a : records) {
      if (field_empty(field, a.data())) {
        EXPECT_EQ(0, compare(a, nothing)) << field_text(field, a.data());
      }
      for (const auto &b : records) {
        const int order = compare(a, b);
        ASSERT_EQ(order > 0, compare(b, a) < 0);
        if (field.type->measure == nullptr) continue;
        // What is absent has no place.
        if (nullable && (field_empty(field, a.data()) || field_empty(field, b.data()))) continue;
        const double way =
            field.type->measure(at(a), field.params) - field.type->measure(at(b), field.params);
        // Numbers beyond 53 bits may fall together.
        ASSERT_TRUE(way == 0 || (way > 0) == (order > 0)) << way << " " << order;
        apart += way != 0;
      }
    }
  }
  EXPECT_GT(apart, 10000U);
}

struct Loss {
  const char *keys, *text, *lost, *stored;
};

TEST(Fields, WhatIsLostIsTold) {
  const Loss losses[] = {
      {"type = 'CODALF05'", "ABCDEF", "too long", "ABCDE"},
      {"type = 'CODALF05'\noptions = 'cut_left'", "ABCDEF", "too long", "BCDEF"},
      {"type = 'CODALF05'", "A~B", "outside the alphabet", "AB"},
      {"type = 'CODALF05'", "ABCDE~", "outside the alphabet", "ABCDE"},
      {"type = 'CODALF05'", "ab", "small letters", "AB"},
      {"type = 'CODALF05'\nfold = true", "ab", nullptr, "AB"},
      {"type = 'CODALF05'", "A ", "blanks at the end", "A"},
      {"type = 'CODALF05'\nfold = true", "a ", nullptr, "A"},
      {"type = 'CODALF05'\noptions = 'zeros'", "7", nullptr, "00007"},
      {"type = 'CODALFA'\npositions = 2", "ABC", "too long", "AB"},
      {"type = 'CODSTR'\nbytes = 3", "abcd", "too long", "abc"},
      {"type = 'CODSTR'\nbytes = 3", "\xC3\xA7\xC3\xA3o", nullptr, "\xC3\xA7\xC3\xA3o"},
      {"type = 'CODSTR'\nbytes = 3", "\xE2\x82\xAC", "character set", "?"},
      {"type = 'CODSTR'\nbytes = 3\nencoding = 'ISO-8859-15'", "\xE2\x82\xAC", nullptr,
       "\xE2\x82\xAC"},
      {"type = 'CODSTR'\nbytes = 3\nencoding = 'UTF-8'", "\xC3", "character set", "\xEF\xBF\xBD"},
      {"type = 'BSTR21'", "12a", "no digits", ""},
      {"type = 'BSTR21'", "1234567890123456789012", "more digits", ""},
      {"type = 'BIN1'", "255", nullptr, "255"},
      {"type = 'BIN1'", "256", "too large", "0"},
      {"type = 'BIN1'", "0007", nullptr, "7"},
      {"type = 'BIN1'", "-1", "below zero", "0"},
      {"type = 'BIN1'", "x", "is no number", "0"},
      {"type = 'BIN1'", " 1", "is no number", "0"},
      {"type = 'BIN4'", "99999999999", "too large", "0"},
      {"type = 'BIN2'\ndecimals = 2", "1.239", "more decimals", "1.23"},
      {"type = 'BIN2'\ndecimals = 2", "1.2300", nullptr, "1.23"},
      {"type = 'BIN2'\ndecimals = 2", "1,50", "is no number", "0.00"},
      {"type = 'BIN4'\ndecimals = 2", "1e5", "is no number", "0.00"},
      {"type = 'BINQ9'\ndecimals = 2", "1.234,50", "is no number", "0.00"},
      {"type = 'BIN2'\ndecimals = 2", "-1.239", "below zero", "0.00"},
      {"type = 'BINQ9'", "999999999999999999999", nullptr, "999999999999999999999"},
      {"type = 'BINQ9'", "1000000000000000000000", "too large", "0"},
      {"type = 'PORC2'", "12.5%", nullptr, "12.50"},
      {"type = 'PORC2'", "%", "is no number", "0.00"},
      {"type = 'PORC0'", "256", "too large", "0"},
      {"type = 'QUANTIA'", "-0.005", "more decimals", "0.00"},
      {"type = 'QUANTIA'", "92233720368547758.08", "too large", "0.00"},
      {"type = 'QUANTIA'", "-92233720368547758.08", nullptr, "-92233720368547758.08"},
      {"type = 'QUANTIA'", "-92233720368547758.09", "too large", "0.00"},
      {"type = 'QUANTIA'", "1234,56", "is no number", "0.00"},
      {"type = 'QUANTIA'", "-", "is no number", "0.00"},
      {"type = 'PARCELA'", "1234.56789", "more decimals", "1234.5678"},
      {"type = 'DATAC'", "31/02/2024", "does not exist", ""},
      {"type = 'DATAC'\nencoding = 'packed'", "31/02/2024", "does not exist", ""},
      {"type = 'DATAC'\nencoding = 'decimal'", "31/02/2024", "does not exist", ""},
      {"type = 'DATAC'\nencoding = 'decimal'", "99/99/99", nullptr, "99/99/1999"},
      {"type = 'DATAC'", "31-12-2024", "is no date", ""},
      {"type = 'DATAC'", "01/01/5000", "year", ""},
      {"type = 'DATAC'\nencoding = 'decimal'", "01/01/1950", "year", ""},
      {"type = 'DATAC'\nencoding = 'packed'", "22/22/2222", nullptr, "22/22/2222"},
      {"type = 'DATAC'\nencoding = 'packed'", "31/12/99", nullptr, "31/12/1999"},
      {"type = 'HORAC'", "24:00", "does not exist", "00:00"},
      {"type = 'HORAC'\nseparator = 'h'", "9h05", nullptr, "09h05"},
      {"type = 'HHMMSS'", "12:00", "is no time", "00:00:00"},
      {"type = 'ZGUID'", "{00112233-4455-6677-8899-AABBCCDDEEFF}", nullptr,
       "00112233-4455-6677-8899-aabbccddeeff"},
      {"type = 'ZGUID'", "0011", "is no GUID", "00000000-0000-0000-0000-000000000000"},
      {"type = 'ZBTFIELD'\nbits = [3]", "8", "too large", "0"},
      {"type = 'TEXT'\nbytes = 3", "abcd", "too long", "abc"},
      {"type = 'TEXT'\nbytes = 3", "ab   ", nullptr, "ab"},
      {"type = 'TEXT'\nbytes = 3", "\xE2\x82\xAC", "character set", "?"},
      {"type = 'TEXT'\nbytes = 3\nencoding = 'UTF-8'", "ab\xC3\xA7", "too long", "ab"},
      {"type = 'TEXT'\nbytes = 3\npad = '0'", "7", nullptr, "007"},
      {"type = 'TEXT'\nbytes = 3\nempty = '0'", "000", "no value", ""},
      {"type = 'DIGITS'\ndigits = 3", "7", nullptr, "007"},
      {"type = 'DIGITS'\ndigits = 3", "", nullptr, "000"},
      {"type = 'DIGITS'\ndigits = 3", "7a", "no digits", "000"},
      {"type = 'DIGITS'\ndigits = 3", "1234", "more digits", "000"},
      {"type = 'DIGITS'\ndigits = 3\nempty = '0'", "0", "no value", ""},
      {"type = 'NUM'\ndigits = 3", "999", nullptr, "999"},
      {"type = 'NUM'\ndigits = 3", "1000", "too large", "0"},
      {"type = 'NUM'\ndigits = 3", "0000999", nullptr, "999"},
      {"type = 'NUM'\ndigits = 3", "-1", "below zero", "0"},
      {"type = 'NUM'\ndigits = 3", "-0", nullptr, "0"},
      {"type = 'NUM'\ndigits = 3", "1e2", "is no number", "0"},
      {"type = 'NUM'\ndigits = 3\ndecimals = 2", "1.239", "more decimals", "1.23"},
      {"type = 'NUM'\ndigits = 3\ndecimals = 2", "1.2300", nullptr, "1.23"},
      {"type = 'NUM'\ndigits = 3\ndecimals = 2", ".5", nullptr, "0.50"},
      {"type = 'NUM'\ndigits = 3\ndecimals = 2", "10", "too large", "0.00"},
      {"type = 'NUM'\ndigits = 3\ndecimals = 2", "-0.001", "more decimals", "0.00"},
      {"type = 'NUM'\ndigits = 3\nempty = '9'", "999", "no value", ""},
      {"type = 'NUM'\ndigits = 3\nempty = '9'", "1000", "too large", ""},
      {"type = 'DATE'\nstored = 'DDMMAAAA'", "29/02/2100", "does not exist", ""},
      {"type = 'DATE'\nstored = 'DDMMAAAA'", "31/12/24", nullptr, "31/12/2024"},
      {"type = 'DATE'\nstored = 'DDMMAAAA'", "2024-12-31", "is no date", ""},
      {"type = 'DATE'\nstored = 'AAAAMMDD'\nempty = '99991231'", "31/12/9999", "no value", ""},
      {"type = 'TIME'\nstored = 'HHMM'", "9:05", nullptr, "09:05"},
      {"type = 'TIME'\nstored = 'HHMM'", "9:05:00", "is no time", ""},
      {"type = 'TIME'\nstored = 'HHMMSS'", "23:59:60", "does not exist", ""},
  };
  for (const Loss &loss : losses) {
    SCOPED_TRACE(std::string(loss.keys) + " " + loss.text);
    const Layout layout = one_field(loss.keys);
    const Field &field = layout.types[0].fields[0];
    std::vector<unsigned char> record(layout.types[0].bytes);
    const char *lost = take(field, loss.text, record.data());
    EXPECT_EQ(loss.lost == nullptr, lost == nullptr) << lost;
    if (lost != nullptr && loss.lost != nullptr) {
      EXPECT_NE(nullptr, strstr(lost, loss.lost)) << lost;
    }
    EXPECT_EQ(loss.stored, field_text(field, record.data()));
  }
}

// A number without sign of percent and zeros that say nothing.
std::string significant(std::string text) {
  if (text.ends_with('%')) text.pop_back();
  const bool negative = text.starts_with('-');
  text.erase(0, std::min(text.find_first_not_of('0', negative ? 1 : 0), text.size()));
  if (text.find('.') != std::string::npos) text.erase(text.find_last_not_of('0') + 1);
  if (text.ends_with('.')) text.pop_back();
  return (negative && !text.empty() ? "-" : "") + text;
}

// What no field can say is never stored as something else: neither the beginning of a text, nor its
// lowest digits.
TEST(Fields, StoreAllOfATextOrSayWhatIsMissing) {
  const Layout layout = parse_layout(layout_of_every_type(), "test");
  Random random(4);
  std::size_t whole = 0;
  std::size_t lost_count = 0;
  for (const Field &field : layout.types[0].fields) {
    const std::string_view family = field.type->family;
    if (family == "packed code" || family == "string" || family == "text") continue;
    SCOPED_TRACE(field.name);
    std::vector<unsigned char> empty(layout.types[0].bytes);
    take(field, "", empty.data());
    for (int i = 0; i < 600; ++i) {
      std::string text = random_text(field, random);
      for (int edit = random.between(0, 2); edit > 0; --edit) {
        const auto at = random.between<std::size_t>(0, text.size());
        text.insert(at, random_characters(random, "0123459-+.,:/e {%", 4));
      }
      std::vector<unsigned char> record(layout.types[0].bytes);
      const char *lost = take(field, text, record.data());
      if (lost == nullptr) {
        // Whatever it left out, a second reading stores the same: nothing was guessed.
        std::vector<unsigned char> again(layout.types[0].bytes);
        ASSERT_EQ(nullptr, take(field, field_text(field, record.data()), again.data())) << text;
        ASSERT_EQ(record, again) << text;
        if ((field.type->traits & kRight) != 0) {
          ASSERT_EQ(significant(text), significant(field_text(field, record.data())));
        }
        ++whole;
      } else if (std::string_view(lost) == "more decimals than the field keeps") {
        const std::string kept = significant(field_text(field, record.data()));
        ASSERT_TRUE(significant(text).starts_with(kept)) << text << " " << kept;
      } else {
        ASSERT_EQ(empty, record) << text << ": " << lost;
        ++lost_count;
      }
    }
  }
  EXPECT_GT(whole, 5000U);
  EXPECT_GT(lost_count, 5000U);
}

struct Fault {
  const char *keys, *bytes, *what;
};

TEST(Fields, WhatIsNotWellFormedIsFound) {
  const Fault faults[] = {
      {"type = 'CODALF05'", "30D98300", nullptr},
      {"type = 'CODALF05'", "30D98303", "invalid packed code"},
      {"type = 'CODALF05'", "30003000", "invalid packed code"},
      {"type = 'CODALF05'", "FC000000", "invalid packed code"},
      {"type = 'CODALF05'", "30100000", "invalid packed code"},
      {"type = 'CODALFA'\npositions = 4", "30D041", "does not come back"},
      {"type = 'CODSTR'\nbytes = 3", "410042", "behind the end"},
      {"type = 'CODSTR'\nbytes = 3\nencoding = 'UTF-8'", "41FF42", "no character"},
      {"type = 'BSTR21'", "067B0000000000000000", nullptr},
      {"type = 'BSTR21'", "167B0000000000000000", "invalid digit string"},
      {"type = 'BSTR21'", "027B0000000000000000", "invalid digit string"},
      {"type = 'BSTR21'", "15FFFFFFFFFFFFFFFF00", "invalid digit string"},
      {"type = 'BINQ9'", "FFFFE7890423C78A63", nullptr},
      {"type = 'BINQ9'", "0000E8890423C78A00", "past a limb"},
      {"type = 'BINQ9'", "000000000000000064", "past a limb"},
      {"type = 'BINQ21'", "000000000000000000000000000000000010A5D4E8", "past a limb"},
      {"type = 'DATAC'", "B8BF04", nullptr},
      {"type = 'DATAC'", "40420F", "past those of a date"},
      {"type = 'DATAC'\nencoding = 'packed'", "B8BF04", "other encoding"},
      {"type = 'DATAC'\nencoding = 'decimal'", "9FD18F", "other encoding"},
      {"type = 'DATAC'", "5FD08F", "does not exist"},
      {"type = 'DATAC'", "0200A0", nullptr},
      {"type = 'DATAC'", "0C00A0", "bits that no date has"},
      {"type = 'HORAC'", "9B05", nullptr},
      {"type = 'HORAC'", "6009", "does not exist"},
      {"type = 'HHMMSS'", "18003C", "does not exist"},
      {"type = 'ZBTFIELD'\nbits = [3, 2]", "20", "spare bits"},
  };
  for (const Fault &fault : faults) {
    SCOPED_TRACE(std::string(fault.keys) + " " + fault.bytes);
    const Layout layout = one_field(fault.keys);
    std::vector<unsigned char> record;
    for (const char *at = fault.bytes; *at != '\0'; at += 2) {
      record.push_back(static_cast<unsigned char>(std::stoi(std::string(at, 2), nullptr, 16)));
    }
    ASSERT_EQ(layout.types[0].bytes, record.size());
    const char *what = field_fault(layout.types[0].fields.back(), record.data());
    EXPECT_EQ(fault.what == nullptr, what == nullptr) << what;
    if (what != nullptr && fault.what != nullptr) {
      EXPECT_NE(nullptr, strstr(what, fault.what)) << what;
    }
  }
}

TEST(Fields, NamedChecksLookAtTheDigits) {
  struct Case {
    const char *check, *text;
    bool good;
  };
  const Case cases[] = {{"CPF", "12345678909", true},      {"CPF", "123.456.789-09", true},
                        {"CPF", "12345678908", false},     {"CPF", "", true},
                        {"CPF", "00000000000", true},      {"CNPJ", "11.222.333/0001-81", true},
                        {"CNPJ", "11222333000180", false}, {"modulo11", "12343", true},
                        {"modulo11", "12344", false}};
  for (const Case &c : cases) {
    ASSERT_NE(nullptr, named_check(c.check));
    EXPECT_EQ(c.good, holds(*named_check(c.check), c.text)) << c.check << " " << c.text;
  }
}

}  // namespace
}  // namespace campotipo::records::test
