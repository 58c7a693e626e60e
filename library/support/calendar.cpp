#include <campotipo-support/calendar.h>

#include <cstdint>
#include <cstring>

namespace {

constexpr std::int32_t kBaseYear = 1980;

// Days before each month of a common year, January first.
constexpr std::int16_t kDaysBefore[12] = {0, 31, 59, 90, 120, 151, 181, 212, 243, 273, 304, 334};

}  // namespace

extern "C" {

int32_t CRONOBASE_ano_com_quatro(int32_t year) {
  int32_t last_two = year % 100;
  if (last_two < 0) last_two += 100;
  return last_two + (last_two < kBaseYear % 100 ? 2000 : 1900);
}

int32_t CRONOBASE_zuliano(int32_t day, int32_t month, int32_t year) {
  if (year < kBaseYear || month < 1 || month > 12) return 0;
  const std::int64_t years = year - kBaseYear;
  const std::int64_t leap_days = (years + 3) / 4;
  const int leap_day = month > 2 && (year & 3) == 0;
  return static_cast<int32_t>(365 * years + leap_days + kDaysBefore[month - 1] + leap_day + day);
}

void CRONOBASE_localtime(const time_t *moment, struct tm *local) {
  // Unlike mktime, localtime_r may stay with a time zone that the environment no longer names.
  tzset();
  if (localtime_r(moment, local) == nullptr) std::memset(local, 0, sizeof *local);
}
}
