// What is taken for sure of a value without being tried holds when it is tried.

#include <gtest/gtest.h>

#include "kinds/exact.hpp"
#include "tests/records/tool_fixture.hpp"
#include "text/padded.hpp"

namespace campotipo::records::test {
namespace {

bool comes_back(const Field &field, const unsigned char *record) {
  const std::string text = field_text(field, record);
  std::vector<unsigned char> again(field.bytes);
  field.type->take(again.data(), PaddedString(text).text(), field.params);
  return std::equal(again.begin(), again.end(), record + field.offset);
}

// Keys that change what the text of a field of characters is, and when there is none.
std::string characters() {
  std::string toml;
  int number = 0;
  for (const char *type :
       {"type='TEXT'\nbytes=9\n", "type='TEXT'\nbytes=33\n", "type='DIGITS'\ndigits=8\n",
        "type='NUM'\ndigits=8\ndecimals=2\n", "type='DATE'\nstored='DDMMAAAA'\n",
        "type='DATE'\nstored='AAMMDD'\n", "type='TIME'\nstored='HHMMSS'\n"}) {
    const std::string name = type;
    const bool text = name.find("TEXT") != std::string::npos;
    for (const char *keys : {"", "empty=' '\n", "empty='0'\n", "empty=['9', ' ', '0']\n",
                             "empty=[' ', '0']\npad='0'\n", "encoding='UTF-8'\n", "pad=' '\n",
                             "sign='overpunch'\n", "format='DD/MM/AA'\n"}) {
      const std::string told = keys;
      const bool number_key = told.find("sign") != std::string::npos || told == "pad=' '\n";
      if (told.find("encoding") != std::string::npos && !text) continue;
      if (told.find("pad=") != std::string::npos && !text && name.find("NUM") == std::string::npos)
        continue;
      if (number_key && name.find("NUM") == std::string::npos) continue;
      if (told.find("format") != std::string::npos && name.find("DATE") == std::string::npos)
        continue;
      toml += "[[field]]\nname='c" + std::to_string(++number) + "'\n" + name + told;
    }
  }
  return toml;
}

TEST(Exact, WhatIsSureHolds) {
  Random random(41);
  for (const std::string &toml : {layout_of_every_type(), "name='c'\n" + characters()}) {
    const Layout layout = parse_layout(toml, "test");
    const RecordType &type = layout.types[0];
    std::vector<int> sure(type.fields.size());
    for (int round = 0; round < 3000; ++round) {
      std::vector<unsigned char> record(type.bytes);
      const int way = random.between(0, 3);
      for (unsigned char &byte : record) {
        byte = way == 0 ? static_cast<unsigned char>(random.word())
               : way == 1
                   ? static_cast<unsigned char>("0129 "[random.between(0, 4)])
                   : static_cast<unsigned char>(random.between(0, 40) == 0 ? random.word() : '0');
      }
      for (std::size_t i = 0; i < type.fields.size(); ++i) {
        const Field &field = type.fields[i];
        unsigned char *bytes = record.data() + field.offset;
        if (way == 3 && !is_bit_area(*field.type)) {
          std::fill_n(bytes, field.bytes, " 09{"[random.between(0, 3)]);
        }
        const Look look = look_at(*field.type, bytes, field.params);
        const char *fault = field.type->fault(bytes, field.params);
        if (look == Look::kGood) {
          ASSERT_EQ(nullptr, fault) << field.name;
        }
        if (look == Look::kTry || fault != nullptr) continue;
        ++sure[i];
        ASSERT_TRUE(comes_back(field, record.data()))
            << field.name << ": " << field_text(field, record.data());
      }
    }
    for (std::size_t i = 0; i < sure.size(); ++i) {
      const Field &field = type.fields[i];
      const std::string family = field.type->family;
      const bool known = family == "binary number" || family == "digits";
      if (known && field.params.decimals == 0) {
        EXPECT_GT(sure[i], 0) << field.name;
      }
    }
  }
}

}  // namespace
}  // namespace campotipo::records::test
