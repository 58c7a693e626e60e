#include "columns/encode_numbers.hpp"

#include <array>
#include <cstring>
#include <type_traits>

#include "kinds/bits.hpp"
#include "kinds/numbers.hpp"
#include "kinds/text_numbers.hpp"

namespace campotipo::records {

namespace {

__extension__ typedef unsigned __int128 Uint128;

constexpr std::uint64_t kLimb = 10000000000000000000U;
constexpr int kMostPower = 38;

constexpr auto kPowers = [] {
  std::array<Int128, kMostPower + 1> powers = {1};
  for (std::size_t i = 1; i < powers.size(); ++i) powers[i] = powers[i - 1] * 10;
  return powers;
}();

template <class Number, class Store>
void for_each(const Number *values, std::uint8_t *marks, std::size_t count,
              const FieldPlaces &fields, Store store) {
  unsigned char *at = fields.first;
  for (std::size_t i = 0; i < count; ++i, at += fields.stride) {
    if (marks[i] == kHasValue && !store(at, values[i])) marks[i] = kByText;
  }
}

template <int Bytes, class Number>
void whole(const Number *values, std::uint8_t *marks, std::size_t count,
           const FieldPlaces &fields) {
  for_each(values, marks, count, fields, [](unsigned char *field, Number value) {
    if constexpr (8 * Bytes < 63 || sizeof(Number) > 8) {
      if (value >> 8 * Bytes != 0) return false;
    } else if (value < 0) {
      return false;
    }
    std::memcpy(field, &value, Bytes);
    return true;
  });
}

template <class Number>
void money(const Number *values, std::uint8_t *marks, std::size_t count,
           const FieldPlaces &fields) {
  for_each(values, marks, count, fields, [](unsigned char *field, Number value) {
    const auto kept = static_cast<std::int64_t>(value);
    std::memcpy(field, &kept, sizeof kept);
    return kept == value;
  });
}

// A number of 64 bits is less than a limb; the limbs above it are zeros already.
template <int Bytes, class Number>
void limbs(const Number *values, std::uint8_t *marks, std::size_t count,
           const FieldPlaces &fields) {
  for_each(values, marks, count, fields, [](unsigned char *field, Number value) {
    if (value < 0) return false;
    std::uint64_t low = static_cast<std::uint64_t>(value);
    if constexpr (sizeof(Number) > 8) {
      if (value >= kPowers[kMostPower]) return false;
      if (value >= Int128{kLimb}) {
        const auto high = static_cast<std::uint64_t>(static_cast<Uint128>(value) / kLimb);
        low = static_cast<std::uint64_t>(static_cast<Uint128>(value) % kLimb);
        if constexpr (Bytes < 16) {
          if (high >= numbers::power_of_ten(numbers::sure_digits(Bytes - 8))) return false;
        }
        std::memcpy(field + 8, &high, Bytes < 16 ? Bytes - 8 : 8);
      }
    }
    std::memcpy(field, &low, sizeof low);
    return true;
  });
}

template <class Number>
void parts(const Number *values, std::uint8_t *marks, std::size_t count,
           const FieldPlaces &fields) {
  const Params &p = *fields.params;
  const auto store = p.big ? ZBTFIELD_big_monta_campo : ZBTFIELD_monta_campo;
  for_each(values, marks, count, fields, [&](unsigned char *area, Number value) {
    if (value < 0 || Int128{value} >> p.n != 0) return false;
    unsigned char number[8];
    std::memcpy(number, &value, sizeof number);
    store(number, area, p.start, p.n);
    return true;
  });
}

// Digits from the last one on; what is left of the number behind the first.
std::uint64_t put_digits(unsigned char *first, unsigned char *end, std::uint64_t value) {
  for (; end != first; value /= 10) *--end = static_cast<unsigned char>('0' + value % 10);
  return value;
}

// False where the digits are too many.
template <class Number>
bool put_number(unsigned char *digits, int count, Number value) {
  unsigned char *end = digits + count;
  if constexpr (sizeof(Number) > 8) {
    constexpr int kDigits = 19;
    for (; count > kDigits; count -= kDigits, end -= kDigits, value /= kLimb) {
      put_digits(end - kDigits, end, static_cast<std::uint64_t>(value % kLimb));
    }
    if (value >> 64 != 0) return false;
  }
  return put_digits(digits, end, static_cast<std::uint64_t>(value)) == 0;
}

template <class Number>
void numerals(const Number *values, std::uint8_t *marks, std::size_t count,
              const FieldPlaces &fields) {
  using Unsigned = std::conditional_t<(sizeof(Number) > 8), Uint128, std::uint64_t>;
  const Params &p = *fields.params;
  for_each(values, marks, count, fields, [&](unsigned char *field, Number value) {
    const bool negative = value < 0;
    if (negative && p.sign == Sign::kNone) return false;
    auto size = static_cast<Unsigned>(value);
    if (negative) size = 0 - size;
    unsigned char *digits = field + (p.sign == Sign::kLeading ? 1 : 0);
    if (!put_number(digits, p.n, size)) return false;
    if (p.pad == ' ') {
      for (int at = 0; at + 1 < p.n && digits[at] == '0'; ++at) digits[at] = ' ';
    }
    text_numbers::store_sign(field, negative, p);
    return p.empties.empty() || !characters::is_absent(field, p);
  });
}

template <class Number, std::size_t... I>
constexpr auto all_whole(std::index_sequence<I...>) {
  return std::array<StoreNumbers<Number>, sizeof...(I)>{whole<static_cast<int>(I) + 1, Number>...};
}

template <class Number, std::size_t... I>
constexpr auto all_limbs(std::index_sequence<I...>) {
  return std::array<StoreNumbers<Number>, sizeof...(I)>{limbs<static_cast<int>(I) + 9, Number>...};
}

// Gives false where the number cannot be told with so many decimals.
bool multiply(Int128 &value, Int128 power) {
  const Int128 most = kPowers[kMostPower] / power;
  if (value >= most || value <= -most) return false;
  value *= power;
  return true;
}

bool divide(Int128 &value, Int128 power) {
  const Int128 whole = value / power;
  if (whole * power != value) return false;
  value = whole;
  return true;
}

}  // namespace

template <class Number>
StoreNumbers<Number> store_numbers(const FieldType &type) {
  static constexpr auto kWhole = all_whole<Number>(std::make_index_sequence<8>());
  static constexpr auto kLimbs = all_limbs<Number>(std::make_index_sequence<13>());
  const auto bytes = static_cast<std::size_t>(type.bytes);
  switch (type.column) {
    case ColumnForm::kUnsigned:
      return kWhole[bytes - 1];
    case ColumnForm::kSigned:
      return money<Number>;
    case ColumnForm::kLimbs:
      return kLimbs[bytes - 9];
    case ColumnForm::kBits:
      return parts<Number>;
    case ColumnForm::kNumber:
      return numerals<Number>;
    default:
      return nullptr;
  }
}

template StoreNumbers<std::int64_t> store_numbers(const FieldType &type);
template StoreNumbers<Int128> store_numbers(const FieldType &type);

void rescale(Int128 *values, std::uint8_t *marks, std::size_t count, int from, int to) {
  const int steps = to > from ? to - from : from - to;
  if (steps == 0) return;
  for (std::size_t i = 0; i < count; ++i) {
    if (marks[i] != kHasValue || values[i] == 0) continue;
    const Int128 power = kPowers[static_cast<std::size_t>(steps < kMostPower ? steps : kMostPower)];
    const bool exact =
        steps <= kMostPower && (to > from ? multiply(values[i], power) : divide(values[i], power));
    if (!exact) marks[i] = kByText;
  }
}

}  // namespace campotipo::records
