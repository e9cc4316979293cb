// What the key tests share: short spellings and a machine that records what is sent to it.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "input/accelerators.h"
#include "input/key_config.h"
#include "platform/files.h"
#include "source_folder.h"

namespace kalmora {

inline Shortcut Press(std::string_view spelling) {
    Shortcut shortcut;
    ParseShortcut(spelling, shortcut);
    return shortcut;
}

// The number of a key press, also of one that no accelerator has.
inline int NumberOf(std::string_view spelling) {
    const Shortcut press = Press(spelling);
    return 50000 + press.key + 100 * press.alt + 200 * press.shift + 1000 * press.ctrl;
}

inline std::string GoldenText(const std::string& name) {
    std::ifstream file(SourceFolder(__FILE__) / "golden" / name, std::ios::binary);
    EXPECT_TRUE(file.is_open()) << name;
    return {std::istreambuf_iterator<char>(file), {}};
}

// The program's windows and a machine that records what is sent to it.
class RecordingKeyboard : public OpenWindows, public Keyboard {
public:
    bool IsEditorOpen() const override { return editorOpen; }
    bool IsSlideShowShown() const override { return slideShowShown; }
    bool IsNeighborShown() const override { return neighborShown; }
    void Send(const KeyStroke& stroke) override { sent.push_back(stroke); }
    bool Register(const HotKey& hotKey) override {
        registered.push_back(hotKey);
        return hotKey.id != refusedHotKey;
    }
    void Unregister(int command) override { unregistered.push_back(command); }

    bool editorOpen = false, slideShowShown = false, neighborShown = false;
    int refusedHotKey = 0;
    std::vector<KeyStroke> sent;
    std::vector<HotKey> registered;
    std::vector<int> unregistered;
};

class KeyTest : public testing::Test, public RecordingKeyboard {
protected:
    // The three lists as a start without key files makes them.
    void LoadDefaults() {
        keys.LoadKeyText(std::nullopt, KeyContext::Main);
        keys.LoadKeyText(std::nullopt, KeyContext::SlideShow);
        keys.LoadKeyText(std::nullopt, KeyContext::Editor);
    }

    Shortcut BoundTo(int id, KeyContext context = KeyContext::Main) const {
        for (const KeyBinding& binding : keys.Bindings(context)) {
            if (binding.id == id) return binding.shortcut;
        }
        ADD_FAILURE() << "no command " << id;
        return {};
    }

    int Translate(std::string_view spelling) const { return keys.TranslateKey(NumberOf(spelling)); }

    KeyConfig keys{*this, *this};
};

}  // namespace kalmora
