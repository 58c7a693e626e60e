#pragma once

#include <campotipo-records/records.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>
#include <string>

namespace campotipo::test {

inline constexpr const char *kLayout =
    "name = \"conta\"\n"
    "[[field]]\nname = \"numero\"\ntype = \"BIN4\"\n"
    "[[field]]\nname = \"nome\"\ntype = \"CODSTR\"\nbytes = 6\n"
    "[[field]]\nname = \"saldo\"\ntype = \"BINQ17\"\ndecimals = 2\n"
    "[[field]]\nname = \"aberta\"\ntype = \"DATAC\"\nencoding = \"packed\"\n"
    "[[field]]\nname = \"sinal\"\ntype = \"ZBTFIELD\"\nbits = [1, 7]\n";
inline constexpr const char *kKinds =
    "name = \"lote\"\n"
    "[[record]]\nname = \"a\"\nwhen = { tipo = \"1\" }\n"
    "[[record.field]]\nname = \"tipo\"\ntype = \"BIN1\"\n"
    "[[record]]\nname = \"b\"\nwhen = { tipo = \"2\" }\nmain = true\n"
    "[[record.field]]\nname = \"tipo\"\ntype = \"BIN1\"\n"
    "[[record.field]]\nname = \"valor\"\ntype = \"BIN2\"\n";
inline constexpr std::size_t kBytes = 4 + 6 + 17 + 3 + 1;

template <class Structure>
Structure sized() {
  Structure made = {};
  made.size = sizeof made;
  return made;
}

struct Face {
  campotipo_error error = sized<campotipo_error>();
  campotipo_layout *layout = nullptr;
  campotipo_reader *reader = nullptr;

  explicit Face(const char *text = kLayout) {
    EXPECT_EQ(CAMPOTIPO_OK,
              campotipo_layout_parse(text, std::strlen(text), nullptr, &layout, &error))
        << error.text;
  }
  Face(const Face &) = delete;
  Face &operator=(const Face &) = delete;
  ~Face() {
    campotipo_reader_free(reader);
    campotipo_layout_free(layout);
  }

  campotipo_status open(const std::string &bytes, unsigned flags = 0,
                        const campotipo_range *range = nullptr) {
    auto input = sized<campotipo_input>();
    input.memory = bytes.data();
    input.memory_bytes = bytes.size();
    return campotipo_reader_open(layout, &input, range, flags, &reader, &error);
  }
};

// One record: 7, "ana", 1.50, no date, bit 0 set.
inline std::string record() {
  std::string bytes(kBytes, '\0');
  bytes[0] = 7;
  bytes.replace(4, 3, "ana");
  bytes[10] = char(150);
  bytes[29] = char(0x80);
  bytes[30] = 1;
  return bytes;
}

}  // namespace campotipo::test
