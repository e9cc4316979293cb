// LoadRequest: what a load is for.
#pragma once

#include <cstdint>

#include "state/view_state.h"

namespace kalmora {

// What a load is for: a copy, so that the worker never reads a period that moves on meanwhile.
struct LoadRequest {
    ViewState view;
    std::uint32_t number = 0;  // see CalendarStore::loadNumber
};

}  // namespace kalmora
