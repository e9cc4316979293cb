#include "app/connect_input.h"

#include "app/app_hooks.h"
#include "app/app_state.h"
#include "input/accelerators.h"
#include "input/key_config.h"
#include "input/navigation_log.h"
#include "platform/window.h"
#include "views/calendar_store.h"
#include "views/hooks.h"

namespace kalmora {

namespace {

struct KeyFile {
    KeyContext context;
    std::string AppState::*path;
};

// In the order in which they are read and written.
constexpr KeyFile kKeyFiles[] = {
    {KeyContext::Main, &AppState::KeyConfigPath},
    {KeyContext::SlideShow, &AppState::KeyConfigSlideShowPath},
    {KeyContext::Editor, &AppState::KeyConfigEditorPath},
};

void LoadKeys() {
    KeyConfig& keys = Keys();
    for (const KeyFile& file : kKeyFiles) keys.LoadKeyConfig(State().*file.path, file.context);
    keys.RegisterHotKeys();
    SetAccelerators(MainWindow(), [](const Event& event) { return AcceleratorId(event); });
}

void SaveKeys() {
    for (const KeyFile& file : kKeyFiles) Keys().SaveKeyConfig(State().*file.path, file.context);
}

}  // namespace

KeyConfig& Keys() {
    static KeyConfig* const keys = new KeyConfig;
    return *keys;
}

void ConnectInput() {
    KeyHooks& hooks = Keys().hooks;
    hooks.IsEditorOpen = [] { return Shell().IsEditorOpen(); };
    hooks.IsSlideShowVisible = [] { return Hooks().IsSlideShowOpen(); };
    hooks.IsNeighborVisible = [] { return Shell().IsNeighborShown(); };
    Shell().TranslateKey = [](int id) { return Keys().TranslateKey(id); };
    Shell().LoadKeys = LoadKeys;
    Shell().SaveKeys = SaveKeys;
    Shell().ReleaseHotKeys = [] { Keys().UnregisterHotKeys(); };
    Hooks().LogNavigation = [](const std::string& line) { NavigationLog("%s", line.c_str()); };
}

}  // namespace kalmora
