#include "base/dates.h"

#include <limits>
#include <tuple>

namespace kalmora {

namespace {
constexpr std::uint16_t kLastYear = std::numeric_limits<std::uint16_t>::max();

auto Fields(const SystemTime& t) {
    return std::tie(t.year, t.month, t.day, t.hour, t.minute, t.second, t.milliseconds);
}

// False at the last day there is.
bool StepForward(SystemTime& date) {
    if (date.day < DaysInMonth(date.year, date.month)) {
        ++date.day;
        return true;
    }
    if (date.month < 12) {
        ++date.month;
    } else {
        if (date.year == kLastYear) return false;
        ++date.year;
        date.month = 1;
    }
    date.day = 1;
    return true;
}

// False at the first day there is.
bool StepBack(SystemTime& date) {
    if (date.day > 1) {
        --date.day;
        return true;
    }
    if (date.month > 1) {
        --date.month;
    } else {
        if (date.year == 0) return false;
        --date.year;
        date.month = 12;
    }
    date.day = static_cast<std::uint16_t>(DaysInMonth(date.year, date.month));
    return true;
}
}  // namespace

int DaysInMonth(int year, int month) {
    switch (month) {
        case 4:
        case 6:
        case 9:
        case 11:
            return 30;
        case 2:
            if (year % 400 == 0) return 29;
            if (year % 100 == 0) return 28;
            return year % 4 == 0 ? 29 : 28;
        default:
            return 31;
    }
}

SystemTime AddDays(const SystemTime& date, int n) {
    SystemTime result = date;
    for (; n > 0 && StepForward(result); --n) {
    }
    for (; n < 0 && StepBack(result); ++n) {
    }
    return result;
}

SystemTime ApplyDayEnd(const SystemTime& moment, int dayEnd) {
    return moment.hour + 24 < dayEnd ? AddDays(moment, -1) : moment;
}

int CompareSystemTimes(const SystemTime& a, const SystemTime& b) {
    if (Fields(a) < Fields(b)) return -1;
    return Fields(b) < Fields(a) ? 1 : 0;
}

bool SystemTimeLessOrEqual(const SystemTime& a, const SystemTime& b) { return CompareSystemTimes(a, b) <= 0; }

double DateToNumber(const SystemTime& date) {
    return date.year + date.month / 12.0 + date.day / 372.0 + date.hour / 8928.0;
}

}  // namespace kalmora
