#include "app/tray_menu.h"

#include "base/commands.h"
#include "base/log.h"
#include "state/app_state.h"
#include "store/resources.h"

namespace kalmora {

namespace {

using Kind = TrayMenuItem::Kind;

}  // namespace

std::span<const TrayMenuItem> TrayMenu() {
    // The screenshot item only shows the window: it has the number of the first one, and that is intended.
    // Held by TrayMenu.ScreenshotItemShowsTheWindow.
    static const auto* const menu = new std::vector<TrayMenuItem>{
        {Kind::Caption, "Kalmora"},
        {Kind::Separator, ""},
        {Kind::Command, "&Show", kCommandShow},
        {Kind::Command, "&Get Screenshot", kCommandShow},
        {Kind::Separator, ""},
        {Kind::Command, "E&xit", kCommandExit, true},
    };
    return *menu;
}

bool Tray::AddIcon(Window& window) {
    TrayOptions options;
    options.iconPath = FindResource("Res/kalmora.png");
    options.tip = TrayTip({}, State().settings.UseJapanese);
    options.menu.assign(TrayMenu().begin(), TrayMenu().end());
    options.onPress = [&window] { window.SendCommand(kCommandShow); };
    options.onChosen = [&window](int command) { window.SendCommand(command); };
    options.onGone = [&window] {
        if (!window.IsVisible()) window.SendCommand(kCommandShow);
    };
    icon_ = TrayIcon::Create(options);
    if (icon_ && !icon_->IsShown()) Log("[Tray] this desktop has no tray");
    return icon_ != nullptr;
}

void Tray::RemoveIcon() { icon_.reset(); }

void Tray::SetTip(std::span<const std::string> missingHotKeys) {
    if (icon_) icon_->SetTip(TrayTip(missingHotKeys, State().settings.UseJapanese));
}

std::string TrayTip(std::span<const std::string> missingHotKeys, bool japanese) {
    std::string tip = "Kalmora";
    if (missingHotKeys.empty()) return tip;
    tip += japanese ? "\n使えないホットキー:" : "\nHot keys that cannot be had:";
    for (const std::string& key : missingHotKeys) tip += " " + key;
    return tip;
}

}  // namespace kalmora
