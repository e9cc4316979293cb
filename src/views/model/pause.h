// The pause of the views: while the program is paused, loading and the walks wait.
#pragma once

#include "base/stop_token.h"

namespace kalmora {

// Looks for the end of the pause so often.
inline constexpr int kPauseStepMs = 500;

// Waits while the program is paused; false when stopped meanwhile. On the working thread.
bool WaitWhilePaused(const StopToken& stop);

}  // namespace kalmora
