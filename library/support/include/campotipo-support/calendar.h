#ifndef CAMPOTIPO_SUPPORT_CALENDAR_H
#define CAMPOTIPO_SUPPORT_CALENDAR_H

#include <campotipo-support/export.h>
#include <stdint.h>
#include <time.h>

/*
 * Calendar services
 * =================
 *
 * The calendar of the date fields: a year is a leap year when it is a multiple of four, with no
 * exception for centuries. Day 1 is 1 January 1980, a Tuesday. Two-digit years stand for 1980 to
 * 2079.
 *
 * No operation keeps state; all may run at the same time. Pointers are never null.
 */

#ifdef __cplusplus
extern "C" {
#endif

/*
 * CRONOBASE_ano_com_quatro: the year from 1980 to 2079 with these last two digits: 80 gives 1980,
 * 99 gives 1999, 0 gives 2000, 79 gives 2079.
 *
 * year   0 to 99; any other int is first taken modulo 100 into that range (-1 counts as 99)
 */
CAMPOTIPO_API int32_t CRONOBASE_ano_com_quatro(int32_t year) CAMPOTIPO_NOEXCEPT;

/*
 * CRONOBASE_zuliano: day count of a date, 1 for 1 January 1980.
 *
 * day     added as it is, also where the month has no such day
 * month   1 to 12; any other month gives 0
 * year    in four digits; a year before 1980 gives 0
 */
CAMPOTIPO_API int32_t CRONOBASE_zuliano(int32_t day, int32_t month,
                                        int32_t year) CAMPOTIPO_NOEXCEPT;

/*
 * CRONOBASE_localtime: local broken-down time of a moment, in the time zone of mktime: the one that
 * TZ in the environment names at the call. Without TZ the system's time zone file is looked at on
 * every call.
 *
 * moment   read
 * local    filled; all zeros where the platform cannot convert the moment
 */
CAMPOTIPO_API void CRONOBASE_localtime(const time_t *moment, struct tm *local) CAMPOTIPO_NOEXCEPT;

#ifdef __cplusplus
}
#endif

#endif
