// Two date fields, two numbers and a text, all from the input, held against the calendar walked step
// by step.
#include <cstdint>

#include "tests/calendar/agreement.hpp"

#define CHECK(condition) ((condition) ? void() : __builtin_trap())

namespace test = campotipo::test;

namespace {

struct Input {
  std::uint8_t format;
  unsigned char date[DATAC_BYTES], other[DATAC_BYTES];
  std::int32_t number, base;
};

std::uint32_t number(const unsigned char *field) {
  return field[0] | field[1] << 8 | static_cast<std::uint32_t>(field[2]) << 16;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  static thread_local test::DateMemory memory;
  Input in;
  if (size < sizeof in) return 0;
  std::memcpy(&in, data, sizeof in);
  const std::int32_t format = in.format % 3;
  test::InForce::set(format);
  const std::uint32_t n = number(in.date), other = number(in.other);
  CHECK(test::reads(memory, n) && test::converts(memory, n) && test::orders(memory, n, other));
  CHECK(test::shows(memory, n, in.other[0], in.number));
  CHECK(test::builds(memory, format, {in.number, in.base, in.number}));
  CHECK(test::steps(memory, format, n, in.number));
  CHECK(test::searches(memory, format, n, in.number));
  CHECK(test::counts(memory, n, campotipo::reference::read(n).year + in.base % 4096));
  CHECK(test::is_date_of_count(memory, format, in.number, in.base));
  CHECK(test::tells_time(memory, n, in.other[0], in.number));
  const std::string text(reinterpret_cast<const char *>(data) + sizeof in, size - sizeof in);
  if (text.size() < 4000)
    CHECK(test::parses(memory, format, text.substr(0, text.find('\0')), in.other[1] % 16));
  return 0;
}
