// Ends whatever fills or draws the view.
#pragma once

namespace kalmora {

// Raises the stop flag of what the current view holds. Each change of the date begins with it. Any thread.
void StopCurrentLoad();

}  // namespace kalmora
