#pragma once

#include <cstdint>
#include <optional>
#include <string>

// The percents and their rounding told once more: plain arithmetic on counts of units, exact in
// 128 bits, and slow. The tests and the fuzzer hold the library against it.
namespace campotipo::reference {

__extension__ using wide = __int128;

enum class Rule { kCut, kFiveUp, kNbr };
inline constexpr Rule kRules[] = {Rule::kCut, Rule::kFiveUp, Rule::kNbr};

struct Percent {
  int decimals;
  int bytes;
  std::int64_t hundred;
};

inline std::int64_t nearest(wide value) {
  return value > INT64_MAX   ? INT64_MAX
         : value < INT64_MIN ? INT64_MIN
                             : static_cast<std::int64_t>(value);
}

inline wide power_of_ten(long exponent) {
  wide power = 1;
  while (exponent-- > 0) power *= 10;
  return power;
}

// A count divided by 10^digits and rounded to nearest, or cut. What is dropped is compared doubled
// with the whole; below zero nothing is lifted.
inline std::int64_t dropped(std::int64_t count, long digits, Rule rule, bool odd_tie_only) {
  if (digits < 1) return count;
  if (digits > 19) return 0;  // not even one half of 10^20 fits
  const wide power = power_of_ten(digits);
  const wide kept = count / power;
  const wide twice = 2 * (count % power);
  if (rule == Rule::kCut || twice < power) return static_cast<std::int64_t>(kept);
  const bool stays = rule == Rule::kNbr && odd_tie_only && twice == power && kept % 2 == 0;
  return static_cast<std::int64_t>(kept + (stays ? 0 : 1));
}

// ARRED_div forms. The marker hides all dropped digits but the first two.
inline std::int64_t divided(std::int64_t count, int digits, Rule rule, bool marker) {
  if (marker && rule == Rule::kNbr && digits > 2)
    return dropped(dropped(count, digits - 2, Rule::kCut, true), 2, rule, true);
  return dropped(count, digits, rule, true);
}

// ARRED_v4 forms. Under the marker every tie goes up.
inline std::int64_t kept_places(std::int64_t count, int casas, int extras, int fixo, Rule rule,
                                bool marker) {
  const long zeros = casas < fixo ? long{fixo} - casas : 0;
  const long digits = extras + zeros;
  if (digits < 1) return count;
  std::int64_t result = dropped(count, digits, rule, !marker);
  for (long i = 0; i < zeros && result != 0 && i < 20; ++i) result = nearest(wide{result} * 10);
  return result;
}

inline int extras(const Percent &kind, Rule rule) {
  return static_cast<int>(rule) + (kind.decimals > 2 ? kind.decimals - 2 : 0);
}

// The product with the decimals that the rounding of a v4 form gets.
inline std::int64_t product(const Percent &kind, std::int64_t base, std::int64_t percent,
                            Rule rule) {
  return nearest(wide{base} * percent * power_of_ten(extras(kind, rule)) / kind.hundred);
}

inline std::int64_t multiplied(const Percent &kind, std::int64_t base, std::int64_t percent,
                               Rule rule) {
  std::int64_t seen = product(kind, base, percent, rule);
  if (kind.decimals == 4) seen /= 100;
  return dropped(seen, static_cast<int>(rule), rule, true);
}

inline std::int64_t multiplied_v4(const Percent &kind, std::int64_t base, std::int64_t percent,
                                  Rule rule, int casas, int fixo, bool marker) {
  return kept_places(product(kind, base, percent, rule), casas, extras(kind, rule), fixo, rule,
                     marker);
}

inline std::uint64_t low_bits(const Percent &kind, std::int64_t number) {
  return static_cast<std::uint64_t>(number) & (~std::uint64_t{0} >> (64 - 8 * kind.bytes));
}

inline std::uint64_t divided_by(const Percent &kind, std::int64_t numerator,
                                std::int64_t denominator) {
  if (denominator == 0) return 0;
  const wide scaled = kind.decimals == 4 ? wide{nearest(wide{numerator} * 100)} : wide{numerator};
  const std::int64_t ratio = nearest(scaled * 10000 / denominator);
  return low_bits(kind, kind.decimals < 2 ? ratio / (10000 / kind.hundred) : ratio);
}

inline std::uint64_t inverted(const Percent &kind, std::int64_t percent) {
  if (percent == 0) return static_cast<std::uint64_t>(kind.hundred);
  return low_bits(kind, kind.hundred * kind.hundred / percent);
}

// The estimate, and where the climb by single units from it ends; INT64_MIN if not in `limit`
// steps.
inline std::int64_t estimated(const Percent &kind, std::int64_t target, std::int64_t percent,
                              Rule rule) {
  if (percent == 0 || percent == kind.hundred) return target;
  return multiplied(kind, target, static_cast<std::int64_t>(inverted(kind, percent)), rule);
}
inline std::optional<std::int64_t> climbed(const Percent &kind, std::int64_t target,
                                           std::int64_t percent, Rule rule, long limit) {
  std::int64_t result = estimated(kind, target, percent, rule);
  if (percent == 0 || percent == kind.hundred) return result;
  while (multiplied(kind, result, percent, rule) < target && result != INT64_MAX) {
    if (limit-- == 0) return std::nullopt;
    ++result;
  }
  return result;
}

inline std::string edited(const Percent &kind, std::uint64_t percent, bool exact) {
  const auto places = static_cast<std::uint64_t>(power_of_ten(kind.decimals));
  std::string text = std::to_string(percent / places);
  if (kind.decimals > 0) {
    // The 1 in front keeps the zeros, and then becomes the point.
    std::string decimals = std::to_string(places + percent % places);
    decimals.front() = '.';
    if (exact) decimals.erase(decimals.find_last_not_of('0') + 1);
    if (decimals != ".") text += decimals;
  }
  text += '%';
  return text;
}

}  // namespace campotipo::reference
