// Loading the calendar grids: days, months and years from the folders into their slots, drawn as they come.
//
// On the ObjectLoader thread, or on the GUI thread for a reload by command. `stop` is tested between any
// two slow steps; each function returns false when it left because of it.
#pragma once

#include <string>

#include "base/stop_token.h"
#include "state/period.h"

namespace kalmora {

// Whether cells appear on the window while they are loaded, and in which of the two grid views.
struct LoadDrawing {
    Level level = Level::Month;
    bool whileLoading = true;      // draw each cell as soon as it is loaded
    bool months = true;            // in a year: draw each month as soon as it is loaded
    bool waitsWhilePaused = true;  // never on the GUI thread, which alone can end the pause
};

bool LoadDayCell(const std::string& root, int year, int month, int day, const StopToken& stop);
bool LoadMonth(const std::string& root, int year, int month, const StopToken& stop, LoadDrawing drawing);
bool LoadYear(const std::string& root, int year, const StopToken& stop, LoadDrawing drawing);

}  // namespace kalmora
