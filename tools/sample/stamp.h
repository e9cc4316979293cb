#pragma once

#include <chrono>
#include <cstdarg>
#include <cstdio>
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

// printf for short texts.
[[gnu::format(printf, 1, 2)]] inline std::string Format(const char* pattern, ...) {
    char text[512];
    va_list arguments;
    va_start(arguments, pattern);
    std::vsnprintf(text, sizeof text, pattern, arguments);
    va_end(arguments);
    return text;
}

// "2008:11:13 10:15:00", as cameras write it.
inline std::string CameraTime(const Stamp& s) {
    return Format("%04d:%02d:%02d %02d:%02d:%02d", s.year, s.month, s.day, s.hour, s.minute, s.second);
}

// "2008/200811" and "2008/200811/2008_1113".
inline std::string MonthFolder(const Stamp& s) { return Format("%04d/%04d%02d", s.year, s.year, s.month); }
inline std::string DayFolder(const Stamp& s) {
    return MonthFolder(s) + Format("/%04d_%02d%02d", s.year, s.month, s.day);
}

}  // namespace sample
