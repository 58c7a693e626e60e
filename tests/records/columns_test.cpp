// Columns of fields that are stored as characters, by every set of loops that the processor runs,
// held against rows: wherever a field lies, and with nothing readable around the records.

#include <gtest/gtest.h>

#include <chrono>

#include "columns/kernels.hpp"
#include "tests/records/tool_fixture.hpp"
#include "tests/util/guarded_buffer.hpp"

namespace campotipo::records::test {
namespace {

__extension__ typedef __int128 I128;

std::string decimal_text(I128 value, int scale) {
  std::string digits;
  const bool negative = value < 0;
  for (I128 left = negative ? -value : value; left != 0; left /= 10) {
    digits.insert(digits.begin(), static_cast<char>('0' + static_cast<int>(left % 10)));
  }
  while (int(digits.size()) <= scale) digits.insert(0, "0");
  if (scale > 0) digits.insert(digits.size() - std::size_t(scale), ".");
  return (negative ? "-" : "") + digits;
}

std::string date_text(std::int32_t days, const std::string &form) {
  const std::chrono::year_month_day date{std::chrono::sys_days(std::chrono::days(days))};
  char text[40];
  const int day = int(unsigned(date.day()));
  const int month = int(unsigned(date.month()));
  if (form == "DD/MM/AAAA") {
    std::snprintf(text, sizeof text, "%02d/%02d/%04d", day, month, int(date.year()));
  } else {
    EXPECT_EQ("AAAA-MM-DD", form);
    std::snprintf(text, sizeof text, "%04d-%02d-%02d", int(date.year()), month, day);
  }
  return text;
}

std::string time_text(std::int64_t seconds) {
  char text[40];
  std::snprintf(text, sizeof text, "%02d:%02d:%02d", int(seconds / 3600), int(seconds / 60 % 60),
                int(seconds % 60));
  return text;
}

// A column of some records, as the loops write it.
struct Decoded {
  Decoded(const Kernels &kernels, const Field &of, const std::vector<const unsigned char *> &at,
          std::size_t record_bytes)
      : field(&of), type(column_type(of, Wide::kString, Times::kSeconds)) {
    const std::size_t room = of.type->room(of.params);
    values.resize(16 * at.size());
    states.resize(at.size());
    ends.resize(at.size());
    bytes.resize(at.size() * room);
    const DecodeInput in = {at.data(), at.size(), of.offset, of.type, &of.params, record_bytes};
    const DecodeOutput out = {values.data(), ends.data(), bytes.data(), 0, states.data()};
    any = kernels.decode(*of.type, type)(in, out);
  }

  template <class Value>
  Value value(std::size_t i) const {
    Value read;
    std::memcpy(&read, values.data() + i * sizeof read, sizeof read);
    return read;
  }

  std::string text(std::size_t i) const {
    switch (type.physical) {
      case Physical::kInt32:
        return decimal_text(value<std::int32_t>(i), 0);
      case Physical::kInt64:
        return decimal_text(value<std::int64_t>(i), 0);
      case Physical::kDecimal128:
        return decimal_text(value<I128>(i), type.scale);
      case Physical::kDate32:
        return date_text(value<std::int32_t>(i), field->params.pattern->text);
      case Physical::kTime32:
        return time_text(value<std::int32_t>(i));
      case Physical::kUtf8: {
        const std::size_t begin = i == 0 ? 0 : std::size_t(ends[i - 1]);
        return std::string(bytes.data() + begin, std::size_t(ends[i]) - begin);
      }
      default:
        ADD_FAILURE() << "another type of column";
        return "";
    }
  }

  const Field *field;
  ColumnType type;
  std::vector<char> values;
  std::vector<std::uint8_t> states;
  std::vector<std::int32_t> ends;
  std::vector<char> bytes;
  bool any = false;
};

// Some values as a user stores them, some with a byte changed, some runs of one byte.
std::vector<unsigned char> random_record(const Layout &layout, Random &random) {
  const RecordType &kind = layout.types[0];
  std::vector<unsigned char> record(kind.bytes);
  for (const Field &field : kind.fields) {
    // A text that stands for no value is refused, and leaves none.
    take(field, random_text(field, random), record.data());
    unsigned char *bytes = record.data() + field.offset;
    const int choice = random.between(0, 9);
    if (choice == 0) std::memset(bytes, " 0\0 9*"[random.between(0, 5)], field.bytes);
    if (choice == 1) {
      const auto at = random.between<std::size_t>(0, field.bytes - 1);
      bytes[at] = static_cast<unsigned char>(" 0/:A-+\xE9\0}"[random.between(0, 9)]);
    }
  }
  return record;
}

void expect_as_rows(const Field &field, const Decoded &column,
                    const std::vector<const unsigned char *> &records) {
  bool any = false;
  for (std::size_t i = 0; i < records.size(); ++i) {
    const auto state = static_cast<ValueState>(column.states[i]);
    const std::string text = field_text(field, records[i]);
    const std::string stored(reinterpret_cast<const char *>(records[i] + field.offset),
                             field.bytes);
    const bool fault = field.type->fault(records[i] + field.offset, field.params) != nullptr;
    const bool null = !fault && text.empty() && (field.type->traits & kNullable) != 0;
    any = any || fault || null;
    ASSERT_EQ(fault  ? ValueState::kFault
              : null ? ValueState::kNull
                     : ValueState::kValue,
              state)
        << field.name << " \"" << stored << "\"";
    if (!fault && !null) {
      ASSERT_EQ(text, column.text(i)) << field.name;
    }
  }
  ASSERT_EQ(any, column.any);
}

void compare_with_rows(const Layout &layout, std::size_t rounds, Random &random) {
  const std::size_t size = layout.types[0].bytes;
  const Kernels *plain = all_kernels()[0];
  for (std::size_t round = 0; round < rounds; ++round) {
    const auto count = random.between<std::size_t>(1, 6);
    campotipo::test::GuardedBuffer guarded(count * size);
    unsigned char *place =
        round % 2 == 0 ? guarded.at_start(count * size) : guarded.at_end(count * size);
    std::vector<const unsigned char *> records;
    for (std::size_t i = 0; i < count; ++i) {
      const std::vector<unsigned char> record = random_record(layout, random);
      std::copy(record.begin(), record.end(), place + i * size);
      records.push_back(place + i * size);
    }
    for (const Field &field : layout.types[0].fields) {
      for (const Kernels *kernels : all_kernels()) {
        SCOPED_TRACE(kernels->name);
        ASSERT_NO_FATAL_FAILURE(
            expect_as_rows(field, Decoded(*kernels, field, records, size), records));
      }
      // A caller may not tell how long the records are.
      ASSERT_NO_FATAL_FAILURE(expect_as_rows(field, Decoded(*plain, field, records, 0), records));
    }
  }
}

std::string field_toml(const std::string &name, const std::string &keys) {
  return "[[field]]\nname = \"" + name + "\"\n" + keys + "\n";
}

TEST(Columns, NumbersOfEveryShapeAtAnyPlace) {
  Random random(21);
  const std::string more[] = {"",
                              "sign = 'leading'",
                              "sign = 'trailing'\nempty = ' '",
                              "sign = 'overpunch'",
                              "pad = ' '\nempty = [' ', '9']",
                              "empty = '0'"};
  for (int digits = 1; digits <= 38; ++digits) {
    for (const std::string &keys : more) {
      std::string toml = "name = 'r'\n";
      const int before = random.between(0, 40);
      if (before > 0) toml += field_toml("a", "type = 'TEXT'\nbytes = " + std::to_string(before));
      toml += field_toml("n", "type = 'NUM'\ndigits = " + std::to_string(digits) + "\ndecimals = " +
                                  std::to_string(random.between(0, 1) * digits / 2) + "\n" + keys);
      SCOPED_TRACE(toml);
      ASSERT_NO_FATAL_FAILURE(compare_with_rows(parse_layout(toml, "test"), 12, random));
    }
  }
}

TEST(Columns, TextsAndDigitsOfEverySizeAtAnyPlace) {
  Random random(22);
  for (int size = 1; size <= 70; ++size) {
    const std::string bytes = "bytes = " + std::to_string(size);
    std::string toml = "name = 'r'\n";
    if (size % 3 != 0) {
      toml += field_toml("a", "type = 'DIGITS'\ndigits = " + std::to_string(random.between(1, 20)));
    }
    toml += field_toml("t", "type = 'TEXT'\n" + bytes);
    toml += field_toml("u", "type = 'TEXT'\nencoding = 'CP850'\n" + bytes);
    toml += field_toml("z", "type = 'TEXT'\npad = '0'\nempty = ['0', ' ']\n" + bytes);
    toml += field_toml("d", "type = 'DIGITS'\ndigits = " + std::to_string(size));
    toml +=
        field_toml("e", "type = 'DIGITS'\nempty = [' ', '9']\ndigits = " + std::to_string(size));
    SCOPED_TRACE(toml);
    ASSERT_NO_FATAL_FAILURE(compare_with_rows(parse_layout(toml, "test"), 12, random));
  }
}

TEST(Columns, DatesAndTimesAtAnyPlace) {
  Random random(23);
  for (const char *form : {"DDMMAAAA", "AAAAMMDD", "MMDDAAAA", "DDMMAA", "AAMMDD", "DD/MM/AAAA",
                           "AAAA-MM-DD", "DD.MM.AA"}) {
    for (const char *keys : {"", "\nempty = ['99991231', ' ']", "\npivot = 0\nempty = ' '"}) {
      if (std::string_view(keys).find("9999") != std::string_view::npos && strlen(form) != 8) {
        continue;
      }
      std::string toml = "name = 'r'\n";
      const int before = random.between(0, 9);
      if (before > 0) toml += field_toml("a", "type = 'TEXT'\nbytes = " + std::to_string(before));
      toml += field_toml("h", "type = 'TIME'\nstored = 'HHMMSS'");
      toml += field_toml("d", "type = 'DATE'\nstored = '" + std::string(form) + "'" + keys);
      SCOPED_TRACE(toml);
      const Layout layout = parse_layout(toml, "test");
      ASSERT_NO_FATAL_FAILURE(compare_with_rows(layout, 60, random));
    }
  }
}

TEST(Columns, EveryDayIsOneMoreThanTheLast) {
  const Layout layout =
      parse_layout("name = 'r'\n" + field_toml("d", "type = 'DATE'\nstored = 'AAAAMMDD'"), "test");
  const Field &field = layout.types[0].fields[0];
  std::string file;
  for (std::chrono::sys_days day = std::chrono::year(1) / 1 / 1;
       day <= std::chrono::sys_days(std::chrono::year(9999) / 12 / 31);
       day += std::chrono::days(1)) {
    const std::chrono::year_month_day date{day};
    char text[40];
    std::snprintf(text, sizeof text, "%04d%02d%02d", int(date.year()), int(unsigned(date.month())),
                  int(unsigned(date.day())));
    file += text;
  }
  std::vector<const unsigned char *> records;
  for (std::size_t at = 0; at < file.size(); at += 8) {
    records.push_back(reinterpret_cast<const unsigned char *>(file.data()) + at);
  }
  for (const Kernels *kernels : all_kernels()) {
    const Decoded column(*kernels, field, records, 8);
    ASSERT_FALSE(column.any);
    std::int32_t expected = -719162;
    for (std::size_t i = 0; i < records.size(); ++i, ++expected) {
      ASSERT_EQ(expected, column.value<std::int32_t>(i));
    }
  }
}

}  // namespace
}  // namespace campotipo::records::test
