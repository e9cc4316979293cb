// Shows the progress of index work and of the scan of the dates in the window, and opens the index of each
// root.
#pragma once

namespace kalmora {

// Once, at start, after the settings are read and before other threads run.
void ConnectIndex();

}  // namespace kalmora
