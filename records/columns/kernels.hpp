#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "columns/physical.hpp"
#include "kinds/type.hpp"

// The inner loops of the columns: one call decodes a field of many records.
namespace campotipo::records {

// Where the records of a block stand.
struct DecodeInput {
  const unsigned char *const *records;
  std::size_t count;
  std::size_t offset;  // of the field in each
  const FieldType *type;
  const Params *params;
  std::size_t record_bytes = 0;  // that may be read of each; 0: those of the field
};

// What became of a value.
enum class ValueState : std::uint8_t { kValue, kNull, kFault, kTooLarge };

struct DecodeOutput {
  void *values;           // of the column's own type; a byte a value for bits
  std::int32_t *offsets;  // of texts: where each ends; the first begins at `begin`
  char *bytes;            // of texts: `count` times the room of the type
  std::int32_t begin;     // of texts
  std::uint8_t *states;   // ValueState of each value, zeros before
};

// Values that are null or at fault are zero, or a text of no length. True if there are any.
using Decode = bool (*)(const DecodeInput &in, const DecodeOutput &out);

struct Kernels {
  const char *name;
  Decode (*decode)(const FieldType &type, const ColumnType &column);
};

// Those of this processor, chosen at the first call; the environment variable
// CAMPOTIPO_KERNELS=plain asks for those that every x86-64 runs.
const Kernels &kernels();

// All that this processor runs, for tests.
std::vector<const Kernels *> all_kernels();

}  // namespace campotipo::records
