#pragma once

#include <campotipo/calendar.h>
#include <emmintrin.h>

#include <array>
#include <memory>
#include <string>
#include <string_view>

#include "kinds/type.hpp"

// Dates and times of day.
namespace campotipo::records {

// The text form of a date: DD, MM and AAAA or AA among other characters.
struct DatePattern {
  static constexpr std::size_t kLongest = 16;
  static constexpr int kDigits = 8;

  // One way of writing it. Each character is one of the digits DDMMAAAA or stands for itself.
  struct Form {
    std::size_t length = 0;
    std::array<unsigned char, kLongest> source = {};  // place in DDMMAAAA, or kOwn
    std::array<char, kLongest> character = {};        // "0" for a digit
    std::array<unsigned char, kLongest> above = {};   // how far above `character` it may lie
    std::array<unsigned char, kDigits> place = {};    // of each digit; kNowhere: not in the form
  };
  static constexpr unsigned char kOwn = 0xFF;
  static constexpr unsigned char kNowhere = kLongest;

  std::string text;
  Form full;
  Form two_digits;  // of the year; the same as `full` where the pattern says AA
  bool has_century = false;
  bool brazilian = false;  // DD/MM/AAAA, which the library writes itself
};

// Null where the text is no form of a date.
std::shared_ptr<const DatePattern> date_pattern(const std::string &text);

namespace dates {

// The digits DDMMAAAA of a text of this form, zeros where the form has none; false for other texts.
// `text`: form.length bytes, and any others behind them.
bool read_form(const DatePattern::Form &form, __m128i text, unsigned char *digits);

char *put(char *out, const unsigned char *field, const Params &p);
const char *take(unsigned char *field, PaddedText text, const Params &p);
const char *fault(const unsigned char *field, const Params &p);

constexpr FieldType date(const char *name) {
  FieldType type = {};
  type.name = name;
  type.family = "date";
  type.bytes = DATAC_BYTES;
  type.count = 8;
  type.unit = "digits";
  type.form = "31/12/2024";
  type.sql = "DATE";
  type.keys = kFormat | kDateEncoding;
  type.traits = kNullable | kNoBlank;
  type.room = [](const Params &) { return DatePattern::kLongest + 1; };
  type.put = put;
  type.take = take;
  type.fault = fault;
  type.compare = [](const unsigned char *a, const unsigned char *b, const Params &) {
    return DATAC_compara(a, b);
  };
  type.content = [](const unsigned char *field, const Params &) { return DATAC_nao_zero(field); };
  type.column = ColumnForm::kDate;
  type.measure = [](const unsigned char *field, const Params &) {
    return DATAC_valida(field) != 0 ? static_cast<double>(DATAC_zuliano_desde(field, 0)) : -1.0;
  };
  return type;
}

}  // namespace dates

namespace times {

constexpr FieldType row(const char *name, int bytes, const char *form) {
  FieldType type = {};
  type.name = name;
  type.family = "time of day";
  type.bytes = bytes;
  type.count = bytes == HORAC_BYTES ? 4 : 6;
  type.unit = "digits";
  type.form = form;
  type.sql = "TIME";
  type.keys = kSeparator;
  type.traits = kNoBlank;
  type.room = [](const Params &) { return std::size_t{16}; };
  return type;
}

// Reads "h:mm" or "h:mm:ss", with the separator told, into parts; false for any other text.
bool read_parts(std::string_view text, char separator, int *parts, int count);

char *put_minutes(char *out, const unsigned char *field, const Params &p);
const char *take_minutes(unsigned char *field, PaddedText text, const Params &p);
char *put_seconds(char *out, const unsigned char *field, const Params &p);
const char *take_seconds(unsigned char *field, PaddedText text, const Params &p);
int minutes(const unsigned char *field);
int seconds(const unsigned char *field);

constexpr FieldType hour_minute(const char *name) {
  FieldType type = row(name, HORAC_BYTES, "14:35");
  type.column = ColumnForm::kMinutes;
  type.put = put_minutes;
  type.take = take_minutes;
  type.fault = [](const unsigned char *field, const Params &) -> const char * {
    return HORAC_valida(field) != 0 ? nullptr : "a time that does not exist";
  };
  type.compare = [](const unsigned char *a, const unsigned char *b, const Params &) {
    return minutes(a) - minutes(b);
  };
  type.measure = [](const unsigned char *field, const Params &) { return double(minutes(field)); };
  return type;
}

constexpr FieldType hour_minute_second(const char *name) {
  FieldType type = row(name, HHMMSS_BYTES, "14:35:07");
  type.column = ColumnForm::kSeconds;
  type.put = put_seconds;
  type.take = take_seconds;
  type.fault = [](const unsigned char *field, const Params &) -> const char * {
    return HHMMSS_valida(field) != 0 ? nullptr : "a time that does not exist";
  };
  type.compare = [](const unsigned char *a, const unsigned char *b, const Params &) {
    return seconds(a) - seconds(b);
  };
  type.measure = [](const unsigned char *field, const Params &) { return double(seconds(field)); };
  return type;
}

}  // namespace times
}  // namespace campotipo::records
