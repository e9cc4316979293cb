#include "input/key_config.h"

#include <algorithm>
#include <cstddef>

#include "base/log.h"
#include "input/accelerators.h"
#include "text/text.h"

namespace kalmora {

namespace {

// A key file has some thirty lines; what a broken one holds past this is not read.
constexpr std::size_t kFileLimit = 16u << 20;
// A longer line is read as several.
constexpr std::size_t kLineLimit = 0x8000 - 1;
// Shorter lines, line feed included, hold nothing.
constexpr std::size_t kShortestLine = 3;

constexpr std::string_view kComment =
    "# Key-config file\n"
    "# Format is ... (CONTROL)+(ALT)+(SHIFT)+(KEY)\n"
    "# Control = 'C+'\n"
    "# Alt = 'A+'\n"
    "# Shift = 'S+'\n";

// Takes the next line off the text, its line feed included.
std::string_view TakeLine(std::string_view& bytes) {
    std::size_t length = std::min(bytes.size(), kLineLimit);
    const std::size_t feed = bytes.substr(0, length).find('\n');
    if (feed != std::string_view::npos) length = feed + 1;
    const std::string_view line = bytes.substr(0, length);
    bytes.remove_prefix(length);
    return line;
}

}  // namespace

FileRead KeyConfig::LoadKeyConfig(const std::string& path, KeyContext context) {
    const OwnText content = ReadOwnText(path, kFileLimit);
    if (content.result == FileRead::Read) {
        LoadKeyText(content.bytes, context);
    } else {
        LoadKeyText(std::nullopt, context);
    }
    isUnreadable_[Index(context)] = content.result == FileRead::Unreadable;
    return content.result;
}

void KeyConfig::LoadKeyText(std::optional<std::string_view> bytes, KeyContext context) {
    slots_.Clear(context);
    RebuildList(context);
    if (!bytes) {
        ApplyDefaults(context);
        BuildKeyArray(context);
        return;
    }
    KeyTable& table = tables_[Index(context)];
    std::string_view rest = *bytes;
    while (!rest.empty()) ReadLine(TakeLine(rest), table);
    BuildKeyArray(context);
    // Only the main list fills its gaps: a slide show or editor command can be left without a key by taking
    // its line out. Held by KeyFile.OnlyTheMainListFillsItsGapsWithDefaults.
    if (context == KeyContext::Main) {
        ApplyDefaults(context);
        BuildKeyArray(context);
    }
}

void KeyConfig::RebuildList(KeyContext context) {
    if (context == KeyContext::Main) nextSequence_ = 0;
    KeyTable& table = tables_[Index(context)];
    table.clear();
    for (const KeyCommand& command : KeyCommands(context)) {
        KeyBinding binding;
        binding.id = command.id;
        binding.name = command.name;
        binding.sequence = nextSequence_++;
        table.push_back(binding);
    }
}

void KeyConfig::ReadLine(std::string_view bytes, KeyTable& table) {
    const std::string_view text = bytes.substr(0, bytes.find('\0'));  // a NUL ends the line
    if (text.starts_with('#') || text.size() < kShortestLine) return;
    const std::string line = text::FromCp932(text, text::Escapes::Resolve);
    const std::size_t tab = line.find('\t');
    if (tab == std::string::npos) return;
    const std::string_view name = std::string_view(line).substr(0, tab);
    // A shortened name binds the first command that begins with it, and no name at all the first of the list.
    // Meant, and held by KeyFile.ShortenedNameBindsTheFirstCommandThatBeginsSo.
    const auto found = std::find_if(table.begin(), table.end(), [&](const KeyBinding& binding) {
        return binding.name.starts_with(name);
    });
    if (found == table.end()) return;
    found->loaded = true;
    ParseShortcut(std::string_view(line).substr(tab), found->shortcut);
}

void KeyConfig::ApplyDefaults(KeyContext context) {
    KeyTable& table = tables_[Index(context)];
    const auto commands = KeyCommands(context);
    for (std::size_t i = 0; i < table.size(); ++i) {
        KeyBinding& binding = table[i];
        if (binding.loaded) continue;
        Shortcut shortcut;
        ParseShortcut(commands[i].defaultKey, shortcut);
        const bool isTaken = commands[i].when == DefaultKey::WhenSlotIsFree &&
                             slots_.At(KeyContext::Main, KeySlots::SlotOf(shortcut)) != 0;
        binding.shortcut = isTaken ? Shortcut{} : shortcut;
        binding.loaded = true;
    }
}

void KeyConfig::BuildKeyArray(KeyContext context) {
    slots_.Clear(context);
    for (const KeyBinding& binding : Bindings(context)) {
        if (binding.shortcut.key < 0) continue;
        slots_.Set(context, KeySlots::SlotOf(binding.shortcut), binding.id);
    }
}

std::string KeyConfig::KeyText(KeyContext context) const {
    std::string text(kComment);
    for (const KeyBinding& binding : Bindings(context)) {
        text += binding.name;
        text += '\t';
        text += ShortcutText(binding.shortcut);
        text += '\n';
    }
    return text::ToCp932(text, text::Escapes::Resolve);
}

files::FileResult KeyConfig::SaveKeyConfig(const std::string& path, KeyContext context) const {
    if (isUnreadable_[Index(context)]) return files::FileResult::Denied;
    return ReplaceOwnText(path, KeyText(context));
}

int KeyConfig::TranslateKey(int acceleratorId) const {
    if (!IsKeyCommand(acceleratorId)) return 0;
    const Shortcut press = DecodeAccelerator(acceleratorId);
    const int slot = KeySlots::SlotOf(press);
    int command = slots_.At(KeyContext::Main, slot);
    if (WorksInEveryWindow(command)) return command;
    if (windows_.IsEditorOpen()) {
        command = slots_.At(KeyContext::Editor, slot);
        if (command == 0) command = slots_.At(KeyContext::SlideShow, slot);
    } else if (windows_.IsSlideShowShown() || windows_.IsNeighborShown()) {
        command = slots_.At(KeyContext::SlideShow, slot);
    }
    if (command == 0 && press.alt) GiveBackToSystem(press.key);
    return command;
}

void KeyConfig::GiveBackToSystem(KeyCode key) const {
    using Kind = KeyStroke::Kind;
    if (!IsKeyCode(key)) return;
    for (const VirtualKey sent : {kVirtualAlt, VirtualKeyOf(key)}) {
        for (const Kind kind : {Kind::Up, Kind::Down, Kind::Up}) Send(sent, kind);
    }
}

std::vector<HotKey> KeyConfig::HotKeys() {
    std::vector<HotKey> hotKeys;
    for (const KeyBinding& binding : Bindings(KeyContext::Main)) {
        if (!HasHotKey(binding.id) || binding.shortcut.key < 0) continue;
        hotKeys.push_back(MakeHotKey(binding.id, binding.shortcut, lastVirtualKey_));
        lastVirtualKey_ = hotKeys.back().virtualKey;
    }
    return hotKeys;
}

bool KeyConfig::RegisterHotKeys() {
    bool registered = true;
    missingHotKeys_.clear();
    for (const HotKey& hotKey : HotKeys()) {
        registered = keyboard_.Register(hotKey);
        if (registered) continue;
        const auto& table = Bindings(KeyContext::Main);
        const auto binding = std::find_if(table.begin(), table.end(),
                                          [&](const KeyBinding& entry) { return entry.id == hotKey.id; });
        missingHotKeys_.push_back(HotKeyText(binding->shortcut));
        Log("[HotKey] not registered: %s", missingHotKeys_.back().c_str());
    }
    return registered;
}

void KeyConfig::UnregisterHotKeys() {
    for (const Command command : kHotKeyCommands) keyboard_.Unregister(command);
}

void KeyConfig::ReleaseBoundKeys(int command) const {
    using Kind = KeyStroke::Kind;
    for (const KeyBinding& binding : Bindings(KeyContext::Main)) {
        if (binding.id != command) continue;
        if (binding.shortcut.ctrl) Send(kVirtualControl, Kind::Up);
        if (binding.shortcut.alt) Send(kVirtualAlt, Kind::Up);
        if (binding.shortcut.shift) Send(kVirtualShift, Kind::Up);
        if (IsKeyCode(binding.shortcut.key)) Send(VirtualKeyOf(binding.shortcut.key), Kind::Up);
        return;
    }
}

}  // namespace kalmora
