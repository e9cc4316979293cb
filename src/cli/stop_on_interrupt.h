// Ctrl+C, and a request of the system to end, stop the work of a verb at its next file.
#pragma once

#include "base/stop_token.h"

namespace kalmora {

// From now on these signals no longer end the process: they stop this token. What was finished stays, and the
// verb ends as usual. Main thread.
StopToken StopOnInterrupt();

}  // namespace kalmora
