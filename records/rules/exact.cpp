#include "rules/exact.hpp"

#include <algorithm>

#include "text/ascii.hpp"

namespace campotipo::records {

bool Exact::read(std::string_view text, Exact &value) {
  const bool negative = text.starts_with('-');
  if (negative) text.remove_prefix(1);
  if (text.ends_with('%')) text.remove_suffix(1);
  constexpr std::int64_t kPowers = 10;
  std::int64_t limb = 0;
  std::int64_t power = 1;
  int at = 0;
  bool any = false;
  value = {};
  for (std::size_t i = text.size(); i-- > 0;) {
    if (text[i] == '.') continue;
    if (!ascii::is_digit(text[i]) || at == kLimbs) return false;
    any = true;
    limb += (text[i] - '0') * power;
    power *= kPowers;
    if (power < kBase) continue;
    value.limbs_[at++] = limb;
    limb = 0;
    power = 1;
  }
  if (at < kLimbs) value.limbs_[at] = limb;
  if (negative) {
    for (Wide &each : value.limbs_) each = -each;
  }
  return any;
}

std::string Exact::text(int decimals) const {
  Wide limbs[kLimbs];
  std::copy(limbs_, limbs_ + kLimbs, limbs);
  const auto carry = [&] {
    for (int i = 0; i + 1 < kLimbs; ++i) {
      Wide over = limbs[i] / kBase;
      if (limbs[i] % kBase < 0) --over;
      limbs[i] -= over * kBase;
      limbs[i + 1] += over;
    }
  };
  carry();
  const bool negative = limbs[kLimbs - 1] < 0;
  if (negative) {
    for (Wide &each : limbs) each = -each;
    carry();
  }
  std::string digits;
  for (int i = 0; i < kLimbs; ++i) {
    Wide left = limbs[i];
    const bool top = i + 1 == kLimbs;
    for (int digit = 0; top ? left != 0 : digit < kDigits; ++digit) {
      digits += static_cast<char>('0' + static_cast<int>(left % 10));
      left /= 10;
    }
  }
  const auto least = static_cast<std::size_t>(decimals) + 1;
  while (digits.size() > least && digits.back() == '0') digits.pop_back();
  digits.resize(std::max(digits.size(), least), '0');
  std::reverse(digits.begin(), digits.end());
  if (decimals > 0) digits.insert(digits.size() - static_cast<std::size_t>(decimals), ".");
  return (negative ? "-" : "") + digits;
}

}  // namespace campotipo::records
