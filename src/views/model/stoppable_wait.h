// Waits of the threads that load and paint. A stop is noticed within 50 ms.
#pragma once

#include <functional>

namespace kalmora {

// True when the work shall end. Asked often, on the working thread.
using StopTest = std::function<bool()>;

// Sleeps while the program is paused; false when stopped meanwhile.
bool WaitWhilePaused(const StopTest& stopped);
// Sleeps in short steps; false when stopped meanwhile.
bool SleepUnless(const StopTest& stopped, int milliseconds);

}  // namespace kalmora
