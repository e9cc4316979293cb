// What every run needs before it can do anything, with a window or without: the folders, the settings, the
// extension table.
#pragma once

#include "app/start_options.h"

namespace kalmora {

// The folder of settings, key files and Temp: the option, $KALMORA_HOME, the program's own folder when it can
// be written, otherwise the user's data folder. No trailing separator.
std::string HomeFolder(const StartOptions& options);
// The folder that holds Res and the default backgrounds: the program's own, or share/kalmora beside its bin.
std::string InstalledFolder();

// Fills ProgramFolder, InstallFolder and the paths that lie in the home; turns the log on. Makes the home
// folder when it is missing.
void PrepareFolders(const StartOptions& options);
// Reads the settings and sets the data roots, the option's among them. True when the settings file existed.
bool LoadEnvironment(const StartOptions& options);
// Puts the photo room's reader of embedded thumbnails into the seam.
void ConnectRooms();

}  // namespace kalmora
