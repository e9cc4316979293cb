#include "app/day_end.h"

#include <charconv>
#include <system_error>

namespace kalmora {

int ParseDayEnd(std::string_view text, int before) {
    constexpr int kNoon = 12, kDay = 24;
    while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
    while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
    int hours = -1;
    const auto end = std::from_chars(text.data(), text.data() + text.size(), hours);
    if (end.ec != std::errc() || end.ptr != text.data() + text.size()) return before;
    if (hours < 0 || hours > 2 * kDay) return before;
    if (hours <= kNoon) hours += kDay;
    return hours == 2 * kDay ? kDay : hours;
}

}  // namespace kalmora
