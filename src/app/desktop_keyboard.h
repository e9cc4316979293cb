// The machine's keyboard and the program's windows, as the key configuration sees them. GUI thread.
#pragma once

#include <string>
#include <vector>

#include "app/rooms_above.h"
#include "input/keyboard.h"
#include "media/picture_window.h"

namespace kalmora {

class DesktopKeyboard : public Keyboard {
public:
    void Send(const KeyStroke& stroke) override;
    // For the main window; false without one.
    bool Register(const HotKey& hotKey) override;
    void Unregister(int command) override;

    // The hot keys that could not be had since ForgetMissing, "[Ctrl+F1]": for the tip of the tray icon,
    // which is the place where the user may wonder.
    const std::vector<std::string>& Missing() const { return missing_; }
    void ForgetMissing() { missing_.clear(); }

private:
    std::vector<std::string> missing_;
};

class DesktopWindows : public OpenWindows {
public:
    DesktopWindows(const NoteEditor& editor, const PictureWindow& slideShow, const PictureWindow& neighbor)
        : editor_(editor), slideShow_(slideShow), neighbor_(neighbor) {}
    bool IsEditorOpen() const override { return editor_.IsOpen(); }
    bool IsSlideShowShown() const override { return slideShow_.IsShown(); }
    bool IsNeighborShown() const override { return neighbor_.IsShown(); }

private:
    const NoteEditor& editor_;
    const PictureWindow& slideShow_;
    const PictureWindow& neighbor_;
};

}  // namespace kalmora
