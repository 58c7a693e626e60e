#include <campotipo/calendar.h>
#include <fmt/compile.h>

#include <charconv>
#include <chrono>
#include <cstring>
#include <ctime>
#include <random>
#include <string>

#include "bench/subsystems.hpp"

namespace campotipo::bench {
namespace {

namespace chrono = std::chrono;

// 512 days from 1980 to 2079, each in every contender's form.
struct Days {
  Days() {
    std::mt19937 random(3);
    for (std::size_t i = 0; i < kInputs; ++i) {
      count[i] = 1 + static_cast<int>(random() % 36500);
      DATAC_de_zuliano(field[i], count[i]);
      civil[i] = chrono::year_month_day{chrono::sys_days{kFirst} + chrono::days{count[i] - 1}};
      broken[i].tm_year = DATAC_ano1(field[i]) - 1900;
      broken[i].tm_mon = DATAC_mes(field[i]) - 1;
      broken[i].tm_mday = DATAC_dia(field[i]);
      moment[i] = timegm(&broken[i]);
      DATAC_edita4(edited[i], field[i]);
      DATAC_dtoa_DDMMAAAA(digits[i], field[i]);
    }
  }
  static constexpr chrono::year_month_day kFirst{chrono::year{1980}, chrono::January,
                                                 chrono::day{1}};
  unsigned char field[kInputs][3];
  int count[kInputs];
  chrono::year_month_day civil[kInputs];
  std::tm broken[kInputs] = {};
  std::time_t moment[kInputs];
  char edited[kInputs][16];
  char digits[kInputs][16];
};

std::string shown(int day, int month, int year) {
  return fmt::format("{:02}/{:02}/{:04}", day, month, year);
}

std::string shown(const chrono::year_month_day &civil) {
  return shown(static_cast<int>(static_cast<unsigned>(civil.day())),
               static_cast<int>(static_cast<unsigned>(civil.month())),
               static_cast<int>(civil.year()));
}

std::string shown(const unsigned char *field) {
  char text[DATAC_EDITA4_TEXT_SIZE];
  return DATAC_edita4(text, field);
}

int days_since_first(const chrono::year_month_day &civil) {
  return static_cast<int>((chrono::sys_days{civil} - chrono::sys_days{Days::kFirst}).count()) + 1;
}

void counts(const Days &days) {
  static unsigned char out[3];
  static std::tm broken;
  const auto count = [](int value) { return std::to_string(value); };
  Task("calendar", "build a date", 4).ours([&](std::size_t i) {
    DATAC_monta(out, days.broken[i].tm_mday, days.broken[i].tm_mon + 1,
                days.broken[i].tm_year + 1900);
    clobber();
  });
  Task("calendar", "read day, month, year", 0).ours([&](std::size_t i) {
    keep(DATAC_dia(days.field[i]) + DATAC_mes(days.field[i]) + DATAC_ano1(days.field[i]));
  });
  Task("calendar", "compare", 4).ours([&](std::size_t i) {
    keep(DATAC_compara(days.field[i], days.field[(i + 1) % kInputs]));
  });
  Task("calendar", "day count of a date", 4.5)
      .ours([&](std::size_t i) { keep(DATAC_zuliano_desde(days.field[i], 1980)); },
            [&, count](std::size_t i) { return count(DATAC_zuliano(days.field[i])); })
      .peer(
          "std::chrono (inline)", [&](std::size_t i) { keep(days_since_first(days.civil[i])); },
          [&, count](std::size_t i) { return count(days_since_first(days.civil[i])); })
      .peer(
          "timegm",
          [&](std::size_t i) {
            broken = days.broken[i];
            keep(timegm(&broken));
          },
          [&, count](std::size_t i) {
            return count(static_cast<int>((days.moment[i] - days.moment[0]) / 86400) +
                         days.count[0]);
          });
  Task("calendar", "date of a day count", 5.5)
      .ours([&](std::size_t i) { DATAC_de_zuliano(out, days.count[i]), clobber(); },
            [&](std::size_t i) { return shown(days.field[i]); })
      .peer(
          "std::chrono (inline)",
          [&](std::size_t i) {
            keep(chrono::year_month_day{chrono::sys_days{Days::kFirst} +
                                        chrono::days{days.count[i] - 1}});
          },
          [&](std::size_t i) { return shown(days.civil[i]); })
      .peer(
          "gmtime_r", [&](std::size_t i) { gmtime_r(&days.moment[i], &broken), clobber(); },
          [&](std::size_t i) {
            gmtime_r(&days.moment[i], &broken);
            return shown(broken.tm_mday, broken.tm_mon + 1, broken.tm_year + 1900);
          });
}

void steps(const Days &days) {
  static unsigned char out[3];
  static std::tm broken;
  const auto advanced = [&](std::size_t i) {
    std::memcpy(out, days.field[i], 3);
    DATAC_avanca_dias(out, 30);
  };
  Task("calendar", "advance 30 days", 7)
      .ours([=](std::size_t i) { advanced(i), clobber(); },
            [=](std::size_t i) { return advanced(i), shown(out); })
      .peer(
          "std::chrono (inline)",
          [&](std::size_t i) {
            keep(chrono::year_month_day{chrono::sys_days{days.civil[i]} + chrono::days{30}});
          },
          [&](std::size_t i) {
            return shown(
                chrono::year_month_day{chrono::sys_days{days.civil[i]} + chrono::days{30}});
          })
      .peer(
          "mktime",
          [&](std::size_t i) {
            broken = days.broken[i];
            broken.tm_mday += 30;
            broken.tm_hour = 12;
            keep(mktime(&broken));
          },
          [&](std::size_t i) {
            broken = days.broken[i];
            broken.tm_mday += 30;
            broken.tm_hour = 12;
            mktime(&broken);
            return shown(broken.tm_mday, broken.tm_mon + 1, broken.tm_year + 1900);
          });
  for (int far : {1, 100, 10000, 1000000})
    Task("growth", "days stepped/" + std::to_string(far)).ours([&, far](std::size_t i) {
      std::memcpy(out, days.field[i], 3);
      DATAC_avanca_dias(out, far);
      clobber();
    });
  for (int far : {1, 100, 10000})
    Task("growth", "months stepped/" + std::to_string(far)).ours([&, far](std::size_t i) {
      std::memcpy(out, days.field[i], 3);
      DATAC_avanca_meses(out, far);
      clobber();
    });
}

void texts(const Days &days) {
  static char text[32];
  static unsigned char out[3];
  static std::tm broken;
  const auto edited = [&](std::size_t i) { return std::string(days.edited[i]); };
  Task("calendar", "print dd/mm/yyyy", 8)
      .ours([&](std::size_t i) { DATAC_edita4(text, days.field[i]), clobber(); }, edited)
      .peer(
          "snprintf",
          [&](std::size_t i) {
            const std::tm &from = days.broken[i];
            std::snprintf(text, sizeof text, "%02d/%02d/%04d", from.tm_mday, from.tm_mon + 1,
                          from.tm_year + 1900);
            clobber();
          },
          [&](std::size_t i) {
            return shown(days.broken[i].tm_mday, days.broken[i].tm_mon + 1,
                         days.broken[i].tm_year + 1900);
          })
      .peer(
          "strftime",
          [&](std::size_t i) { keep(std::strftime(text, 32, "%d/%m/%Y", &days.broken[i])); },
          [&](std::size_t i) {
            std::strftime(text, 32, "%d/%m/%Y", &days.broken[i]);
            return std::string(text);
          })
      .peer("fmt", [&](std::size_t i) {
        const std::tm &from = days.broken[i];
        *fmt::format_to(text, FMT_COMPILE("{:02}/{:02}/{:04}"), from.tm_mday, from.tm_mon + 1,
                        from.tm_year + 1900) = '\0';
        clobber();
      });
  Task("calendar", "parse ddmmyyyy with checks", 7)
      .ours([&](std::size_t i) { DATAC_fmt_atod(out, 1, 1, days.digits[i]), clobber(); },
            [&](std::size_t i) {
              DATAC_fmt_atod(out, 1, 1, days.digits[i]);
              return shown(out);
            })
      .peer(
          "sscanf",
          [&](std::size_t i) {
            int day, month, year;
            std::sscanf(days.digits[i], "%2d%2d%4d", &day, &month, &year);
            keep(day + month + year);
          },
          edited)
      .peer(
          "strptime", [&](std::size_t i) { keep(strptime(days.edited[i], "%d/%m/%Y", &broken)); },
          [&](std::size_t i) {
            strptime(days.edited[i], "%d/%m/%Y", &broken);
            return shown(broken.tm_mday, broken.tm_mon + 1, broken.tm_year + 1900);
          })
      .peer("from_chars x 3", [&](std::size_t i) {
        int day = 0, month = 0, year = 0;
        const char *from = days.digits[i];
        std::from_chars(from, from + 2, day);
        std::from_chars(from + 2, from + 4, month);
        std::from_chars(from + 4, from + 8, year);
        keep(day + month + year);
      });
}

}  // namespace

void register_calendar() {
  DATAC_formato = DATAC_FORMATO_COMPACTO;
  static const Days days;
  counts(days);
  steps(days);
  texts(days);
}

}  // namespace campotipo::bench
