// Connects the commands and gestures that write into photos with what is on the screen.
#pragma once

namespace kalmora {

// Sets the hooks that rate and turn. GUI thread, before the windows are made.
void ConnectPhotos();

}  // namespace kalmora
