#include "views/model/pause.h"

#include "state/app_state.h"

namespace kalmora {

bool WaitWhilePaused(const StopToken& stop) {
    while (State().run.Paused)
        if (stop.WaitFor(kPauseStepMs)) return false;
    return true;
}

}  // namespace kalmora
