// What a day's folder holds for the views: one walk, in a fixed order.
#pragma once

#include <functional>
#include <string>

#include "views/model/year_view.h"

namespace kalmora {

// Tells each text, image and movie below the folder (a shortcut counts as its target), sub-folders included,
// in the folder's order. Images called "back..." and music go to the period's BackgroundSet instead, and what
// is told is told to the slide show too. An empty text file is removed from the disk and not told. While a
// search result is shown the disk is not walked: the result's entries below the folder are told. `stopped` is
// asked between any two entries; true ends the walk. Any thread. A folder that cannot be read has nothing.
void ScanDayFolder(const std::string& folder, const std::function<bool()>& stopped,
                   const std::function<void(DayEntry)>& found);

// The same of what the search in force has found below the folder, of an empty one of all that it has found.
void ScanFoundFiles(const std::string& folder, const std::function<bool()>& stopped,
                    const std::function<void(DayEntry)>& found);

}  // namespace kalmora
