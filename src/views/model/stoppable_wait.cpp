#include "views/model/stoppable_wait.h"

#include <algorithm>

#include "platform/clock.h"
#include "state/app_state.h"

namespace kalmora {

namespace {
constexpr int kPauseStepMs = 500;
constexpr int kSleepStepMs = 50;
}  // namespace

bool WaitWhilePaused(const StopTest& stopped) {
    while (State().run.Paused)
        if (!SleepUnless(stopped, kPauseStepMs)) return false;
    return true;
}

bool SleepUnless(const StopTest& stopped, int milliseconds) {
    for (; milliseconds > 0; milliseconds -= kSleepStepMs) {
        if (stopped()) return false;
        SleepMs(std::min(milliseconds, kSleepStepMs));
    }
    return !stopped();
}

}  // namespace kalmora
