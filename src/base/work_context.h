// WorkContext: what long work is given besides its task.
#pragma once

#include "base/progress_listener.h"
#include "base/stop_token.h"

namespace kalmora {

struct WorkContext {
    StopToken stop;                              // ends it at the next file
    ProgressListener* progress = &NoProgress();  // never null; outlives the work
};

}  // namespace kalmora
