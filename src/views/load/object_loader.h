// UpdateObjects: from the period in view to loaded objects. Grids are filled by a worker, days and scatters
// at once; whatever was being loaded before is stopped first.
#pragma once

#include "views/load/load_request.h"

namespace kalmora {

// Loads and paints the period in view anew. GUI thread, or the heartbeat's thread. Waits at most 2.2 s for
// the running worker to leave; refused (nothing happens) when somebody else waits already.
void UpdateObjects();

// Body of the worker.
void ObjectLoader(const LoadRequest& request);

// Command 1021 in a grid or a day: reads the period again on the calling thread.
void ReloadView();

// When the piece being played does not belong to the period, another one is picked, and played when sound is
// on.
enum class OldMusic { Stop, Pause };
void CheckMusic(OldMusic oldMusic);

}  // namespace kalmora
