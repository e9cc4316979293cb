// The two date values of the program, the same on every platform so that TIME= and DATE= lines agree.
#pragma once

#include <compare>
#include <cstdint>

namespace kalmora {

// A local date and time, eight 16-bit fields. dayOfWeek 0 is Sunday. All zero means "no date".
struct SystemTime {
    std::uint16_t year = 0;
    std::uint16_t month = 0;
    std::uint16_t dayOfWeek = 0;
    std::uint16_t day = 0;
    std::uint16_t hour = 0;
    std::uint16_t minute = 0;
    std::uint16_t second = 0;
    std::uint16_t milliseconds = 0;
    friend bool operator==(const SystemTime&, const SystemTime&) = default;
};

// 100 ns steps since 1601-01-01 00:00 UTC. 0 means "no time".
struct FileTime {
    std::uint64_t ticks = 0;
    std::uint32_t High() const { return static_cast<std::uint32_t>(ticks >> 32); }
    std::uint32_t Low() const { return static_cast<std::uint32_t>(ticks & 0xFFFFFFFFu); }
    friend auto operator<=>(const FileTime&, const FileTime&) = default;
};

}  // namespace kalmora
