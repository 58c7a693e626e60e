// Fields of every width against the model on strings of digits: texts of any bytes, fields of any
// bytes, any power. Buffers stand against inaccessible memory.
#include <campotipo/quantities.h>
#include <sys/mman.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

#include "tests/reference/decimal_text.hpp"

#define CHECK(condition) \
  if (!(condition)) __builtin_trap()

namespace {

namespace reference = campotipo::test::reference;
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
  unsigned char *bytes(std::size_t size, bool at_start) const {
    return at_start ? map_ + kPage : map_ + 2 * kPage - size;
  }
  unsigned char *field(const Field &field, bool at_start) const {
    unsigned char *copy = bytes(field.size(), at_start);
    std::copy(field.begin(), field.end(), copy);
    return copy;
  }
  char *text(std::size_t size) const { return reinterpret_cast<char *>(bytes(size, false)); }

 private:
  unsigned char *map_;
};

struct Pages {
  Page text, field, other;
};

struct Choice {
  std::uint8_t width, other_width, text_length, at_start;
  std::int8_t digits;
  std::int16_t places;
  std::int32_t decimals;
  std::uint32_t power;
};

// One input, with the fields and the text taken out of it.
struct Case {
  const Pages &pages;
  Choice in;
  int width;
  bool at_start;
  std::string text;
  Field a, b;

  Field stored(const unsigned char *at, int bytes) const {
    return {reinterpret_cast<const char *>(at), static_cast<std::size_t>(bytes)};
  }
  const char *placed_text() const {
    unsigned char *copy = pages.text.bytes(text.size() + 1, at_start);
    std::memcpy(copy, text.c_str(), text.size() + 1);
    return reinterpret_cast<const char *>(copy);
  }
};

void check_from_text(const Case &c) {
  unsigned char *dest = c.pages.field.bytes(static_cast<std::size_t>(c.width), !c.at_start);
  CHECK(ZBINARIO_converteu_para_binario(dest, c.width, c.placed_text()) == 1);
  CHECK(c.stored(dest, c.width) == reference::from_text(c.width, c.text));
  for (int decimals : {c.in.decimals, c.in.decimals % 80}) {
    ZBINARIO_atobfixo(c.width, dest, c.placed_text(), decimals);
    CHECK(c.stored(dest, c.width) == reference::from_text_fixed(c.width, c.text, decimals));
  }
}

void check_to_text(const Case &c, const Field &field) {
  const unsigned char *src = c.pages.field.field(field, c.at_start);
  const std::string plain = reference::to_text(c.width, field, 0);
  char *out = c.pages.text.text(plain.size() + 1);
  CHECK(ZBINARIO_converteu_de_binario(out, src, c.width) == 1 && plain == out);
  for (int places : {c.in.places % 1000, c.in.places % 64}) {
    const std::string fixed = reference::to_text(c.width, field, places);
    out = c.pages.text.text(fixed.size() + 1);
    CHECK(ZBINARIO_btoafixo(c.width, out, src, places) == out && fixed == out);
  }
  const auto count = static_cast<std::size_t>(std::max<int>(c.in.digits, 0));
  out = c.pages.text.text(count + 1);
  CHECK(ZBINARIO_converteu_n_de_binario(out, src, c.width, c.in.digits) == 1);
  CHECK(reference::rightmost(plain, count) == out);
}

void check_between_fields(const Case &c) {
  unsigned char *a = c.pages.field.field(c.a, c.at_start);
  const unsigned char *b = c.pages.other.field(c.b, c.at_start);
  CHECK(ZBINARIO_compara(c.width, a, b) == reference::compare(c.width, c.a, c.b));
  CHECK(ZBINARIO_compara(c.width, b, a) == -reference::compare(c.width, c.a, c.b));
  const int to = c.in.other_width % 21 + 1;
  unsigned char *dest = c.pages.other.bytes(static_cast<std::size_t>(to), c.at_start);
  CHECK(ZBINARIO_move_para_de(dest, to, a, c.width) == 1);
  CHECK(c.stored(dest, to) == reference::from_text(to, reference::to_text(c.width, c.a, 0)));
}

void check_scaling(const Case &c) {
  static constexpr struct {
    int (*divide)(unsigned char *, const unsigned char *, unsigned int);
    void (*multiply)(unsigned char *, const unsigned char *, unsigned int);
  } members[] = {
      {BINQ16_div_por_potencia_de_dez, BINQ16_mul_por_potencia_de_dez},
      {BINQ17_div_por_potencia_de_dez, BINQ17_mul_por_potencia_de_dez},
      {BINQ18_div_por_potencia_de_dez, BINQ18_mul_por_potencia_de_dez},
      {BINQ19_div_por_potencia_de_dez, BINQ19_mul_por_potencia_de_dez},
      {BINQ20_div_por_potencia_de_dez, BINQ20_mul_por_potencia_de_dez},
      {BINQ21_div_por_potencia_de_dez, BINQ21_mul_por_potencia_de_dez},
  };
  if (c.width < 16) return;
  const auto &member = members[c.width - 16];
  for (unsigned power : {c.in.power, c.in.power % 64}) {
    for (const Field &field : {c.a, reference::from_text(c.width, c.text)}) {
      const reference::Quotient quotient = reference::divide(c.width, field, power);
      unsigned char *same = c.pages.field.field(field, c.at_start);
      unsigned char *dest = c.pages.other.bytes(field.size(), !c.at_start);
      CHECK(member.divide(dest, same, power) == quotient.remainder);
      CHECK(c.stored(dest, c.width) == quotient.field);
      member.multiply(same, same, power);
      CHECK(c.stored(same, c.width) == reference::multiply(c.width, field, power));
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  static const Pages pages;
  Choice in;
  if (size < sizeof in) return 0;
  std::memcpy(&in, data, sizeof in);
  const auto *rest = reinterpret_cast<const char *>(data) + sizeof in;
  const std::size_t length = std::min<std::size_t>(in.text_length % 100, size - sizeof in);
  const int width = in.width % 21 + 1;
  Case c{pages, in, width, in.at_start % 2 != 0, {rest, length}, {}, {}};
  c.text.resize(std::min(c.text.find('\0'), c.text.size()));
  // The second field is the first, but for the bytes that are left.
  c.a.assign(rest + length, size - sizeof in - length);
  c.b = c.a.substr(std::min<std::size_t>(c.a.size(), static_cast<std::size_t>(width)));
  c.a.resize(static_cast<std::size_t>(width));
  c.b += c.a.substr(std::min(c.b.size(), c.a.size()));
  c.b.resize(c.a.size());

  check_from_text(c);
  check_to_text(c, c.a);
  check_to_text(c, reference::from_text(width, c.text));
  check_between_fields(c);
  check_scaling(c);
  return 0;
}
