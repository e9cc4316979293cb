// From what was entered in the search dialog to a line of the query language.
#pragma once

#include <string>

namespace kalmora {

// A box for an hour: picked from the list, or typed.
struct HourEntry {
    int picked = -1;    // its place in the list, which is the hour; -1: none of the list
    std::string typed;  // what is in the box
};

inline constexpr int kHourChoices = 37;  // 00 to 36: what is past 24 reaches into the next day

struct SearchEntry {
    std::string keyword;  // at most 1023 bytes of code page 932 of it count
    bool face = false;
    bool nightMode = false;
    bool flash = false;
    HourEntry from, to;  // both are wanted, below 37, or none counts
};

// Empty when nothing was entered.
std::string ComposeQuery(const SearchEntry& entry);

}  // namespace kalmora
