// The program's icon in the tray: it brings the hidden window back, and it tells what is wrong with the hot
// keys. GUI thread.
#pragma once

#include <span>
#include <string>

#include "platform/tray.h"
#include "platform/window.h"

namespace kalmora {

std::span<const TrayMenuItem> TrayMenu();

// Commands of the icon go to the window. False when there is no icon to be made.
bool AddTrayIcon(Window& window);
void RemoveTrayIcon();

// True while a hidden window can be called back from the tray.
bool HasTray();
// What the tip says: the program's name, and the hot keys that could not be had ("[Ctrl+F1]"), if any.
void SetTrayTip(std::span<const std::string> missingHotKeys);
std::string TrayTip(std::span<const std::string> missingHotKeys, bool japanese);

}  // namespace kalmora
