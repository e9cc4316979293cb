// When a load has to leave.
#pragma once

#include "base/stop_token.h"
#include "state/app_state.h"
#include "views/model/load_request.h"

namespace kalmora {

// Stopped while a stop is requested at the object gate, and for good once a newer load has begun.
inline StopToken StopOf(const LoadRequest& request) {
    return StopToken::AnyOf({request.load, StopToken(State().run.ObjectGate)});
}

}  // namespace kalmora
