#pragma once

#include <cstddef>
#include <cstdint>

#include "columns/arrow_input.hpp"
#include "kinds/type.hpp"

// Numbers straight into the stored forms of numeric fields.
namespace campotipo::records {

// Marks of a row in front of its value.
enum RowMark : std::uint8_t {
  kHasValue,
  kHasNone,
  kByText,  // the number has to go through its text, which tells what is lost
};

// `count` fields of records that lie one behind the other, of zeros.
struct FieldPlaces {
  unsigned char *first;
  std::size_t stride;
  const Params *params;
};

// Stores each number that the field holds; marks kByText for the others. Rows that are marked
// already are left.
template <class Number>
using StoreNumbers = void (*)(const Number *values, std::uint8_t *marks, std::size_t count,
                              const FieldPlaces &fields);

// Null for a kind of field that takes numbers by their text.
template <class Number>
StoreNumbers<Number> store_numbers(const FieldType &type);

// Makes numbers of `from` decimals such of `to` decimals, exactly; marks kByText where that cannot
// be.
void rescale(Int128 *values, std::uint8_t *marks, std::size_t count, int from, int to);

}  // namespace campotipo::records
