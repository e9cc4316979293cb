// Puts the index into the shell's hooks: updates in the background, loading ahead, stopping, progress.
#pragma once

namespace kalmora {

// Once, at start, after the settings are read and before other threads run.
void ConnectIndex();

}  // namespace kalmora
