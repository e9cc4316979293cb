// Calendar arithmetic on local dates. Plain functions on values; any thread; none fails.
#pragma once

#include "base/system_time.h"

namespace kalmora {

// A place on the calendar. month 0 stands for the whole year, day 0 for the whole month.
struct CalendarDate {
    int year = 0;
    int month = 0;
    int day = 0;
    friend auto operator<=>(const CalendarDate&, const CalendarDate&) = default;
};

// 28 to 31; 31 for a month outside 1 to 12.
int DaysInMonth(int year, int month);

// The date n days later, or earlier for a negative n. Only year, month and day change: the day of week and
// the time of day are carried over as they are. Stops at the first and the last day that a SystemTime holds.
SystemTime AddDays(const SystemTime& date, int n);

// The day to which a moment belongs for somebody who stays up late. `dayEnd` is the number of hours after the
// midnight that begins the day: with 26 the hours 0 and 1 still belong to the day before, with 24 or less
// none do. Only year, month and day change.
SystemTime ApplyDayEnd(const SystemTime& moment, int dayEnd);

// -1, 0 or 1 by year, month, day, hour, minute, second and millisecond; the day of week does not count.
int CompareSystemTimes(const SystemTime& a, const SystemTime& b);
// True also for equal dates: this is an order to search with, not a strict weak order for std::sort.
bool SystemTimeLessOrEqual(const SystemTime& a, const SystemTime& b);

// A rough scale in years, every month 31 days long: for comparing dates with a tolerance of hours.
double DateToNumber(const SystemTime& date);

}  // namespace kalmora
