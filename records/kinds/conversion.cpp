#include "kinds/conversion.hpp"

#include <campotipo/codes.h>

#include <algorithm>
#include <string>

#include "text/ascii.hpp"

namespace campotipo::records::conversion {

namespace {

// A decimal text without the zeros that say nothing.
struct Decimal {
  bool valid = false;
  bool negative = false;
  std::string_view whole;
  std::string_view fraction;

  explicit Decimal(std::string_view text) {
    negative = !text.empty() && text[0] == '-';
    if (negative) text.remove_prefix(1);
    const std::size_t point = std::min(text.find('.'), text.size());
    whole = text.substr(0, point);
    fraction = point < text.size() ? text.substr(point + 1) : std::string_view();
    valid = whole.size() + fraction.size() > 0 && ascii::all_digits(whole) &&
            ascii::all_digits(fraction);
    while (!whole.empty() && whole.front() == '0') whole.remove_prefix(1);
    trim();
  }

  // What is left of it with so many decimals.
  Decimal cut(int decimals) const {
    Decimal rest = *this;
    rest.fraction = fraction.substr(0, static_cast<std::size_t>(decimals));
    rest.trim();
    return rest;
  }

  bool operator==(const Decimal &) const = default;

 private:
  void trim() {
    while (!fraction.empty() && fraction.back() == '0') fraction.remove_suffix(1);
    if (whole.empty() && fraction.empty()) negative = false;
  }
};

std::string_view without_zeros(std::string_view text) {
  while (!text.empty() && text.front() == '0') text.remove_prefix(1);
  return text;
}

}  // namespace

const char *decimal(std::string_view text, std::string_view back, int decimals) {
  const Decimal given(text);
  const Decimal kept(back);
  if (!given.valid) return "is no number";
  if (given == kept) return nullptr;
  if (given.cut(decimals) == kept) return kDecimalsCut;
  if (given.negative && kept == Decimal("0")) return "below zero: the field has no sign";
  return "too large for the field";
}

const char *code(std::string_view text, std::string_view back, bool known, bool zeros, bool fold) {
  if (!known) return "characters outside the alphabet dropped";
  std::string_view trimmed = text;
  while (!trimmed.empty() && trimmed.back() == ' ') trimmed.remove_suffix(1);
  const std::string_view given = zeros ? without_zeros(trimmed) : trimmed;
  const std::string_view kept = zeros ? without_zeros(back) : back;
  if (ascii::capitals(given) == kept) {
    if (fold || given == kept) {
      return trimmed.size() == text.size() || fold ? nullptr : "blanks at the end dropped";
    }
    return "small letters stored as capitals";
  }
  constexpr std::string_view kAlphabet = CODALFA_ALFABETO;
  if (ascii::capitals(text).find_first_not_of(kAlphabet) != std::string::npos) {
    return "characters outside the alphabet dropped";
  }
  return "too long: cut to the positions of the code";
}

const char *guid(std::string_view text, std::string_view back) {
  const auto digits_of = [](std::string_view from) {
    std::string digits;
    for (const char c : from) {
      if (c != '-' && c != '{' && c != '}') digits += ascii::capital(c);
    }
    return digits;
  };
  return digits_of(text) == digits_of(back) ? nullptr
                                            : "is no GUID: 32 hexadecimal digits expected";
}

const char *digits(std::string_view text, std::size_t room) {
  if (!ascii::all_digits(text)) return "has characters that are no digits";
  return text.size() > room ? "more digits than the field holds" : nullptr;
}

}  // namespace campotipo::records::conversion
