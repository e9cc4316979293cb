// Loading the calendar grids: days, months and years from the folders into their slots, drawn as they come.
//
// On the load's worker. `stop` is tested between any two slow steps; each function returns false when it left
// because of it.
#pragma once

#include <string>

#include "base/stop_token.h"
#include "state/view_state.h"

namespace kalmora {

struct CalendarStore;

// Whether cells appear on the window while they are loaded.
struct LoadDrawing {
    bool whileLoading = true;      // draw each cell as soon as it is loaded
    bool months = true;            // in a year: draw each month as soon as it is loaded
    bool waitsWhilePaused = true;  // what the user asks to read again is read at once
};

// One pass of a load: what it reads from one data folder.
struct LoadPass {
    CalendarStore& calendar;
    ViewState view;  // of the request; the functions below fill slots of its year
    std::string root;
    LoadDrawing drawing;
};

bool LoadDayCell(const LoadPass& pass, int month, int day, const StopToken& stop);
bool LoadMonth(const LoadPass& pass, int month, const StopToken& stop);
bool LoadYear(const LoadPass& pass, const StopToken& stop);

}  // namespace kalmora
