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

class KeyTest : public testing::Test {
protected:
    KeyTest() {
        keys.hooks.IsEditorOpen = [this] { return editorOpen; };
        keys.hooks.IsSlideShowVisible = [this] { return slideShowVisible; };
        keys.hooks.IsNeighborVisible = [this] { return neighborVisible; };
        keys.hooks.SendKey = [this](const KeyStroke& stroke) { sent.push_back(stroke); };
        keys.hooks.RegisterHotKey = [this](const HotKey& hotKey) {
            registered.push_back(hotKey);
            return hotKey.id != refusedHotKey;
        };
        keys.hooks.UnregisterHotKey = [this](int id) { unregistered.push_back(id); };
    }

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

    KeyConfig keys;
    bool editorOpen = false, slideShowVisible = false, neighborVisible = false;
    int refusedHotKey = 0;
    std::vector<KeyStroke> sent;
    std::vector<HotKey> registered;
    std::vector<int> unregistered;
};

}  // namespace kalmora
