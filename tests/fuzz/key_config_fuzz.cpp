// Key files of any bytes. The first byte chooses which list reads the rest; whatever stands in it, the lists
// stay whole, what is saved is read back as it was, and every key press gets an answer.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "input/accelerators.h"
#include "input/key_config.h"

namespace {

using kalmora::KeyBinding;
using kalmora::KeyConfig;
using kalmora::KeyContext;

void Require(bool condition) {
    if (!condition) std::abort();
}

void RequireSoundList(const KeyConfig& keys, KeyContext context) {
    const auto commands = kalmora::KeyCommands(context);
    const auto& bindings = keys.Bindings(context);
    Require(bindings.size() == commands.size());
    for (std::size_t i = 0; i < bindings.size(); ++i) {
        Require(bindings[i].id == commands[i].id);
        Require(bindings[i].shortcut.key == kalmora::kNoKey || kalmora::IsKeyCode(bindings[i].shortcut.key));
    }
}

void RequireSameWhenReadAgain(const KeyConfig& keys, KeyContext context) {
    const std::string saved = keys.KeyText(context);
    KeyConfig again;
    again.LoadKeyText(saved, context);
    Require(again.KeyText(context) == saved);
}

void PressEveryKey(KeyConfig& keys, unsigned windows) {
    keys.hooks.IsEditorOpen = [windows] { return (windows & 1) != 0; };
    keys.hooks.IsSlideShowVisible = [windows] { return (windows & 2) != 0; };
    keys.hooks.SendKey = [](const kalmora::KeyStroke& stroke) { Require(stroke.key != 0); };
    for (int id = kalmora::kFirstAccelerator; id <= kalmora::kLastAccelerator; ++id) keys.TranslateKey(id);
    keys.ReleaseBoundKeys(2002);
    for (const kalmora::HotKey& hotKey : keys.HotKeys()) Require(kalmora::HasHotKey(hotKey.id));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    if (size == 0) return 0;
    const auto context = static_cast<KeyContext>(bytes[0] % kalmora::kKeyContextCount);
    const std::string_view file(reinterpret_cast<const char*>(bytes) + 1, size - 1);
    KeyConfig keys;
    keys.LoadKeyText(std::nullopt, KeyContext::Main);
    keys.LoadKeyText(file, context);
    RequireSoundList(keys, context);
    RequireSameWhenReadAgain(keys, context);
    for (unsigned windows = 0; windows < 4; ++windows) PressEveryKey(keys, windows);
    return 0;
}
