#include "kinds/text_numbers.hpp"

#include <bit>
#include <string>

namespace campotipo::records::text_numbers {

namespace {

constexpr char kPositive[] = "{ABCDEFGHI";
constexpr char kNegative[] = "}JKLMNOPQR";

std::size_t count_of(const Params &p) { return static_cast<std::size_t>(p.n); }

// The digit, with the sign where it is below zero. A plain digit is one without sign.
bool read_overpunch(unsigned char &last, bool &negative) {
  for (unsigned char digit = 0; digit < 10; ++digit) {
    if (last != kPositive[digit] && last != kNegative[digit]) continue;
    negative = last == kNegative[digit];
    last = static_cast<unsigned char>('0' + digit);
    return true;
  }
  return last >= '0' && last <= '9';
}

bool read_sign(unsigned char sign, bool &negative) {
  negative = sign == '-';
  return negative || sign == '+' || sign == ' ';
}

const unsigned char *first_digit(const unsigned char *field, const Params &p) {
  return field + (p.sign == Sign::kLeading ? 1 : 0);
}

}  // namespace

bool read(Digits &number, const unsigned char *field, const Params &p) {
  const std::size_t count = count_of(p);
  number.negative = false;
  const unsigned char *first = first_digit(field, p);
  for (std::size_t at = 0; at < count; at += 16) {
    const __m128i bytes = characters::load(first + at, std::min<std::size_t>(16, count - at));
    std::memcpy(number.digit + at, &bytes, sizeof bytes);
  }
  if (p.sign == Sign::kLeading && !read_sign(field[0], number.negative)) return false;
  if (p.sign == Sign::kTrailing && !read_sign(field[count], number.negative)) return false;
  if (p.sign == Sign::kOverpunch && !read_overpunch(number.digit[count - 1], number.negative)) {
    return false;
  }
  if (p.pad == ' ') {
    for (std::size_t at = 0; at + 1 < count && number.digit[at] == ' '; ++at) {
      number.digit[at] = '0';
    }
  }
  return characters::all_digits(number.digit, count);
}

namespace {

// In pieces of sixteen bytes: there is room behind.
void copy(char *out, const unsigned char *digits, std::size_t count) {
  for (std::size_t at = 0; at < count; at += 16) std::memcpy(out + at, digits + at, 16);
}

// Digits as a decimal text: at least one in front of the point.
char *put_decimal(char *out, const unsigned char *digits, bool negative, const Params &p) {
  const std::size_t count = count_of(p);
  const auto decimals = static_cast<std::size_t>(p.decimals);
  const std::size_t whole = count - decimals;
  std::size_t at = 0;
  while (at < count && digits[at] == '0') ++at;
  if (negative && at < count) *out++ = '-';
  at = std::min(at, whole == 0 ? 0 : whole - 1);
  if (whole == 0) *out++ = '0';
  copy(out, digits + at, whole - at);
  out += whole - at;
  if (decimals == 0) return out;
  *out++ = '.';
  copy(out, digits + whole, decimals);
  return out + decimals;
}

// The same of up to 16 * Pieces digits without sign; null where there are others. What is read behind
// them is not looked at.
template <std::size_t Pieces>
char *put_plain(char *out, const unsigned char *field, const Params &p) {
  char digits[32 * Pieces] = {};
  unsigned wrong = 0;
  unsigned zeros = 0;
  for (std::size_t i = 0; i < Pieces; ++i) {
    const std::size_t left = count_of(p) - 16 * i;
    const __m128i bytes = i + 1 < Pieces ? scan::load(reinterpret_cast<const char *>(field))
                                         : characters::load(field + 16 * i, left);
    _mm_storeu_si128(reinterpret_cast<__m128i *>(digits + 16 * i), bytes);
    wrong |= scan::not_digits(bytes) & scan::first(left);
    zeros |= scan::mask(scan::equal(bytes, '0')) << 16 * i;
  }
  if (wrong != 0) return nullptr;
  const auto put = [&](int from, int count) {
    for (std::size_t i = 0; i < Pieces; ++i) std::memcpy(out + 16 * i, digits + from + 16 * i, 16);
    out += count;
  };
  const int whole = p.n - p.decimals;
  const int first = whole == 0 ? 0 : std::min(std::countr_one(zeros), whole - 1);
  if (whole == 0) *out++ = '0';
  put(first, whole - first);
  if (p.decimals == 0) return out;
  *out++ = '.';
  put(whole, p.decimals);
  return out;
}

// A sign, blanks, more digits, or bytes that are no number.
[[gnu::noinline]] char *put_other(char *out, const unsigned char *field, const Params &p) {
  Digits number;
  if (!read(number, field, p)) {
    return characters::put_bytes(out, field, static_cast<std::size_t>(p.bytes), p);
  }
  return put_decimal(out, number.digit, number.negative, p);
}

}  // namespace

char *put(char *out, const unsigned char *field, const Params &p) {
  if (characters::is_absent(field, p)) return out;
  if (p.sign == Sign::kNone && p.n <= 32) {
    char *end = p.n <= 16 ? put_plain<1>(out, field, p) : put_plain<2>(out, field, p);
    if (end != nullptr) return end;
  }
  return put_other(out, field, p);
}

const char *fault(const unsigned char *field, const Params &p) {
  Digits number;
  if (read(number, field, p) || characters::is_absent(field, p)) return nullptr;
  const unsigned char sign = field[p.sign == Sign::kTrailing ? p.n : 0];
  bool negative = false;
  if (has_sign_byte(p.sign) && !read_sign(sign, negative)) return "a sign other than + and -";
  return "a character that is no digit";
}

int compare(const unsigned char *a, const unsigned char *b, const Params &p) {
  Digits first;
  Digits second;
  const bool is_first = !characters::is_absent(a, p) && read(first, a, p);
  const bool is_second = !characters::is_absent(b, p) && read(second, b, p);
  if (!is_first || !is_second) {
    if (is_first != is_second) return is_first ? 1 : -1;
    return std::memcmp(a, b, static_cast<std::size_t>(p.bytes));
  }
  const auto zero = [&](const Digits &number) {
    return std::all_of(number.digit, number.digit + p.n, [](unsigned char c) { return c == '0'; });
  };
  const bool below = first.negative && !zero(first);
  if (below != (second.negative && !zero(second))) return below ? -1 : 1;
  const int order = std::memcmp(first.digit, second.digit, count_of(p));
  return below ? -order : order;
}

namespace {

// A decimal text, cut at its point.
struct Decimal {
  bool valid = false;
  bool negative = false;
  std::string_view whole;
  std::string_view fraction;
};

bool is_digits(std::string_view text) {
  return characters::all_digits(reinterpret_cast<const unsigned char *>(text.data()), text.size());
}

Decimal decimal_of(std::string_view text) {
  Decimal number;
  number.negative = text.starts_with('-');
  if (number.negative) text.remove_prefix(1);
  const std::size_t point = std::min(text.find('.'), text.size());
  number.whole = text.substr(0, point);
  number.fraction = text.substr(std::min(point + 1, text.size()));
  number.valid = number.whole.size() + number.fraction.size() > 0 && is_digits(number.whole) &&
                 is_digits(number.fraction);
  return number;
}

bool all_zeros(std::string_view text) { return text.find_first_not_of('0') == text.npos; }

}  // namespace

void store_sign(unsigned char *field, bool negative, const Params &p) {
  if (p.sign == Sign::kLeading) field[0] = negative ? '-' : '+';
  if (p.sign == Sign::kTrailing) field[p.n] = negative ? '-' : '+';
  if (p.sign != Sign::kOverpunch) return;
  unsigned char &last = field[p.n - 1];
  last = static_cast<unsigned char>((negative ? kNegative : kPositive)[last - '0']);
}

namespace {

// The digits fit; those of the fraction that the field lacks are zeros.
void store(unsigned char *field, const Decimal &number, const Params &p) {
  auto *digits = field + (p.sign == Sign::kLeading ? 1 : 0);
  const std::size_t whole = count_of(p) - static_cast<std::size_t>(p.decimals);
  std::memset(digits, '0', count_of(p));
  std::copy(number.whole.begin(), number.whole.end(), digits + whole - number.whole.size());
  std::copy(number.fraction.begin(), number.fraction.end(), digits + whole);
  const bool negative = number.negative && !(all_zeros(number.whole) && all_zeros(number.fraction));
  if (p.pad == ' ') {
    for (int at = 0; at + 1 < p.n && digits[at] == '0'; ++at) digits[at] = ' ';
  }
  store_sign(field, negative, p);
}

}  // namespace

const char *take(unsigned char *field, PaddedText text, const Params &p) {
  if (text.empty()) {
    if (p.empties.empty()) {
      store(field, {}, p);
    } else {
      characters::store_absent(field, p);
    }
    return nullptr;
  }
  const auto refuse = [&](const char *lost) {
    take(field, PaddedText(), p);
    return lost;
  };
  Decimal number = decimal_of(text.view());
  if (!number.valid) return refuse("is no number");
  const auto decimals = static_cast<std::size_t>(p.decimals);
  const std::size_t whole = count_of(p) - decimals;
  const std::size_t kept = std::min(decimals, number.fraction.size());
  const bool cut = !all_zeros(number.fraction.substr(kept));
  number.fraction = number.fraction.substr(0, kept);
  const std::size_t more = number.whole.size() - std::min(number.whole.size(), whole);
  if (!all_zeros(number.whole.substr(0, more))) return refuse("too large for the field");
  number.whole.remove_prefix(more);
  const bool zero = all_zeros(number.whole) && all_zeros(number.fraction);
  if (number.negative && !zero && p.sign == Sign::kNone) {
    return refuse("below zero: the field has no sign");
  }
  store(field, number, p);
  if (characters::is_absent(field, p)) return refuse(characters::kMeansNone);
  return cut ? conversion::kDecimalsCut : nullptr;
}

}  // namespace campotipo::records::text_numbers
