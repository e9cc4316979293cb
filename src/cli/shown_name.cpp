#include "cli/shown_name.h"

#include <cstdio>

#include "platform/terminal.h"

namespace kalmora {

namespace {

struct ShortEscape {
    char control;
    const char* shown;
};
constexpr ShortEscape kShortEscapes[] = {
    {'\a', "\\a"}, {'\b', "\\b"}, {'\t', "\\t"}, {'\n', "\\n"}, {'\v', "\\v"}, {'\f', "\\f"}, {'\r', "\\r"},
};

unsigned ByteAt(std::string_view text, std::size_t at) {
    return at < text.size() ? static_cast<unsigned char>(text[at]) : 0;
}

// How many bytes at this place are one control character; 0 for any other.
std::size_t ControlLength(std::string_view text, std::size_t at) {
    const unsigned first = ByteAt(text, at), second = ByteAt(text, at + 1), third = ByteAt(text, at + 2);
    if (first < 0x20 || first == 0x7F) return 1;
    if (first == 0xC2 && second >= 0x80 && second <= 0x9F) return 2;  // U+0080 to U+009F
    // A byte of them on its own is one to a terminal that is not set to UTF-8.
    if (first >= 0x80 && first <= 0x9F && (at == 0 || ByteAt(text, at - 1) < 0x80)) return 1;
    const bool turns = first == 0xE2 && second == 0x80 &&
                       ((third >= 0xAA && third <= 0xAE) || third == 0x8E || third == 0x8F);
    const bool isolates = first == 0xE2 && second == 0x81 && third >= 0xA6 && third <= 0xA9;
    return turns || isolates ? 3 : 0;
}

}  // namespace

std::string EscapeControls(std::string_view text) {
    std::string shown;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t length = ControlLength(text, at);
        if (length == 0) {
            shown += text[at++];
            continue;
        }
        const char* brief = nullptr;
        for (const ShortEscape& one : kShortEscapes)
            if (length == 1 && one.control == text[at]) brief = one.shown;
        if (brief) shown += brief;
        for (std::size_t i = 0; i < length && !brief; ++i) {
            char escape[8];
            std::snprintf(escape, sizeof escape, "\\x%02x", ByteAt(text, at + i));
            shown += escape;
        }
        at += length;
    }
    return shown;
}

std::string ShownOnOutput(const std::string& name) {
    return IsOutputATerminal() ? EscapeControls(name) : name;
}

std::string ShownOnErrors(const std::string& name) {
    return IsErrorOutputATerminal() ? EscapeControls(name) : name;
}

}  // namespace kalmora
