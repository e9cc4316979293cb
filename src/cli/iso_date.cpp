#include "cli/iso_date.h"

#include <cstdio>

namespace kalmora {

std::string IsoDate(const SystemTime& date) {
    char text[48];
    std::snprintf(text, sizeof text, "%04d-%02d-%02dT%02d:%02d:%02d", date.year, date.month, date.day,
                  date.hour, date.minute, date.second);
    return text;
}

}  // namespace kalmora
