#pragma once

#include <campotipo/calendar.h>

#include <cstdint>

#include "base/bytes.hpp"
#include "tests/reference/calendar.hpp"
#include "tests/util/guarded_buffer.hpp"
#include "tests/util/random.hpp"

namespace campotipo::test {

// Every n-th bit pattern of a field is looked at: all of them, but in slow builds.
inline constexpr std::uint32_t kPatternStep = bytes::kWideReads ? 1 : 61;
inline constexpr std::uint32_t kPatterns = 1u << 24;

// A date field between inaccessible memory, known by its number.
class DateField {
 public:
  explicit DateField(bool at_start = false)
      : bytes_(at_start ? buffer_.at_start(DATAC_BYTES) : buffer_.at_end(DATAC_BYTES)) {}

  unsigned char *operator()(std::uint32_t number) {
    for (unsigned i = 0; i < DATAC_BYTES; ++i)
      bytes_[i] = static_cast<unsigned char>(number >> (8 * i));
    return bytes_;
  }
  unsigned char *operator()() { return bytes_; }

  std::uint32_t number() const { return bytes_[0] + bytes_[1] * 256u + bytes_[2] * 65536u; }

 private:
  GuardedBuffer buffer_;
  unsigned char *bytes_;
};

// DATAC_formato for as long as it lives.
struct InForce {
  explicit InForce(std::int32_t format) { DATAC_formato = format; }
  ~InForce() { DATAC_formato = DATAC_FORMATO_DECIMAL; }
  InForce(const InForce &) = delete;
  InForce &operator=(const InForce &) = delete;
};

// A date that exists, in either encoding.
inline std::uint32_t random_date(Random &random) {
  const std::int32_t month = random.between(1, 12);
  const bool packed = random.between(0, 1) == 1;
  const std::int32_t year = packed ? random.between(0, 4095) : random.between(1980, 2079);
  const std::int32_t day = random.between(1, reference::days_in_month(month, year));
  return reference::build(packed, {day, month, year});
}

// Any bit pattern, with the unusual kinds as common as the others.
inline std::uint32_t random_pattern(Random &random) {
  switch (random.between(0, 5)) {
    case 0:
      return random.between(0u, kPatterns - 1);
    case 1:
      return random.between(0, 1) == 1 ? 0x800000 : 0;
    case 2:
      return 0xA00000 | random.between(0u, 0x1FFFFFu);
    case 3:
      return random.between(0u, 999999u);
    default:
      return random_date(random);
  }
}

}  // namespace campotipo::test
