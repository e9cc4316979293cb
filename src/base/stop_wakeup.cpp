#include "base/stop_wakeup.h"

namespace kalmora {

StopWakeup& TheStopWakeup() {
    static auto* const wakeup = new StopWakeup;
    return *wakeup;
}

}  // namespace kalmora
