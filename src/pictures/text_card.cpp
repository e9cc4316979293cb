#include "pictures/text_card.h"

#include "platform/files.h"
#include "text/encoding.h"
#include "text/text.h"

namespace kalmora {

namespace {

constexpr int kInset = 2;  // pixels between the frame and the text
constexpr Color kBlack{0, 0, 0};
constexpr Color kWhite{255, 255, 255};

bool BeginsWith(std::string_view text, std::string_view head, HeadMatch match) {
    return match == HeadMatch::Exact ? text.starts_with(head) : text::StartsWithNoCase(text, head);
}

// Takes away what decoding left of a character that the end of the read cut in two.
void DropCutCharacter(std::string& text) {
    constexpr char32_t kReplacement = 0xFFFD;
    std::size_t end = 0;      // of the last whole character
    std::size_t lastEnd = 0;  // of the one before it
    char32_t last = 0;
    for (std::size_t at = 0; at < text.size();) {
        const text::CodePoint point = text::DecodeUtf8(text, at);
        if (point.length < 1) break;
        at += static_cast<std::size_t>(point.length);
        if (point.value >= 0xDC80 && point.value <= 0xDCFF) continue;  // a byte that is no character
        lastEnd = end;
        end = at;
        last = point.value;
    }
    text.resize(last == kReplacement && end == text.size() ? lastEnd : end);
}

// Every line ends in one line feed, whichever way it ended in the file.
std::string WithLineFeeds(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\r')
            result += text[i];
        else if (i + 1 >= text.size() || text[i + 1] != '\n')
            result += '\n';
    }
    return result;
}

void DrawCard(Canvas& canvas, const Rect& area, std::string_view utf8, const TextColors& colors,
              Size corner) {
    const Settings& settings = State().settings;
    canvas.Rectangle(area, colors.back, colors.frame);
    const Rect inside{area.x + kInset, area.y + kInset, area.width - 2 * kInset, area.height - 2 * kInset};
    if (inside.IsEmpty()) return;
    const Size taken{corner.width - kInset, corner.height - kInset};
    canvas.TextBlock(inside, utf8, Font{settings.MiniFontFace, settings.MiniFontHeight}, colors.font,
                     taken.IsEmpty() ? Size{} : taken);
}

}  // namespace

TextKind TextKindOf(std::string_view text, HeadMatch match) {
    if (BeginsWith(text, "[Schedule]", match)) return TextKind::Schedule;
    if (BeginsWith(text, "[Memo]", match)) return TextKind::Memo;
    if (BeginsWith(text, "[ToDo]", match)) return TextKind::ToDo;
    if (BeginsWith(text, "http", match) || BeginsWith(text, "[Web]", match)) return TextKind::Web;
    return text.starts_with('[') ? TextKind::Schedule : TextKind::Normal;
}

std::optional<std::string> ReadTextHead(const std::string& path, std::size_t bytes) {
    files::InputFile file;
    if (!file.Open(path)) return std::nullopt;
    // A little more than wanted shows whether the text continues, and where a character of UTF-8 ends.
    constexpr std::size_t kRestOfCharacter = 3;
    std::string content(bytes + kRestOfCharacter, '\0');
    content.resize(file.ReadAt(0, {reinterpret_cast<std::uint8_t*>(content.data()), content.size()}));
    const bool cut = content.size() > bytes;
    // Half a character at the end would count for another encoding and could decide in its favour.
    const std::string whole = text::CutAtCharacter(content, bytes);
    const int encoding = DetectEncoding(whole);
    content = encoding == kEncodingUtf8 ? whole : content.substr(0, bytes);
    // A shift sequence of up to four bytes that was cut would be shown as letters; a whole one says nothing
    // more.
    if (const std::size_t shift = content.rfind('\x1B');
        cut && encoding == kEncodingIso2022Jp && shift != std::string::npos && shift + 4 > content.size())
        content.resize(shift);
    std::string text = DecodeText(content, encoding);
    if (cut) DropCutCharacter(text);
    return WithLineFeeds(std::string_view(text).substr(0, text.find('\0')));
}

void DrawTextCard(Canvas& canvas, const Rect& area, std::string_view utf8, TextKind kind, Size corner) {
    const TextColors& colors = State().settings.TextStyles[static_cast<std::size_t>(kind)];
    DrawCard(canvas, area, text::ToDisplay(utf8), colors, corner);
}

void DrawPathCard(Canvas& canvas, const Rect& area, std::string_view path, Size corner) {
    DrawCard(canvas, area, path, {kWhite, kBlack, kBlack}, corner);
}

}  // namespace kalmora
