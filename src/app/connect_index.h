// Puts the index into the shell's hooks: updates in the background, loading ahead, stopping, the progress of
// all that and of the scan of the dates.
#pragma once

namespace kalmora {

// Once, at start, after the settings are read and before other threads run.
void ConnectIndex();

}  // namespace kalmora
