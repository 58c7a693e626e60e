// The percents and their rounding against the reference, on inputs cut out of the data.

#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>

#include "tests/percent/agreement.hpp"

#define CHECK(condition) ((condition) ? void() : __builtin_trap())

namespace test = campotipo::test;

namespace {

struct Input {
  std::uint8_t operation;
  std::uint8_t family;
  std::uint8_t fixo;
  std::uint8_t choice;
  std::int32_t casas;
  std::int32_t extras;
  std::uint32_t percent;
  std::int64_t amount;
  std::int64_t other;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  static const bool marker = access("NBR_COM_ERRO.TXT", F_OK) == 0;
  Input input{};
  std::memcpy(&input, data, size < sizeof input ? size : sizeof input);
  const test::Family &family = test::kFamilies[input.family % 4];
  const auto bytes = static_cast<std::size_t>(family.kind.bytes);
  // On the heap, so that a sanitizer sees the ends of a field.
  const std::unique_ptr<unsigned char[]> field(new unsigned char[bytes]);
  const std::uint64_t number = campotipo::reference::low_bits(family.kind, input.percent);
  const auto percent = static_cast<std::int64_t>(number);
  const int fixo = input.fixo % 19;
  if (PARCELA_fixo != fixo) PARCELA_fixo = fixo;  // no write by a second thread
  // Small decimals are the common case, and any int must do.
  if (input.choice & 1) input.casas %= 12;
  if (input.choice & 2) input.extras %= 8;
  if (input.choice & 4) input.amount >>= input.fixo % 64;

  switch (input.operation % 6) {
    case 0:
      CHECK(test::div_forms_agree(input.amount, marker));
      CHECK(test::places_agree(input.amount, input.casas, input.extras, marker));
      break;
    case 1:
      CHECK(test::products_agree(family, field.get(), percent, input.amount, input.casas, marker));
      break;
    case 2:
      CHECK(test::ratios_agree(family, field.get(), input.amount, input.other));
      break;
    case 3:
      CHECK(test::inverse_agrees(family, field.get(), percent));
      break;
    case 4:
      for (auto rule : campotipo::reference::kRules)
        CHECK(test::search_agrees(family, field.get(), percent, input.amount, rule, 20));
      break;
    default:
      for (bool exact : {false, true}) {
        const std::size_t length = edited(family.kind, number, exact).size();
        const std::unique_ptr<char[]> room(new char[length + 1]);
        CHECK(test::text_agrees(family, field.get(), number, exact, room.get()));
      }
  }
  return 0;
}
