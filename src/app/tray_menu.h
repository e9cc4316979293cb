// The program's icon in the tray: it brings the hidden window back, and its tip names the hot keys that are
// missing. GUI thread.
#pragma once

#include <memory>
#include <span>
#include <string>

#include "platform/tray.h"
#include "platform/window.h"

namespace kalmora {

std::span<const TrayMenuItem> TrayMenu();

class Tray {
public:
    // Commands of the icon go to the window, and when the tray goes away a hidden window is shown. False when
    // no icon can be made.
    bool AddIcon(Window& window);
    void RemoveIcon();
    // True while a hidden window can be called back from the tray.
    bool IsShown() const { return icon_ && icon_->IsShown(); }
    void SetTip(std::span<const std::string> missingHotKeys);  // TrayTip

private:
    std::unique_ptr<TrayIcon> icon_;
};

// What the tip says: the program's name, and the hot keys that could not be had ("[Ctrl+F1]"), if any.
std::string TrayTip(std::span<const std::string> missingHotKeys, bool japanese);

}  // namespace kalmora
