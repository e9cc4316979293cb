// `kalmora shot`: a view drawn into a PNG, as the window shows it, without a display.
#pragma once

#include <string>

#include "app/start_options.h"

namespace kalmora {

struct ShotOptions {
    std::string view;  // "year", "month", "day"; empty: the settings' view
    bool all = false;
    std::string date;  // "2008-11-13"; empty: today
    std::string size = "960x700";
    double scale = 1.0;
    std::string out;
    bool json = false;
};

// Waits until the view has loaded and is painted whole. 0, 1 when it cannot be drawn or written, 2 for
// options that say nothing sensible.
int RunShot(const StartOptions& start, const ShotOptions& options);

}  // namespace kalmora
