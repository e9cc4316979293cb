// What the desktop does for the program: opening things, the trash.
#pragma once

#include <string>

namespace kalmora::shell {

// Opens a file, folder or address with the program the desktop has for it. False when that cannot be started.
bool Open(const std::string& target);
// Opens a text file with `editor` (a command; empty or "xdg-open" means the desktop's choice).
bool OpenWithEditor(const std::string& editor, const std::string& path);
// The desktop's way to open things, as a command: the default text editor.
std::string DefaultOpener();

// Moves a file to the desktop's trash, from where the user can take it back. False leaves it where it is.
bool MoveToTrash(const std::string& path);

}  // namespace kalmora::shell
