// The system's request that the program end (on Linux SIGTERM, SIGINT, SIGHUP), reported also while the GUI
// thread is inside a call that does not return. The windows are asked to close as well, on the GUI thread, as
// soon as that serves its events.
#pragma once

#include <functional>

namespace kalmora {

// Calls `onRequest` at each such signal while an Application for a desktop exists, on a thread of its own. It
// must be safe to call as long as the process lives. An empty one ends it.
void WatchEndSignals(std::function<void()> onRequest);

}  // namespace kalmora
