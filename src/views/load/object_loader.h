// UpdateObjects: from the period in view to loaded objects, by a worker; whatever was being loaded before is
// stopped first.
#pragma once

namespace kalmora {

// Loads and paints the period in view again. GUI thread, or the heartbeat's thread. Waits at most 2.2 s for
// the running worker to leave; refused (nothing happens) when somebody else waits already.
void UpdateObjects();

// Command 1021 in a grid or a day: a worker reads the period again. GUI thread.
void ReloadView();

}  // namespace kalmora
