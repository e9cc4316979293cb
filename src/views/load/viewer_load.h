// Fills the viewer of the day, or of the scatter, with the objects of a period.
#pragma once

#include "base/stop_token.h"
#include "views/model/load_request.h"

namespace kalmora {

// On the calling thread, with the object gate held; `stop` is tested between any two entries.
void LoadDayViewer(const LoadRequest& request, const StopToken& stop);
void LoadAllViewer(const LoadRequest& request, const StopToken& stop);

}  // namespace kalmora
