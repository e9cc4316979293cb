// Files that are dropped: on the main window, or on the little window that takes scraps.
#pragma once

#include <string>
#include <vector>

#include "base/geometry.h"

namespace kalmora {

struct Drop {
    std::vector<std::string> paths;  // absolute
    Point client;                    // in the main window
    bool copies = false;             // Control is held: the files stay where they are, too
};
enum class DropPlace { MainWindow, ScrapAgent };

// Takes the files into the day that the place means (drop_target.h), those of the scrap agent into today with
// the time of the moment. Without Control a file moves; one that cannot, or that is read-only or empty, is
// copied. On a background, pictures are copied as its backgrounds and other files are left alone. True when
// the view has changed. GUI thread.
bool DropFiles(const Drop& drop, DropPlace place);

// The name without what stands between its first "-", looked for from its extension backwards, and the
// extension: "name-xxx.jpg" is "name.jpg" to some programs that offer it. Empty when there is none.
std::string RepairDroppedName(const std::string& path);

}  // namespace kalmora
