// Key files of any bytes. The first byte chooses which list reads the rest; whatever is in it, the lists
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

class Machine : public kalmora::OpenWindows, public kalmora::Keyboard {
public:
    bool IsEditorOpen() const override { return (windows & 1) != 0; }
    bool IsSlideShowShown() const override { return (windows & 2) != 0; }
    bool IsNeighborShown() const override { return false; }
    void Send(const kalmora::KeyStroke& stroke) override { Require(stroke.key != 0); }
    bool Register(const kalmora::HotKey&) override { return true; }
    void Unregister(int) override {}

    unsigned windows = 0;
};

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
    Machine machine;
    KeyConfig again(machine, machine);
    again.LoadKeyText(saved, context);
    Require(again.KeyText(context) == saved);
}

void PressEveryKey(KeyConfig& keys, Machine& machine, unsigned windows) {
    machine.windows = windows;
    for (int id = kalmora::kFirstAccelerator; id <= kalmora::kLastAccelerator; ++id) keys.TranslateKey(id);
    keys.ReleaseBoundKeys(2002);
    for (const kalmora::HotKey& hotKey : keys.HotKeys()) Require(kalmora::HasHotKey(hotKey.id));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    if (size == 0) return 0;
    const auto context = static_cast<KeyContext>(bytes[0] % kalmora::kKeyContextCount);
    const std::string_view file(reinterpret_cast<const char*>(bytes) + 1, size - 1);
    Machine machine;
    KeyConfig keys(machine, machine);
    keys.LoadKeyText(std::nullopt, KeyContext::Main);
    keys.LoadKeyText(file, context);
    RequireSoundList(keys, context);
    RequireSameWhenReadAgain(keys, context);
    for (unsigned windows = 0; windows < 4; ++windows) PressEveryKey(keys, machine, windows);
    return 0;
}
