// Period: what is looked at, a year, a month or a day.
#pragma once

#include <cstdint>

#include "base/dates.h"

namespace kalmora {

// The numbers are those of the settings file.
enum class Level : std::int32_t { Year = 1, Month = 2, Day = 4 };

struct Period {
    Level level = Level::Month;
    CalendarDate date;  // whole at every level: a year knows on which day it was left

    // The date with 0 for what the level leaves open.
    CalendarDate Range() const {
        return {date.year, level == Level::Year ? 0 : date.month, level == Level::Day ? date.day : 0};
    }
    bool Contains(const CalendarDate& day) const {
        return day.year == date.year && (level == Level::Year || day.month == date.month) &&
               (level != Level::Day || day.day == date.day);
    }
    friend bool operator==(const Period&, const Period&) = default;
};

}  // namespace kalmora
