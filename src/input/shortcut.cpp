#include "input/shortcut.h"

#include <array>
#include <cstddef>

namespace kalmora {

namespace {

// Tried in this order where a letter begins none of the shorter forms.
constexpr std::array<KeyCode, 9> kNamedKeys = {kKeySpace, kKeyUp,     kKeyDown, kKeyLeft, kKeyRight,
                                               kKeyPause, kKeyEscape, kKeyHome, kKeyEnd};

bool IsUpperLetter(char c) { return c >= 'A' && c <= 'Z'; }
bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// Each reader takes the text from its place on and gives how many bytes it used; 0 when it does not fit.

std::size_t ReadModifier(std::string_view rest, Shortcut& shortcut) {
    if (rest.starts_with("C+")) {
        shortcut.ctrl = true;
    } else if (rest.starts_with("A+")) {
        shortcut.alt = true;
    } else if (rest.starts_with("S+")) {
        shortcut.shift = true;
    } else {
        return 0;
    }
    return 2;
}

std::size_t ReadFunctionKey(std::string_view rest, Shortcut& shortcut) {
    if (rest.size() < 2 || rest[0] != 'F' || rest[1] < '1' || rest[1] > '9') return 0;
    if (rest[1] == '1' && rest.size() > 2 && rest[2] >= '0' && rest[2] <= '2') {
        shortcut.key = kKeyF1 + 9 + (rest[2] - '0');
        return 3;
    }
    shortcut.key = kKeyF1 + (rest[1] - '1');
    return 2;
}

std::size_t ReadNamedKey(std::string_view rest, Shortcut& shortcut) {
    for (const KeyCode key : kNamedKeys) {
        if (!rest.starts_with(KeyName(key))) continue;
        shortcut.key = key;
        return KeyName(key).size();
    }
    return 0;
}

}  // namespace

void ParseShortcut(std::string_view text, Shortcut& shortcut) {
    std::size_t at = 0;
    while (at < text.size()) {
        const std::string_view rest = text.substr(at);
        std::size_t used = ReadModifier(rest, shortcut);
        if (used == 0) used = ReadFunctionKey(rest, shortcut);
        if (used == 0) used = ReadNamedKey(rest, shortcut);
        if (used == 0) {
            if (IsDigit(rest[0])) {
                shortcut.key = kKey0 + (rest[0] - '0');
            } else if (IsUpperLetter(rest[0]) && (at == 0 || !IsUpperLetter(text[at - 1]))) {
                // Only the first letter of a word: the rest of an unknown name shall not spell further keys.
                shortcut.key = kKeyA + (rest[0] - 'A');
            }
            used = 1;
        }
        at += used;
    }
}

std::string ShortcutText(const Shortcut& shortcut) {
    std::string text;
    if (shortcut.ctrl) text += "C+";
    if (shortcut.alt) text += "A+";
    if (shortcut.shift) text += "S+";
    text += KeyName(shortcut.key);
    return text;
}

}  // namespace kalmora
