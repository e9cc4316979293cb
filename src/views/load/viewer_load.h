// Fills the viewer of the day, or of the scatter, with the objects of a period.
#pragma once

#include "views/model/load_request.h"
#include "views/model/stoppable_wait.h"

namespace kalmora {

// On the calling thread, with the object gate held; `stopped` is asked between any two entries.
void LoadDayViewer(const LoadRequest& request, const StopTest& stopped);
void LoadAllViewer(const LoadRequest& request, const StopTest& stopped);

}  // namespace kalmora
