#include <campotipo/calendar.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

#include "tests/reference/calendar.hpp"

#define CHECK(condition) \
  if (!(condition)) __builtin_trap()

// Two date fields, two numbers and a text, all from the input, held against the calendar walked
// step by step.
namespace {

namespace reference = campotipo::reference;
using reference::Ymd;

struct Input {
  std::uint8_t format;
  unsigned char date[DATAC_BYTES], other[DATAC_BYTES];
  std::int32_t number, base;
};

std::uint32_t number(const unsigned char *field) {
  return field[0] + field[1] * 256u + field[2] * 65536u;
}

// The number of the field that an operation leaves, begun with the date of the input.
template <class Operation>
std::uint32_t written(const unsigned char *date, Operation operation) {
  unsigned char field[DATAC_BYTES];
  std::memcpy(field, date, DATAC_BYTES);
  operation(field);
  return number(field);
}

void check_reading(const unsigned char *field, std::uint32_t other_number,
                   const unsigned char *other) {
  const std::uint32_t n = number(field);
  const Ymd date = reference::read(n);
  CHECK(DATAC_dia(field) == date.day && DATAC_mes(field) == date.month);
  CHECK(DATAC_ano1(field) == date.year && DATAC_ano(field) == date.year % 100);
  CHECK(DATAC_valida(field) == reference::valid(n));
  CHECK(DATAC_compara(field, other) == reference::compare(n, other_number));
  char text[DATAC_EDITA4_TEXT_SIZE];
  CHECK(DATAC_edita(text, field) == reference::edit(n, '/', 0));
  CHECK(DATAC_edita4(text, field) == reference::edit(n, '/', 1));
  CHECK(DATAC_dtoa(text, field) == reference::digits6(n));
  CHECK(DATAC_dtoa_DDMMAAAA(text, field) == reference::digits8(n));
}

void check_steps(const Input &in, std::int32_t format) {
  const std::uint32_t n = number(in.date);
  const Ymd date = reference::read(n);
  const bool valid = reference::valid(n);
  const auto left = [&](const Ymd &result) { return reference::build(format, result); };
  const auto step = [&](auto operation) {
    return written(in.date, [&](unsigned char *field) { operation(field, in.number); });
  };
  CHECK(step(DATAC_avanca_dias) == (valid ? left(reference::step_days(date, in.number)) : n));
  CHECK(step(DATAC_avanca_meses) ==
        (valid ? left(reference::step_months(date, in.number, false)) : n));
  CHECK(step(DATAC_avanca_meses_dentro) ==
        (valid ? left(reference::step_months(date, in.number, true)) : n));
  const auto search = [&](auto operation) {
    return written(in.other, [&](unsigned char *out) { operation(out, in.date, in.number); });
  };
  CHECK(search(DATAC_proximo_ddmm) == reference::search(format, n, in.number, 1));
  CHECK(search(DATAC_ultimo_ddmm) == reference::search(format, n, in.number, -1));
}

void check_counts(const Input &in, std::int32_t format) {
  const Ymd date = reference::read(number(in.date));
  // The model walks year by year: bases from a few thousand years around the date.
  const std::int32_t near = date.year + in.base % 4096;
  CHECK(DATAC_zuliano_desde(in.date, near) == reference::count_since(date, near));
  CHECK(DATAC_zuliano(in.date) == reference::count(date));
  CHECK(DATAC_dia_da_semana(in.date) == (reference::count(date) + 2) % 7);
  const Ymd counted =
      in.number < 1 ? Ymd{in.number, 1, in.base} : reference::date_of_count(in.number, in.base);
  CHECK(written(in.date, [&](unsigned char *out) {
          DATAC_de_zuliano_desde(out, in.number, in.base);
        }) == reference::build(format, counted));
  CHECK(written(in.date, [&](unsigned char *out) {
          DATAC_monta(out, in.number, in.base, in.number);
        }) == reference::build(format, {in.number, in.base, in.number}));
}

void check_text(const unsigned char *date, std::int32_t format, const char *text) {
  for (const bool year4 : {false, true}) {
    CHECK(written(date, [&](unsigned char *out) { DATAC_fmt_atod(out, format, year4, text); }) ==
          reference::parse(format, year4, text));
  }
}

void check_time(const unsigned char *field, int sep) {
  const unsigned hour = field[0], minute = field[1], second = field[2];
  const unsigned n = hour + minute * 256;
  char text[HHMMSS_TEXT_SIZE];
  const auto is = [&text](const std::string &expected) {
    return std::memcmp(text, expected.c_str(), expected.size() + 1) == 0;
  };
  HORAC_edita_sep(text, field, sep);
  CHECK(is(reference::edit_time(n / 100, n % 100, sep)));
  HHMMSS_edita_sep(text, field, sep, 0);
  CHECK(is(reference::edit_time(hour, minute, second, sep)));
  HHMMSS_edita_sep(text, field, sep, 1);
  CHECK(is(reference::edit_time(hour, minute, sep)));
  CHECK(HORAC_valida(field) == reference::valid_time(n / 100, n % 100, 0));
  CHECK(HHMMSS_valida(field) == reference::valid_time(hour, minute, second));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  Input in;
  if (size < sizeof in) return 0;
  std::memcpy(&in, data, sizeof in);
  const std::int32_t format = in.format % 3;
  DATAC_formato = format;
  check_reading(in.date, number(in.other), in.other);
  check_steps(in, format);
  check_counts(in, format);
  const std::string text(reinterpret_cast<const char *>(data) + sizeof in, size - sizeof in);
  check_text(in.date, format, text.c_str());
  check_time(in.date, in.other[0]);
  return 0;
}
