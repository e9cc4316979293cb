#include "stamp.h"

#include <cstdarg>
#include <cstdio>

namespace sample {

std::string Format(const char* pattern, ...) {
    char text[512];
    va_list arguments;
    va_start(arguments, pattern);
    std::vsnprintf(text, sizeof text, pattern, arguments);
    va_end(arguments);
    return text;
}

std::string CameraTime(const Stamp& s) {
    return Format("%04d:%02d:%02d %02d:%02d:%02d", s.year, s.month, s.day, s.hour, s.minute, s.second);
}

std::string MonthFolder(const Stamp& s) { return Format("%04d/%04d%02d", s.year, s.year, s.month); }
std::string DayFolder(const Stamp& s) {
    return MonthFolder(s) + Format("/%04d_%02d%02d", s.year, s.month, s.day);
}

}  // namespace sample
