// The system's wish that the program end (on Linux SIGTERM, SIGINT, SIGHUP), told also while the GUI thread
// stands in a call that does not come back. The windows are asked to close besides, on the GUI thread, as
// soon as that serves its events.
#pragma once

#include <functional>

namespace kalmora {

// Calls `onWish` at each such signal while an Application for a desktop stands, on a thread of its own. It
// must be safe to call as long as the process lives. An empty one ends it.
void WatchEndSignals(std::function<void()> onWish);

}  // namespace kalmora
