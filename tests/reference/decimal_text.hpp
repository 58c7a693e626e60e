#pragma once

#include <algorithm>
#include <climits>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

// Numeric fields of 1 to 21 bytes worked out slowly on strings of digits, one step after the other,
// without any of the library. A field is a string of its bytes.
namespace campotipo::test::reference {

using Text = std::string;
using Field = std::string;

struct Shape {
  int bytes;
  int digits;
  int limbs;
  int high_bytes;
  int high_digits;
  int scan_limit;
};

// As many digits as every number of them fits the bytes: 10^digits is at most 256^bytes.
inline int digits_of(int bytes) {
  long double room = 1;
  for (int i = 0; i < bytes; ++i) room *= 256;
  int digits = 0;
  for (; room >= 10; room /= 10) ++digits;
  return digits;
}

inline Shape shape(int width) {
  const int limbs = (width + 7) / 8;
  const int high_bytes = width - 8 * (limbs - 1);
  const int capacity = digits_of(8) * (limbs - 1) + digits_of(high_bytes);
  const int scan_limit = limbs == 2 ? 49 : capacity + digits_of(8);
  return {width, capacity, limbs, high_bytes, digits_of(high_bytes), scan_limit};
}

inline bool is_blank(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
inline bool is_digit(char c) { return c >= '0' && c <= '9'; }

inline Field number_field(std::uint64_t value, int bytes) {
  Field field;
  for (int i = 0; i < bytes; ++i) field += static_cast<char>(value >> (8 * i));
  return field;
}

inline std::uint64_t number_of(std::string_view field) {
  std::uint64_t value = 0;
  for (std::size_t i = field.size(); i-- > 0;)
    value = value << 8 | static_cast<unsigned char>(field[i]);
  return value;
}

// A limb from its text: blanks, then digits up to the first other byte, modulo the width.
inline Field limb_from_text(const Text &text, int bytes) {
  std::size_t at = 0;
  while (at < text.size() && is_blank(text[at])) ++at;
  std::uint64_t value = 0;
  for (; at < text.size() && is_digit(text[at]); ++at)
    value = value * 10 + static_cast<unsigned>(text[at] - '0');
  return number_field(value, bytes);
}

inline Text limb_to_text(std::string_view limb, int decimals) {
  Text text = std::to_string(number_of(limb));
  if (decimals <= 0) return text;
  const auto places = static_cast<std::size_t>(decimals);
  if (text.size() <= places) text.insert(0, places + 1 - text.size(), '0');
  return text.insert(text.size() - places, 1, '.');
}

// The rightmost `count` characters, with zeros in front of a shorter text.
inline Text rightmost(const Text &text, std::size_t count) {
  if (text.size() < count) return Text(count - text.size(), '0') + text;
  return text.substr(text.size() - count);
}

inline std::string_view limb_of(const Field &field, int limb) {
  return std::string_view(field).substr(static_cast<std::size_t>(8 * limb), 8);
}

inline bool is_zero(const Field &field) { return field.find_first_not_of('\0') == Field::npos; }

inline Field from_text(int width, Text text) {
  const Shape member = shape(width);
  Field field;
  for (int limb = 0; limb < member.limbs; ++limb) {
    const bool highest = limb == member.limbs - 1;
    // A number of one limb takes its text whole, and so does the lowest limb of any text.
    const std::size_t room = width <= 8 ? text.size() : highest ? member.high_digits : 19;
    const std::size_t taken = std::min(room, text.size());
    field += limb_from_text(text.substr(text.size() - taken), highest ? member.high_bytes : 8);
    text.resize(text.size() - taken);
  }
  return field;
}

inline Text to_text(int width, const Field &field, int decimals) {
  int limb = shape(width).limbs - 1;
  auto lower_limbs = [&] {
    Text text;
    for (int i = limb - 1; i >= 0; --i) text += rightmost(limb_to_text(limb_of(field, i), 0), 19);
    return text;
  };
  for (; limb > 0; --limb) {
    const int below = 19 * limb;
    const std::string_view bytes = limb_of(field, limb);
    if (decimals > below) return limb_to_text(bytes, decimals - below) + lower_limbs();
    if (decimals == below) return limb_to_text(bytes, 0) + "." + lower_limbs();
    if (number_of(bytes) != 0) {
      Text text = limb_to_text(bytes, 0) + lower_limbs();
      if (decimals > 0) text.insert(text.size() - static_cast<std::size_t>(decimals), 1, '.');
      return text;
    }
  }
  return limb_to_text(limb_of(field, 0), decimals);
}

// The digits that a text with a decimal point stands for. Zeros beyond `most` are left out.
inline Text scan(const Text &text, int decimals, int limit, int most) {
  std::size_t at = 0;
  while (at < text.size() && is_blank(text[at])) ++at;
  bool point = false;
  int taken = 0;
  Text digits;
  for (; at < text.size(); ++at) {
    if (is_digit(text[at])) {
      if (point && taken >= decimals) break;
      if (point) ++taken;
      if (digits.size() == static_cast<std::size_t>(limit)) break;
      digits += text[at];
    } else if (text[at] == '.' && !point) {
      point = true;
    } else {
      break;
    }
  }
  if (decimals > taken)
    digits.append(static_cast<std::size_t>(std::min(decimals - taken, most)), '0');
  return digits;
}

inline Field from_text_fixed(int width, const Text &text, int decimals) {
  // 64 zeros are 0 in any number of 8 bytes, and more than the digits of any wider one.
  const int limit = width <= 8 ? INT_MAX : shape(width).scan_limit;
  return from_text(width, scan(text, decimals, limit, 64));
}

inline int compare(int width, const Field &a, const Field &b) {
  for (int limb = shape(width).limbs - 1; limb >= 0; --limb) {
    const std::uint64_t left = number_of(limb_of(a, limb)), right = number_of(limb_of(b, limb));
    if (left != right) return left < right ? -1 : 1;
  }
  return 0;
}

inline int atoi(const Text &text) {
  return static_cast<int>(std::strtol(text.c_str(), nullptr, 10));
}

struct Quotient {
  Field field;
  int remainder;
};

inline Quotient divide(int width, const Field &field, unsigned power) {
  const Text text = to_text(width, field, 0);
  if (text.size() <= power) {
    return {Field(static_cast<std::size_t>(width), '\0'), atoi(text)};
  }
  const std::size_t kept = text.size() - power;
  return {from_text(width, text.substr(0, kept)), atoi(text.substr(kept))};
}

inline Field multiply(int width, Field field, unsigned power) {
  const auto digits = static_cast<std::size_t>(shape(width).digits);
  power = std::min(power, 60u);  // more zeros than any field has digits
  while (power != 0) {
    const unsigned chunk = std::min(power, 10u);
    const Text text = to_text(width, field, 0) + Text(chunk, '0');
    field = from_text(width, text.size() > digits ? text.substr(text.size() - digits) : text);
    power -= chunk;
  }
  return field;
}

}  // namespace campotipo::test::reference
