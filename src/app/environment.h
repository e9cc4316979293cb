// What every run needs before it can do anything, with a window or without: the folders, the settings, the
// extension table.
#pragma once

#include <string>

#include "app/start_options.h"

namespace kalmora {

// The folder of settings, key files and Temp: the option, $KALMORA_HOME, the program's own folder when a
// kalmora.ini lies there, otherwise the user's data folder. No trailing separator.
std::string HomeFolder(const StartOptions& options);
// The folder that holds Res and the default backgrounds: the program's own, or share/kalmora beside its bin.
std::string InstalledFolder();

// What keeps the program from running with these options or over this home.
struct Obstacle {
    enum class Kind {
        None,
        Option,  // --data, or the folder above --home, is not there
        File,    // a settings file or an extension table is there and cannot be read
    };
    Kind kind = Kind::None;
    std::string words;  // for the user
};
// Looks at the disk and changes nothing there. Before PrepareFolders.
Obstacle FindObstacle(const StartOptions& options);

// Fills ProgramFolder, InstallFolder and the paths that lie in the home; turns the log on. Makes the home
// folder when it is missing.
void PrepareFolders(const StartOptions& options);
// Reads the settings and sets the data roots, the option's among them. False on the first start: there is no
// settings file yet. Where that makes the default data folder, standard error says where it is.
bool LoadEnvironment(const StartOptions& options);
// Puts the photo room's reader of embedded thumbnails into the seam.
void ConnectRooms();

}  // namespace kalmora
