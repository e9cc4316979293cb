// The commands that a key can be bound to: three lists, with the names of the key files and the default keys.
#pragma once

#include <span>

namespace kalmora {

// Which of the three lists; the numbers are those of the start and stop sequences.
enum class KeyContext { Main = 0, SlideShow = 1, Editor = 2 };

inline constexpr int kKeyContextCount = 3;

// When a command that its file does not name takes its default key.
enum class DefaultKey { Always, WhenSlotIsFree };

struct KeyCommand {
    int id;
    const char* name;        // as it stands in the key file; ASCII, no tab
    const char* defaultKey;  // in the spelling of the key file; empty for none
    DefaultKey when = DefaultKey::Always;
};

// In the order of the list and of its file.
std::span<const KeyCommand> KeyCommands(KeyContext context);

}  // namespace kalmora
