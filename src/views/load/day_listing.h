// DayListing: what a day's folder holds for the views.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "base/stop_token.h"
#include "state/view_state.h"
#include "views/model/year_view.h"

namespace kalmora {

struct CalendarStore;

// A value: making it changes nothing, on the disk or in the program. Each list is in the folder's order.
struct DayListing {
    std::vector<DayEntry> entries;         // texts, pictures and movies; a shortcut counts as its target
    std::vector<std::string> backgrounds;  // pictures called "back..."
    std::vector<std::string> music;
    std::vector<std::string> emptyTexts;  // scraps that were never filled

    // Puts the file into its list; one that no view shows is left out.
    void Add(const std::string& path);
};

// The files in the folder and its sub-folders, in the folders' order. A stop ends it between any two. A
// folder that cannot be read has none. Any thread.
void ForEachFile(const std::string& folder, const StopToken& stop,
                 const std::function<void(const std::string& path)>& found);

// Lists the files of the folder for a view that is loaded. While that shows a search result the disk is not
// walked: the result's entries below the folder are listed. What was listed until a stop is given. Any
// thread.
DayListing ListDayFolder(const std::string& folder, const ViewState& view, const StopToken& stop);

// The same of what the search in force has found below the folder, of an empty one of all that it has found.
DayListing ListFoundFiles(const std::string& folder, const StopToken& stop);

// Does what a listing asks for, also of one that was stopped: deletes the empty texts, adds backgrounds and
// music to those of the period in view, and the entries to the slide show. Gives the entries. Any thread.
std::vector<DayEntry> TakeListing(CalendarStore& calendar, DayListing listing);

}  // namespace kalmora
