#include "app/connect_input.h"

#include <string>
#include <vector>

#include "app/app_hooks.h"
#include "app/tray_menu.h"
#include "base/log.h"
#include "input/accelerators.h"
#include "input/key_config.h"
#include "input/navigation_log.h"
#include "platform/hot_keys.h"
#include "platform/window.h"
#include "state/app_state.h"
#include "views/hooks.h"
#include "views/model/calendar_store.h"

namespace kalmora {

namespace {

struct KeyFile {
    KeyContext context;
    std::string Settings::*path;
};

// In the order in which they are read and written.
constexpr KeyFile kKeyFiles[] = {
    {KeyContext::Main, &Settings::KeyConfigPath},
    {KeyContext::SlideShow, &Settings::KeyConfigSlideShowPath},
    {KeyContext::Editor, &Settings::KeyConfigEditorPath},
};

// For the tip of the tray icon, which is the place where the user may wonder.
std::vector<std::string>& MissingHotKeys() {
    static auto* const missing = new std::vector<std::string>;
    return *missing;
}

const char* Reason(HotKeyResult result) {
    switch (result) {
        case HotKeyResult::Taken:
            return "another program has it";
        case HotKeyResult::NoSuchKey:
            return "this keyboard has no such key";
        default:
            return "there is no X display";
    }
}

class DesktopWindows : public OpenWindows {
public:
    bool IsEditorOpen() const override { return Shell().IsEditorOpen(); }
    bool IsSlideShowShown() const override { return Hooks().IsSlideShowOpen(); }
    bool IsNeighborShown() const override { return Shell().IsNeighborShown(); }
};

class DesktopKeyboard : public Keyboard {
public:
    void Send(const KeyStroke& stroke) override {
        SendKey(stroke.key, stroke.kind == KeyStroke::Kind::Down ? KeyMotion::Down : KeyMotion::Up);
    }
    // The codes of platform/keys.h are the virtual keys.
    bool Register(const HotKey& hotKey) override {
        Window* window = MainWindow();
        if (!window) return false;
        const KeyCombination combination{(hotKey.modifiers & HotKey::kControl) != 0,
                                         (hotKey.modifiers & HotKey::kAlt) != 0,
                                         (hotKey.modifiers & HotKey::kShift) != 0, hotKey.virtualKey};
        const HotKeyResult result = RegisterHotKey(*window, hotKey.id, combination);
        if (result == HotKeyResult::Registered) return true;
        const KeyCode key = KeyCodeOf(hotKey.virtualKey);
        MissingHotKeys().push_back(HotKeyText({combination.ctrl, combination.alt, combination.shift, key}));
        Log("[HotKey] %d: %s", hotKey.id, Reason(result));
        return false;
    }
    void Unregister(int command) override { UnregisterHotKey(command); }
};

// Inside the loop, as soon as it runs: the start does not wait for an answer.
void TellUnreadable(const std::string& path) {
    const std::string words =
        path + "\n" +
        (State().settings.UseJapanese
             ? "このファイルを読み込めないため，既定のキーを使います．ファイルは変更しません．"
             : "This file cannot be read. The default keys are in force, and it stays as it is.");
    if (Application* const application = TheApplication())
        application->Post([words] { ShowMessage(MainWindow(), "Kalmora", words, MessageButtons::Ok); });
}

void LoadKeys() {
    KeyConfig& keys = Keys();
    for (const KeyFile& file : kKeyFiles)
        if (keys.LoadKeyConfig(State().settings.*file.path, file.context) == FileRead::Unreadable)
            TellUnreadable(State().settings.*file.path);
    MissingHotKeys().clear();
    keys.RegisterHotKeys();
    SetTrayTip(MissingHotKeys());
    SetAccelerators(MainWindow(), [](const Event& event) { return AcceleratorId(event); });
}

void SaveKeys() {
    for (const KeyFile& file : kKeyFiles) Keys().SaveKeyConfig(State().settings.*file.path, file.context);
}

}  // namespace

KeyConfig& Keys() {
    static DesktopWindows windows;
    static DesktopKeyboard keyboard;
    static KeyConfig* const keys = new KeyConfig(windows, keyboard);
    return *keys;
}

void ConnectInput() {
    Shell().TranslateKey = [](int id) { return Keys().TranslateKey(id); };
    Shell().LoadKeys = LoadKeys;
    Shell().SaveKeys = SaveKeys;
    Shell().ReleaseHotKeys = [] { Keys().UnregisterHotKeys(); };
    Hooks().LogNavigation = [](const std::string& line) { NavigationLog("%s", line.c_str()); };
}

}  // namespace kalmora
