#include <campotipo/codes.h>
#include <sys/mman.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

#include "tests/reference/packed_code.hpp"

#define CHECK(condition) \
  if (!(condition)) __builtin_trap()

// A width, options, a text and two fields, all from the input, held against the packed code that is
// told one bit at a time. Buffers stand against inaccessible memory.
namespace {

namespace reference = campotipo::reference::packed;
using reference::Field;

constexpr std::size_t kPage = 4096;

// A page between two that may not be touched.
class Page {
 public:
  Page() {
    map_ = static_cast<unsigned char *>(
        mmap(nullptr, 3 * kPage, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0));
    CHECK(map_ != MAP_FAILED && mprotect(map_ + kPage, kPage, PROT_READ | PROT_WRITE) == 0);
  }
  unsigned char *at_end(std::size_t size) const { return map_ + 2 * kPage - size; }
  unsigned char *at_start() const { return map_ + kPage; }
  const unsigned char *field(const Field &bytes) const {
    return std::copy(bytes.begin(), bytes.end(), at_end(bytes.size())) - bytes.size();
  }

 private:
  unsigned char *map_;
};

struct Pages {
  Page text, field, other;
};

struct Choice {
  std::uint8_t member, positions, opc;
  std::int8_t width;
  std::uint8_t text_length, at_start;
};

struct Member {
  int n;
  int (*save)(unsigned char *, const char *, int);
  char *(*read)(char *, const unsigned char *, int, int);
  int (*compare)(const unsigned char *, const unsigned char *);
  int (*has_content)(const unsigned char *, int);
};

constexpr Member kMembers[] = {
    {5, CODALF05_opc_salvou, CODALF05_opc_btoa, CODALF05_compara, CODALF05_nao_zero},
    {12, CODALF12_opc_salvou, CODALF12_opc_btoa, CODALF12_compara, CODALF12_nao_zero},
    {14, CODALF14_opc_salvou, CODALF14_opc_btoa, CODALF14_compara, CODALF14_nao_zero},
    {17, CODALF17_opc_salvou, CODALF17_opc_btoa, CODALF17_compara, CODALF17_nao_zero},
    {20, CODALF20_opc_salvou, CODALF20_opc_btoa, CODALF20_compara, CODALF20_nao_zero},
    {32, CODALF32_opc_salvou, CODALF32_opc_btoa, CODALF32_compara, CODALF32_nao_zero},
    {36, CODALF36_opc_salvou, CODALF36_opc_btoa, CODALF36_compara, CODALF36_nao_zero},
    {40, CODALF40_opc_salvou, CODALF40_opc_btoa, CODALF40_compara, CODALF40_nao_zero},
};

// The text where the byte behind its NUL, or the byte before it, is in another page.
const char *place(const Page &page, const std::string &text, bool at_start) {
  unsigned char *copy = at_start ? page.at_start() : page.at_end(text.size() + 1);
  std::memcpy(copy, text.c_str(), text.size() + 1);
  return reinterpret_cast<const char *>(copy);
}

template <class Save>
Field check_save(const Pages &pages, const Choice &in, int n, const std::string &text, Save save) {
  const reference::Saved expected = reference::save(text, n, in.opc);
  unsigned char *field = pages.field.at_end(expected.field.size());
  CHECK(save(field, place(pages.text, text, in.at_start % 2 != 0)) == expected.result);
  CHECK(std::equal(expected.field.begin(), expected.field.end(), field));
  return expected.field;
}

template <class Read>
void check_read(const Pages &pages, const Choice &in, int n, const Field &field, Read read) {
  const std::string expected = reference::extract(field, n, in.opc, in.width);
  const auto room = static_cast<std::size_t>(std::max<int>(n, in.width)) + 1;
  auto *text = reinterpret_cast<char *>(pages.text.at_end(room));
  read(text, pages.field.field(field));
  CHECK(expected == text);
}

void check_member(const Pages &pages, const Choice &in, const Member &member,
                  const std::string &text, Field field) {
  const Field saved = check_save(
      pages, in, member.n, text,
      [&](unsigned char *dest, const char *from) { return member.save(dest, from, in.opc); });
  field.resize(saved.size());
  for (const Field &each : {saved, field}) {
    check_read(pages, in, member.n, each, [&](char *dest, const unsigned char *src) {
      CHECK(member.read(dest, src, in.opc, in.width) == dest);
      CHECK(member.has_content(src, in.opc) == reference::has_content(each, member.n, in.opc));
    });
  }
  CHECK(member.compare(pages.field.field(saved), pages.other.field(field)) ==
        reference::compare(saved, field, member.n));
}

void check_engine(const Pages &pages, const Choice &in, const std::string &text, Field field) {
  const int n = in.positions % 160 + 1;
  CODALFNN record;
  CODALFNN_cria(&record, n, in.opc);
  const Field saved = check_save(pages, in, n, text, [&](unsigned char *dest, const char *from) {
    const int result = CODALFA_opc_salvou(dest, from, n, in.opc);
    CHECK(CODALFNN_ok(&record) == 0 || CODALFNN_opc_salvou(&record, from, in.opc) == result);
    CHECK(CODALFNN_ok(&record) == 0 || CODALFA_compara(record.dados, dest, n) == 0);
    return result;
  });
  CODALFNN_destroi(&record);
  field.resize(saved.size());
  check_read(pages, in, n, field, [&](char *dest, const unsigned char *src) {
    CODALFA_opc_extrai(dest, src, n, in.opc, in.width);
    CHECK(CODALFA_nao_zero(src, n, in.opc) == reference::has_content(field, n, in.opc));
  });
  CHECK(CODALFA_compara(pages.field.field(saved), pages.other.field(field), n) ==
        reference::compare(saved, field, n));
}

// What a digit string keeps of a text comes back, and any field gives as many digits as it counts.
void check_digits(const Pages &pages, const std::string &text, Field field) {
  std::string digits = text.substr(0, text.find_first_not_of("0123456789"));
  digits.resize(std::min<std::size_t>(digits.size(), 38));
  unsigned char *dest = pages.field.at_end(BSTR38_BYTES);
  CHECK(BSTR38_atob(dest, place(pages.text, text, false)) == !digits.empty());
  char out[BSTR38_TEXT_SIZE];
  CHECK(BSTR38_btoa(out, dest) == digits);
  field.resize(BSTR21_BYTES);
  auto *shown = reinterpret_cast<char *>(pages.text.at_end(BSTR21_TEXT_SIZE));
  CHECK(std::strlen(BSTR21_btoa(shown, pages.field.field(field))) ==
        (field[0] <= 21 ? field[0] : 0u));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  static thread_local const Pages pages;
  Choice in;
  if (size < sizeof in) return 0;
  std::memcpy(&in, data, sizeof in);
  const std::uint8_t *rest = data + sizeof in;
  const std::size_t length = std::min<std::size_t>(in.text_length % 64, size - sizeof in);
  std::string text(reinterpret_cast<const char *>(rest), length);
  text.resize(std::min(text.find('\0'), text.size()));
  const Field field(rest + length, data + size);

  check_member(pages, in, kMembers[in.member % std::size(kMembers)], text, field);
  check_engine(pages, in, text, field);
  check_digits(pages, text, field);
  return 0;
}
