// Local time, uptime and sleeping. The one service that tests replace: SetClock puts another clock in place.
#pragma once

#include <cstdint>

#include "base/system_time.h"

namespace kalmora {

class Clock {
public:
    virtual ~Clock() = default;
    virtual SystemTime LocalTime() = 0;
    // Wall-clock milliseconds since the program started; never goes back.
    virtual double UptimeMs() = 0;
    virtual void SleepMs(int milliseconds) = 0;
};

// The clock in force. Any thread may use it.
Clock& TheClock();
// Puts another clock in force (not owned); null brings the system's back. Only while no other thread runs.
void SetClock(Clock* clock);

inline SystemTime LocalTime() { return TheClock().LocalTime(); }
inline double UptimeMs() { return TheClock().UptimeMs(); }
inline void SleepMs(int milliseconds) { TheClock().SleepMs(milliseconds); }

// Conversions by the local time zone. An impossible date gives FileTime 0, FileTime 0 gives a zero date.
SystemTime ToLocalSystemTime(FileTime time);
FileTime ToFileTime(const SystemTime& local);
FileTime CurrentFileTime();

// 0 Sunday to 6 Saturday, for any date of the proleptic Gregorian calendar.
int DayOfWeek(int year, int month, int day);

}  // namespace kalmora
