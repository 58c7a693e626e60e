#include <sys/mman.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

#include "tests/codes/agreement.hpp"

#define CHECK(condition) \
  if (!(condition)) __builtin_trap()

// A member or a width, options, a text and a field, all from the input, held against what is told
// plainly. Buffers stand against inaccessible memory.
namespace {

using namespace campotipo::test;

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

  // The text where the byte behind its NUL, or the byte before it, is in another page.
  const char *place(const std::string &characters, bool at_start) const {
    const std::size_t size = characters.size() + 1;
    unsigned char *copy = at_start ? text.at_start() : text.at_end(size);
    return static_cast<const char *>(std::memcpy(copy, characters.c_str(), size));
  }
};

struct Choice {
  std::uint8_t member, positions, opc;
  std::int8_t width;
  std::uint8_t text_length, at_start;
};

void check_code(const Pages &pages, const Choice &in, const PackedCode &code,
                const std::string &text, Field field) {
  const auto size = static_cast<std::size_t>(code.bytes);
  unsigned char *saved = pages.other.at_end(size);
  CHECK(save_agrees(code, pages.place(text, in.at_start % 2 != 0), in.opc, saved));
  field.resize(size);
  const unsigned char *other = pages.field.field(field);
  for (const unsigned char *src : {other, const_cast<const unsigned char *>(saved)}) {
    const auto room = static_cast<std::size_t>(std::max<int>(code.n, in.width)) + 1;
    auto *out = reinterpret_cast<char *>(pages.text.at_end(room));
    CHECK(read_agrees(code, src, in.opc, in.width, out));
    CHECK(form_agrees(code, src));
  }
  CHECK(order_agrees(code, saved, other));
}

void check_record(const PackedCode &code, const std::string &text, int opc) {
  CODALFNN record;
  CODALFNN_cria(&record, code.n, opc);
  Field field(static_cast<std::size_t>(code.bytes));
  if (CODALFNN_ok(&record) != 0) {
    CHECK(CODALFNN_opc_salvou(&record, text.c_str(), opc) ==
          code.save(field.data(), text.c_str(), opc));
    CHECK(std::memcmp(record.dados, field.data(), field.size()) == 0);
  }
  CODALFNN_destroi(&record);
}

void check_digits(const Pages &pages, const DigitString &member, const std::string &text,
                  Field field) {
  CHECK(store_agrees(member, pages.place(text, false), digits_of(member, text),
                     pages.field.at_end(member.bytes)));
  field.resize(member.bytes);
  const unsigned char *src = pages.field.field(field);
  auto *shown = reinterpret_cast<char *>(pages.text.at_end(member.text_size));
  CHECK(std::strlen(member.read(shown, src)) == (field[0] <= member.digits ? field[0] : 0u));
  CHECK(form_agrees(member, src));
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

  const PackedCode &any = kCodesUpTo<160>[in.positions % std::size(kCodesUpTo<160>)];
  check_code(pages, in, kPackedCodes[in.member % std::size(kPackedCodes)], text, field);
  check_code(pages, in, any, text, field);
  check_record(any, text, in.opc);
  check_digits(pages, kDigitStrings[in.member % std::size(kDigitStrings)], text, field);
  return 0;
}
