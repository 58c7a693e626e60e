#include "kinds/judge.hpp"

#include <campotipo/codes.h>

#include <algorithm>
#include <string>

namespace campotipo::tool::judge {

namespace {

bool is_digit(char c) { return c >= '0' && c <= '9'; }

bool is_hex(char c) { return is_digit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F'); }

char capital(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c; }

std::string capitals(std::string_view text) {
  std::string folded(text);
  std::transform(folded.begin(), folded.end(), folded.begin(), capital);
  return folded;
}

// A decimal text without the zeros that say nothing.
struct Decimal {
  bool good = false;
  bool negative = false;
  std::string_view whole;
  std::string_view fraction;

  explicit Decimal(std::string_view text) {
    negative = !text.empty() && text[0] == '-';
    if (negative) text.remove_prefix(1);
    const std::size_t point = std::min(text.find('.'), text.size());
    whole = text.substr(0, point);
    fraction = point < text.size() ? text.substr(point + 1) : std::string_view();
    good = whole.size() + fraction.size() > 0 &&
           std::all_of(whole.begin(), whole.end(), is_digit) &&
           std::all_of(fraction.begin(), fraction.end(), is_digit);
    while (!whole.empty() && whole.front() == '0') whole.remove_prefix(1);
    while (!fraction.empty() && fraction.back() == '0') fraction.remove_suffix(1);
    if (whole.empty() && fraction.empty()) negative = false;
  }
};

std::string_view without(std::string_view text, char front) {
  while (!text.empty() && text.front() == front) text.remove_prefix(1);
  return text;
}

}  // namespace

const char *decimal(std::string_view text, std::string_view back, int decimals) {
  const Decimal given(text);
  const Decimal kept(back);
  if (!given.good) return "is no number";
  if (given.negative == kept.negative && given.whole == kept.whole &&
      given.fraction == kept.fraction) {
    return nullptr;
  }
  if (given.fraction.size() > static_cast<std::size_t>(decimals) && given.whole == kept.whole) {
    return "more decimals than the field keeps";
  }
  if (given.negative && !kept.negative) return "below zero: the field has no sign";
  return "too large for the field";
}

const char *code(std::string_view text, std::string_view back, bool known, bool zeros, bool fold) {
  if (!known) return "characters outside the alphabet passed over";
  std::string_view trimmed = text;
  while (!trimmed.empty() && trimmed.back() == ' ') trimmed.remove_suffix(1);
  const std::string_view given = zeros ? without(trimmed, '0') : trimmed;
  const std::string_view kept = zeros ? without(back, '0') : back;
  if (capitals(given) == kept) {
    if (fold || given == kept) {
      return trimmed.size() == text.size() || fold ? nullptr : "blanks at the end dropped";
    }
    return "small letters stored as capitals";
  }
  constexpr std::string_view kAlphabet = CODALFA_ALFABETO;
  if (capitals(text).find_first_not_of(kAlphabet) != std::string::npos) {
    return "characters outside the alphabet passed over";
  }
  return "too long: cut to the positions of the code";
}

const char *guid(std::string_view text, std::string_view back) {
  std::string given;
  std::string kept;
  for (const char c : capitals(text)) {
    if (c == '-' || c == '{' || c == '}') continue;
    if (!is_hex(c)) return "is no GUID";
    given += c;
  }
  for (const char c : capitals(back)) {
    if (is_hex(c)) kept += c;
  }
  return given == kept ? nullptr : "is no GUID: 32 hexadecimal digits expected";
}

const char *digits(std::string_view text, std::size_t room) {
  if (!std::all_of(text.begin(), text.end(), is_digit)) return "has characters that are no digits";
  return text.size() > room ? "too many digits: cut on the right" : nullptr;
}

}  // namespace campotipo::tool::judge
