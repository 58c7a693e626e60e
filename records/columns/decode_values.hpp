#pragma once

#include "columns/kernels.hpp"
#include "columns/parts.hpp"

// What the loops that decode share. It stands in the namespace of one set of kernels, and none of it
// is seen outside the file that includes it.
namespace campotipo::records::CAMPOTIPO_KERNELS_NAMESPACE {

namespace {

using U64 = std::uint64_t;
__extension__ typedef unsigned __int128 U128;
__extension__ typedef __int128 I128;

template <class Value>
void put(void *values, std::size_t at, Value value) {
  __builtin_memcpy(static_cast<char *>(values) + at * sizeof value, &value, sizeof value);
}

template <int Bytes>
U64 load(const unsigned char *field) {
  U64 value = 0;
  __builtin_memcpy(&value, field, Bytes);
  return value;
}

inline bool note(const DecodeOutput &out, std::size_t at, ValueState state) {
  out.states[at] = static_cast<std::uint8_t>(state);
  return true;
}

inline bool at_fault(const DecodeInput &in, const unsigned char *field) {
  return in.type->fault(field, *in.params) != nullptr;
}

struct Wide256 {
  U64 word[4];
};

// value * factor + more.
inline Wide256 times_plus(const Wide256 &value, U64 factor, U64 more) {
  Wide256 result;
  U128 carry = more;
  for (int i = 0; i < 4; ++i) {
    carry += U128{value.word[i]} * factor;
    result.word[i] = static_cast<U64>(carry);
    carry >>= 64;
  }
  return result;
}

}  // namespace

// Texts as the kind of field writes them.
bool texts(const DecodeInput &in, const DecodeOutput &out);

// The loops for fields that are stored as characters; null for other fields.
Decode decode_characters(const FieldType &type, const ColumnType &column);
Decode decode_digits(Physical physical);

}  // namespace campotipo::records::CAMPOTIPO_KERNELS_NAMESPACE
