#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>

#include "kinds/dates.hpp"
#include "layout/layout.hpp"
#include "layout/reader.hpp"
#include "tests/util/random.hpp"
#include "text/padded.hpp"

namespace campotipo::records::test {

using campotipo::test::Random;

// A file that lives as long as the test.
class TemporaryFile {
 public:
  explicit TemporaryFile(const std::string &content = "") {
    const int fd = mkstemp(path_.data());
    if (fd < 0 || write(fd, content.data(), content.size()) != ssize_t(content.size())) {
      ADD_FAILURE() << "no temporary file";
    }
    close(fd);
  }
  TemporaryFile(const TemporaryFile &) = delete;
  TemporaryFile &operator=(const TemporaryFile &) = delete;
  ~TemporaryFile() { unlink(path_.c_str()); }
  const std::string &path() const { return path_; }
  std::string content() const {
    std::ifstream in(path_, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
  }

 private:
  std::string path_ = testing::TempDir() + "campotipo.XXXXXX";
};

// Stores a text as a loaded cell would be; gives what was lost.
inline const char *take(const Field &field, const std::string &text, unsigned char *record) {
  return field.type->take(record + field.offset, PaddedString(text).text(), field.params);
}

// The keys that a type needs before it is a field.
inline std::string needed_keys(const FieldType &type) {
  if (is_bit_area(type)) {
    return "order = \"big\"\nbits = [3, {name = \"b\", bits = 64}, {name = \"c\", bits = 5}]\n";
  }
  if ((type.keys & kPositions) != 0) return "positions = 7\n";
  if ((type.keys & kDigits) != 0) return "digits = 13\n";
  if ((type.keys & kPivot) != 0) return "stored = \"DDMMAAAA\"\n";
  if ((type.keys & kStored) != 0) return "stored = \"HHMMSS\"\n";
  return (type.keys & kBytes) != 0 ? "bytes = 23\n" : "";
}

// A record that has every kind of field, so that a new kind is tested as soon as it is in the
// table; those with decimals a second time, with 3 of them.
inline std::string layout_of_every_type() {
  std::string toml = "name = \"tudo\"\n";
  const auto add = [&](const FieldType &type, const std::string &name, const std::string &keys) {
    toml += "[[field]]\nname = \"" + name + "\"\ntype = \"" + type.name + "\"\n" +
            needed_keys(type) + keys;
  };
  for (const FieldType &type : field_types()) {
    const std::string name = std::string("f_") + type.name;
    add(type, name, "");
    if ((type.keys & kDecimals) != 0) add(type, name + "_dec", "decimals = 3\n");
    if ((type.keys & kDateEncoding) != 0) {
      add(type, name + "_p", "encoding = \"packed\"\nformat = \"AAAA-MM-DD\"\n");
      add(type, name + "_d", "encoding = \"decimal\"\nformat = \"DDMMAAAA\"\n");
    }
    if ((type.keys & kSign) != 0) {
      add(type, name + "_l", "decimals = 2\nsign = \"leading\"\nempty = \"9\"\n");
      add(type, name + "_t", "sign = \"trailing\"\npad = \" \"\nempty = \" \"\n");
      add(type, name + "_o", "decimals = 13\nsign = \"overpunch\"\n");
    }
    if (type.keys & kPad && type.keys & kBytes) add(type, name + "_p", "pad = \"0\"\n");
    if ((type.keys & kPivot) != 0) {
      toml += "[[field]]\nname = \"" + name + "_a\"\ntype = \"" + type.name +
              "\"\nstored = \"AA-MM-DD\"\npivot = 30\nformat = \"AAAA-MM-DD\"\n"
              "empty = [\" \", \"0\"]\n";
    }
  }
  return toml +
         "[[field]]\nname = \"grupo\"\ncount = 2\n[[field.field]]\nname = \"a\"\n"
         "type = \"BIN2\"\ncount = 3\n[[field.field]]\nname = \"b\"\ntype = \"CODSTR\"\n"
         "bytes = 4\nencoding = \"UTF-8\"\n";
}

inline std::string random_characters(Random &random, std::string_view from, std::size_t most) {
  std::string text(random.between<std::size_t>(0, most), ' ');
  for (char &c : text) c = from[random.between<std::size_t>(0, from.size() - 1)];
  return text;
}

inline std::string random_date(Random &random, bool decimal) {
  char text[32];
  std::snprintf(text, sizeof text, "%02d%02d%04d", random.between(1, 28), random.between(1, 12),
                decimal ? random.between(1980, 2079) : random.between(0, 4095));
  return text;
}

// The same of a field that is stored as characters.
inline std::string random_characters_of(const Field &field, Random &random) {
  const Params &p = field.params;
  const std::string_view name = field.type->name;
  char text[32];
  if (name == "TEXT") {
    std::string content = random_characters(random, "Az,\"\r\n \x01;'09", field.bytes);
    if (p.pad != '\0') content.resize(field.bytes, 'z');
    content.erase(content.find_last_not_of(' ') + 1);
    if (p.pad != '\0') content.resize(field.bytes, 'z');
    return content;
  }
  if (name == "DATE") {
    std::snprintf(
        text, sizeof text, "%04d-%02d-%02d",
        p.stored->has_century ? random.between(1, 9999) : p.pivot + random.between(1900, 1999),
        random.between(1, 12), random.between(1, 28));
    const std::string d = text;
    if (p.pattern->text == "AAAA-MM-DD") return d;
    return d.substr(8) + "/" + d.substr(5, 2) + "/" + d.substr(0, 4);
  }
  if (name == "TIME") {
    std::snprintf(text, sizeof text, "%02d:%02d:%02d", random.between(0, 23), random.between(0, 59),
                  random.between(0, 59));
    return text;
  }
  std::string digits = random.digits(std::size_t(p.n));
  if (name == "DIGITS") return digits;
  digits.erase(0, random.between<std::size_t>(0, digits.size() - 1));
  digits.erase(0, std::min(digits.find_first_not_of('0'), digits.size() - 1));
  while (int(digits.size()) <= p.decimals) digits.insert(0, "0");
  const bool negative = p.sign != Sign::kNone && random.between(0, 1) == 1 &&
                        digits.find_first_not_of('0') != std::string::npos;
  if (p.decimals > 0) digits.insert(digits.size() - std::size_t(p.decimals), ".");
  return (negative ? "-" : "") + digits;
}

// A text that the field can hold whole.
inline std::string random_text(const Field &field, Random &random) {
  const std::string family = field.type->family;
  const int n = field.params.n;
  if (random.between(0, 9) == 0) return "";
  if ((field.type->keys & kEmpty) != 0) return random_characters_of(field, random);
  if (family == "packed code") {
    std::string text =
        random_characters(random, " 0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ-._/+,:#@*$%!", n);
    return text.erase(text.find_last_not_of(' ') + 1);
  }
  if (family == "string") {
    const bool utf8 = field.base == "grupo_b";
    std::string text = random_characters(random, "Az,\"\r\n \x01;'", utf8 ? 4 : n);
    if (!utf8 && text.size() > 2) text.replace(0, 1, "\xC3\xA7");
    return text;
  }
  if (family == "digit string") return random.digits(random.between(0, n));
  if (family == "bit area")
    return std::to_string(n == 64 ? random.word() : random.word() >> (64 - n));
  if (family == "GUID") {
    std::string text = "00000000-0000-4000-8000-000000000000";
    for (char &c : text) c = c == '0' ? "0123456789abcdef"[random.between(0, 15)] : c;
    return text;
  }
  if (family == "time of day") {
    char text[16];
    const bool seconds = field.bytes == 3;
    std::snprintf(text, sizeof text, seconds ? "%02d:%02d:%02d" : "%02d:%02d",
                  random.between(0, 23), random.between(0, 59), random.between(0, 59));
    return text;
  }
  if (family == "date") {
    const bool both = field.params.encoding == DateEncoding::kBoth;
    const std::string d = random_date(random, field.params.encoding == DateEncoding::kDecimal);
    std::string text = field.params.pattern->text;
    text.replace(text.find("DD"), 2, d.substr(0, 2));
    text.replace(text.find("MM"), 2, d.substr(2, 2));
    // Two digits of the year make a decimal date where both encodings may stand.
    return text.replace(text.find("AAAA"), 4, d.substr(both && random.between(0, 1) == 1 ? 6 : 4));
  }
  const int decimals = family == "percent" ? field.type->name[4] - '0' : field.params.decimals;
  const int digits = family == "money value" ? 17 : field.type->count;
  std::string number =
      std::to_string(random.between(1, 9)) + random.digits(random.between(0, digits - 1));
  if (family == "percent")
    number = std::to_string(random.between(0, field.bytes == 1 ? 255 : 65535));
  while (int(number.size()) <= decimals) number.insert(0, "0");
  if (decimals > 0) number.insert(number.size() - std::size_t(decimals), ".");
  const bool sign = family == "money value" && random.between(0, 1) == 1;
  return (sign && number.find_first_of("123456789") != std::string::npos ? "-" : "") + number;
}

}  // namespace campotipo::records::test
