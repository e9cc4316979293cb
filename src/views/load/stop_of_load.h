// When a load has to leave.
#pragma once

#include <cstdint>

#include "state/app_state.h"
#include "views/model/calendar_store.h"
#include "views/model/stoppable_wait.h"

namespace kalmora {

// True when a stop is requested at the object gate, or when a newer load has begun.
inline StopTest StopTestOf(std::uint32_t number) {
    return [number] { return State().run.ObjectGate.IsStopRequested() || Calendar().loadNumber != number; };
}

}  // namespace kalmora
