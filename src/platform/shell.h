// What the desktop does for the program: opening things, shortcuts, the trash.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace kalmora::shell {

// Opens a file, folder or address with the program the desktop has for it. False when that cannot be started.
bool Open(const std::string& target);
// Opens a text file with `editor` (a command; empty or "xdg-open" means the desktop's choice).
bool OpenWithEditor(const std::string& editor, const std::string& path);
// The desktop's way to open things, as a command: the default text editor.
std::string DefaultOpener();

// ---- shortcuts in the shell link file format. Any thread.
// Writes linkPath (.lnk) pointing at targetPath; a relative path is stored beside the absolute one, so that a
// data folder can be moved. False when the file cannot be written.
bool CreateShortcut(const std::string& linkPath, const std::string& targetPath);
// The target: the relative path when something stands there, else the absolute path as stored (which need not
// stand). Empty when the file is no shortcut or stores no path.
std::optional<std::string> ResolveShortcut(const std::string& linkPath);
// The same on bytes: `folder` is the folder that the shortcut lies in.
std::optional<std::string> ParseShortcut(std::string_view bytes, const std::string& folder);
std::string MakeShortcut(const std::string& targetPath, const std::string& linkFolder);

// Moves a file to the desktop's trash, from where the user can take it back. False leaves it where it is.
bool MoveToTrash(const std::string& path);

}  // namespace kalmora::shell
