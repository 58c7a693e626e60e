#pragma once

#include <string>

#include "tests/members/numeric.hpp"
#include "tests/reference/decimal_text.hpp"
#include "tests/util/guarded_buffer.hpp"

// The numeric fields held against strings of digits, for the tests and the fuzzer: each check is
// true when the operations of a member, by its name and by its width, agree on one input. Buffers
// stand against inaccessible memory.
namespace campotipo::test {

using reference::Field;

struct NumericMemory {
  GuardedBuffer dest, other, text{8192};
};

inline const Numeric &member_of(int width) {
  return width <= 8 ? kBinaries[width - 1] : kQuantities[width - 9];
}

inline std::size_t size_of(int width) { return static_cast<std::size_t>(width); }

inline Field field_at(const unsigned char *bytes, int width) {
  return {reinterpret_cast<const char *>(bytes), size_of(width)};
}

inline unsigned char *place(GuardedBuffer &memory, const Field &field) {
  return memory.field({reinterpret_cast<const unsigned char *>(field.data()), field.size()});
}

// Whether `operation` writes the field and tells truly whether it is zero.
template <class Operation>
bool stores(NumericMemory &in, int width, const Field &expected, Operation operation) {
  unsigned char *dest = in.dest.at_end(size_of(width));
  const bool result = operation(dest) != 0;
  return field_at(dest, width) == expected && result != reference::is_zero(expected);
}

// `behind` bytes that may be read follow the NUL.
inline bool reads(NumericMemory &in, int width, const std::string &text, int decimals,
                  std::size_t behind) {
  const Numeric &member = member_of(width);
  const char *from = in.text.text(text + std::string(behind > 0, '\0') + std::string(behind, '7'));
  const Field plain = reference::from_text(width, text);
  const Field fixed = reference::from_text_fixed(width, text, decimals);
  return stores(in, width, plain, [&](auto *dest) { return member.from_text(dest, from); }) &&
         stores(in, width, fixed,
                [&](auto *dest) { return member.from_text_fixed(dest, from, decimals); }) &&
         stores(in, width, plain,
                [&](auto *dest) {
                  return ZBINARIO_converteu_para_binario(dest, width, from) == 1 &&
                         !reference::is_zero(plain);
                }) &&
         stores(in, width, fixed, [&](auto *dest) {
           ZBINARIO_atobfixo(width, dest, from, decimals);
           return !reference::is_zero(fixed);
         });
}

// Whether `operation` writes the text, in its own bytes, and gives it back.
template <class Operation>
bool shows_text(NumericMemory &in, const std::string &expected, Operation operation) {
  char *out = in.text.text_at_end(expected.size() + 1);
  return operation(out) && expected == out;
}

inline bool shows(NumericMemory &in, int width, const Field &field, int decimals, int count) {
  const Numeric &member = member_of(width);
  const unsigned char *src = place(in.dest, field);
  const std::string plain = reference::to_text(width, field, 0);
  const std::string fixed = reference::to_text(width, field, decimals);
  const std::string exact = reference::rightmost(plain, size_of(count < 0 ? 0 : count));
  // A field is one that is written when its text gives it back.
  const bool whole = reference::from_text(width, plain) == field;
  const int spare = whole ? 0 : 1;
  return (member.well_formed == nullptr || member.well_formed(src) == whole) &&
         ZBINARIO_bem_formado(width, src) == whole &&
         plain.size() < size_of(member.text_size + spare) &&
         (width <= 8 || decimals < 0 ||
          fixed.size() < size_of(BINQ_FIXO_TEXT_SIZE(member.digits, decimals) + spare)) &&
         shows_text(in, plain, [&](char *out) { return member.to_text(out, src) == out; }) &&
         shows_text(
             in, plain,
             [&](char *out) { return ZBINARIO_converteu_de_binario(out, src, width) == 1; }) &&
         shows_text(in, fixed,
                    [&](char *out) { return member.to_text_fixed(out, src, decimals) == out; }) &&
         shows_text(
             in, fixed,
             [&](char *out) { return ZBINARIO_btoafixo(width, out, src, decimals) == out; }) &&
         shows_text(in, exact, [&](char *out) {
           return ZBINARIO_converteu_n_de_binario(out, src, width, count) == 1;
         });
}

inline bool orders(NumericMemory &in, int width, const Field &a, const Field &b) {
  const unsigned char *left = place(in.dest, a), *right = place(in.other, b);
  const int expected = reference::compare(width, a, b);
  return member_of(width).compare(left, right) == expected &&
         ZBINARIO_compara(width, right, left) == -expected;
}

// To a field of another width, and within one piece of memory.
inline bool moves(NumericMemory &in, int width, const Field &field, int to) {
  const Field expected = reference::from_text(to, reference::to_text(width, field, 0));
  unsigned char *dest = in.other.at_end(size_of(to));
  if (ZBINARIO_move_para_de(dest, to, place(in.dest, field), width) != 1) return false;
  if (field_at(dest, to) != expected) return false;
  unsigned char *same = in.other.at_end(size_of(to > width ? to : width));
  std::memcpy(same, field.data(), field.size());
  return ZBINARIO_move_para_de(same, to, same, width) == 1 && field_at(same, to) == expected;
}

inline bool scales(NumericMemory &in, int width, const Field &field, unsigned power) {
  const Scaling &by = member_of(width).scaling;
  const reference::Quotient down = reference::divide(width, field, power);
  const Field up = reference::multiply(width, field, power);
  const auto makes = [&](const Field &expected, auto operation) {
    // In place, and from a source that stays.
    unsigned char *same = place(in.dest, field);
    if (!operation(same, same) || field_at(same, width) != expected) return false;
    const unsigned char *src = place(in.dest, field);
    unsigned char *dest = in.other.at_end(size_of(width));
    return operation(dest, src) && field_at(dest, width) == expected &&
           field_at(src, width) == field;
  };
  const auto multiplies = [&](auto operation) {
    return makes(up, [&](auto *dest, auto *src) { return operation(dest, src), true; });
  };
  const auto divides = [&](auto operation) {
    return makes(down.field,
                 [&](auto *dest, auto *src) { return operation(dest, src) == down.remainder; });
  };
  const auto by_power = [power](auto operation) {
    return [operation, power](auto *dest, auto *src) { return operation(dest, src, power); };
  };
  return multiplies(by_power(by.multiply)) && divides(by_power(by.divide)) &&
         (power != 1 || (multiplies(by.multiply_by_10) && divides(by.divide_by_10))) &&
         (power != 2 || (multiplies(by.multiply_by_100) && divides(by.divide_by_100)));
}

}  // namespace campotipo::test
