#pragma once

#include <cstdint>
#include <string>

#include "layout/layout.hpp"

namespace campotipo::records {

// How the values of a column lie in memory: the types that every engine takes.
enum class Physical : std::uint8_t {
  kBool,  // a bit
  kInt32,
  kInt64,
  kDecimal128,  // 16 bytes
  kDecimal256,  // 32 bytes
  kUtf8,        // offsets of 4 bytes, and bytes
  kDate32,      // days since 1970-01-01
  kTime32,      // seconds
  kTime64,      // nanoseconds
};

// What a number of more than 38 digits becomes.
enum class Wide : std::uint8_t { kString, kDecimal128, kDecimal256 };

// The unit of a time of day.
enum class Times : std::uint8_t { kSeconds, kNanoseconds };

struct ColumnType {
  Physical physical = Physical::kUtf8;
  int precision = 0;  // of a decimal: digits
  int scale = 0;      // of a decimal: digits behind the point

  // Bytes a value takes; 0 for bits and texts.
  std::size_t bytes() const;

  // As the Arrow C interface writes it.
  std::string arrow() const;
};

// Throws an Error where Wide::kDecimal128 is asked for a field with more than 38 decimals.
ColumnType column_type(const Field &field, Wide wide, Times times);

}  // namespace campotipo::records
