// Files that are dropped: on the main window, or on the little window that takes scraps.
#pragma once

#include <string>
#include <vector>

#include "base/geometry.h"
#include "platform/drop_event.h"

namespace kalmora {

struct CalendarStore;

struct Drop {
    std::vector<std::string> paths;  // absolute
    Point client;                    // in the main window
    bool copies = false;             // Control is held, or their program keeps them: they stay where they are
};
enum class DropPlace { MainWindow, ScrapAgent };

struct DropOutcome {
    bool viewChanged = false;
    // Moved: everything was taken, and nothing is left at its old place. Copied: something was taken.
    DropResult result = DropResult::NotTaken;
};

// Takes the files into the day that the place means (drop_target.h), those of the scrap agent into today with
// the time of the moment. Without `copies` a file moves; one that cannot, or that is read-only or empty, is
// copied. A folder is imported as a card is, by the settings of the import and each file into its own day; it
// is never reported as moved. It is the import's work: it waits for the end of an import that runs, shows its
// gauge, and the window's end ends it, also within a file, which then stays whole where it is. On a
// background, pictures are copied as its backgrounds and other files are left alone. What was taken is safe
// on the disk when this comes back. Nothing was taken, as far as is known, when the window was closed
// meanwhile (run_beside.h). GUI thread.
DropOutcome DropFiles(CalendarStore& calendar, const Drop& drop, DropPlace place);

// The name without what is between its first "-", looked for from its extension backwards, and the
// extension: "name-xxx.jpg" is "name.jpg" to some programs that offer it. Empty when there is none.
std::string RepairDroppedName(const std::string& path);

}  // namespace kalmora
