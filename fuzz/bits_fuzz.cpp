// Bit tables, bit fields, GUIDs and URL text against the obvious ways to the same results.

#include <cstddef>
#include <cstdint>

#include "tests/bits/agreement.hpp"

#define CHECK(condition) ((condition) ? void() : __builtin_trap())

namespace test = campotipo::test;

namespace {

class Input {
 public:
  Input(const std::uint8_t *data, std::size_t size) : at_(data), end_(data + size) {}
  unsigned byte() { return at_ == end_ ? 0 : *at_++; }
  int number() {
    std::uint32_t number = 0;
    for (int i = 0; i < 4; ++i) number = number << 8 | byte();
    return static_cast<int>(number);
  }
  test::Bytes bytes(int count) {
    test::Bytes bytes(static_cast<std::size_t>(count));
    for (unsigned char &each : bytes) each = static_cast<unsigned char>(byte());
    return bytes;
  }
  // The rest, at most 4000 characters up to a NUL.
  std::string text() {
    const auto size = std::min<std::size_t>(static_cast<std::size_t>(end_ - at_), 4000);
    return std::string(at_, std::find(at_, at_ + size, 0));
  }
  bool empty() const { return at_ == end_; }

 private:
  const std::uint8_t *at_, *end_;
};

void check_table(Input *input) {
  const int count = input->number() % 5000, base = input->number();
  test::CheckedTable table(count, base, input->number());
  while (!input->empty()) {
    const unsigned action = input->byte();
    const std::int64_t near = std::int64_t{base} + static_cast<short>(input->number());
    const int index = static_cast<int>(std::clamp<std::int64_t>(near, INT32_MIN, INT32_MAX));
    if (action % 2 == 0) table.write(index, (action & 2) != 0);
    CHECK(table.agrees(index));
  }
}

void check_field(const test::BitForm &form, test::BitMemory *memory, Input *input) {
  const int start = static_cast<int>(input->byte() % 64);
  const int width = static_cast<int>(input->byte()) - 1, bits = std::max(width, 0);
  const test::Bytes packed = input->bytes(bits == 0 ? 0 : ZBTFIELD_BYTES(start % 8 + bits));
  CHECK(test::field_agrees(form, memory, packed, input->bytes(ZBTFIELD_BYTES(bits)), start, width));
}

void check_record(const test::BitForm &form, test::BitMemory *memory, Input *input) {
  constexpr int kRecord = 80;
  std::vector<ZBTFIELD_CAMPO> table(input->byte() % 20);
  int bits = 0;
  for (ZBTFIELD_CAMPO &field : table) {
    const int width = 1 + static_cast<int>(input->byte() % (input->byte() % 4 == 0 ? 140 : 32));
    const int offset = static_cast<int>(input->byte()) % (kRecord - ZBTFIELD_BYTES(width) + 1);
    field = {width, offset};
    bits += width;
  }
  table.push_back({0, 0});
  const test::Bytes packed = input->bytes(ZBTFIELD_BYTES(bits));
  CHECK(test::record_agrees(form, memory, table.data(), packed, input->bytes(kRecord)));
  CHECK(test::dumps_agree(form, memory, table.data(), packed, static_cast<int>(input->byte() * 4)));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  static thread_local test::BitMemory memory(3 * 4096);
  Input input(data, size);
  const unsigned choice = input.byte();
  const test::BitForm &form = test::kBitForms[choice & 1];
  memory.at_end = choice < 240;
  switch (choice / 2 % 5) {
    case 0:
      check_table(&input);
      break;
    case 1:
      check_field(form, &memory, &input);
      break;
    case 2:
      check_record(form, &memory, &input);
      break;
    case 3: {
      const int flags = input.number();
      const std::string text = input.text();
      CHECK(test::guid_agrees(&memory, text));
      CHECK(test::guid_text_agrees(&memory, campotipo::reference::guid_parse(text), flags));
      break;
    }
    case 4:
      CHECK(test::url_agrees(&memory, input.text()));
      break;
  }
  return 0;
}
