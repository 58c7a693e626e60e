#pragma once

#include <campotipo/calendar.h>

#include <cstdint>
#include <cstring>
#include <string>

#include "tests/reference/calendar.hpp"
#include "tests/util/guarded_buffer.hpp"

// Dates and times held against the calendar walked step by step, for the tests and the fuzzer: each
// check is true when the operations agree on one input. A date is its number N.
namespace campotipo::test {

using reference::Ymd;

// A date field between inaccessible memory, known by its number.
class DateField {
 public:
  explicit DateField(bool at_start = false)
      : bytes_(at_start ? buffer_.at_start(DATAC_BYTES) : buffer_.at_end(DATAC_BYTES)) {}

  unsigned char *operator()(std::uint32_t number) {
    for (unsigned i = 0; i < DATAC_BYTES; ++i)
      bytes_[i] = static_cast<unsigned char>(number >> (8 * i));
    return bytes_;
  }
  unsigned char *operator()() { return bytes_; }

  std::uint32_t number() const { return bytes_[0] + bytes_[1] * 256u + bytes_[2] * 65536u; }

 private:
  GuardedBuffer buffer_;
  unsigned char *bytes_;
};

// DATAC_formato for as long as it lives. Nothing is written where it is that already, so that
// threads may do the same at once.
struct InForce {
  explicit InForce(std::int32_t format) : before_(DATAC_formato) { set(format); }
  ~InForce() { set(before_); }
  InForce(const InForce &) = delete;
  InForce &operator=(const InForce &) = delete;
  static void set(std::int32_t format) {
    if (DATAC_formato != format) DATAC_formato = format;
  }

 private:
  std::int32_t before_;
};

struct DateMemory {
  DateField a, b{true}, out;
  GuardedBuffer text;

  // Whether `operation` writes the text in its own bytes, a NUL in it or not, and gives it back.
  template <class Operation>
  bool shows(const std::string &expected, Operation operation) {
    char *to = text.text_at_end(expected.size() + 1);
    return operation(to) == to && std::memcmp(to, expected.c_str(), expected.size() + 1) == 0;
  }
  // Whether `operation` makes the date of one that begins as `n`.
  template <class Operation>
  bool makes(std::uint32_t expected, std::uint32_t n, Operation operation) {
    operation(out(n));
    return out.number() == expected;
  }
};

inline bool reads(DateMemory &in, std::uint32_t n) {
  const unsigned char *field = in.a(n);
  const Ymd date = reference::read(n);
  const bool packed = reference::packed(n);
  const std::int32_t ddmmaa = date.day * 10000 + date.month * 100 + date.year % 100;
  return DATAC_dia(field) == date.day && DATAC_mes(field) == date.month &&
         DATAC_ano1(field) == date.year && DATAC_ano(field) == date.year % 100 &&
         DATAC_nao_zero(field) == (n != 0 && n != 0x800000) && DATAC_formato_de(field) == packed &&
         DATAC_valida(field) == reference::valid(n) &&
         DATAC_bem_formado(field) == reference::well_formed(n) && DATAC_igual(field, field) == 1 &&
         DATAC_ulong(field) == (packed ? static_cast<std::uint32_t>(ddmmaa) : n);
}

inline bool converts(DateMemory &in, std::uint32_t n) {
  for (const std::int32_t format : {0, 1, 2, -1}) {
    const bool other = format == !reference::packed(n);
    if (!in.makes(other ? reference::build(format, reference::read(n)) : n, n, [&](auto *out) {
          if (DATAC_converteu_formato(out, format) != other) out[0] ^= 1;
        }))
      return false;
  }
  return true;
}

inline bool builds(DateMemory &in, std::int32_t format, const Ymd &date) {
  const std::uint32_t expected = reference::build(format, date);
  const InForce in_force(format);
  const auto gives_out = [](unsigned char *out, const unsigned char *result) {
    if (result != out) out[0] ^= 1;
  };
  return in.makes(expected, 0x5A5A5A, [&](auto *out) {
    gives_out(out, DATAC_monta(out, date.day, date.month, date.year));
  }) && in.makes(expected, 0x5A5A5A, [&](auto *out) {
    gives_out(out, DATAC_fmt_monta(out, format, date.day, date.month, date.year));
  });
}

inline bool orders(DateMemory &in, std::uint32_t left, std::uint32_t right) {
  const unsigned char *a = in.a(left), *b = in.b(right);
  const int expected = reference::compare(left, right);
  return DATAC_compara(a, b) == expected && DATAC_igual(a, b) == (expected == 0) &&
         DATAC_ddmmaa_igual(a, DATAC_ulong(b)) == (DATAC_ulong(a) == DATAC_ulong(b));
}

inline bool shows(DateMemory &in, std::uint32_t n, int sep, int flags) {
  const unsigned char *field = in.a(n);
  return in.shows(reference::edit(n, '/', 0), [&](auto *to) { return DATAC_edita(to, field); }) &&
         in.shows(reference::edit(n, '/', 1), [&](auto *to) { return DATAC_edita4(to, field); }) &&
         in.shows(reference::digits6(n), [&](auto *to) { return DATAC_dtoa(to, field); }) &&
         in.shows(reference::digits8(n),
                  [&](auto *to) { return DATAC_dtoa_DDMMAAAA(to, field); }) &&
         in.shows(reference::edit(n, sep, 0),
                  [&](auto *to) { return DATAC_edita_sep(to, field, sep); }) &&
         in.shows(reference::edit(n, sep, flags),
                  [&](auto *to) { return DATAC_edita_1sep(to, field, sep, flags); });
}

// `behind` bytes that may be read follow the NUL.
inline bool parses(DateMemory &in, std::int32_t format, const std::string &text,
                   std::size_t behind) {
  const char *from = in.text.text(text + std::string(behind > 0, '\0') + std::string(behind, '7'));
  const InForce in_force(format);
  for (const std::int32_t year4 : {0, 1, -8}) {
    const std::uint32_t expected = reference::parse(format, year4 != 0, text.c_str());
    const auto in_that = year4 != 0 ? DATAC_atod_DDMMAAAA : DATAC_atod;
    if (!in.makes(expected, 0x5A5A5A,
                  [&](auto *out) { DATAC_fmt_atod(out, format, year4, from); }) ||
        !in.makes(expected, 0x5A5A5A, [&](auto *out) { in_that(out, from); }))
      return false;
  }
  return true;
}

inline bool steps(DateMemory &in, std::int32_t format, std::uint32_t n, std::int32_t by) {
  const InForce in_force(format);
  const Ymd date = reference::valid(n) ? reference::read(n) : Ymd{1, 1, 2000};
  const auto lands = [&](const Ymd &result, auto step) {
    const std::uint32_t expected = reference::valid(n) ? reference::build(format, result) : n;
    return in.makes(expected, n, [&](auto *out) { step(out, by); });
  };
  return lands(reference::step_days(date, by), DATAC_avanca_dias) &&
         lands(reference::step_months(date, by, false), DATAC_avanca_meses) &&
         lands(reference::step_months(date, by, true), DATAC_avanca_meses_dentro);
}

// The model walks from the base year: `base` is at most a few thousand years before the date.
inline bool counts(DateMemory &in, std::uint32_t n, std::int32_t base) {
  const unsigned char *field = in.a(n);
  const std::int64_t count = reference::count_since(reference::read(n), 1980);
  return DATAC_zuliano_desde(field, base) == reference::count_since(reference::read(n), base) &&
         DATAC_zuliano(field) == count && DATAC_dia_da_semana(field) == (count + 2) % 7;
}

inline bool is_date_of_count(DateMemory &in, std::int32_t format, std::int32_t count,
                             std::int32_t base) {
  const InForce in_force(format);
  const Ymd date = count < 1 ? Ymd{count, 1, base} : reference::date_of_count(count, base);
  return in.makes(reference::build(format, date), 0x5A5A5A,
                  [&](auto *out) { DATAC_de_zuliano_desde(out, count, base); });
}

inline bool searches(DateMemory &in, std::int32_t format, std::uint32_t from, std::int32_t ddmm) {
  const InForce in_force(format);
  const unsigned char *day = in.a(from);
  return in.makes(reference::search(format, from, ddmm, 1), 0x5A5A5A, [&](auto *out) {
    DATAC_proximo_ddmm(out, day, ddmm);
  }) && in.makes(reference::search(format, from, ddmm, -1), 0x5A5A5A, [&](auto *out) {
    DATAC_ultimo_ddmm(out, day, ddmm);
  });
}

// An HHMMSS, whose first two bytes are a HORAC.
inline bool tells_time(DateMemory &in, std::uint32_t n, int sep, int flags) {
  const unsigned char *field = in.a(n);
  const unsigned parts[] = {n & 0xFF, n >> 8 & 0xFF, n >> 16};
  const unsigned hour = (n & 0xFFFF) / 100, minute = (n & 0xFFFF) % 100;
  const auto two = [](unsigned h, unsigned m, int s) { return reference::edit_time(h, m, s); };
  const auto three = [&](int s) { return reference::edit_time(parts[0], parts[1], parts[2], s); };
  const int valid = reference::valid_time(parts[0], parts[1], parts[2]);
  const int valid_short = reference::valid_time(hour, minute, 0);
  return HHMMSS_valida(field) == valid && HHMMSS_bem_formado(field) == valid &&
         HORAC_valida(field) == valid_short && HORAC_bem_formado(field) == valid_short &&
         three(sep).size() < HHMMSS_TEXT_SIZE && two(hour, minute, sep).size() < HORAC_TEXT_SIZE &&
         in.shows(two(hour, minute, ':'), [&](auto *to) { return HORAC_edita(to, field); }) &&
         in.shows(two(hour, minute, sep),
                  [&](auto *to) { return HORAC_edita_sep(to, field, sep); }) &&
         in.shows(three(':'), [&](auto *to) { return HHMMSS_edita(to, field); }) &&
         in.shows(two(parts[0], parts[1], ':'),
                  [&](auto *to) { return HHMMSS_edita_hhmm(to, field); }) &&
         in.shows((flags & 1) != 0 ? two(parts[0], parts[1], sep) : three(sep),
                  [&](auto *to) { return HHMMSS_edita_sep(to, field, sep, flags); });
}

}  // namespace campotipo::test
