// LoadRequest: what a load is for.
#pragma once

#include <cstdint>

namespace kalmora {

// What a load is for: a copy, so that the worker never reads dates that move on meanwhile.
struct LoadRequest {
    int ViewType = 0;
    int year = 0;
    int month = 0;
    int day = 0;
    bool AllViewMode = false;
    std::uint32_t number = 0;  // see CalendarStore::loadNumber
};

}  // namespace kalmora
