// The program's icon in the desktop's tray. GUI thread.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace kalmora {

struct TrayMenuItem {
    enum class Kind { Command, Caption, Separator };  // a caption can be read and not chosen
    Kind kind = Kind::Command;
    std::string text;  // an & is in front of the letter that chooses it
    int command = 0;
    bool isDefault = false;  // printed bold
};

struct TrayOptions {
    std::string iconPath;
    std::string tip;
    std::vector<TrayMenuItem> menu;             // opens on the right button
    std::function<void()> onPress;              // the left button
    std::function<void(int command)> onChosen;  // an item of the menu
    std::function<void()> onGone;               // the tray has gone, a second ago at most; it may come back
};

// Is shown in the tray as long as the object lives.
class TrayIcon {
public:
    // Null without an Application. Where the desktop has no tray the icon waits for one.
    static std::unique_ptr<TrayIcon> Create(const TrayOptions& options);
    virtual ~TrayIcon() = default;
    // False while the desktop has no tray: what is hidden then has no place to be called back from.
    virtual bool IsShown() const = 0;
    virtual void SetTip(const std::string& tip) = 0;
};

}  // namespace kalmora
