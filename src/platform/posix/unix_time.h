// Seconds since 1970 and steps of 100 ns since 1601: the two counts of the same time. Plain functions; any
// thread.
#pragma once

#include <ctime>

#include "base/system_time.h"

namespace kalmora {

inline constexpr long long kSecondsFrom1601To1970 = 11'644'473'600LL;
inline constexpr long long kTicksPerSecond = 10'000'000LL;

// A time before 1601 or past what the count can hold gives 0, "no time".
inline FileTime FromUnixTime(long long seconds, long nanoseconds) {
    if (seconds <= -kSecondsFrom1601To1970 || seconds > 900'000'000'000LL) return {};
    const long long ticks = (seconds + kSecondsFrom1601To1970) * kTicksPerSecond + nanoseconds / 100;
    return FileTime{static_cast<std::uint64_t>(ticks)};
}

inline timespec ToUnixTime(FileTime time) {
    timespec result{};
    result.tv_sec = static_cast<std::time_t>(time.ticks / kTicksPerSecond) - kSecondsFrom1601To1970;
    result.tv_nsec = static_cast<long>(time.ticks % kTicksPerSecond) * 100;
    return result;
}

}  // namespace kalmora
