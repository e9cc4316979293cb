// Shows the progress of index work and of the scan of the dates in the window, and opens the index of each
// root.
#pragma once

#include "base/work_context.h"

namespace kalmora {

// Once, at start, after the settings are read and before other threads run.
void ConnectIndex();

// What long work of the window's program is given: it is stopped by StopDesktopWork, and its progress is
// shown in the window. Nothing of that before ConnectIndex. Any thread.
const WorkContext& DesktopWork();
// At the end of the program: each worker leaves at its next file.
void StopDesktopWork();

}  // namespace kalmora
