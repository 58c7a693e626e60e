// Fields of every width against the model on strings of digits: texts of any bytes, fields of any
// bytes, any power.
#include <algorithm>
#include <cstdint>

#include "tests/quantities/agreement.hpp"

#define CHECK(condition) ((condition) ? void() : __builtin_trap())

namespace test = campotipo::test;
using test::reference::Field;

namespace {

struct Choice {
  std::uint8_t width, other_width, text_length, at_start;
  std::int8_t digits;
  std::int16_t places;
  std::int32_t decimals;
  std::uint32_t power;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  static thread_local test::NumericMemory in;
  Choice choice;
  if (size < sizeof choice) return 0;
  std::memcpy(&choice, data, sizeof choice);
  const auto *rest = reinterpret_cast<const char *>(data) + sizeof choice;
  const std::size_t length = std::min<std::size_t>(choice.text_length % 100, size - sizeof choice);
  const int width = choice.width % 21 + 1;
  std::string text(rest, length);
  text.resize(std::min(text.find('\0'), text.size()));
  // The second field is the first, but for the bytes that are left.
  Field a(rest + length, size - sizeof choice - length);
  Field b = a.substr(std::min(a.size(), test::size_of(width)));
  a.resize(test::size_of(width));
  b += a.substr(std::min(b.size(), a.size()));
  b.resize(a.size());

  const std::size_t behind = choice.at_start % 2 != 0 ? 40 : 0;
  for (const int decimals : {choice.decimals, choice.decimals % 80})
    CHECK(test::reads(in, width, text, decimals, behind));
  const Field written = test::reference::from_text(width, text);
  for (const Field &field : {a, written})
    for (const int places : {choice.places % 1000, choice.places % 64})
      CHECK(test::shows(in, width, field, places, choice.digits));
  CHECK(test::orders(in, width, a, b));
  CHECK(test::moves(in, width, a, choice.other_width % 21 + 1));
  if (width < test::kFirstScaled) return 0;
  for (const unsigned power : {choice.power, choice.power % 64})
    for (const Field &field : {a, written}) CHECK(test::scales(in, width, field, power));
  return 0;
}
