#include "store/own_text.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <utility>

#include "text/encoding.h"
#include "text/text.h"

namespace kalmora {

namespace {

constexpr std::string_view kMark = "\xEF\xBB\xBF";
constexpr std::string_view kEscape = "&#x";
// Enough of a file that is about to be replaced to detect its encoding.
constexpr std::size_t kLookedAt = 4u << 20;

enum class Form { CodePage932, Utf8, MarkedUtf8 };

Form FormOf(std::string_view bytes) {
    if (bytes.starts_with(kMark)) return Form::MarkedUtf8;
    return IsUtf8Text(bytes) ? Form::Utf8 : Form::CodePage932;
}

// Escapes that are in the text stay escapes.
std::string FromUtf8Form(std::string_view utf8) {
    std::string bytes;
    while (true) {
        const std::size_t end = utf8.find(kEscape);
        bytes += text::ToCp932(utf8.substr(0, end), text::Escapes::Resolve);
        if (end == std::string_view::npos) return bytes;
        bytes += kEscape;
        utf8.remove_prefix(end + kEscape.size());
    }
}

// The character of an escape that need not be one in UTF-8, and the escape's length. Line ends, a literal
// "&" and bytes that are no character stay escaped.
struct Plain {
    char32_t value = 0;
    std::size_t length = 0;
};
std::optional<Plain> PlainCharacter(std::string_view escape) {
    unsigned value = 0;
    const char* const digits = escape.data() + kEscape.size();
    const char* const last = escape.data() + escape.size();
    const auto [end, error] = std::from_chars(digits, last, value, 16);
    if (error != std::errc() || end == last || *end != ';') return std::nullopt;
    const bool isSurrogate = value >= 0xD800 && value <= 0xDFFF;
    if (value < 0x80 || isSurrogate || value > 0x10FFFF) return std::nullopt;
    return Plain{value, static_cast<std::size_t>(end + 1 - escape.data())};
}

std::string ToUtf8Form(std::string_view bytes) {
    const std::string decoded = text::FromCp932(bytes);
    std::string_view rest = decoded;
    std::string utf8;
    while (true) {
        const std::size_t end = rest.find(kEscape);
        utf8 += rest.substr(0, end);
        if (end == std::string_view::npos) return utf8;
        rest.remove_prefix(end);
        const auto plain = PlainCharacter(rest);
        if (plain) text::AppendUtf8(utf8, plain->value);
        if (!plain) utf8 += kEscape;
        rest.remove_prefix(plain ? plain->length : kEscape.size());
    }
}

// A link that points nowhere is something, too.
bool IsNameThere(const std::string& path) {
    const std::string name = NameOfPath(path);
    files::FileResult result = files::FileResult::Done;
    const auto entries = files::ListFolder(FolderOfPath(path), &result);
    if (result == files::FileResult::Denied) return true;
    return std::any_of(entries.begin(), entries.end(), [&](const auto& entry) { return entry.name == name; });
}

struct Content {
    FileRead result = FileRead::Missing;
    std::string bytes;  // of a file that was read
};

Content ReadContent(const std::string& path, std::size_t limit) {
    auto bytes = files::ReadWholeFile(path, limit);
    if (!bytes && !IsNameThere(path)) return {};
    // Another program can make the file between the two looks, as two first starts at once do.
    if (!bytes) bytes = files::ReadWholeFile(path, limit);
    if (!bytes) return {FileRead::Unreadable, {}};
    return {FileRead::Read, std::move(*bytes)};
}

}  // namespace

OwnText ReadOwnText(const std::string& path, std::size_t limit) {
    Content content = ReadContent(path, limit);
    if (content.result != FileRead::Read) return {content.result, {}};
    const std::string_view bytes = content.bytes;
    switch (FormOf(bytes)) {
        case Form::MarkedUtf8:
            return {FileRead::Read, FromUtf8Form(bytes.substr(kMark.size()))};
        case Form::Utf8:
            return {FileRead::Read, FromUtf8Form(bytes)};
        default:
            return {FileRead::Read, std::move(content.bytes)};
    }
}

files::FileResult ReplaceOwnText(const std::string& path, std::string_view bytes) {
    const Content before = ReadContent(path, kLookedAt);
    if (before.result == FileRead::Unreadable) return files::FileResult::Denied;
    const Form form = before.result == FileRead::Read ? FormOf(before.bytes) : Form::CodePage932;
    if (form == Form::CodePage932) return files::WriteWholeFile(path, bytes);
    const std::string utf8 = ToUtf8Form(bytes);
    // Without a mark a text that is all ASCII, or no UTF-8, would be taken for the other encoding: then it is
    // that one.
    if (form == Form::Utf8 && !IsUtf8Text(utf8)) return files::WriteWholeFile(path, bytes);
    return files::WriteWholeFile(path, form == Form::MarkedUtf8 ? std::string(kMark) + utf8 : utf8);
}

}  // namespace kalmora
