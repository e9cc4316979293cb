#include "cli/iso_date.h"

#include <cstdio>

#include "base/dates.h"

namespace kalmora {

std::string IsoDate(const SystemTime& date) {
    char text[48];
    std::snprintf(text, sizeof text, "%04d-%02d-%02dT%02d:%02d:%02d", date.year, date.month, date.day,
                  date.hour, date.minute, date.second);
    return text;
}

bool IsRealDate(const SystemTime& date) {
    return date.year >= 1 && date.year <= 9999 && date.month >= 1 && date.month <= 12 && date.day >= 1 &&
           date.day <= DaysInMonth(date.year, date.month) && date.hour <= 23 && date.minute <= 59 &&
           date.second <= 59;
}

}  // namespace kalmora
