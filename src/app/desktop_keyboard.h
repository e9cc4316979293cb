// The machine's keyboard and the program's windows, as the key configuration sees them. GUI thread.
#pragma once

#include "app/rooms_above.h"
#include "input/keyboard.h"
#include "media/picture_window.h"

namespace kalmora {

class DesktopKeyboard : public Keyboard {
public:
    void Send(const KeyStroke& stroke) override;
    // For the main window; false without one. The keys of commands whose room is still to come are left to
    // the other programs, and count as registered.
    bool Register(const HotKey& hotKey) override;
    void Unregister(int command) override;
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
