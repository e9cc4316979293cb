#pragma once

#include <chrono>
#include <string>

namespace sample {

// A point of the local calendar.
struct Stamp {
    int year = 2000;
    int month = 1;
    int day = 1;
    int hour = 12;
    int minute = 0;
    int second = 0;

    auto operator<=>(const Stamp&) const = default;
};

inline std::chrono::sys_days DayOf(const Stamp& stamp) {
    using namespace std::chrono;
    return sys_days(std::chrono::year(stamp.year) / stamp.month / stamp.day);
}

inline Stamp StampOf(std::chrono::sys_days day) {
    const std::chrono::year_month_day date(day);
    Stamp stamp;
    stamp.year = static_cast<int>(date.year());
    stamp.month = static_cast<int>(static_cast<unsigned>(date.month()));
    stamp.day = static_cast<int>(static_cast<unsigned>(date.day()));
    return stamp;
}

// "2008:11:13 10:15:00", as cameras write it.
std::string CameraTime(const Stamp& stamp);
// "2008/200811/2008_1113" and "2008/200811".
std::string DayFolder(const Stamp& stamp);
std::string MonthFolder(const Stamp& stamp);
// printf for short names.
[[gnu::format(printf, 1, 2)]] std::string Format(const char* pattern, ...);

}  // namespace sample
