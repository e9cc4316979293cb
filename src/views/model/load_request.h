// LoadRequest: what a load is for.
#pragma once

#include "base/stop_token.h"
#include "state/view_state.h"

namespace kalmora {

// What a load is for: a copy, so that the worker never reads a period that moves on meanwhile.
struct LoadRequest {
    ViewState view;
    StopToken load;  // stopped once a newer load has begun; see CalendarStore::BeginLoad
};

}  // namespace kalmora
