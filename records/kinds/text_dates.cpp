#include "kinds/text_dates.hpp"

#include "kinds/civil.hpp"

namespace campotipo::records::text_dates {

namespace {

constexpr char kNoDate[] = "a date that does not exist";

int pair(const unsigned char *digits) { return digits[0] * 10 + digits[1]; }

std::size_t size_of(const Params &p) { return static_cast<std::size_t>(p.bytes); }

// The numbers in a field of the form told, whether there is such a date or not.
bool read_parts(Day &date, const unsigned char *field, const Params &p) {
  unsigned char digits[DatePattern::kDigits];
  if (!dates::read_form(p.stored->full, characters::load(field, size_of(p)), digits)) return false;
  const int year = pair(digits + 6);
  date = {pair(digits), pair(digits + 2),
          p.stored->has_century ? 100 * pair(digits + 4) + year : full_year(year, p.pivot)};
  return true;
}

void put_pair(char *out, int number) {
  out[0] = static_cast<char>('0' + number / 10);
  out[1] = static_cast<char>('0' + number % 10);
}

// DDMMAAAA.
void put_parts(char *out, const Day &date) {
  put_pair(out, date.day);
  put_pair(out + 2, date.month);
  put_pair(out + 4, date.year / 100);
  put_pair(out + 6, date.year % 100);
}

char *put_form(char *out, const DatePattern::Form &form, const char *digits) {
  for (std::size_t i = 0; i < form.length; ++i) {
    out[i] = form.above[i] == 0 ? form.character[i] : digits[form.source[i]];
  }
  return out + form.length;
}

}  // namespace

bool read(Day &date, const unsigned char *field, const Params &p) {
  return read_parts(date, field, p) && civil::exists(date.day, date.month, date.year);
}

char *put(char *out, const unsigned char *field, const Params &p) {
  if (characters::is_absent(field, p)) return out;
  Day date;
  if (!read_parts(date, field, p)) return characters::put_bytes(out, field, size_of(p), p);
  char digits[DatePattern::kDigits];
  put_parts(digits, date);
  if (!p.pattern->brazilian) return put_form(out, p.pattern->full, digits);
  std::memcpy(out, digits, 2);
  out[2] = '/';
  std::memcpy(out + 3, digits + 2, 2);
  out[5] = '/';
  std::memcpy(out + 6, digits + 4, 4);
  return out + 10;
}

const char *fault(const unsigned char *field, const Params &p) {
  Day date;
  if (characters::is_absent(field, p)) return nullptr;
  if (!read_parts(date, field, p)) return "no date of the form stored";
  return civil::exists(date.day, date.month, date.year) ? nullptr : kNoDate;
}

namespace {

// A text of the form that is shown; its year may have two digits.
bool read_text(Day &date, PaddedText text, const Params &p) {
  unsigned char digits[DatePattern::kDigits];
  const __m128i bytes = scan::load(text.data());
  const auto reads = [&](const DatePattern::Form &form) {
    return text.size() == form.length && dates::read_form(form, bytes, digits);
  };
  bool century = p.pattern->has_century;
  if (!century || !reads(p.pattern->full)) {
    if (!reads(p.pattern->two_digits)) return false;
    century = false;
  }
  const int year = pair(digits + 6);
  date = {pair(digits), pair(digits + 2),
          century ? 100 * pair(digits + 4) + year : full_year(year, p.pivot)};
  return true;
}

const char *store(unsigned char *field, PaddedText text, const Params &p) {
  Day date;
  if (!read_text(date, text, p)) return "is no date of the form told";
  if (!civil::exists(date.day, date.month, date.year)) return kNoDate;
  if (!p.stored->has_century && full_year(date.year % 100, p.pivot) != date.year) {
    return "a year that two digits do not tell";
  }
  char digits[DatePattern::kDigits];
  put_parts(digits, date);
  put_form(reinterpret_cast<char *>(field), p.stored->full, digits);
  return characters::is_absent(field, p) ? characters::kMeansNone : nullptr;
}

}  // namespace

const char *take(unsigned char *field, PaddedText text, const Params &p) {
  const char *lost = text.empty() ? nullptr : store(field, text, p);
  if (text.empty() || lost != nullptr) characters::store_absent(field, p);
  return lost;
}

int compare(const unsigned char *a, const unsigned char *b, const Params &p) {
  Day first;
  Day second;
  const bool is_first = !characters::is_absent(a, p) && read(first, a, p);
  const bool is_second = !characters::is_absent(b, p) && read(second, b, p);
  if (!is_first && !is_second) return std::memcmp(a, b, size_of(p));
  if (!is_first || !is_second) return is_first ? 1 : -1;
  return civil::days(first.day, first.month, first.year) -
         civil::days(second.day, second.month, second.year);
}

double measure(const unsigned char *field, const Params &p) {
  Day date;
  if (characters::is_absent(field, p) || !read(date, field, p)) return -1;
  return civil::days(date.day, date.month, date.year) - civil::days(1, 1, 1);
}

namespace {

constexpr char kNoTime[] = "a time that does not exist";

}  // namespace

int seconds(const unsigned char *field, const Params &p) {
  if (!characters::all_digits(field, size_of(p))) return -1;
  int parts[3] = {};
  for (int i = 0; 2 * i < p.n; ++i) {
    parts[i] = 10 * (field[2 * i] - '0') + (field[2 * i + 1] - '0');
  }
  if (parts[0] > 23 || parts[1] > 59 || parts[2] > 59) return -1;
  return (parts[0] * 60 + parts[1]) * 60 + parts[2];
}

char *put_time(char *out, const unsigned char *field, const Params &p) {
  if (characters::is_absent(field, p)) return out;
  if (!characters::all_digits(field, size_of(p))) {
    return characters::put_bytes(out, field, size_of(p), p);
  }
  for (int i = 0; i < p.n; i += 2) {
    if (i > 0) *out++ = p.separator;
    std::memcpy(out, field + i, 2);
    out += 2;
  }
  return out;
}

const char *take_time(unsigned char *field, PaddedText text, const Params &p) {
  characters::store_absent(field, p);
  if (text.empty()) return nullptr;
  int parts[3] = {};
  const int count = p.n / 2;
  if (!times::read_parts(text.view(), p.separator, parts, count)) return "is no time of day";
  if (parts[0] > 23 || parts[1] > 59 || parts[2] > 59) return kNoTime;
  for (int i = 0; i < count; ++i) put_pair(reinterpret_cast<char *>(field) + 2 * i, parts[i]);
  if (!characters::is_absent(field, p)) return nullptr;
  characters::store_absent(field, p);
  return characters::kMeansNone;
}

const char *time_fault(const unsigned char *field, const Params &p) {
  if (characters::is_absent(field, p)) return nullptr;
  if (!characters::all_digits(field, size_of(p))) return "a character that is no digit";
  return seconds(field, p) < 0 ? kNoTime : nullptr;
}

}  // namespace campotipo::records::text_dates
