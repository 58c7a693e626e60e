#pragma once

#include <campotipo/bits.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#include "tests/members/bit_forms.hpp"
#include "tests/reference/guid.hpp"
#include "tests/reference/url_text.hpp"
#include "tests/util/guarded_buffer.hpp"

// The operations held against the obvious ways to the same results, for the tests and the fuzzer:
// each check is true when they agree on one input. Every buffer has an inaccessible page on one
// side and canaries on the other.
namespace campotipo::test {

using Bytes = std::vector<unsigned char>;

struct BitMemory {
  explicit BitMemory(std::size_t room = 4096) : first(room), second(room) {}

  GuardedBuffer first, second;
  bool at_end = true;

  unsigned char *put(GuardedBuffer *buffer, const Bytes &bytes) const {
    unsigned char *at = at_end ? buffer->at_end(bytes.size()) : buffer->at_start(bytes.size());
    std::copy(bytes.begin(), bytes.end(), at);
    return at;
  }
  char *put(GuardedBuffer *buffer, const std::string &text) const {
    const char *nul = text.c_str() + text.size() + 1;
    return reinterpret_cast<char *>(put(buffer, Bytes(text.c_str(), nul)));
  }
};

inline bool holds(const unsigned char *at, const Bytes &expected) {
  return std::equal(expected.begin(), expected.end(), at);
}
inline bool holds(const char *at, const std::string &expected) {
  return std::memcmp(at, expected.c_str(), expected.size() + 1) == 0;
}

// `packed` begins with the byte of the first bit: no other byte may be touched.
inline bool field_agrees(const BitForm &form, BitMemory *memory, const Bytes &packed,
                         const Bytes &field, int start, int width) {
  unsigned char *area = memory->put(&memory->first, packed);
  unsigned char *unpacked = memory->put(&memory->second, field);
  const int before = width > 0 ? start / 8 : 0;
  Bytes expected = packed;
  form.order.pack(field.data(), expected.data(), start % 8, width);
  form.pack(unpacked, area - before, start, width);
  if (!holds(area, expected) || !holds(unpacked, field)) return false;
  area = memory->put(&memory->first, packed);
  expected = field;
  form.order.unpack(expected.data(), packed.data(), start % 8, width);
  form.unpack(unpacked, area - before, start, width);
  return holds(unpacked, expected) && holds(area, packed);
}

inline bool is_clear_behind(const BitForm &form, const Bytes &packed, int bits) {
  for (int i = bits; i < 8 * static_cast<int>(packed.size()); ++i)
    if (form.order.get(packed.data(), i)) return false;
  return true;
}

inline bool record_agrees(const BitForm &form, BitMemory *memory, const ZBTFIELD_CAMPO *table,
                          const Bytes &packed, const Bytes &record) {
  const int bits = reference::total_bits(table);
  unsigned char *area = memory->put(&memory->first, packed);
  unsigned char *unpacked = memory->put(&memory->second, record);
  if (ZBTFIELD_total_de_bits(table) != bits || ZBTFIELD_total_de_bytes(table) != (bits + 7) / 8 ||
      form.well_formed(area, static_cast<int>(packed.size()), table) !=
          is_clear_behind(form, packed, bits))
    return false;
  Bytes expected = packed;
  form.order.pack_all(expected.data(), table, record.data());
  form.pack_all(area, table, unpacked);
  if (!holds(area, expected) || !holds(unpacked, record)) return false;
  area = memory->put(&memory->first, packed);
  expected = record;
  form.order.unpack_all(expected.data(), packed.data(), table);
  form.unpack_all(unpacked, area, table);
  return holds(unpacked, expected) && holds(area, packed);
}

// Exactly `size` bytes of a buffer, which has one at least, whose first becomes a NUL before all.
inline bool dumps_agree(const BitForm &form, BitMemory *memory, const ZBTFIELD_CAMPO *table,
                        const Bytes &packed, int size) {
  const unsigned char *area = memory->put(&memory->first, packed);
  const auto room = static_cast<std::size_t>(std::max(size, 1));
  for (const bool values : {false, true}) {
    char *buffer = memory->second.text_at_end(room);
    std::memset(buffer, '#', room);
    (values ? form.values_text : form.bits_text)(buffer, size, area, table);
    std::string text = values ? form.order.values_text(packed.data(), table)
                              : form.order.bits_text(packed.data(), table);
    if (size <= 0) text.clear();
    text.resize(room);
    if (text != std::string(buffer, room)) return false;
  }
  return true;
}

inline bool guid_agrees(BitMemory *memory, const std::string &text) {
  const reference::Guid guid = reference::guid_parse(text.c_str());
  const char *from = memory->put(&memory->first, text);
  unsigned char *dest = memory->second.at_end(ZGUID_BYTES);
  ZGUID_parse(dest, from);
  return std::equal(guid.begin(), guid.end(), dest);
}

inline bool guid_text_agrees(BitMemory *memory, const reference::Guid &guid, int flags) {
  const std::string expected = reference::guid_text(guid.data(), flags);
  char *text = memory->second.text_at_end(static_cast<std::size_t>(ZGUID_STRING_SIZE(flags)));
  ZGUID_string(text, memory->first.field(guid), flags);
  return holds(text, expected) &&
         expected.size() + 1 == static_cast<std::size_t>(ZGUID_STRING_SIZE(flags));
}

// Both ways, and in place where bytes behind the result are the source's.
inline bool url_agrees(BitMemory *memory, const std::string &text) {
  const struct {
    char *(*convert)(char *, const char *);
    std::string expected;
  } ways[] = {{URLENCOD_codifica, reference::url_encode(text)},
              {URLENCOD_decodifica, reference::url_decode(text)}};
  const char *src = memory->put(&memory->first, text);
  for (const auto &[convert, expected] : ways) {
    char *dest = memory->second.text_at_end(expected.size() + 1);
    if (convert(dest, src) != dest || !holds(dest, expected)) return false;
  }
  for (const auto &[given, expected] :
       {std::pair{text, ways[1].expected}, {ways[0].expected, text}}) {
    char *both = memory->put(&memory->first, given);
    if (URLENCOD_decodifica(both, both) != both || !holds(both, expected)) return false;
  }
  return true;
}

// A table against a plain list of what its indices were written to.
class CheckedTable {
 public:
  CheckedTable(int count, int base, int fallback)
      : count_(count),
        base_(base),
        fallback_(fallback & 0xFF),
        bits_(static_cast<std::size_t>(std::max(count, 0)), fallback_ != 0) {
    TABBOOL_cria(&table_, count, base, fallback);
  }
  ~CheckedTable() { TABBOOL_destroi(&table_); }
  CheckedTable(const CheckedTable &) = delete;
  CheckedTable &operator=(const CheckedTable &) = delete;

  void write(int index, bool value) {
    (value ? TABBOOL_seta : TABBOOL_reseta)(&table_, index);
    if (!holds(index)) return;
    bits_[place(index)] = value;
    stored_ = true;
  }
  bool agrees(int index) const {
    const int expected = stored_ && holds(index) ? int{bits_[place(index)]} : fallback_;
    return (table_.mapa != nullptr) == stored_ && TABBOOL_testa(&table_, index) == expected;
  }
  bool empties() {
    TABBOOL_destroi(&table_);
    stored_ = false;
    bits_.assign(bits_.size(), fallback_ != 0);
    return table_.mapa == nullptr && table_.tamanho == count_ && table_.base == base_ &&
           table_.padrao == fallback_;
  }

 private:
  bool holds(int index) const { return index >= base_ && std::int64_t{index} - base_ < count_; }
  std::size_t place(int index) const {
    return static_cast<std::size_t>(std::int64_t{index} - base_);
  }

  TABBOOL table_;
  int count_, base_, fallback_;
  std::vector<bool> bits_;
  bool stored_ = false;
};

}  // namespace campotipo::test
