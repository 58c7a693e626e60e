#include "kinds/dates.hpp"

#include <campotipo-support/calendar.h>

#include <cstring>
#include <string_view>

#include "text/ascii.hpp"
#include "text/scan.hpp"

namespace campotipo::records {

namespace {

struct Part {
  std::string_view letters;
  signed char first;  // place in DDMMAAAA
};

// The longer form of the year first.
constexpr Part kParts[] = {{"DD", 0}, {"MM", 2}, {"AAAA", 4}, {"AA", 6}};

void add(DatePattern::Form &form, int digit, char character) {
  const std::size_t at = form.length++;
  form.source[at] = digit < 0 ? DatePattern::kOwn : static_cast<unsigned char>(digit);
  form.character[at] = digit < 0 ? character : '0';
  form.above[at] = digit < 0 ? 0 : 9;
  if (digit >= 0) form.place[static_cast<std::size_t>(digit)] = static_cast<unsigned char>(at);
}

void add_part(DatePattern &pattern, const Part &part) {
  const int length = static_cast<int>(part.letters.size());
  for (int i = 0; i < length; ++i) {
    add(pattern.full, part.first + i, 0);
    if (length != 4 || i >= 2) add(pattern.two_digits, part.first + i, 0);
  }
  pattern.has_century = pattern.has_century || length == 4;
}

}  // namespace

std::shared_ptr<const DatePattern> date_pattern(const std::string &text) {
  if (text.size() > DatePattern::kLongest) return nullptr;
  auto pattern = std::make_shared<DatePattern>();
  pattern->text = text;
  pattern->brazilian = text == "DD/MM/AAAA";
  for (DatePattern::Form *form : {&pattern->full, &pattern->two_digits}) {
    form->place.fill(DatePattern::kNowhere);
    form->above.fill(0xFF);
  }
  std::string_view left = text;
  int seen[3] = {};
  while (!left.empty()) {
    const Part *found = nullptr;
    for (const Part &part : kParts) {
      if (found == nullptr && left.starts_with(part.letters)) found = &part;
    }
    if (found != nullptr) {
      ++seen[found->first == 0 ? 0 : found->first == 2 ? 1 : 2];
      add_part(*pattern, *found);
      left.remove_prefix(found->letters.size());
    } else {
      if (left[0] <= ' ' || left[0] > '~' || left[0] == ',' || left[0] == '"') return nullptr;
      add(pattern->full, -1, left[0]);
      add(pattern->two_digits, -1, left[0]);
      left.remove_prefix(1);
    }
  }
  for (const int count : seen) {
    if (count != 1) return nullptr;
  }
  return pattern;
}

namespace dates {

bool read_form(const DatePattern::Form &form, __m128i text, unsigned char *digits) {
  const auto vector = [](const auto &bytes) {
    return scan::load(reinterpret_cast<const char *>(bytes.data()));
  };
  const __m128i value = _mm_sub_epi8(text, vector(form.character));
  const __m128i above = vector(form.above);
  if (scan::mask(_mm_cmpeq_epi8(_mm_max_epu8(value, above), above)) != 0xFFFF) return false;
  std::array<unsigned char, DatePattern::kLongest + 1> values;
  _mm_storeu_si128(reinterpret_cast<__m128i *>(values.data()), value);
  values[DatePattern::kNowhere] = 0;
#pragma GCC unroll 8
  for (std::size_t i = 0; i < form.place.size(); ++i) digits[i] = values[form.place[i]];
  return true;
}

namespace {

constexpr int kGreatestYear = 4095;

bool is_packed(const unsigned char *field) {
  return DATAC_formato_de(field) == DATAC_FORMATO_COMPACTO;
}

struct Parts {
  int day = 0;
  int month = 0;
  int year = 0;
};

// Both digits of the day alike, and the month and the end of the year the same: a date that stands
// for "never" or "not known", not for a day.
bool repeated(const Parts &d) {
  return d.day == d.month && d.day % 11 == 0 && d.day > 12 && d.day == d.year % 100;
}

bool read_text(const DatePattern::Form &form, PaddedText text, unsigned char *digits) {
  return text.size() == form.length && read_form(form, scan::load(text.data()), digits);
}

int pair(const unsigned char *digits) { return digits[0] * 10 + digits[1]; }

constexpr char kNoDate[] = "a date that does not exist";

// Null where the field says the date, or stands for none as the date does.
const char *kept(const unsigned char *field, const Parts &d, bool with_century) {
  if (DATAC_dia(field) != d.day || DATAC_mes(field) != d.month) return kNoDate;
  if (with_century ? DATAC_ano1(field) != d.year : DATAC_ano(field) != d.year % 100) {
    return "a year that the encoding does not hold";
  }
  return DATAC_nao_zero(field) == 0 || DATAC_valida(field) != 0 || repeated(d) ? nullptr : kNoDate;
}

}  // namespace

char *put(char *out, const unsigned char *field, const Params &p) {
  const bool zero = DATAC_nao_zero(field) == 0;
  if (zero && is_packed(field) == (p.encoding == DateEncoding::kPacked)) return out;
  const bool two = p.encoding == DateEncoding::kBoth && !is_packed(field);
  if (p.pattern->brazilian && !two) {
    DATAC_edita4(out, field);
    return out + DATAC_EDITA4_TEXT_SIZE - 1;
  }
  char digits[DATAC_DDMMAAAA_TEXT_SIZE];
  if (two) {
    // The digits as they are stored: such a date keeps two of its year.
    char stored[DATAC_DDMMAA_TEXT_SIZE];
    DATAC_dtoa(stored, field);
    std::memcpy(digits, stored, 4);
    std::memcpy(digits + 6, stored + 4, 2);
  } else {
    DATAC_dtoa_DDMMAAAA(digits, field);
  }
  const DatePattern::Form &form = two ? p.pattern->two_digits : p.pattern->full;
  for (std::size_t i = 0; i < form.length; ++i) {
    out[i] = form.above[i] == 0 ? form.character[i] : digits[form.source[i]];
  }
  return out + form.length;
}

namespace {

void store_empty(unsigned char *field, bool packed) {
  DATAC_fmt_monta(field, packed ? DATAC_FORMATO_COMPACTO : DATAC_FORMATO_DECIMAL, 0, 0, 0);
}

const char *store_packed(unsigned char *field, Parts d, bool century) {
  const bool never = repeated(d) && (!century || d.year == d.day * 101);
  if (!century && !never) d.year = CRONOBASE_ano_com_quatro(d.year);
  DATAC_fmt_monta(field, DATAC_FORMATO_COMPACTO, d.day, d.month, never ? d.day : d.year);
  const bool whole = DATAC_nao_zero(field) != 0 && d.year <= kGreatestYear;
  const bool zero = d.day == 0 && d.month == 0 && d.year == 0;
  return whole || never || zero ? nullptr : kept(field, d, true);
}

const char *store(unsigned char *field, PaddedText text, const Params &p) {
  unsigned char digits[DatePattern::kDigits] = {};
  bool century = p.pattern->has_century;
  if (!century || !read_text(p.pattern->full, text, digits)) {
    if (!read_text(p.pattern->two_digits, text, digits)) return "is no date of the form told";
    century = false;
  }
  Parts d = {pair(digits), pair(digits + 2), pair(digits + 6)};
  if (century) d.year += 100 * pair(digits + 4);
  const bool packed =
      p.encoding == DateEncoding::kBoth ? century : p.encoding == DateEncoding::kPacked;
  if (packed) return store_packed(field, d, century);
  DATAC_fmt_monta(field, DATAC_FORMATO_DECIMAL, d.day, d.month, d.year);
  return kept(field, d, century);
}

}  // namespace

const char *take(unsigned char *field, PaddedText text, const Params &p) {
  const char *lost = text.empty() ? nullptr : store(field, text, p);
  if (text.empty() || lost != nullptr) store_empty(field, p.encoding == DateEncoding::kPacked);
  return lost;
}

const char *fault(const unsigned char *field, const Params &p) {
  const bool packed = is_packed(field);
  const bool well_formed = DATAC_bem_formado(field) != 0;
  if ((p.encoding == DateEncoding::kPacked && !packed) ||
      (p.encoding == DateEncoding::kDecimal && packed)) {
    return "stored in the other encoding";
  }
  if (!packed && !well_formed) return "digits past those of a date";
  const Parts d = {DATAC_dia(field), DATAC_mes(field), DATAC_ano1(field)};
  if (DATAC_nao_zero(field) != 0 && DATAC_valida(field) == 0 && !repeated(d)) return kNoDate;
  return well_formed ? nullptr : "bits that no date has";
}

}  // namespace dates

namespace times {

bool read_parts(std::string_view text, char separator, int *parts, int count) {
  for (int i = 0; i < count; ++i) {
    const std::size_t end = i + 1 < count ? text.find(separator) : text.size();
    if (end == std::string_view::npos || end < 1 || end > 3 || (i > 0 && end != 2)) return false;
    parts[i] = 0;
    for (const char c : text.substr(0, end)) {
      if (!ascii::is_digit(c)) return false;
      parts[i] = parts[i] * 10 + (c - '0');
    }
    text.remove_prefix(i + 1 < count ? end + 1 : end);
  }
  return true;
}

namespace {

// The library writes a blank before an hour of one digit; a column of times sorts with a zero.
char *fill_hour(char *out) {
  if (out[0] == ' ') out[0] = '0';
  return out + std::strlen(out);
}

}  // namespace

char *put_minutes(char *out, const unsigned char *field, const Params &p) {
  return fill_hour(HORAC_edita_sep(out, field, p.separator));
}

char *put_seconds(char *out, const unsigned char *field, const Params &p) {
  return fill_hour(HHMMSS_edita_sep(out, field, p.separator, 0));
}

namespace {

constexpr char kNoTime[] = "a time that does not exist";

const char *store_minutes(unsigned char *field, std::string_view text, const Params &p) {
  int parts[2];
  if (!read_parts(text, p.separator, parts, 2)) return "is no time of day";
  const int number = parts[0] * 100 + parts[1];
  field[0] = static_cast<unsigned char>(number & 0xFF);
  field[1] = static_cast<unsigned char>(number >> 8 & 0xFF);
  return HORAC_valida(field) != 0 ? nullptr : kNoTime;
}

const char *store_seconds(unsigned char *field, std::string_view text, const Params &p) {
  int parts[3];
  if (!read_parts(text, p.separator, parts, 3)) return "is no time of day";
  if (parts[0] > 0xFF) return kNoTime;
  for (int i = 0; i < 3; ++i) field[i] = static_cast<unsigned char>(parts[i]);
  return HHMMSS_valida(field) != 0 ? nullptr : kNoTime;
}

}  // namespace

const char *take_minutes(unsigned char *field, PaddedText text, const Params &p) {
  const char *lost = text.empty() ? nullptr : store_minutes(field, text.view(), p);
  if (lost != nullptr) std::memset(field, 0, HORAC_BYTES);
  return lost;
}

const char *take_seconds(unsigned char *field, PaddedText text, const Params &p) {
  const char *lost = text.empty() ? nullptr : store_seconds(field, text.view(), p);
  if (lost != nullptr) std::memset(field, 0, HHMMSS_BYTES);
  return lost;
}

int minutes(const unsigned char *field) {
  const int number = field[0] | field[1] << 8;
  return number / 100 * 60 + number % 100;
}

int seconds(const unsigned char *field) { return (field[0] * 60 + field[1]) * 60 + field[2]; }

}  // namespace times
}  // namespace campotipo::records
