// Which key runs which command: three lists (main window, slide show, editor), each with its file.
//
// The format of a key file: text as store/own_text.h has it, five comment lines, then a line for each command
// in list order, its name, a tab and its key ("C+A+S+END"); see docs/formats.md. Files are read when the
// program starts and written when it ends. GUI thread only.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/commands.h"
#include "input/hot_key_list.h"
#include "input/key_slots.h"
#include "input/keyboard.h"
#include "input/shortcut.h"
#include "platform/files.h"
#include "store/own_text.h"

namespace kalmora {

// One command of a list and the key it is bound to.
struct KeyBinding {
    int id = 0;
    std::string_view name;  // of the command table; lives for ever
    Shortcut shortcut;
    int sequence = 0;     // counts through all three lists since the main list was last made
    bool loaded = false;  // the file or the defaults have spoken
};

using KeyTable = std::vector<KeyBinding>;

class KeyConfig {
public:
    // Both outlive it.
    KeyConfig(const OpenWindows& windows, Keyboard& keyboard) : windows_(windows), keyboard_(keyboard) {}

    // Reads the list again from its file and builds its array. Without a file all commands get their default
    // keys. In the main list a command that the file leaves out gets its default; in the two others it stays
    // without a key. A line that names no command is ignored. Order at start: main, slide show, editor.
    //
    // A file that is there and cannot be read gives the defaults, too, and is not replaced in this run.
    FileRead LoadKeyConfig(const std::string& path, KeyContext context);
    // The same from the bytes of a file; std::nullopt means a file that cannot be opened.
    void LoadKeyText(std::optional<std::string_view> bytes, KeyContext context);

    // Empties the array of the list and enters every binding that has a key. Of two commands on one key the
    // later in the list wins.
    void BuildKeyArray(KeyContext context);

    // Replaces the file, unless it could not be read (Denied). The caller continues with any result: the
    // keys then stay as the old file has them.
    files::FileResult SaveKeyConfig(const std::string& path, KeyContext context) const;
    // What SaveKeyConfig writes.
    std::string KeyText(KeyContext context) const;

    // The command of a key press (its accelerator number), 0 for none. The two screenshots and "Show Window"
    // come first in every window; then the list of the editor, the slide show or the main window. A
    // combination with Alt that finds nothing is typed again without Alt (Keyboard::Send), so that it reaches
    // the focused control.
    int TranslateKey(int acceleratorId) const;

    // The hot keys of the main list, in list order. Registers each with the keyboard; gives its last
    // answer (true when there was nothing to register). Failures are logged, nothing is shown.
    bool RegisterHotKeys();
    void UnregisterHotKeys();
    // Those that RegisterHotKeys could not have, "[Ctrl+F1]", as they stand in the key file: for the tip of
    // the tray icon, which is the place where the user may wonder.
    const std::vector<std::string>& MissingHotKeys() const { return missingHotKeys_; }
    std::vector<HotKey> HotKeys();

    // Releases (Keyboard::Send) the modifiers and the key that the main list binds to the command, which the
    // user still holds down when a hot key has just fired. Nothing is sent for a command that is not on the
    // list.
    void ReleaseBoundKeys(int command) const;

    const KeyTable& Bindings(KeyContext context) const { return tables_[Index(context)]; }
    // The command in a slot of the list's array (KeySlots::SlotOf).
    int CommandAt(KeyContext context, int slot) const { return slots_.At(context, slot); }

private:
    static std::size_t Index(KeyContext context) { return static_cast<std::size_t>(context); }
    void RebuildList(KeyContext context);
    void ReadLine(std::string_view bytes, KeyTable& table);
    void ApplyDefaults(KeyContext context);
    void GiveBackToSystem(KeyCode key) const;
    void Send(VirtualKey key, KeyStroke::Kind kind) const { keyboard_.Send({key, kind}); }

    const OpenWindows& windows_;
    Keyboard& keyboard_;
    std::array<KeyTable, kKeyContextCount> tables_;
    std::array<bool, kKeyContextCount> isUnreadable_{};  // the file of the list, when it was loaded
    KeySlots slots_;
    int nextSequence_ = 0;
    std::vector<std::string> missingHotKeys_;
    VirtualKey lastVirtualKey_ = 0;  // of the hot key before; see hot_key_list.h
};

}  // namespace kalmora
