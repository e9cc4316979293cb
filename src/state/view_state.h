// ViewState: which period is on the screen, and how. Written by the GUI thread and by the heartbeat's; read
// by any.
#pragma once

#include "state/shared_values.h"

namespace kalmora {

// The values of ViewType. They are written to the settings file.
enum ViewTypeValue : std::int32_t { kYearly = 1, kMonthly = 2, kDaily = 4 };

struct ViewState {
    SharedInt ViewType = kMonthly;
    SharedInt TargetYear = 0, TargetMonth = 0, TargetDay = 0;
    SharedFlag AllViewMode = 0;
    SharedFlag SearchResultMode = 0;
    SharedFlag SearchAllLoaded = 0;
};

}  // namespace kalmora
