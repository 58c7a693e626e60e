// Bit tables, bit fields, GUIDs and URL text against the obvious ways to the same results, with
// every buffer against an inaccessible page.

#include <campotipo/bits.h>
#include <sys/mman.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "tests/bits/bit_order.hpp"
#include "tests/reference/guid.hpp"

#define CHECK(condition) ((condition) ? void() : __builtin_trap())

namespace {

namespace reference = campotipo::reference;
using campotipo::test::BitForm;
using Bytes = std::vector<unsigned char>;

// Bytes that end where memory ends.
class Guarded {
 public:
  Guarded() {
    void *map =
        mmap(nullptr, kRoom + kPage, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    CHECK(map != MAP_FAILED);
    end_ = static_cast<unsigned char *>(map) + kRoom;
    CHECK(mprotect(end_, kPage, PROT_NONE) == 0);
  }
  unsigned char *bytes(const Bytes &bytes) {
    CHECK(bytes.size() <= kRoom);
    std::copy(bytes.begin(), bytes.end(), end_ - bytes.size());
    return end_ - bytes.size();
  }
  char *text(const std::string &text) {
    return reinterpret_cast<char *>(bytes(Bytes(text.c_str(), text.c_str() + text.size() + 1)));
  }
  char *room(std::size_t size) { return reinterpret_cast<char *>(end_ - size); }

 private:
  static constexpr std::size_t kPage = 4096, kRoom = 16 * kPage;
  unsigned char *end_;
};

thread_local Guarded first, second;

class Input {
 public:
  Input(const std::uint8_t *data, std::size_t size) : at_(data), end_(data + size) {}
  unsigned byte() { return at_ == end_ ? 0 : *at_++; }
  int number() {
    std::uint32_t number = 0;
    for (int i = 0; i < 4; ++i) number = number << 8 | byte();
    return static_cast<int>(number);
  }
  Bytes bytes(std::size_t count) {
    Bytes bytes(count);
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

Bytes taken(const unsigned char *from, std::size_t size) { return {from, from + size}; }

void check_table(Input *input) {
  const int count = input->number() % 5000, base = input->number();
  const int fallback = input->number();
  TABBOOL table;
  TABBOOL_cria(&table, count, base, fallback);
  std::vector<bool> differs(static_cast<std::size_t>(std::max(count, 0)));
  bool stored = false;
  while (!input->empty()) {
    const unsigned action = input->byte();
    const std::int64_t near = std::int64_t{base} + static_cast<short>(input->number());
    const int index = static_cast<int>(std::clamp<std::int64_t>(near, INT32_MIN, INT32_MAX));
    const bool holds = index >= base && std::int64_t{index} - base < count;
    const auto place = static_cast<std::size_t>(std::int64_t{index} - base);
    if (action % 2 == 0) {
      const bool value = action & 2;
      (value ? TABBOOL_seta : TABBOOL_reseta)(&table, index);
      stored |= holds;
      if (holds) differs[place] = value != ((fallback & 0xFF) != 0);
    }
    const bool bit = ((fallback & 0xFF) != 0) != (holds && differs[place]);
    CHECK(TABBOOL_testa(&table, index) == (holds && stored ? bit : fallback & 0xFF));
  }
  TABBOOL_destroi(&table);
}

void check_field(const BitForm &form, Input *input) {
  const int start = static_cast<int>(input->byte() % 64);
  const int width = static_cast<int>(input->byte()) - 1;
  const Bytes packed =
      input->bytes(static_cast<std::size_t>(ZBTFIELD_BYTES(start + std::max(width, 0))));
  const Bytes field = input->bytes(static_cast<std::size_t>(ZBTFIELD_BYTES(std::max(width, 0))));
  unsigned char *area = first.bytes(packed), *unpacked = second.bytes(field);
  Bytes expected = packed;
  form.order.pack(field.data(), expected.data(), start, width);
  form.pack(unpacked, area, start, width);
  CHECK(taken(area, packed.size()) == expected);
  area = first.bytes(packed);
  expected = field;
  form.order.unpack(expected.data(), packed.data(), start, width);
  form.unpack(unpacked, area, start, width);
  CHECK(taken(unpacked, field.size()) == expected);
}

void check_record(const BitForm &form, Input *input) {
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
  CHECK(ZBTFIELD_total_de_bytes(table.data()) == ZBTFIELD_BYTES(bits));
  const Bytes packed = input->bytes(static_cast<std::size_t>(ZBTFIELD_BYTES(bits)));
  const Bytes record = input->bytes(kRecord);
  unsigned char *area = first.bytes(packed), *unpacked = second.bytes(record);
  Bytes expected = packed;
  form.order.pack_all(expected.data(), table.data(), record.data());
  form.pack_all(area, table.data(), unpacked);
  CHECK(taken(area, packed.size()) == expected);
  area = first.bytes(packed);
  expected = record;
  form.order.unpack_all(expected.data(), packed.data(), table.data());
  form.unpack_all(unpacked, area, table.data());
  CHECK(taken(unpacked, record.size()) == expected);

  const auto size = input->byte() * 4;
  for (const bool values : {false, true}) {
    char *buffer = second.room(std::max(size, 1u));
    (values ? form.values_text : form.bits_text)(buffer, static_cast<int>(size), area,
                                                 table.data());
    std::string text = values ? form.order.values_text(area, table.data())
                              : form.order.bits_text(area, table.data());
    text.resize(size);
    CHECK(std::string(buffer, size) == text);
  }
}

void check_guid(Input *input) {
  const int flags = input->number();
  const reference::Guid guid = reference::guid_parse(input->text());
  unsigned char *dest = second.bytes(Bytes(ZGUID_BYTES));
  ZGUID_parse(dest, first.text(input->text()));
  CHECK(std::equal(guid.begin(), guid.end(), dest));
  const std::string expected = reference::guid_text(guid.data(), flags);
  char *text = first.room(static_cast<std::size_t>(ZGUID_STRING_SIZE(flags)));
  ZGUID_string(text, dest, flags);
  CHECK(text == expected);
}

void check_url(Input *input) {
  const std::string text = input->text();
  const std::string encoded = reference::url_encode(text), decoded = reference::url_decode(text);
  const char *src = first.text(text);
  char *dest = second.room(encoded.size() + 1);
  CHECK(URLENCOD_codifica(dest, src) == dest && dest == encoded);
  dest = second.room(decoded.size() + 1);
  CHECK(URLENCOD_decodifica(dest, src) == dest);
  CHECK(std::memcmp(dest, decoded.c_str(), decoded.size() + 1) == 0);
  char *both = first.text(encoded);
  CHECK(URLENCOD_decodifica(both, both) == both && both == text);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  Input input(data, size);
  const unsigned choice = input.byte();
  const BitForm &form = campotipo::test::kBitForms[choice & 1];
  switch (choice / 2 % 5) {
    case 0:
      check_table(&input);
      break;
    case 1:
      check_field(form, &input);
      break;
    case 2:
      check_record(form, &input);
      break;
    case 3:
      check_guid(&input);
      break;
    case 4:
      check_url(&input);
      break;
  }
  return 0;
}
